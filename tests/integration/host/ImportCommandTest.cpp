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
using kelvra::testing::WithEnvironment;
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

// The report going to a full device: the import may have worked, but what
// it printed is lost, and that must not pass for a success.
TEST_F(ImportCommandTest, AReportThatCannotBeWrittenIsAFailureSaidOnStandardError) {
    const std::string file = Write("colours.tsw", "rgb 1 0 0 Red\n");
    for (const char* json : {"", " --json"}) {
        const auto result = testsupport::RunProgram(
            {"sh", "-c", "\"$0\" import --module \"$1\"" + std::string(json) + " \"$2\" >/dev/full", KELVRA_HOST,
             kFormatModule, file});
        EXPECT_EQ(result.exitStatus, 2) << json;
        EXPECT_THAT(result.errors, testing::HasSubstr("kelvra-host: cannot write the output")) << json;
    }
}

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
    // Leaf is (0.5, 1, 0); Gold (1, 0.8, 0) a quarter of the way to white.
    EXPECT_EQ(result.output, "module: " + kFormatModule +
                                 "\n"
                                 "  ZP Interface / Startup -> 0\n"
                                 "file: " + file +
                                 "\n"
                                 "  KV Check \"Test Swatch Text Reader\" -> 0\n"
                                 "  KV Go \"Test Swatch Text Reader\", open as document 1 \"colours.tsw\" -> 0\n"
                                 "  received: 1 group, 5 swatches, 1 custom colour made, 0 redefined\n"
                                 "shut-down:\n"
                                 "  ZP Interface / Shutdown -> 0\n"
                                 "document 1 \"colours.tsw\" (from " + file + "):\n"
                                 "  default group:\n"
                                 "    #CCCCCC \"Paper\": gray 20%\n"
                                 "    #FF0000 \"Red\": rgb 255 0 0\n"
                                 "  group \"Greens\":\n"
                                 "    #80FF00 \"Leaf\": cmyk 50% 0% 100% 0%\n"
                                 "    #FFD940 \"Gold\": spot cmyk 0% 20% 100% 0%, tint 25%, book 3000\n"
                                 "    #000000 \"Black\": rgb 0 0 0\n"
                                 "  5 swatches in 2 groups, 1 custom colour\n"
                                 "1 file: 1 imported, 0 not imported; 1 document: 5 swatches in 2 groups, "
                                 "1 custom colour\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(ImportCommandTest, EachFileGetsItsOwnDocumentAndDocumentsOfOneNameAreToldApart) {
    const std::string first = Write("a.tsw", "rgb 1 0 0 Red\n");
    std::filesystem::create_directory(Missing("other"));
    const std::string second = Write("other/a.tsw", "rgb 0 0 1 Blue\n");
    const auto result = RunKelvraHost(Import({first, second, "--json"}));
    EXPECT_EQ(result.exitStatus, 0);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    ASSERT_EQ(out["documents"].size(), 2u);
    EXPECT_EQ(out["documents"][0]["name"], "a.tsw");
    EXPECT_EQ(out["documents"][0]["groups"][0]["swatches"][0]["name"], "Red");
    EXPECT_EQ(out["documents"][1]["name"], "a.tsw");
    EXPECT_EQ(out["documents"][1]["groups"][0]["swatches"][0]["name"], "Blue");
    EXPECT_EQ(out["files"][1]["go"]["document"], "a.tsw");
    EXPECT_EQ(out["files"][1]["go"]["documentIndex"], 1);
    EXPECT_EQ(out["files"][1]["go"]["placed"], false);
    const auto text = RunKelvraHost(Import({first, second}));
    EXPECT_THAT(text.output, HasSubstr("document 1 \"a.tsw\" (from " + first + "):\n"));
    EXPECT_THAT(text.output, HasSubstr("document 2 \"a.tsw\" (from " + second + "):\n"));
    EXPECT_THAT(text.output, HasSubstr("open as document 2 \"a.tsw\" -> 0\n"));
}

