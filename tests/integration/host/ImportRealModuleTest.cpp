// kelvra-host import on the real module, with files made by the shared
// builders: one file of each registered format, placing, the question about
// unsupported blocks, a file no format accepts, and the exit statuses.
#include "CommandRunner.h"

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SampleDocuments.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using kelvra::testing::RunKelvraHost;
using ::testing::HasSubstr;
using ::testing::Not;

class ImportRealModuleTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const testsupport::Bytes& bytes) const {
        return folder_.Write(name, bytes);
    }

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
    // Lab 50 -20 30 (D50) is sRGB 0.3805725, 0.5013323, 0.2561450 worked out
    // by hand; gray 0.75 is stored as black ink 0.25.
    EXPECT_EQ(result.output,
              std::string("module: ") + TINTORA_MODULE +
                  "\n"
                  "  ZP Interface / Startup -> 0\n"
                  "file: " + file +
                  "\n"
                  "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                  "  KV Check \"Orvik Swatch Exchange Reader\" -> 0\n"
                  "  KV Go \"Orvik Swatch Exchange Reader\", open as document \"sample.ose\" -> 0\n"
                  "shut-down:\n"
                  "  ZP Interface / Shutdown -> 0\n"
                  "document \"sample.ose\":\n"
                  "  default group:\n"
                  "    (no swatches)\n"
                  "  group \"Brand\":\n"
                  "    \"Signal Red\": custom colour \"Signal Red\" at tint 0.5 (rgb 1 0.25 0, spot, book id 0)\n"
                  "    \"Ink\": cmyk 0.1 0.2 0.3 0.4\n"
                  "    \"Leaf\": custom colour \"Leaf\" at tint 0 (rgb 0.38057253 0.50133234 0.25614503, global, "
                  "book id 0)\n"
                  "    \"Shadow\": custom colour \"Shadow\" at tint 0 (cmyk 0 0 0 0.25, global, book id 0)\n"
                  "1 file: 1 imported, 0 failed\n");
}

TEST_F(ImportRealModuleTest, AColourBookBecomesADocumentOfSpotColours) {
    const std::string file = Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook()));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    // Components 160 and 64 of 255 are 0.627451 and 0.2509804; 90 is 0.3529412.
    EXPECT_EQ(result.output,
              std::string("module: ") + TINTORA_MODULE +
                  "\n"
                  "  ZP Interface / Startup -> 0\n"
                  "file: " + file +
                  "\n"
                  "  KV Check \"Orvik Color Book Reader\" -> 0\n"
                  "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
                  "  KV Go \"Orvik Color Book Reader\", open as document \"sample.ocb\" -> 0\n"
                  "shut-down:\n"
                  "  ZP Interface / Shutdown -> 0\n"
                  "document \"sample.ocb\":\n"
                  "  default group:\n"
                  "    \"P Red 032 C\": custom colour \"P Red 032 C\" at tint 0 (rgb 1 0 0, spot, book id 3002)\n"
                  "    \"P Gr\u00FCn C\": custom colour \"P Gr\u00FCn C\" at tint 0 (rgb 0 0.627451 0.2509804, spot, "
                  "book id 3002)\n"
                  "    \"P Sky C\": custom colour \"P Sky C\" at tint 0 (rgb 0.3529412 0.627451 1, spot, book id 3002)\n"
                  "1 file: 1 imported, 0 failed\n");
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
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Orvik Swatch Exchange Reader\", open as document \"odd.ose\" -> STOP\n"
                          "  question: The file ^Qodd.ose^Q contains unsupported swatch types.  Some swatches will not "
                          "be imported. -> no\n"));
    EXPECT_THAT(result.output, HasSubstr("document \"odd.ose\":\n  default group:\n    (no swatches)\n"));
    EXPECT_THAT(result.output, HasSubstr("1 file: 0 imported, 1 failed\n"));
}

TEST_F(ImportRealModuleTest, AcceptingTheQuestionImportsTheOtherSwatches) {
    const std::string file = Write("odd.ose", ExchangeWithUnsupportedBlock());
    const auto result = RunKelvraHost(Import({"--answer", "yes", file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("unsupported swatch types.  Some swatches will not be imported. -> yes\n"));
    EXPECT_THAT(result.output, HasSubstr("  default group:\n    \"Red\": rgb 1 0 0\n    \"Blue\": rgb 0 0 1\n"));
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
                                         "  no format accepts this file\n"
                                         "file: " + renamed +
                                         "\n"
                                         "  KV Check \"Orvik Color Book Reader\" -> FMT?\n"
                                         "  KV Check \"Orvik Swatch Exchange Reader\" -> FMT?\n"
                                         "  no format accepts this file\n"));
    EXPECT_THAT(result.output, Not(HasSubstr("document ")));
    EXPECT_THAT(result.output, HasSubstr("2 files: 0 imported, 2 failed\n"));
}

TEST_F(ImportRealModuleTest, AFileWithoutExtensionIsExaminedByItsContent) {
    const std::string file = Write("noextension", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({file}));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output,
                HasSubstr("  KV Go \"Orvik Swatch Exchange Reader\", open as document \"noextension\" -> 0\n"));
}

TEST_F(ImportRealModuleTest, AReadErrorIsShownAndFailsTheRun) {
    testsupport::ColorBookDescription book = testsupport::SampleColorBook();
    book.colorSpace = 5;  // no colour space of the format
    const std::string file = Write("bad.ocb", testsupport::BuildColorBook(book));
    const std::string good = Write("good.ose", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    const auto result = RunKelvraHost(Import({file, good}));
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("  KV Go \"Orvik Color Book Reader\", open as document \"bad.ocb\" -> CANT\n"
                                         "  alert: An error occurred when reading the color book 'bad.ocb'.\n"));
    EXPECT_THAT(result.output, HasSubstr("2 files: 1 imported, 1 failed\n"));
}

}  // namespace
