// A seeded stream of 100,000 lines through the session's line handler, in
// this process with the real module: commands with arguments of every
// kind, cut and corrupted lines, random bytes. Every line gets one JSON
// answer, nothing crashes (the sanitizers watch), and once the faults are
// cleared and the module is shut down the host holds nothing.
#include "SessionCommand.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace {

using kelvra::cli::AnswerLine;
using kelvra::cli::Session;
using nlohmann::json;

constexpr std::size_t kLines = 100'000;

class LineMaker {
public:
    explicit LineMaker(const std::filesystem::path& folder) : random_(20261122) {
        files_ = {(folder / "home/user-88/blues.ocb").string(), (folder / "home/user-88/Sub/reds.ocb").string(),
                  (folder / "bad.ocb").string(),     (folder / "legacy.xml").string(),
                  (folder / "missing.ose").string(), (folder / "home").string(),
                  (folder / "out.ose").string(),     ""};
    }

    std::string Next() {
        const int kind = Pick(100);
        if (kind < 55) return Command().dump();
        std::string line = Command().dump();
        if (kind < 75) return line.substr(0, Pick(int(line.size()) + 1));
        if (kind < 90) {
            for (int flips = Pick(4) + 1; flips > 0 && !line.empty(); --flips)
                line[std::size_t(Pick(int(line.size())))] = char(Pick(256));
            return line;
        }
        if (kind < 97) {
            std::string bytes(std::size_t(Pick(200)), '\0');
            for (char& c : bytes) c = char(Pick(256));
            return bytes;
        }
        const int depth = Pick(200);
        return std::string(std::size_t(depth), '[') + "1e999999" + std::string(std::size_t(depth), ']');
    }

private:
    int Pick(int below) { return int(random_() % std::uint64_t(below)); }
    template <typename T>
    const T& Of(const std::vector<T>& items) { return items[std::size_t(Pick(int(items.size())))]; }

    json Number() {
        static const std::vector<json> numbers = {-2, -1, 0, 1, 2, 3, 4, 5, 9, 2147483647, -2147483648,
                                                  4294967296.0, 1.5, "2", nullptr, true};
        return Of(numbers);
    }

    json Command() {
        static const std::vector<std::string> names = {
            "startup", "shutdown", "unload", "reload", "purge", "notify", "message", "import", "document",
            "documents", "CountLibraries", "GetLibraryName", "IsLibraryOpen", "OpenLibrary", "OpenLibraryFile",
            "GetLibrarySwatchList", "NewReferenceBook", "DisposeReferenceBook", "GetReferenceBookID",
            "ReadColorBook", "ReadLegacyColorBook", "FindReferenceSwatch", "IsColorBookFile", "ExportSwatches",
            "events", "counts", "fault", "clock", "frob"};
        // Calls that give nothing back: a failed disposal or release would
        // leave its object with the host by the host's own doing.
        static const std::vector<std::pair<std::string, std::string>> calls = {
            {"KV Swatch List Suite", ""},          {"KV Path Style Suite", ""},
            {"KV Folders Suite", ""},              {"KV File Path Suite", "NewFromString"},
            {"KV File Path Suite", "Exists"},      {"KV File Path Suite", "GetAsString"},
            {"KV File Path Suite", "GetFileName"}, {"KV Unicode String Suite", "NewFromUTF16"},
            {"KV Unicode String Suite", "GetUTF16"}, {"KV Data Filter Suite", "NewFileDataFilter"},
            {"KV Data Filter Suite", "ReadDataFilter"}, {"ZP Basic Suite", "AcquireSuite"}};
        static const std::vector<std::string> callers = {"ZP Interface", "ZP Access", "ZP Cache", "KV Notifier",
                                                         "KV File Format", "Somebody"};
        static const std::vector<std::string> selectors = {"Startup", "Shutdown", "Unload", "Reload",
                                                           "Plug-in Purge", "KV Go", "Else"};
        static const std::vector<std::string> swatches = {"P Red 032 C", "Red 032", "", "LI Copper C"};
        // Rarely: every remembered file is read again at each start-up.
        json command = {{"cmd", Pick(500) == 0 ? std::string("remember") : Of(names)}};
        // Every field a command may read, each present or not, of any type.
        if (Pick(2) != 0) command["index"] = Number();
        if (Pick(2) != 0) command["book"] = Number();
        if (Pick(3) == 0) command["document"] = Number();
        if (Pick(2) != 0) command["file"] = Pick(10) == 0 ? Number() : json(Of(files_));
        if (Pick(3) == 0) command["files"] = json::array({Of(files_), Of(files_)});
        if (Pick(3) == 0) command["name"] = Of(swatches);
        if (Pick(3) == 0) command["caller"] = Of(callers);
        if (Pick(3) == 0) command["selector"] = Of(selectors);
        if (command["cmd"] == "fault") {
            command["action"] = Pick(3) == 0 ? "clear" : "arm";
            command["kind"] = Of(std::vector<std::string>{"call", "block", "suite", "other"});
            const auto& [suite, function] = Of(calls);
            command["suite"] = suite;
            if (!function.empty()) command["function"] = function;
            command["nth"] = Pick(30) + 1;
            command["fromThenOn"] = Pick(4) == 0;
        }
        if (command["cmd"] == "clock") command[Pick(2) == 0 ? "set" : "advance"] = Pick(20);
        return command;
    }

