// kelvra-host session driven as a script drives it, through pipes, with the
// disk and the clock changing between commands.
#include "SessionProcess.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace {

namespace fs = std::filesystem;
using kelvra::testing::SessionProcess;
using nlohmann::json;
using ::testing::HasSubstr;

const std::string kReadError = "An error occurred when reading the color book 'bad.ocb'.";
const std::string kUnknownErrorDialog =
    "$$$/UIString/Str/CantErrorMsgDialog/UnknownCantErrorMessage";

class SessionTest : public ::testing::Test {
protected:
    std::string Library(const std::string& relative) const {
        fs::create_directories((folder.Path() / relative).parent_path());
        return folder.Write(relative, testsupport::BuildColorBook(testsupport::SampleColorBook()));
    }
    std::string In(const std::string& name) const { return (folder.Path() / name).string(); }
    std::vector<std::string> Options() const { return {"--module", TINTORA_MODULE, "--home", In("home")}; }

    // The texts of the events since the last "events", and the keys of the
    // dialogs among them.
    static std::vector<std::string> Shown(SessionProcess& session) {
        const json answer = session.Send({{"cmd", "events"}});
        std::vector<std::string> shown;
        for (const json& event : answer["events"]) {
            if (event.contains("text")) shown.push_back(event["text"]);
            if (event.contains("key") && event["key"] != "") shown.push_back(event["key"]);
        }
        return shown;
    }
    static void ExpectNothingHeld(SessionProcess& session) {
        const json counts = session.Send({{"cmd", "counts"}});
        EXPECT_EQ(counts["blocks"], 0) << counts;
        EXPECT_EQ(counts["strings"], 0) << counts;
        EXPECT_EQ(counts["filePaths"], 0) << counts;
        EXPECT_EQ(counts["dataFilters"], 0) << counts;
        EXPECT_EQ(counts["suitesHeld"], 0) << counts;
    }

    testsupport::TemporaryFolder folder;
};

bool ShowsDialog(const std::vector<std::string>& shown) {
    return std::any_of(shown.begin(), shown.end(),
                       [](const std::string& line) { return line.starts_with(kUnknownErrorDialog); });
}

TEST_F(SessionTest, TheSameErrorIsReportedOnceWithinFiveSecondsAndAgainAfter) {
    const std::string bad = folder.Write("bad.ocb", std::string("7KCB") + std::string(40, '\0'));
    SessionProcess session(Options());
    EXPECT_EQ(session.Send({{"cmd", "clock"}, {"set", 1000000}})["now"], 1000000);
    EXPECT_EQ(session.Send({{"cmd", "startup"}})["result"], 0);
    const json import = {{"cmd", "import"}, {"files", {bad}}};

    EXPECT_EQ(session.Send(import)["ok"], false);
    std::vector<std::string> shown = Shown(session);
    EXPECT_EQ(shown.front(), kReadError);
    EXPECT_TRUE(ShowsDialog(shown));

    session.Send({{"cmd", "clock"}, {"advance", 4}});
    session.Send(import);
    shown = Shown(session);
    EXPECT_EQ(shown, std::vector<std::string>{kReadError});  // "CANT" again within 5 s: not reported

    session.Send({{"cmd", "clock"}, {"advance", 1}});
    session.Send(import);
    shown = Shown(session);
    EXPECT_EQ(shown.front(), kReadError);
    EXPECT_TRUE(ShowsDialog(shown));
    EXPECT_EQ(session.Finish(), 0);
}

TEST_F(SessionTest, AFileDeletedBetweenTwoCountsLeavesTheListAndComesBack) {
    Library("home/user-88/blues.ocb");
    const std::string reds = Library("home/user-88/reds.ocb");
    SessionProcess session(Options());
    session.Send({{"cmd", "startup"}});
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 3);
    EXPECT_EQ(session.Send({{"cmd", "GetLibraryName"}, {"index", 2}})["name"], "reds");
    // The folder's time moves on as it does when a person deletes the file
    // (the file system's coarse clock could leave it equal to the scan's).
    const fs::path userFolder = In("home/user-88");
    const auto later = fs::file_time_type::clock::now() + std::chrono::minutes(1);
    fs::remove(reds);
    fs::last_write_time(userFolder, later);
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 2);
    const json gone = session.Send({{"cmd", "GetLibraryName"}, {"index", 2}});
    EXPECT_EQ(gone["ok"], false);
    EXPECT_EQ(gone["result"], "PARM");
    Library("home/user-88/reds.ocb");
    fs::last_write_time(userFolder, later + std::chrono::minutes(1));
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 3);
    EXPECT_EQ(session.Send({{"cmd", "GetLibraryName"}, {"index", 2}})["name"], "reds");
}