TEST_F(ImportCommandTest, PlaceReadsEveryFileIntoOneDocumentAndSaysWhatItRedefined) {
    const std::string first = Write("a.tsw", "spot 0 0 0 1 0 7 Black\nrgb 1 0 0 Red\n");
    const std::string second = Write("b.tsw", "spot 0 0 0 0.5 0.5 8 Black\n");
    const auto result = RunKelvraHost(Import({"--place", first, second}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Test Swatch Text Reader\", placed into document 1 \"Untitled\" -> 0\n"
                          "  received: 0 groups, 2 swatches, 1 custom colour made, 0 redefined\n"
                          "file: " + second + "\n"));
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Test Swatch Text Reader\", placed into document 1 \"Untitled\" -> 0\n"
                          "  redefined: custom colour \"Black\" in \"Untitled\" was spot cmyk 0% 0% 0% 100% #000000, "
                          "now spot cmyk 0% 0% 0% 50% #808080\n"
                          "  received: 0 groups, 1 swatch, 0 custom colours made, 1 redefined\n"));
    // The second file redefined the custom colour the first made: both
    // swatches show its new definition.
    EXPECT_THAT(result.output,
                HasSubstr("document 1 \"Untitled\":\n"
                          "  default group:\n"
                          "    #808080 \"Black\": spot cmyk 0% 0% 0% 50%, book 7\n"
                          "    #FF0000 \"Red\": rgb 255 0 0\n"
                          "    #BFBFBF \"Black\": spot cmyk 0% 0% 0% 50%, tint 50%, book 7\n"
                          "  3 swatches in 1 group, 1 custom colour\n"
                          "2 files: 2 imported, 0 not imported; 1 document: 3 swatches in 1 group, "
                          "1 custom colour\n"));
    EXPECT_EQ(kelvra::testing::LinesStartingWith(result.output, "document ").size(), 1u);

    const nlohmann::json out = nlohmann::json::parse(RunKelvraHost(Import({"--place", "--json", first, second})).output);
    EXPECT_EQ(out["files"][0]["events"], nlohmann::json::array());
    EXPECT_EQ(out["files"][1]["events"], nlohmann::json::parse(R"([{
        "type": "custom-color-redefined", "document": "Untitled", "customColor": "Black",
        "old": {"kind": "cmyk", "values": [0, 0, 0, 1], "flags": 1},
        "new": {"kind": "cmyk", "values": [0, 0, 0, 0.5], "flags": 1}}])"));
    EXPECT_EQ(out["files"][1]["received"], nlohmann::json::parse(R"(
        {"groups": 0, "swatches": 1, "customColorsMade": 0, "customColorsRedefined": 1})"));
}

TEST_F(ImportCommandTest, SwatchesSharingAColourAndASwatchWithoutANameAreShownUnderTheirFile) {
    const std::string file = Write("odd.tsw",
                                   "spot 0 0 0 1 0 0 Untitled\n"
                                   "spot 1 0 0 0 0 0 Untitled\n"
                                   "group Brand\n"
                                   "rgb 0 1 0 \n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("open as document 1 \"odd.tsw\" -> 0\n"
                          "  empty name: swatch 1 of group \"Brand\" in \"odd.tsw\"\n"
                          "  shared: 2 swatches show custom colour \"Untitled\" in \"odd.tsw\", given 2 definitions; "
                          "all show the last\n"
                          "  received: 1 group, 3 swatches, 1 custom colour made, 0 redefined\n"));
    EXPECT_THAT(result.output, HasSubstr("    #00FF00 \"\": rgb 0 255 0\n"));
}

TEST_F(ImportCommandTest, AFileNoFormatAcceptsOrThatIsMissingOrADirectoryIsNotImported) {
    const std::string text = Write("notes.txt", "rgb 1 0 0 Red\n");
    const std::string good = Write("good.tsw", "rgb 1 0 0 Red\n");
    std::filesystem::create_directory(Missing("folder.tsw"));
    const auto result = RunKelvraHost(Import({text, Missing("gone.tsw"), Missing("folder.tsw"), good}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("file: " + text +
                                         "\n"
                                         "  KV Check \"Test Swatch Text Reader\" -> FMT?\n"
                                         "  not imported: no format accepts this file\n"
                                         "file: " + Missing("gone.tsw") +
                                         "\n"
                                         "  not imported: no such file\n"
                                         "file: " + Missing("folder.tsw") +
                                         "\n"
                                         "  not imported: a directory, not a file\n"));
    EXPECT_THAT(result.output, HasSubstr("4 files: 1 imported, 3 not imported; 1 document: "));
    // No document for a file that was not read.
    EXPECT_EQ(kelvra::testing::LinesStartingWith(result.output, "document ").size(), 1u);
}

TEST_F(ImportCommandTest, AFileTheModuleTookButReadNothingFromIsNotImported) {
    const std::string empty = Write("empty.tsw", "");
    const std::string blank = Write("blank.tsw", "\n\n");
    const auto result = RunKelvraHost(Import({empty, blank}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Test Swatch Text Reader\", open as document 1 \"empty.tsw\" -> 0\n"
                          "  received: 0 groups, 0 swatches, 0 custom colours made, 0 redefined\n"
                          "  not imported: \"KV Go\" answered 0 but the document received nothing (the file is "
                          "empty)\n"));
    EXPECT_THAT(result.output,
                HasSubstr("  not imported: \"KV Go\" answered 0 but the document received nothing\n"));
    EXPECT_THAT(result.output, HasSubstr("2 files: 0 imported, 2 not imported; "));
    const nlohmann::json out = nlohmann::json::parse(RunKelvraHost(Import({"--json", empty})).output);
    EXPECT_EQ(out["files"][0]["status"], "nothing-received");
    EXPECT_EQ(out["files"][0]["failed"], true);
    EXPECT_EQ(out["failedFiles"], 1);
}

TEST_F(ImportCommandTest, AFailedGoFailsTheRunAndKeepsWhatWasReadBefore) {
    const std::string file = Write("broken.tsw", "rgb 1 0 0 Red\nalert Something broke.\nfail OOPS\nrgb 0 1 0 Green\n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  KV Go \"Test Swatch Text Reader\", open as document 1 \"broken.tsw\" -> OOPS\n"
                                         "  alert: Something broke.\n"
                                         "  received: 0 groups, 1 swatch, 0 custom colours made, 0 redefined\n"
                                         "  not imported: \"KV Go\" answered OOPS\n"));
    EXPECT_THAT(result.output, HasSubstr("  default group:\n    #FF0000 \"Red\": rgb 255 0 0\n"
                                         "  1 swatch in 1 group, 0 custom colours\n"
                                         "1 file: 0 imported, 1 not imported; "));
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
    EXPECT_THAT(yes.output, HasSubstr("    #00FF00 \"Green\": rgb 0 255 0\n"));
    const auto maybe = RunKelvraHost(Import({"--answer", "maybe", file}));
    EXPECT_EQ(maybe.exitStatus, 2);
    EXPECT_EQ(maybe.output, "");
    EXPECT_EQ(maybe.errors, "kelvra-host import: --answer: maybe not in {yes,no}\n"
                            "Run \"kelvra-host import --help\" for help.\n");
}

