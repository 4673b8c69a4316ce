// kelvra-host libraries on the real module: the numbered list another
// plug-in reads through "KV Tintora Suite" from a home the test builds,
// libraries opened by number and by file, and what a script reads.
#include "CommandRunner.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using kelvra::testing::RunKelvraHost;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

class LibrariesListTest : public ::testing::Test {
protected:
    void SetUp() override {
        // Children are ordered by their path's code units: "Sub" before "b…".
        Library("home/user-88/blues.ocb");
        Library("home/user-88/Sub/greens.ocb");
        Library("home/user-89/reds.ocb");
        Library("home/application-33/app.ocb");
        Library("elsewhere/far.ocb");
    }
    std::string Library(const std::string& relative) const {
        fs::create_directories((folder.Path() / relative).parent_path());
        return folder.Write(relative, testsupport::BuildColorBook(testsupport::SampleColorBook()));
    }
    std::string In(const std::string& name) const { return (folder.Path() / name).string(); }
    std::vector<std::string> Libraries(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"libraries", "--module", TINTORA_MODULE, "--home", In("home")});
        return arguments;
    }

    testsupport::TemporaryFolder folder;
};

TEST_F(LibrariesListTest, TheFoldersAreListedInOrderAfterTheOwnLibraryThenTheRememberedFiles) {
    const auto result = RunKelvraHost(Libraries({"--remember", In("elsewhere/far.ocb")}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("\nlibraries: CountLibraries -> 0: 6 (the own library and 5 more)\n"
                                         "  0  (the module's own library)\n"
                                         "  1  app\n"
                                         "  2  greens\n"
                                         "  3  blues\n"
                                         "  4  reds\n"
                                         "  5  far\n"
                                         "shut-down:\n"
                                         "  ZP Interface / Shutdown -> 0\n"));
}

TEST_F(LibrariesListTest, OpeningByNumberShowsTheLibrarysSwatchesAndMarksItOpen) {
    const auto result = RunKelvraHost(Libraries({"--open", "3", "--color", "never"}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("open library 3:\n"
                                         "  OpenLibrary -> 0\n"
                                         "library document 1 \"blues.ocb\":\n"
                                         "  default group:\n"
                                         "    #FF0000 \"P Red 032 C\": spot rgb 255 0 0, book 3002\n"));
    EXPECT_THAT(result.output, HasSubstr("  3 swatches in 1 group, 3 custom colours\n"));
    EXPECT_THAT(result.output, HasSubstr("  2  greens\n  3  blues  (open)\n  4  reds\n"));
}

TEST_F(LibrariesListTest, AFileOutsideTheFoldersIsOpenedAndListedAfterThem) {
    const auto result = RunKelvraHost(Libraries({"--open-file", In("elsewhere/far.ocb")}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("open library file " + In("elsewhere/far.ocb") +
                                         ":\n  OpenLibraryFile -> 0\nlibrary document 1 \"far.ocb\":\n"));
    EXPECT_THAT(result.output, HasSubstr("  4  reds\n  5  far  (open)\nshut-down:\n"));
    // The module keeps it for this run only: the host did not remember it.
    EXPECT_THAT(RunKelvraHost(Libraries({})).output, HasSubstr("  4  reds\nshut-down:\n"));
}

TEST_F(LibrariesListTest, ADeletedFileLeavesTheListAndComesBackWhenPutBack) {
    EXPECT_THAT(RunKelvraHost(Libraries({})).output, HasSubstr("  2  greens\n  3  blues\n  4  reds\n"));
    fs::remove(In("home/user-88/blues.ocb"));
    EXPECT_THAT(RunKelvraHost(Libraries({})).output,
                HasSubstr("CountLibraries -> 0: 4 (the own library and 3 more)\n"
                          "  0  (the module's own library)\n  1  app\n  2  greens\n  3  reds\n"));
    Library("home/user-88/blues.ocb");
    EXPECT_THAT(RunKelvraHost(Libraries({})).output, HasSubstr("  2  greens\n  3  blues\n  4  reds\n"));
}

TEST_F(LibrariesListTest, ANumberOutsideTheListIsRefusedAndTheCommandFails) {
    const auto result = RunKelvraHost(Libraries({"--open", "9"}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("open library 9:\n  OpenLibrary -> PARM\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("library document")));
    // The list is shown all the same.
    EXPECT_THAT(result.output, HasSubstr("  4  reds\nshut-down:\n"));
}

TEST_F(LibrariesListTest, NumberZeroOpensTheModulesOwnLibrary) {
    const auto result = RunKelvraHost(Libraries({"--open", "0"}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_THAT(result.output, HasSubstr("open library 0:\n  OpenLibrary -> 0\nlibrary document 1 \"Untitled library\":\n"
                                         "  default group:\n    (no swatches)\n"));
    EXPECT_THAT(result.output, HasSubstr("  0  (the module's own library)  (open)\n"));
}

TEST_F(LibrariesListTest, JsonGivesTheListForScripts) {
    const auto result = RunKelvraHost(Libraries({"--open", "1", "--json"}));
    EXPECT_EQ(result.exitStatus, 0);
    const json out = json::parse(result.output);
    EXPECT_EQ(out["count"], 5);
    EXPECT_EQ(out["ownLibraryOpen"], false);
    ASSERT_EQ(out["libraries"].size(), 4u);
    const std::vector<std::pair<std::string, bool>> expected = {
        {"app", true}, {"greens", false}, {"blues", false}, {"reds", false}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(out["libraries"][i]["index"], i + 1);
        EXPECT_EQ(out["libraries"][i]["name"], expected[i].first);
        EXPECT_EQ(out["libraries"][i]["open"], expected[i].second);
    }
    ASSERT_EQ(out["opened"].size(), 1u);
    EXPECT_EQ(out["opened"][0]["index"], 1);
    EXPECT_EQ(out["opened"][0]["function"], "OpenLibrary");
    EXPECT_EQ(out["opened"][0]["call"]["resultText"], "0");
    EXPECT_EQ(out["opened"][0]["document"]["name"], "app.ocb");
    EXPECT_EQ(out["startup"]["resultText"], "0");
    EXPECT_EQ(out["succeeded"], true);
}

TEST_F(LibrariesListTest, AnOpenedLibrarysSwatchesHaveChipsWhenColourIsWanted) {
    const auto result = RunKelvraHost(Libraries({"--open", "1", "--color", "always"}),
                                      kelvra::testing::WithEnvironment({{"COLORTERM", "truecolor"}}));
    EXPECT_THAT(result.output, HasSubstr("    \x1b[48;2;255;0;0m  \x1b[0m #FF0000 \"P Red 032 C\""));
}

}  // namespace