TEST_F(SessionTest, AFolderWhoseTimeDidNotMovePastTheLastScanIsNotRescanned) {
    Library("home/user-88/blues.ocb");
    SessionProcess session(Options());
    session.Send({{"cmd", "startup"}});
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 2);
    Library("home/user-88/reds.ocb");
    const fs::path userFolder = In("home/user-88");
    const auto now = fs::file_time_type::clock::now();
    fs::last_write_time(userFolder, now - std::chrono::hours(1));
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 2);
    fs::last_write_time(userFolder, now + std::chrono::hours(1));
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 3);
    EXPECT_EQ(session.Send({{"cmd", "GetLibraryName"}, {"index", 2}})["name"], "reds");
}

TEST_F(SessionTest, AFailingSwatchListCallWhileOpeningALibraryAnswersItsCodeAndLeaksNothing) {
    Library("home/user-88/blues.ocb");
    SessionProcess session(Options());
    session.Send({{"cmd", "clock"}, {"set", 2000000}});
    session.Send({{"cmd", "startup"}});
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 2);
    EXPECT_EQ(session.Send({{"cmd", "fault"}, {"action", "arm"}, {"kind", "call"}, {"suite", "KV Swatch List Suite"},
                            {"nth", 1}, {"code", "FALT"}})["ok"],
              true);
    // The import the host asks the module for fails to fill the document:
    // the opening answers "CANT" after the read error.
    const json failed = session.Send({{"cmd", "OpenLibrary"}, {"index", 1}});
    EXPECT_EQ(failed["result"], "CANT");
    EXPECT_EQ(failed["document"], nullptr);
    const json counts = session.Send({{"cmd", "counts"}});
    EXPECT_EQ(counts["failedCalls"].size(), 1u);
    EXPECT_THAT(counts["failedCalls"][0].get<std::string>(), HasSubstr("KV Swatch List Suite "));
    const std::vector<std::string> shown = Shown(session);
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front(), "An error occurred when reading the color book 'blues.ocb'.");
    session.Send({{"cmd", "fault"}, {"action", "clear"}});
    EXPECT_EQ(session.Send({{"cmd", "IsLibraryOpen"}, {"index", 1}})["open"], false);
    // Without the fault it opens.
    const json opened = session.Send({{"cmd", "OpenLibrary"}, {"index", 1}});
    EXPECT_EQ(opened["result"], 0);
    EXPECT_EQ(session.Send({{"cmd", "document"}, {"document", opened["document"]}})["document"]["name"],
              "blues.ocb");
    EXPECT_EQ(session.Send({{"cmd", "shutdown"}})["result"], 0);
    ExpectNothingHeld(session);
}

TEST_F(SessionTest, EveryWrongLineIsAnsweredWithAnErrorAndTheSessionGoesOn) {
    Library("home/user-88/blues.ocb");
    SessionProcess session(Options());
    const std::vector<std::pair<std::string, std::string>> cases = {
        {R"({"cmd": "frob"})", "unknown command \"frob\""},
        {R"({"cmd": "startup")", "the line is not JSON"},
        {"", "the line is not JSON"},
        {R"(["startup"])", "a command is a JSON object"},
        {R"({"command": "startup"})", "missing field \"cmd\""},
        {R"({"cmd": 7})", "field \"cmd\" must be a string"},
        {R"({"cmd": "GetLibraryName"})", "missing field \"index\""},
        {R"({"cmd": "GetLibraryName", "index": "1"})", "field \"index\" must be a whole number"},
        {R"({"cmd": "GetLibraryName", "index": 1e99})", "field \"index\" must be a whole number"},
        {R"({"cmd": "OpenLibrary", "index": 99999999999})", "field \"index\" must be a whole number"},
        {R"({"cmd": "FindReferenceSwatch", "book": 5, "name": "Red"})", "no reference book 5"},
        {R"({"cmd": "document", "document": 9})", "no document 9"},
        {R"({"cmd": "fault", "action": "arm", "kind": "call", "code": "TOOLONG"})", "field \"code\""},
        {std::string(100, '[') + std::string(100, ']'), "nests deeper than 64 levels"},
    };
    for (const auto& [line, error] : cases) {
        const json answer = json::parse(session.SendLine(line));
        EXPECT_EQ(answer["ok"], false) << line;
        EXPECT_THAT(answer["error"].get<std::string>(), HasSubstr(error)) << line;
    }
    const json tooLong = json::parse(session.SendLine(std::string(2 << 20, 'x')));
    EXPECT_THAT(tooLong["error"].get<std::string>(), HasSubstr("longer than 1048576 bytes"));
    // Before start-up the suite is not published; after it everything works.
    EXPECT_THAT(session.Send({{"cmd", "CountLibraries"}})["error"].get<std::string>(),
                HasSubstr("acquiring KV Tintora Suite 1 answered S!Fd"));
    EXPECT_EQ(session.Send({{"cmd", "startup"}})["ok"], true);
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["count"], 2);
    EXPECT_EQ(session.Send({{"cmd", "quit"}})["ok"], true);
    EXPECT_EQ(session.SendLine(R"({"cmd": "counts"})"), "");  // ended
    EXPECT_EQ(session.Finish(), 0);
}