TEST_F(ImportCommandTest, WithoutAnAnswerAQuestionIsYesWhenNobodyCanBeAsked) {
    const std::string file = Write("ask.tsw", "ask Import?\nrgb 0 1 0 Green\n");
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("  question: Import? -> yes\n"));
}

TEST_F(ImportCommandTest, OnATerminalTheUserIsAskedTheQuestionAsTheHostShowsIt) {
    const std::string file = Write("ask.tsw", "ask Import ^Qask.tsw^Q?\nrgb 0 1 0 Green\n");
    const auto no = RunKelvraHostOnTerminal(Import({file}), "maybe\nn\n", WithEnvironment({{"NO_COLOR", "1"}}));
    EXPECT_EQ(no.exitStatus, 1);
    EXPECT_THAT(no.output, HasSubstr("  question: Import \u201Cask.tsw\u201D? -> no\n"));
    EXPECT_EQ(no.errors, "Import \u201Cask.tsw\u201D? [Y/n] Import \u201Cask.tsw\u201D? [Y/n] ");
    const auto byDefault = RunKelvraHostOnTerminal(Import({file}), "\n", WithEnvironment({{"NO_COLOR", "1"}}));
    EXPECT_EQ(byDefault.exitStatus, 0);
    EXPECT_THAT(byDefault.output, HasSubstr("  question: Import \u201Cask.tsw\u201D? -> yes\n"));
}

class ImportColorTest : public ImportCommandTest {
protected:
    std::string file = Write("red.tsw", "rgb 1 0 0 Red\n");
    const std::string trueColorChip = "    \x1b[48;2;255;0;0m  \x1b[0m #FF0000 \"Red\": rgb 255 0 0\n";
    const std::string colors256Chip = "    \x1b[48;5;196m  \x1b[0m #FF0000 \"Red\": rgb 255 0 0\n";
    const std::string plain = "    #FF0000 \"Red\": rgb 255 0 0\n";
};

TEST_F(ImportColorTest, ATerminalGets24BitChipsWhenItSaysItShowsThemElse256Colours) {
    const auto trueColor = RunKelvraHostOnTerminal(
        Import({file}), "",
        WithEnvironment({{"COLORTERM", "truecolor"}, {"TERM", "xterm-256color"}, {"NO_COLOR", std::nullopt}}));
    EXPECT_THAT(trueColor.output, HasSubstr(trueColorChip));
    const auto colors256 = RunKelvraHostOnTerminal(
        Import({file}), "",
        WithEnvironment({{"COLORTERM", std::nullopt}, {"TERM", "screen"}, {"NO_COLOR", std::nullopt}}));
    EXPECT_THAT(colors256.output, HasSubstr(colors256Chip));
}

