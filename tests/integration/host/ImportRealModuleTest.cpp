// kelvra-host import on the real module, with files made by the shared
// builders: one file of each registered format, placing, the question about
// unsupported blocks, files no format accepts or the module reads nothing
// from, what the host sees happen to the documents, and the exit statuses.
#include "CommandRunner.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SampleDocuments.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/stat.h>

#include <filesystem>

namespace {

using kelvra::testing::RunKelvraHost;
using ::testing::HasSubstr;
using ::testing::Not;

class ImportRealModuleTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const testsupport::Bytes& bytes) const {
        return folder_.Write(name, bytes);
    }
    std::string PathOf(const std::string& name) const { return (folder_.Path() / name).string(); }

    static std::vector<std::string> Import(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"import", "--module", TINTORA_MODULE});
        return arguments;
    }

private:
    testsupport::TemporaryFolder folder_;
};

// The shared sample exchange file: a group "Brand" with a tinted spot RGB
// colour and a process CMYK colour, then a global Lab and a global Gray
// colour, which stay in the last group the file selected.
TEST_F(ImportRealModuleTest, ASwatchExchangeFileBecomesADocument) {
    const std::string file = Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    // Signal Red (1, 0.25, 0) halfway to white is (1, 0.625, 0.5); Ink is
    // (0.9, 0.8, 0.7) × 0.6; Lab 50 -20 30 (D50) is sRGB 0.3805725,
    // 0.5013323, 0.2561450 worked out by hand; gray 0.75 is stored as black
    // ink 0.25.
    EXPECT_EQ(result.output,
              std::string("module: ") + TINTORA_MODULE +
                  "\n"
                  "  ZP Interface / Startup -> 0\n"
                  "file: " + file +
                  "\n"
                  "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                  "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
                  "  KV Go \"Orvik Swatch Exchange Reader\", open as document 1 \"sample.ose\" -> 0\n"
                  "  received: 1 group, 4 swatches, 3 custom colours made, 0 redefined\n"
                  "shut-down:\n"
                  "  ZP Interface / Shutdown -> 0\n"
                  "document 1 \"sample.ose\" (from " + file + "):\n"
                  "  default group:\n"
                  "    (no swatches)\n"
                  "  group \"Brand\":\n"
                  "    #FF9F80 \"Signal Red\": spot rgb 255 64 0, tint 50%\n"
                  "    #8A7A6B \"Ink\": cmyk 10% 20% 30% 40%\n"
                  "    #618041 \"Leaf\": global rgb 97 128 65\n"
                  "    #BFBFBF \"Shadow\": global cmyk 0% 0% 0% 25%\n"
                  "  4 swatches in 2 groups, 3 custom colours\n"
                  "1 file: 1 imported, 0 not imported; 1 document: 4 swatches in 2 groups, 3 custom colours\n");
}

TEST_F(ImportRealModuleTest, AColourBookBecomesADocumentOfSpotColours) {
    const std::string file = Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output,
              std::string("module: ") + TINTORA_MODULE +
                  "\n"
                  "  ZP Interface / Startup -> 0\n"
                  "file: " + file +
                  "\n"
                  "  KV Check \"Orvik Color Book Reader\" -> 0\n"
                  "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
                  "  KV Go \"Orvik Color Book Reader\", open as document 1 \"sample.ocb\" -> 0\n"
                  "  received: 0 groups, 3 swatches, 3 custom colours made, 0 redefined\n"
                  "shut-down:\n"
                  "  ZP Interface / Shutdown -> 0\n"
                  "document 1 \"sample.ocb\" (from " + file + "):\n"
                  "  default group:\n"
                  "    #FF0000 \"P Red 032 C\": spot rgb 255 0 0, book 3002\n"
                  "    #00A040 \"P Gr\u00FCn C\": spot rgb 0 160 64, book 3002\n"
                  "    #5AA0FF \"P Sky C\": spot rgb 90 160 255, book 3002\n"
                  "  3 swatches in 1 group, 3 custom colours\n"
                  "1 file: 1 imported, 0 not imported; 1 document: 3 swatches in 1 group, 3 custom colours\n");
}

TEST_F(ImportRealModuleTest, JsonShowsTheDocumentsInTheirJsonForm) {
    const std::string file = Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({"--json", file}));
    EXPECT_EQ(result.exitStatus, 0);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    EXPECT_EQ(out["files"][0]["go"]["format"], "Orvik Swatch Exchange Reader");
    EXPECT_EQ(out["files"][0]["checks"][0]["resultText"], "FMT?");
    EXPECT_EQ(out["documents"],
              nlohmann::json::array({nlohmann::json::parse(testsupport::kSampleSwatchExchangeDocument)}));
}

