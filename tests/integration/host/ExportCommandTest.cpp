// kelvra-host export on the real module: a document read from the host's
// document file or made from library files, written by the module's suite
// through a write data filter; a failed export, a file that cannot be
// imported or a damaged document file leave an existing file as it was.
#include "CommandRunner.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

namespace {

using kelvra::testing::RunKelvraHost;
using kelvra::testing::WithFileSizeLimit;
using ::testing::HasSubstr;
using ::testing::Not;

// Process colours of three kinds and a spot colour, in the default group
// and a named one: all of them go into a swatch exchange file.
const char* kDocument = R"({"name": "Brand",
  "groups": [
    {"name": "", "swatches": [
      {"name": "Paper", "kind": "gray", "values": [0.25]},
      {"name": "Red", "kind": "rgb", "values": [1, 0, 0]}]},
    {"name": "Inks", "swatches": [
      {"name": "Ink", "kind": "cmyk", "values": [0.5, 0.25, 0, 0.75]},
      {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0}]}],
  "customColors": [{"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1}]})";

class ExportCommandTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) const { return folder_.Write(name, text); }
    std::string Write(const std::string& name, const testsupport::Bytes& bytes) const {
        return folder_.Write(name, bytes);
    }
    std::string In(const std::string& name) const { return (folder_.Path() / name).string(); }
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    static std::string Contents(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::stringstream contents;
        contents << in.rdbuf();
        return contents.str();
    }
    static std::vector<std::string> Export(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"export", "--module", TINTORA_MODULE});
        return arguments;
    }
    // The documents of the file read back through the module.
    static nlohmann::json Reimported(const std::string& file) {
        const auto result = RunKelvraHost({"import", "--module", TINTORA_MODULE, "--json", file});
        EXPECT_EQ(result.exitStatus, 0) << result.output;
        return nlohmann::json::parse(result.output)["documents"];
    }

private:
    testsupport::TemporaryFolder folder_;
};

