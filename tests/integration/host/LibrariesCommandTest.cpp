// kelvra-host libraries, and the host folder and preference options of the
// commands that start a module, as a user and a script call them.
#include "CommandRunner.h"

#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using kelvra::testing::RunKelvraHost;
using nlohmann::json;
using ::testing::HasSubstr;

const std::string kFormatModule = std::string(TEST_MODULES_DIR) + "/FormatModule.so";
const std::string kWellBehavedModule = std::string(TEST_MODULES_DIR) + "/WellBehavedModule.so";

class LibrariesCommandTest : public ::testing::Test {
protected:
    std::string In(const std::string& name) const { return (folder.Path() / name).string(); }
    std::string Write(const std::string& name, const std::string& text) const { return folder.Write(name, text); }
    std::string Contents(const std::string& file) const {
        std::ifstream in(file);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    testsupport::TemporaryFolder folder;
};

TEST_F(LibrariesCommandTest, RemembersEachFileAndShowsTheFoldersAndTheList) {
    const std::string first = Write("Brights.ose", "");
    const std::string second = Write("Muted.ocb", "");
    fs::create_directories(In("home/user-88"));
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--remember", first, "--remember", second});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const std::string hostSide = "home: " + In("home") +
                                 "\n"
                                 "preferences: " + In("home/preferences.json") +
                                 "\n"
                                 "remembered " + first +
                                 " as KVSwatchLibPersistentPrefix0\n"
                                 "remembered " + second +
                                 " as KVSwatchLibPersistentPrefix1\n"
                                 "folders:\n"
                                 "  33: " + In("home/application-33") +
                                 " (missing)\n"
                                 "  72: " + In("home/user-88/excluded-72") +
                                 " (missing)\n"
                                 "  73: " + In("home/application-73") +
                                 " (missing)\n"
                                 "  88: " + In("home/user-88") +
                                 "\n"
                                 "  89: " + In("home/user-89") +
                                 " (missing)\n"
                                 "remembered libraries: 2\n"
                                 "  KVSwatchLibPersistentPrefix0: " + first +
                                 "\n"
                                 "  KVSwatchLibPersistentPrefix1: " + second + "\n";
    EXPECT_EQ(result.output.substr(0, hostSide.size()), hostSide);
    // The module, started after them, lists both under the remembered files.
    EXPECT_THAT(result.output, HasSubstr("\nlibraries: CountLibraries -> 0: 3 (the own library and 2 more)\n"
                                         "  0  (the module's own library)\n"
                                         "  1  Brights\n"
                                         "  2  Muted\n"
                                         "shut-down:\n"));
    EXPECT_EQ(json::parse(Contents(In("home/preferences.json"))),
              json({{"KVSwatchLibPersistentPrefix_count", 2},
                    {"KVSwatchLibPersistentPrefix0", first},
                    {"KVSwatchLibPersistentPrefix1", second}}));
}

TEST_F(LibrariesCommandTest, ALaterRunAppendsAndShowsAFileThatWentAsMissing) {
    const std::string first = Write("a.ose", "");
    const std::string second = Write("b.ose", "");
    ASSERT_EQ(RunKelvraHost({"libraries", "--home", In("home"), "--remember", first}).exitStatus, 0);
    fs::remove(first);
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--remember", second});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("remembered " + second + " as KVSwatchLibPersistentPrefix1\n"));
    EXPECT_THAT(result.output, HasSubstr("remembered libraries: 2\n"
                                         "  KVSwatchLibPersistentPrefix0: " + first + " (missing)\n"
                                         "  KVSwatchLibPersistentPrefix1: " + second + "\n"));
}

// Joined to the folder the command runs in (the test's own), and not
// simplified: ".." after a linked folder is not that folder's parent.
TEST_F(LibrariesCommandTest, ARelativeFileIsRememberedByItsAbsolutePath) {
    Write("c.ose", "");
    const std::string relative = fs::relative(In("c.ose")).string();
    ASSERT_FALSE(fs::path(relative).is_absolute());
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--remember", relative, "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    const json out = json::parse(result.output);
    const std::string expected = (fs::current_path() / relative).string();
    EXPECT_EQ(out["remembered"], json::parse(R"([{"key": "KVSwatchLibPersistentPrefix0", "path": ")" + expected +
                                             R"("}])"));
    EXPECT_EQ(out["rememberedList"]["entries"][0]["exists"], true);
}