    std::mt19937_64 random_;
    std::vector<std::string> files_;
};

TEST(SessionRandomLinesTest, EveryLineIsAnsweredAndNothingIsLeftBehind) {
    testsupport::TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path() / "home/user-88/Sub");
    const testsupport::Bytes book = testsupport::BuildColorBook(testsupport::SampleColorBook());
    folder.Write("home/user-88/blues.ocb", book);
    folder.Write("home/user-88/Sub/reds.ocb", book);
    folder.Write("bad.ocb", std::string("7KCB") + std::string(30, '\0'));
    folder.Write("legacy.xml", R"(<OrvikSwatchbook BookID="4200"><Formats><Format ID="c" ColorSpace="CMYK" )"
                               R"(Encoding="Int8"/></Formats><Swatches><Sp N="LI Copper C"><C F="c">0 128 200 60</C>)"
                               R"(</Sp></Swatches></OrvikSwatchbook>)");
    kelvra::cli::SessionOptions options;
    options.module = TINTORA_MODULE;
    options.setup.home = folder.Path() / "home";
    Session session(options);
    LineMaker lines(folder.Path());
    std::size_t succeeded = 0;
    for (std::size_t i = 0; i < kLines; ++i) {
        const std::string line = lines.Next();
        const json answer = json::parse(AnswerLine(session, line), nullptr, false);
        ASSERT_FALSE(answer.is_discarded()) << "line " << i;
        ASSERT_TRUE(answer["ok"].is_boolean()) << "line " << i << ": " << answer;
        if (answer["ok"] == true) ++succeeded;
    }
    // Many lines did something: the stream is no stream of errors only.
    EXPECT_GT(succeeded, kLines / 20);

    // Without faults, loaded and shut down, the host holds nothing more.
    EXPECT_EQ(json::parse(AnswerLine(session, R"({"cmd": "fault", "action": "clear"})"))["ok"], true);
    AnswerLine(session, R"({"cmd": "reload"})");  // when it was unloaded
    AnswerLine(session, R"({"cmd": "shutdown"})");
    const json counts = json::parse(AnswerLine(session, R"({"cmd": "counts"})"));
    EXPECT_EQ(counts["blocks"], 0) << counts;
    EXPECT_EQ(counts["strings"], 0) << counts;
    EXPECT_EQ(counts["filePaths"], 0) << counts;
    EXPECT_EQ(counts["dataFilters"], 0) << counts;
    EXPECT_EQ(counts["suitesHeld"], 0) << counts;
    EXPECT_EQ(counts["badFrees"], 0) << counts;
}

}  // namespace
