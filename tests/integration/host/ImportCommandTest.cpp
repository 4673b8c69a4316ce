// kelvra-host import as a user and a script call it, on the test module
// with a file format ("Test Swatch Text Reader", FormatModule.cpp).
#include "CommandRunner.h"

#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

using kelvra::testing::RunKelvraHost;
using kelvra::testing::RunKelvraHostOnTerminal;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kFormatModule = std::string(TEST_MODULES_DIR) + "/FormatModule.so";

class ImportCommandTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) const { return folder_.Write(name, text); }
    std::string Missing(const std::string& name) const { return (folder_.Path() / name).string(); }

    static std::vector<std::string> Import(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"import", "--module", kFormatModule});
        return arguments;
    }

private:
    testsupport::TemporaryFolder folder_;
};

TEST_F(ImportCommandTest, OpensAFileAsADocumentNamedAfterItAndShowsItsSwatches) {
    const std::string file = Write("colours.tsw",
                                   "gray 0.2 Paper\n"
                                   "rgb 1 0 0 Red\n"
                                   "group Greens\n"
                                   "cmyk 0.5 0 1 0 Leaf\n"
                                   "spot 0 0.2 1 0 0.25 3000 Gold\n"
                                   "lab 0 0 0 Black\n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "module: " + kFormatModule +
                                 "\n"
                                 "  ZP Interface / Startup -> 0\n"
                                 "file: " + file +
                                 "\n"
                                 "  KV Check \"Test Swatch Text Reader\" -> 0\n"
                                 "  KV Go \"Test Swatch Text Reader\", open as document \"colours.tsw\" -> 0\n"
                                 "shut-down:\n"
                                 "  ZP Interface / Shutdown -> 0\n"
                                 "document \"colours.tsw\":\n"
                                 "  default group:\n"
                                 "    \"Paper\": gray 0.2\n"
                                 "    \"Red\": rgb 1 0 0\n"
                                 "  group \"Greens\":\n"
                                 "    \"Leaf\": cmyk 0.5 0 1 0\n"
                                 "    \"Gold\": custom colour \"Gold\" at tint 0.25 (cmyk 0 0.2 1 0, spot, book id 3000)\n"
                                 "    \"Black\": rgb 0 0 0\n"
                                 "1 file: 1 imported, 0 failed\n");
}

TEST_F(ImportCommandTest, EachFileGetsItsOwnDocument) {
    const std::string first = Write("a.tsw", "rgb 1 0 0 Red\n");
    const std::string second = Write("b.tsw", "rgb 0 0 1 Blue\n");
    const auto result = RunKelvraHost(Import({first, second, "--json"}));
    EXPECT_EQ(result.exitStatus, 0);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    ASSERT_EQ(out["documents"].size(), 2u);
    EXPECT_EQ(out["documents"][0]["name"], "a.tsw");
    EXPECT_EQ(out["documents"][0]["groups"][0]["swatches"][0]["name"], "Red");
    EXPECT_EQ(out["documents"][1]["name"], "b.tsw");
    EXPECT_EQ(out["documents"][1]["groups"][0]["swatches"][0]["name"], "Blue");
    EXPECT_EQ(out["files"][1]["go"]["document"], "b.tsw");
    EXPECT_EQ(out["files"][1]["go"]["placed"], false);
}