TEST_F(LibrariesCommandTest, JsonGivesTheSameForScripts) {
    const std::string file = Write("a.ose", "");
    Write("prefs.json", R"({"KVSwatchLibPersistentPrefix_count": 2, "KVSwatchLibPersistentPrefix0": ")" + file +
                            R"(", "KVSwatchLibPersistentPrefix1": 5})");
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--prefs", In("prefs.json"), "--folder",
                                       "33=" + In("apps"), "--folder", "7=" + In("seven"), "--json"});
    EXPECT_EQ(result.exitStatus, 1);  // an entry the module could not read
    const json out = json::parse(result.output);
    EXPECT_EQ(out["home"], In("home"));
    EXPECT_EQ(out["preferences"], In("prefs.json"));
    EXPECT_EQ(out["remembered"], json::array());
    EXPECT_EQ(out["notRemembered"], nullptr);
    EXPECT_EQ(out["folders"][0], json({{"type", 7}, {"directory", In("seven")}, {"exists", false}}));
    EXPECT_EQ(out["folders"][1], json({{"type", 33}, {"directory", In("apps")}, {"exists", false}}));
    EXPECT_EQ(out["folders"].size(), 6u);
    EXPECT_EQ(out["rememberedList"], json::parse(R"({"countKey": "KVSwatchLibPersistentPrefix_count",
        "result": 0, "resultText": "0", "count": 2, "entries": [
          {"key": "KVSwatchLibPersistentPrefix0", "result": 0, "resultText": "0", "path": ")" + file +
                                            R"(", "exists": true},
          {"key": "KVSwatchLibPersistentPrefix1", "result": 1415139391, "resultText": "TYP?", "path": null,
           "exists": false}]})"));
    EXPECT_EQ(out["succeeded"], false);
}

TEST_F(LibrariesCommandTest, AnEntryThatCannotBeReadIsShownWithItsCodeAndFails) {
    Write("prefs.json", R"({"KVSwatchLibPersistentPrefix_count": 2, "KVSwatchLibPersistentPrefix0": 5})");
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--prefs", In("prefs.json")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("remembered libraries: 2\n"
                                         "  KVSwatchLibPersistentPrefix0: -> TYP?\n"
                                         "  KVSwatchLibPersistentPrefix1: -> NAM?\n"));
}

TEST_F(LibrariesCommandTest, NoListIsNoLibraries) {
    const auto result = RunKelvraHost({"libraries", "--home", In("home")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("remembered libraries: (none)\n"));
    EXPECT_THAT(result.output, HasSubstr("libraries: CountLibraries -> 0: 1 (the own library and 0 more)\n"
                                         "  0  (the module's own library)\n"
                                         "shut-down:\n"));
    // Nothing is written; only the user folders the module asked the host to make.
    EXPECT_FALSE(fs::exists(In("home/preferences.json")));
    EXPECT_TRUE(fs::is_directory(In("home/user-88")));
    EXPECT_TRUE(fs::is_directory(In("home/user-89")));
}

TEST_F(LibrariesCommandTest, APreferencesFileThatIsNoJsonObjectIsLeftAloneAndFails) {
    const std::string file = Write("a.ose", "");
    const std::string prefs = Write("prefs.json", "{not json");
    const auto result = RunKelvraHost({"libraries", "--home", In("home"), "--prefs", prefs, "--remember", file});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("not remembered: " + prefs + ": not a JSON object, so nothing was remembered\n"));
    EXPECT_THAT(result.output, HasSubstr("remembered libraries: KVSwatchLibPersistentPrefix_count -> PREF\n"));
    EXPECT_EQ(Contents(prefs), "{not json");
}

TEST_F(LibrariesCommandTest, TheDefaultHomeIsUnderTheUsersDataDirectory) {
    const auto fromXdg = RunKelvraHost({"libraries", "--json"},
                                       kelvra::testing::WithEnvironment({{"XDG_DATA_HOME", In("data")}, {"HOME", In("user")}}));
    EXPECT_EQ(json::parse(fromXdg.output)["home"], In("data/kelvra-host"));
    EXPECT_EQ(json::parse(fromXdg.output)["preferences"], In("data/kelvra-host/preferences.json"));
    // A relative XDG_DATA_HOME is no data directory.
    for (const std::optional<std::string>& data : {std::optional<std::string>(), std::optional<std::string>("rel")}) {
        const auto fromHome = RunKelvraHost(
            {"libraries", "--json"}, kelvra::testing::WithEnvironment({{"XDG_DATA_HOME", data}, {"HOME", In("user")}}));
        EXPECT_EQ(json::parse(fromHome.output)["home"], In("user/.local/share/kelvra-host"));
    }
}