TEST_F(ImportRealModuleTest, PlaceReadsBothFormatsIntoOneDocument) {
    const std::string book = Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    const std::string exchange = Write("sample.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({"--place", "--json", book, exchange}));
    EXPECT_EQ(result.exitStatus, 0);
    const nlohmann::json out = nlohmann::json::parse(result.output);
    ASSERT_EQ(out["documents"].size(), 1u);
    const nlohmann::json& document = out["documents"][0];
    EXPECT_EQ(document["name"], "Untitled");
    EXPECT_EQ(out["files"][0]["go"]["placed"], true);
    EXPECT_EQ(out["files"][1]["go"]["document"], "Untitled");
    ASSERT_EQ(document["groups"].size(), 2u);
    EXPECT_EQ(document["groups"][0]["swatches"].size(), 3u);  // the colour book's
    EXPECT_EQ(document["groups"][1]["name"], "Brand");
    EXPECT_EQ(document["groups"][1]["swatches"].size(), 4u);
    EXPECT_EQ(document["customColors"].size(), 6u);
}

testsupport::Bytes ExchangeWithUnsupportedBlock() {
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        testsupport::ColorBlock({{}, u"Red", {}, "RGB ", {1.0f, 0.0f, 0.0f}, 2}),
        testsupport::ExchangeBlock{3, {0, 0, 0, 0}, {}},
        testsupport::ColorBlock({{}, u"Blue", {}, "RGB ", {0.0f, 0.0f, 1.0f}, 2}),
    };
    return testsupport::BuildSwatchExchange(file);
}

TEST_F(ImportRealModuleTest, DecliningTheUnsupportedTypesQuestionStopsTheImport) {
    const std::string file = Write("odd.ose", ExchangeWithUnsupportedBlock());
    const auto result = RunKelvraHost(Import({"--answer", "no", file}));
    EXPECT_EQ(result.exitStatus, 1);
    // The host shows the file name between quotation marks.
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Orvik Swatch Exchange Reader\", open as document 1 \"odd.ose\" -> STOP\n"
                          "  question: The file \u201Codd.ose\u201D contains unsupported swatch types.  Some swatches "
                          "will not be imported. -> no\n"
                          "  received: 0 groups, 0 swatches, 0 custom colours made, 0 redefined\n"
                          "  not imported: \"KV Go\" answered STOP\n"));
    EXPECT_THAT(result.output, HasSubstr("document 1 \"odd.ose\" (from " + file + "):\n  default group:\n    (no swatches)\n"));
    EXPECT_THAT(result.output, HasSubstr("1 file: 0 imported, 1 not imported; "));
    // The log keeps the text as the module passed it.
    const nlohmann::json out = nlohmann::json::parse(RunKelvraHost(Import({"--answer", "no", "--json", file})).output);
    EXPECT_EQ(out["files"][0]["events"][0]["text"],
              "The file ^Qodd.ose^Q contains unsupported swatch types.  Some swatches will not be imported.");
}