TEST_F(ImportCommandTest, PlaceReadsEveryFileIntoOneDocument) {
    const std::string first = Write("a.tsw", "spot 0 0 0 1 0 7 Black\nrgb 1 0 0 Red\n");
    const std::string second = Write("b.tsw", "spot 0 0 0 0.5 0.5 8 Black\n");
    const auto result = RunKelvraHost(Import({"--place", first, second}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("  KV Go \"Test Swatch Text Reader\", placed into document \"Untitled\" -> 0\n"
                                         "file: " + second + "\n"));
    // The second file redefined the custom colour the first made.
    EXPECT_THAT(result.output,
                HasSubstr("document \"Untitled\":\n"
                          "  default group:\n"
                          "    \"Black\": custom colour \"Black\" at tint 0 (cmyk 0 0 0 0.5, spot, book id 7)\n"
                          "    \"Red\": rgb 1 0 0\n"
                          "    \"Black\": custom colour \"Black\" at tint 0.5 (cmyk 0 0 0 0.5, spot, book id 7)\n"
                          "2 files: 2 imported, 0 failed\n"));
    EXPECT_EQ(kelvra::testing::LinesStartingWith(result.output, "document ").size(), 1u);
}

TEST_F(ImportCommandTest, AFileNoFormatAcceptsOrThatIsMissingFails) {
    const std::string text = Write("notes.txt", "rgb 1 0 0 Red\n");
    const std::string good = Write("good.tsw", "rgb 1 0 0 Red\n");
    const auto result = RunKelvraHost(Import({text, Missing("gone.tsw"), good}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("file: " + text +
                                         "\n"
                                         "  KV Check \"Test Swatch Text Reader\" -> FMT?\n"
                                         "  no format accepts this file\n"
                                         "file: " + Missing("gone.tsw") +
                                         "\n"
                                         "  no such file\n"));
    EXPECT_THAT(result.output, HasSubstr("3 files: 1 imported, 2 failed\n"));
    // No document for a file that was not read.
    EXPECT_EQ(kelvra::testing::LinesStartingWith(result.output, "document ").size(), 1u);
}

TEST_F(ImportCommandTest, AFailedGoFailsTheRunAndKeepsWhatWasReadBefore) {
    const std::string file = Write("broken.tsw", "rgb 1 0 0 Red\nalert Something broke.\nfail OOPS\nrgb 0 1 0 Green\n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  KV Go \"Test Swatch Text Reader\", open as document \"broken.tsw\" -> OOPS\n"
                                         "  alert: Something broke.\n"));
    EXPECT_THAT(result.output, HasSubstr("  default group:\n    \"Red\": rgb 1 0 0\n1 file: 0 imported, 1 failed\n"));
}

TEST_F(ImportCommandTest, QuestionsAreAnsweredByTheAnswerOption) {
    const std::string file = Write("ask.tsw", "rgb 1 0 0 Red\nask Import the rest?\nrgb 0 1 0 Green\n");
    const auto no = RunKelvraHost(Import({"--answer", "no", file}));
    EXPECT_EQ(no.exitStatus, 1);
    EXPECT_THAT(no.output, HasSubstr("-> STOP\n  question: Import the rest? -> no\n"));
    EXPECT_THAT(no.output, Not(HasSubstr("Green")));
    const auto yes = RunKelvraHost(Import({"--answer", "yes", file}));
    EXPECT_EQ(yes.exitStatus, 0);
    EXPECT_THAT(yes.output, HasSubstr("  question: Import the rest? -> yes\n"));
    EXPECT_THAT(yes.output, HasSubstr("    \"Green\": rgb 0 1 0\n"));
    EXPECT_NE(RunKelvraHost(Import({"--answer", "maybe", file})).exitStatus, 0);
}

TEST_F(ImportCommandTest, WithoutAnAnswerAQuestionIsYesWhenNobodyCanBeAsked) {
    const std::string file = Write("ask.tsw", "ask Import?\nrgb 0 1 0 Green\n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("  question: Import? -> yes\n"));
}

TEST_F(ImportCommandTest, OnATerminalTheUserIsAsked) {
    const std::string file = Write("ask.tsw", "ask Import?\nrgb 0 1 0 Green\n");
    const auto no = RunKelvraHostOnTerminal(Import({file}), "maybe\nn\n", {{"NO_COLOR", "1"}});
    EXPECT_EQ(no.exitStatus, 1);
    EXPECT_THAT(no.output, HasSubstr("  question: Import? -> no\n"));
    const auto byDefault = RunKelvraHostOnTerminal(Import({file}), "\n", {{"NO_COLOR", "1"}});
    EXPECT_EQ(byDefault.exitStatus, 0);
    EXPECT_THAT(byDefault.output, HasSubstr("  question: Import? -> yes\n"));
}

TEST_F(ImportCommandTest, ChipsAppearOnlyOnATerminalThatShowsThemAndWithoutNoColor) {
    const std::string file = Write("red.tsw", "rgb 1 0 0 Red\n");
    const std::vector<std::pair<std::string, std::optional<std::string>>> trueColour = {
        {"COLORTERM", "truecolor"}, {"TERM", "xterm-256color"}, {"NO_COLOR", std::nullopt}};
    const auto terminal = RunKelvraHostOnTerminal(Import({file}), "", trueColour);
    EXPECT_THAT(terminal.output, HasSubstr("    \x1b[48;2;255;0;0m  \x1b[0m \"Red\": rgb 1 0 0\n"));
    auto noColor = trueColour;
    noColor.back().second = "1";
    const auto refused = RunKelvraHostOnTerminal(Import({file}), "", noColor);
    EXPECT_THAT(refused.output, HasSubstr("    \"Red\": rgb 1 0 0\n"));
    EXPECT_THAT(refused.output, Not(HasSubstr("\x1b")));
    const auto piped = RunKelvraHost(Import({file}));
    EXPECT_THAT(piped.output, Not(HasSubstr("\x1b")));
}

TEST_F(ImportCommandTest, JsonGivesTheSameRun) {
    const std::string file = Write("ask.tsw", "ask Go on?\ngray 0.8 Shadow\n");
    const std::string text = Write("notes.txt", "");
    const auto result = RunKelvraHost(Import({"--json", file, text}));
    EXPECT_EQ(result.exitStatus, 1);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    EXPECT_EQ(out["module"], kFormatModule);
    EXPECT_EQ(out["startup"], nlohmann::json::parse(R"({"result": 0, "resultText": "0", "events": []})"));
    EXPECT_EQ(out["files"][0], nlohmann::json::parse(R"({
        "found": true, "failed": false,
        "checks": [{"format": "Test Swatch Text Reader", "result": 0, "resultText": "0"}],
        "go": {"format": "Test Swatch Text Reader", "placed": false, "document": "ask.tsw",
               "result": 0, "resultText": "0"},
        "events": [{"type": "question", "text": "Go on?", "key": "", "answer": true}],
        "file": ")" + file + R"("})"));
    EXPECT_EQ(out["files"][1]["go"], nullptr);
    EXPECT_EQ(out["files"][1]["checks"][0]["resultText"], "FMT?");
    EXPECT_EQ(out["documents"], nlohmann::json::parse(R"([{"name": "ask.tsw", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Shadow", "kind": "gray", "values": [0.8]}]}]}])"));
    EXPECT_EQ(out["shutdown"]["result"], 0);
    EXPECT_EQ(out["failedFiles"], 1);
}

TEST_F(ImportCommandTest, ARefusedModuleFails) {
    const std::string file = Write("a.tsw", "rgb 1 0 0 Red\n");
    const std::string bad = std::string(TEST_MODULES_DIR) + "/BadPropertyListModule.so";
    const auto result = RunKelvraHost({"import", "--module", bad, file});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("refused: " + bad + ": property list:"));
}

TEST_F(ImportCommandTest, HelpNamesTheOptionsAndAFileIsRequired) {
    const auto help = RunKelvraHost({"import", "--help"});
    EXPECT_EQ(help.exitStatus, 0);
    for (const char* option : {"FILE", "--module", "--place", "--answer", "--json", "NO_COLOR"})
        EXPECT_THAT(help.output, HasSubstr(option)) << option;
    EXPECT_NE(RunKelvraHost({"import", "--module", kFormatModule}).exitStatus, 0);
}

#ifdef TINTORA_MODULE
TEST_F(ImportCommandTest, TheModuleOfTheSameBuildIsTheDefault) {
    const auto result = RunKelvraHost({"import", Write("notes.txt", "")});
    EXPECT_THAT(result.output, HasSubstr("module: " + std::filesystem::canonical(TINTORA_MODULE).string() + "\n"));
}
#endif

}  // namespace