TEST_F(ImportColorTest, NoColorOrColorNeverGiveNoEscapeSequences) {
    const auto noColor = RunKelvraHostOnTerminal(
        Import({file}), "", WithEnvironment({{"COLORTERM", "truecolor"}, {"TERM", "xterm"}, {"NO_COLOR", "1"}}));
    EXPECT_THAT(noColor.output, HasSubstr(plain));
    EXPECT_THAT(noColor.output, Not(HasSubstr("\x1b")));
    const auto never = RunKelvraHostOnTerminal(
        Import({"--color", "never", file}), "",
        WithEnvironment({{"COLORTERM", "truecolor"}, {"TERM", "xterm"}, {"NO_COLOR", std::nullopt}}));
    EXPECT_THAT(never.output, HasSubstr(plain));
    EXPECT_THAT(never.output, Not(HasSubstr("\x1b")));
}

TEST_F(ImportColorTest, APipeGetsNoChipsUnlessColorAlwaysAsksForThem) {
    const auto piped = RunKelvraHost(Import({file}), WithEnvironment({{"COLORTERM", "truecolor"}}));
    EXPECT_THAT(piped.output, HasSubstr(plain));
    EXPECT_THAT(piped.output, Not(HasSubstr("\x1b")));
    const auto always = RunKelvraHost(Import({"--color", "always", file}),
                                      WithEnvironment({{"COLORTERM", "truecolor"}, {"NO_COLOR", "1"}}));
    EXPECT_THAT(always.output, HasSubstr(trueColorChip));
    const auto always256 =
        RunKelvraHost(Import({"--color", "always", file}), WithEnvironment({{"COLORTERM", std::nullopt}}));
    EXPECT_THAT(always256.output, HasSubstr(colors256Chip));
    const auto wrong = RunKelvraHost(Import({"--color", "sometimes", file}));
    EXPECT_EQ(wrong.exitStatus, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("--color: sometimes not in {auto,always,never}"));
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
        "found": true, "failed": false, "status": "imported", "reason": null,
        "checks": [{"format": "Test Swatch Text Reader", "result": 0, "resultText": "0"}],
        "go": {"format": "Test Swatch Text Reader", "placed": false, "document": "ask.tsw", "documentIndex": 0,
               "result": 0, "resultText": "0"},
        "received": {"groups": 0, "swatches": 1, "customColorsMade": 0, "customColorsRedefined": 0},
        "events": [{"type": "question", "text": "Go on?", "key": "", "answer": true}],
        "file": ")" + file + R"("})"));
    EXPECT_EQ(out["files"][1]["go"], nullptr);
    EXPECT_EQ(out["files"][1]["status"], "no-format");
    EXPECT_EQ(out["files"][1]["reason"], "no format accepts this file");
    EXPECT_EQ(out["files"][1]["checks"][0]["resultText"], "FMT?");
    EXPECT_EQ(out["documents"], nlohmann::json::parse(R"([{"name": "ask.tsw", "customColors": [],
        "groups": [{"name": "", "swatches": [{"name": "Shadow", "kind": "gray", "values": [0.8]}]}]}])"));
    EXPECT_EQ(out["shutdown"]["result"], 0);
    EXPECT_EQ(out["failedFiles"], 1);
    EXPECT_EQ(out["importedFiles"], 1);
}

TEST_F(ImportCommandTest, ARefusedModuleFails) {
    const std::string file = Write("a.tsw", "rgb 1 0 0 Red\n");
    const std::string bad = std::string(TEST_MODULES_DIR) + "/BadPropertyListModule.so";
    const auto result = RunKelvraHost({"import", "--module", bad, file});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("refused: " + bad + ": property list:"));
}

TEST_F(ImportCommandTest, HelpNamesTheOptionsAndTheExitStatusesAndAFileIsRequired) {
    const auto help = RunKelvraHost({"import", "--help"});
    EXPECT_EQ(help.exitStatus, 0);
    for (const char* option : {"FILE", "--module", "--place", "--answer", "--json", "--color", "NO_COLOR", "COLORTERM"})
        EXPECT_THAT(help.output, HasSubstr(option)) << option;
    EXPECT_THAT(help.output, HasSubstr("Exit status: 0 when the module started and every file was imported (and the "
                                       "sheet, if asked for, was written); 1 when "));
    EXPECT_THAT(help.output, HasSubstr("; 2 when the command line was wrong or the command could not run.\n"));
    const auto noFile = RunKelvraHost({"import", "--module", kFormatModule});
    EXPECT_EQ(noFile.exitStatus, 2);
    EXPECT_EQ(noFile.errors, "kelvra-host import: FILE is required\nRun \"kelvra-host import --help\" for help.\n");
}

#ifdef TINTORA_MODULE
TEST_F(ImportCommandTest, TheModuleOfTheSameBuildIsTheDefault) {
    const auto result = RunKelvraHost({"import", Write("notes.txt", "")});
    EXPECT_THAT(result.output, HasSubstr("module: " + std::filesystem::canonical(TINTORA_MODULE).string() + "\n"));
}
#endif

}  // namespace