TEST_F(ExportCommandTest, ADocumentFileIsWrittenAndReadsBackWithTheSameSwatches) {
    const std::string document = Write("brand.kv", kDocument);
    const std::string out = In("brand.ose");
    const auto result = RunKelvraHost(Export({"-o", out, "--document", document}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    const std::string size = std::to_string(std::filesystem::file_size(out));
    EXPECT_EQ(result.output, std::string("module: ") + TINTORA_MODULE +
                                 "\n"
                                 "  ZP Interface / Startup -> 0\n"
                                 "document file: " + document +
                                 "\n"
                                 "document 1 \"Brand\":\n"
                                 "  default group:\n"
                                 "    #BFBFBF \"Paper\": gray 25%\n"
                                 "    #FF0000 \"Red\": rgb 255 0 0\n"
                                 "  group \"Inks\":\n"
                                 "    #203040 \"Ink\": cmyk 50% 25% 0% 75%\n"
                                 "    #E7C151 \"Gold\": spot lab 80.0 5.0 60.0\n"
                                 "  4 swatches in 2 groups, 1 custom colour\n"
                                 "export: " + out +
                                 "\n"
                                 "  ExportSwatches -> 0\n"
                                 "  UnlinkDataFilter -> 0\n"
                                 "shut-down:\n"
                                 "  ZP Interface / Shutdown -> 0\n"
                                 "written: " + out + " (" + size + " bytes)\n");
    // Read back as a document named after the file, with the same groups;
    // the exchange file keeps no book id.
    nlohmann::json expected = nlohmann::json::parse(kDocument);
    expected["name"] = "brand.ose";
    expected["customColors"][0]["bookId"] = 0;
    EXPECT_EQ(Reimported(out), nlohmann::json::array({expected}));
    EXPECT_EQ(Files(), (std::vector<std::string>{"brand.kv", "brand.ose"}));  // no temporary file left
}

TEST_F(ExportCommandTest, LibraryFilesArePlacedIntoOneDocumentAndExported) {
    const std::string book = Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    const std::string document = Write("brand.kv", kDocument);
    const std::string out = In("both.ose");
    const auto result = RunKelvraHost(Export({"--json", "-o", out, book}));
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    const nlohmann::json report = nlohmann::json::parse(result.output);
    ASSERT_EQ(report["files"].size(), 1u);
    EXPECT_EQ(report["files"][0]["go"]["format"], "Orvik Color Book Reader");
    EXPECT_EQ(report["files"][0]["go"]["placed"], true);
    EXPECT_EQ(report["files"][0]["go"]["document"], "Untitled");
    EXPECT_EQ(report["document"]["name"], "Untitled");
    EXPECT_EQ(report["export"]["call"], nlohmann::json::parse(R"({"result": 0, "resultText": "0", "refused": false,
                                                                 "failedHostCall": null})"));
    EXPECT_EQ(report["export"]["unlinked"], nlohmann::json::parse(R"({"result": 0, "resultText": "0"})"));
    EXPECT_EQ(report["export"]["discarded"], nullptr);
    EXPECT_EQ(report["written"], true);
    EXPECT_EQ(report["outputExisted"], false);
    EXPECT_EQ(report["bytes"], std::filesystem::file_size(out));
    EXPECT_EQ(report["failed"], false);
    // The colour book's three spot colours, read back by name and colour.
    const nlohmann::json back = Reimported(out);
    ASSERT_EQ(back.size(), 1u);
    std::vector<std::string> names;
    for (const auto& swatch : back[0]["groups"][0]["swatches"]) names.push_back(swatch["name"]);
    EXPECT_EQ(names, (std::vector<std::string>{"P Red 032 C", "P Gr\u00fcn C", "P Sky C"}));
}

TEST_F(ExportCommandTest, AFailedWriteLeavesTheExistingFileAsItWas) {
    const std::string document = Write("brand.kv", kDocument);
    const std::string out = Write("brand.ose", "the old export");
    // Nothing the command writes may grow beyond 16 bytes: the export's
    // first writes go through, a later one fails as on a full disk.
    const auto result = RunKelvraHost(Export({"-o", out, "--document", document}), WithFileSizeLimit(16));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("export: " + out +
                                         "\n"
                                         "  ExportSwatches -> CANT\n"
                                         "  DiscardDataFilter -> 0\n"
                                         "shut-down:\n"));
    EXPECT_THAT(result.output, HasSubstr("\nnot written: " + out + " left as it was\n"));
    EXPECT_EQ(Contents(out), "the old export");
    EXPECT_EQ(Files(), (std::vector<std::string>{"brand.kv", "brand.ose"}));
}

TEST_F(ExportCommandTest, AFailedWriteMakesNoFile) {
    const std::string document = Write("brand.kv", kDocument);
    const auto result = RunKelvraHost(Export({"--json", "-o", In("new.ose"), "--document", document}), WithFileSizeLimit(16));
    EXPECT_EQ(result.exitStatus, 1);
    const nlohmann::json report = nlohmann::json::parse(result.output);
    EXPECT_EQ(report["export"]["call"]["resultText"], "CANT");
    EXPECT_EQ(report["export"]["unlinked"], nullptr);
    EXPECT_EQ(report["export"]["discarded"]["resultText"], "0");
    EXPECT_EQ(report["written"], false);
    EXPECT_EQ(report["failed"], true);
    EXPECT_EQ(Files(), std::vector<std::string>{"brand.kv"});
}

TEST_F(ExportCommandTest, AFileThatCannotBeImportedStopsTheExport) {
    const std::string book = Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    const std::string notes = Write("notes.txt", "no colours here");
    const std::string out = Write("out.ose", "old");
    const auto result = RunKelvraHost(Export({"-o", out, book, notes}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  not imported: no format accepts this file\nnot exported: 1 of 2 files not imported\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("ExportSwatches")));
    EXPECT_THAT(result.output, HasSubstr("\nnot written: " + out + " left as it was\n"));
    EXPECT_EQ(Contents(out), "old");
}

TEST_F(ExportCommandTest, ADamagedDocumentFileIsRefused) {
    const std::string document = Write("bad.kv", R"({"name": "X", "groups": [{"name": "", "swatches": [{"kind": "grey"}]}]})");
    const auto result = RunKelvraHost(Export({"-o", In("out.ose"), "--document", document}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("document file: " + document + "\n  refused: " + document +
                                         ": document JSON: groups[0].swatches[0]"));
    EXPECT_THAT(result.output, HasSubstr("\nnot written: " + In("out.ose") + " not made\n"));
    EXPECT_EQ(Files(), std::vector<std::string>{"bad.kv"});
}

TEST_F(ExportCommandTest, AnOutputFileThatCannotBeMadeIsNeverExportedTo) {
    const std::string document = Write("brand.kv", kDocument);
    const std::string out = In("no/such/folder.ose");
    const auto result = RunKelvraHost(Export({"-o", out, "--document", document}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  ExportSwatches -> KV Data Filter Suite LinkDataFilter answered OPEN\n"
                                         "  DiscardDataFilter -> 0\n"));
}

TEST_F(ExportCommandTest, WithoutADocumentItIsAUsageError) {
    EXPECT_EQ(RunKelvraHost(Export({"-o", In("out.ose")})).exitStatus, 2);
    const std::string document = Write("brand.kv", kDocument);
    EXPECT_NE(RunKelvraHost(Export({"-o", In("out.ose"), "--document", document, document})).exitStatus, 0);
    EXPECT_EQ(Files(), std::vector<std::string>{"brand.kv"});
}

}  // namespace