// The module empties its suite's entries at unload and leaves them empty
// after reload: the suite stays published, and refuses every call.
TEST_F(SessionTest, AfterUnloadAndReloadTheSuiteRefusesEveryCall) {
    Library("home/user-88/blues.ocb");
    SessionProcess session(Options());
    session.Send({{"cmd", "startup"}});
    const json book = session.Send({{"cmd", "NewReferenceBook"}});
    EXPECT_EQ(book["book"], 1);
    EXPECT_EQ(session.Send({{"cmd", "unload"}})["result"], 0);
    const json refused = session.Send({{"cmd", "CountLibraries"}});
    EXPECT_EQ(refused["ok"], false);
    EXPECT_EQ(refused["refused"], true);
    // The book went with the module's code.
    EXPECT_EQ(session.Send({{"cmd", "GetReferenceBookID"}, {"book", 1}})["error"], "no reference book 1");
    EXPECT_EQ(session.Send({{"cmd", "reload"}})["result"], 0);
    EXPECT_EQ(session.Send({{"cmd", "CountLibraries"}})["refused"], true);
    EXPECT_EQ(session.Send({{"cmd", "purge"}})["ok"], true);
    EXPECT_EQ(session.Send({{"cmd", "notify"}})["result"], 0);
    EXPECT_EQ(session.Send({{"cmd", "message"}, {"caller", "Somebody"}, {"selector", "Else"}})["result"], 0);
    EXPECT_EQ(session.Send({{"cmd", "shutdown"}})["result"], 0);
    ExpectNothingHeld(session);
}

TEST_F(SessionTest, BooksAreReadLookedUpAndExported) {
    const std::string book = Library("books/sample.ocb");
    SessionProcess session(Options());
    session.Send({{"cmd", "startup"}});
    EXPECT_EQ(session.Send({{"cmd", "IsColorBookFile"}, {"file", book}})["answer"], true);
    EXPECT_EQ(session.Send({{"cmd", "NewReferenceBook"}})["book"], 1);
    EXPECT_EQ(session.Send({{"cmd", "ReadColorBook"}, {"book", 1}, {"file", book}})["result"], 0);
    EXPECT_EQ(session.Send({{"cmd", "GetReferenceBookID"}, {"book", 1}})["bookId"], 3002);
    const json red = session.Send({{"cmd", "FindReferenceSwatch"}, {"book", 1}, {"name", "P Red 032 C"}});
    EXPECT_EQ(red["color"], json::parse(R"({"model": "rgb", "values": [1.0, 0.0, 0.0, 0.0], "spot": true})"));
    EXPECT_EQ(session.Send({{"cmd", "FindReferenceSwatch"}, {"book", 1}, {"name", "Red 032"}})["result"], "NAM?");
    EXPECT_EQ(session.Send({{"cmd", "DisposeReferenceBook"}, {"book", 1}})["result"], 0);
    const json imported = session.Send({{"cmd", "import"}, {"files", {book}}});
    EXPECT_EQ(imported["files"][0]["documentId"], 1);
    const json exported = session.Send({{"cmd", "ExportSwatches"}, {"document", 1}, {"file", In("out.ose")}});
    EXPECT_EQ(exported["written"], true);
    EXPECT_TRUE(fs::exists(In("out.ose")));
    const json documents = session.Send({{"cmd", "documents"}});
    EXPECT_EQ(documents["documents"][0], json::parse(R"({"document": 1, "name": "sample.ocb", "hidden": false,
                                                          "current": true})"));
}

TEST_F(SessionTest, ARefusedModuleFileIsTheAnswerToEveryModuleCommand) {
    SessionProcess session({"--module", In("missing.so"), "--home", In("home")});
    EXPECT_THAT(session.Send({{"cmd", "startup"}})["error"].get<std::string>(),
                HasSubstr("the module file was refused: "));
    EXPECT_EQ(session.Send({{"cmd", "counts"}})["ok"], true);
    EXPECT_EQ(session.Finish(), 1);
}

}  // namespace