TEST_F(LibrariesCommandTest, WrongOptionsAreRefusedWithAReasonAndStatusTwo) {
    const std::string file = Write("a.ose", "");
    fs::create_directories(In("dir"));
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"--folder", "abc=" + In("x")}, "--folder: expected TYPE=DIR with TYPE a folder type number, not \"abc="},
        {{"--folder", In("x")}, "--folder: expected TYPE=DIR"},
        {{"--folder", "33="}, "--folder: expected TYPE=DIR"},
        {{"--folder", "99999999999=" + In("x")}, "--folder: folder type 99999999999 is out of range"},
        {{"--folder", "33=" + file}, "--folder: " + file + " is not a directory"},
        {{"--remember", In("gone.ose")}, "--remember: File does not exist: " + In("gone.ose")},
        {{"--remember", In("dir")}, "--remember: File is actually a directory: " + In("dir")},
        {{"--home", file}, "--home: " + file + " is not a directory"},
        {{"--prefs", In("dir")}, "--prefs: " + In("dir") + " is a directory"},
    };
    for (const auto& [options, message] : cases) {
        std::vector<std::string> arguments = {"libraries", "--home", In("home")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto result = RunKelvraHost(arguments);
        EXPECT_EQ(result.exitStatus, 2) << message;
        EXPECT_THAT(result.errors, HasSubstr(message));
        EXPECT_EQ(result.output, "") << message;
    }
    EXPECT_FALSE(fs::exists(In("home")));
}

TEST_F(LibrariesCommandTest, HelpTellsTheExitStatuses) {
    const auto result = RunKelvraHost({"libraries", "--help"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("Exit status: 0 when every FILE was remembered"));
    EXPECT_THAT(result.output, HasSubstr("2 when the command line was wrong"));
    EXPECT_THAT(result.output, HasSubstr("--folder TYPE=DIR"));
}

TEST_F(LibrariesCommandTest, RunAndImportTakeTheHostOptionsToo) {
    fs::create_directories(In("apps"));
    const std::vector<std::string> options = {"--home", In("home"), "--folder", "33=" + In("apps"), "--prefs",
                                              In("p.json")};
    std::vector<std::string> run = {"run", kWellBehavedModule};
    run.insert(run.end(), options.begin(), options.end());
    EXPECT_EQ(RunKelvraHost(run).exitStatus, 0);
    std::vector<std::string> import = {"import", "--module", kFormatModule, Write("a.tsw", "rgb 1 0 0 Red\n")};
    import.insert(import.end(), options.begin(), options.end());
    EXPECT_EQ(RunKelvraHost(import).exitStatus, 0);
    const auto wrong = RunKelvraHost({"run", kWellBehavedModule, "--folder", "x=y"});
    EXPECT_EQ(wrong.exitStatus, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("--folder: expected TYPE=DIR"));
    EXPECT_EQ(RunKelvraHost({"import", "--module", kFormatModule, "--folder", "33=" + In("apps"), In("a.tsw")})
                  .exitStatus,
              0);
}

// The test module opens a library document while it imports (its "open"
// line): import shows that document apart from the user's.
TEST_F(LibrariesCommandTest, ImportShowsTheLibraryDocumentsTheModuleHadOpened) {
    const std::string library = Write("library.tsw", "gray 0.5 Mid\n");
    const std::string file = Write("outer.tsw", "open " + library + "\nrgb 1 0 0 Red\n");
    const auto result = RunKelvraHost({"import", "--module", kFormatModule, "--home", In("home"), file});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("  default group:\n"
                                         "    #FF0000 \"Red\": rgb 255 0 0\n"
                                         "  1 swatch in 1 group, 0 custom colours\n"
                                         "library document 1 \"library.tsw\":\n"
                                         "  default group:\n"
                                         "    #808080 \"Mid\": gray 50%\n"
                                         "  1 swatch in 1 group, 0 custom colours\n"
                                         "1 file: 1 imported, 0 not imported;"));
    const json out = json::parse(
        RunKelvraHost({"import", "--module", kFormatModule, "--home", In("home"), "--json", file}).output);
    ASSERT_EQ(out["documents"].size(), 1u);
    EXPECT_EQ(out["documents"][0]["name"], "outer.tsw");
    ASSERT_EQ(out["libraryDocuments"].size(), 1u);
    EXPECT_EQ(out["libraryDocuments"][0]["name"], "library.tsw");
}

}  // namespace