TEST_F(ImportRealModuleTest, AcceptingTheQuestionImportsTheOtherSwatches) {
    const std::string file = Write("odd.ose", ExchangeWithUnsupportedBlock());
    const auto result = RunKelvraHost(Import({"--answer", "yes", file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("unsupported swatch types.  Some swatches will not be imported. -> yes\n"));
    EXPECT_THAT(result.output,
                HasSubstr("  default group:\n    #FF0000 \"Red\": rgb 255 0 0\n    #0000FF \"Blue\": rgb 0 0 255\n"));
}

TEST_F(ImportRealModuleTest, NoFormatAcceptsAnXmlSwatchbookOrAnotherExtension) {
    const std::string xml = Write("legacy.xml", testsupport::Bytes{'<', 'a', '/', '>'});
    const std::string renamed =
        Write("sample.txt", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({xml, renamed}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("file: " + xml +
                                         "\n"
                                         "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                                         "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
                                         "  not imported: no format accepts this file\n"
                                         "file: " + renamed +
                                         "\n"
                                         "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                                         "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
                                         "  not imported: no format accepts this file\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("document ")));
    EXPECT_THAT(result.output, HasSubstr("2 files: 0 imported, 2 not imported; 0 documents\n"));
}

TEST_F(ImportRealModuleTest, AFileWithoutExtensionIsExaminedByItsContent) {
    const std::string file = Write("noextension", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Orvik Swatch Exchange Reader\", open as document 1 \"noextension\" -> 0\n"));
}

TEST_F(ImportRealModuleTest, AReadErrorIsShownAndFailsTheRun) {
    testsupport::ColorBookDescription book = testsupport::SampleColorBook();
    book.colorSpace = 5;  // no colour space of the format
    const std::string file = Write("bad.ocb", testsupport::BuildColorBook(book));
    const std::string good = Write("good.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({file, good}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  KV Go \"Orvik Color Book Reader\", open as document 1 \"bad.ocb\" -> CANT\n"
                                         "  alert: An error occurred when reading the color book 'bad.ocb'.\n"
                                         "  usage: Error Dialog with More Info Button / kCantHappenErr / Orvik Tintora Core\n"
                                         "  more-info 2102: An unknown error occurred.\n"
                                         "                  Click MORE INFO and try some of the solutions to fix the "
                                         "issue.\n"
                                         "                  More Info: https://help.kelvra.example/unknown-error\n"
                                         "  received: 0 groups, 0 swatches, 0 custom colours made, 0 redefined\n"
                                         "  not imported: \"KV Go\" answered CANT\n"));
    EXPECT_THAT(result.output, HasSubstr("2 files: 1 imported, 1 not imported; "));
}

// Files the module is right to answer 0 for without importing anything (a
// failed pre-scan, a wrong magic): the host reports them as not imported.
class NothingImportedTest : public ImportRealModuleTest {
protected:
    // Imports the file and expects it reported as not imported, for `why`
    // when the host can tell.
    void ExpectNotImported(const std::string& file, const std::string& why,
                           const testsupport::ProgramSettings& settings = {}) {
        const auto result = RunKelvraHost(Import({file}), settings);
        EXPECT_EQ(result.exitStatus, 1) << file;
        EXPECT_THAT(result.output,
                    HasSubstr("  received: 0 groups, 0 swatches, 0 custom colours made, 0 redefined\n"
                              "  not imported: \"KV Go\" answered 0 but the document received nothing" +
                              (why.empty() ? "" : " (" + why + ")") + "\n"))
            << file;
        EXPECT_THAT(result.output, HasSubstr("1 file: 0 imported, 1 not imported; ")) << file;
        const auto json = RunKelvraHost(Import({"--json", file}), settings);
        EXPECT_EQ(json.exitStatus, 1);
        EXPECT_EQ(nlohmann::json::parse(json.output)["files"][0]["status"], "nothing-received") << file;
    }
};

TEST_F(NothingImportedTest, AnEmptyFileOfEitherFormat) {
    ExpectNotImported(Write("empty.ose", testsupport::Bytes{}), "the file is empty");
    ExpectNotImported(Write("empty.ocb", testsupport::Bytes{}), "the file is empty");
}

TEST_F(NothingImportedTest, AFileOfGarbage) {
    const testsupport::Bytes garbage = {'n', 'o', 't', ' ', 'a', ' ', 'b', 'o', 'o', 'k', '\n'};
    ExpectNotImported(Write("junk.ose", garbage), "");
    ExpectNotImported(Write("junk.ocb", garbage), "");
}

// 753 named colours, cut in half: the pre-scan finds the file is not well
// formed, so the module imports nothing of it.
TEST_F(NothingImportedTest, AnExchangeFileCutInHalf) {
    testsupport::SwatchExchangeDescription description;
    for (int i = 0; i < 753; ++i) {
        const std::u16string name = u"Colour " + std::u16string(1, char16_t(u'A' + i % 26)) + char16_t(u'0' + i % 10);
        description.blocks.push_back(
            testsupport::ColorBlock({{}, name, {}, "RGB ", {float(i % 256) / 255, 0.5f, 0.25f}, 0}));
    }
    testsupport::Bytes bytes = testsupport::BuildSwatchExchange(description);
    const std::string whole = Write("whole.ose", bytes);
    EXPECT_EQ(RunKelvraHost(Import({whole})).exitStatus, 0);
    bytes.resize(bytes.size() / 2);
    ExpectNotImported(Write("half.ose", bytes), "");
}

TEST_F(NothingImportedTest, AFileThatCannotBeRead) {
    const std::string file = Write("locked.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    testsupport::ProgramSettings settings;
    settings.withoutPermissionOverride = true;
    ExpectNotImported(file, "cannot read the file: Permission denied", settings);
}

TEST_F(ImportRealModuleTest, ADirectoryIsNotOffered) {
    const std::string folder = PathOf("x.ose");
    std::filesystem::create_directory(folder);
    const auto result = RunKelvraHost(Import({folder}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("file: " + folder + "\n  not imported: a directory, not a file\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("KV Check")));
}

testsupport::Bytes Exchange(std::vector<testsupport::ExchangeColor> colors) {
    testsupport::SwatchExchangeDescription file;
    for (const auto& color : colors) file.blocks.push_back(testsupport::ColorBlock(color));
    return testsupport::BuildSwatchExchange(file);
}

TEST_F(ImportRealModuleTest, PlacingAFileThatRedefinesAColourSaysSo) {
    const std::string first = Write("a.ose", Exchange({{{}, u"Accent Red", {}, "RGB ", {0.9f, 0.1f, 0.1f}, 1}}));
    const std::string second = Write("b.ose", Exchange({{{}, u"Accent Red", {}, "RGB ", {0.8f, 0.0f, 0.2f}, 1}}));
    const auto result = RunKelvraHost(Import({"--place", first, second}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("file: " + second + "\n"
                          "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                          "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
                          "  KV Go \"Orvik Swatch Exchange Reader\", placed into document 1 \"Untitled\" -> 0\n"
                          "  redefined: custom colour \"Accent Red\" in \"Untitled\" was spot rgb 229 26 26 #E51A1A, "
                          "now spot rgb 204 0 51 #CC0033\n"
                          "  received: 0 groups, 1 swatch, 0 custom colours made, 1 redefined\n"));
    const nlohmann::json out = nlohmann::json::parse(RunKelvraHost(Import({"--place", "--json", first, second})).output);
    EXPECT_EQ(out["files"][1]["events"], nlohmann::json::parse(R"([{
        "type": "custom-color-redefined", "document": "Untitled", "customColor": "Accent Red",
        "old": {"kind": "rgb", "values": [0.9, 0.1, 0.1], "flags": 1},
        "new": {"kind": "rgb", "values": [0.8, 0, 0.2], "flags": 1}}])"));
}

// The host keeps 31 code units of a name: a longer one arrives empty, and
// every swatch of that name shares the one custom colour named so.
TEST_F(ImportRealModuleTest, ANameTooLongArrivesEmptyAndTheHostSaysSo) {
    const std::u16string longName(32, u'L');
    const std::string file = Write("long.ose", Exchange({{{}, u"Fine", {}, "RGB ", {0, 0, 1}, 2},
                                                         {{}, longName, {}, "RGB ", {1, 0, 0}, 1},
                                                         {{}, longName, {}, "RGB ", {0, 1, 0}, 1}}));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("  empty name: swatch 2 of the default group in \"long.ose\"\n"
                          "  empty name: swatch 3 of the default group in \"long.ose\"\n"
                          "  shared: 2 swatches show custom colour \"\" in \"long.ose\", given 2 definitions; all show "
                          "the last\n"
                          "  received: 0 groups, 3 swatches, 1 custom colour made, 0 redefined\n"));
    EXPECT_THAT(result.output, HasSubstr("    #00FF00 \"\": spot rgb 0 255 0\n    #00FF00 \"\": spot rgb 0 255 0\n"));
    const nlohmann::json out = nlohmann::json::parse(RunKelvraHost(Import({"--json", file})).output);
    EXPECT_EQ(out["files"][0]["events"][0], nlohmann::json::parse(R"({
        "type": "empty-swatch-name", "document": "long.ose", "group": 0, "groupName": "", "swatch": 1})"));
    EXPECT_EQ(out["files"][0]["events"][2]["type"], "custom-color-shared");
}

TEST_F(ImportRealModuleTest, ManySpotColoursOfOneNameCollapseIntoOneAndTheHostSaysSo) {
    std::vector<testsupport::ExchangeColor> colors;
    for (int i = 0; i < 5; ++i) colors.push_back({{}, u"Untitled", {}, "RGB ", {float(i) / 4, 0, 0}, 1});
    const std::string file = Write("untitled.ose", Exchange(colors));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("  shared: 5 swatches show custom colour \"Untitled\" in \"untitled.ose\", "
                                         "given 5 definitions; all show the last\n"
                                         "  received: 0 groups, 5 swatches, 1 custom colour made, 0 redefined\n"));
    EXPECT_EQ(kelvra::testing::LinesStartingWith(result.output, "    #FF0000 \"Untitled\": spot rgb 255 0 0").size(), 5u);
}

}  // namespace
