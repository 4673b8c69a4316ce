// Exporting a document's swatches through the suite: the bytes are those the
// swatch exchange writer makes of the same swatches, and they import again
// as the same swatches, less what the format does not carry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <kelvra/DocumentJson.h>

#include <fstream>
#include <iterator>

#include "ImportTesting.h"
#include "KVError.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"
#include "SuiteTesting.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "swatchbook/KelvraSwatchBook.h"
#include "tests/support/MemoryStream.h"

namespace {

using import_testing::DescribeCustomColors;
using import_testing::DescribeSwatches;
using testing::ElementsAre;

constexpr const char* kSource = import_testing::kMixedSwatchesDocument;

std::vector<std::uint8_t> Contents(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class ExportThroughSuiteTest : public suite_testing::SuiteTest {
protected:
    // Exports through a write filter on `file`, unlinked afterwards.
    ZPErr Export(const std::string& file, KVDocumentHandle document) {
        KVFilePathRef path = plugin_->NewPath(file);
        KVDataFilterRef filter = nullptr;
        EXPECT_EQ(plugin_->Filters().NewFileDataFilter(path, "write", 0, 0, &filter), kZPNoErr);
        EXPECT_EQ(plugin_->Filters().LinkDataFilter(nullptr, filter), kZPNoErr);
        const ZPErr result = Suite().ExportSwatches(filter, document);
        EXPECT_EQ(plugin_->Filters().UnlinkDataFilter(filter, nullptr), kZPNoErr);
        plugin_->Paths().Dispose(path);
        return result;
    }

    // What the writer makes of the document, run in this process.
    std::vector<std::uint8_t> WrittenHere(const kelvra::Document& document) {
        kv::registered::ListRegisteredSuites();
        EXPECT_EQ(kv::AcquireRegisteredSuites(host_.BasicSuite()), kv::kNoErr);
        testsupport::MemoryStream file = testsupport::MemoryStream::Writing();
        {
            KelvraSwatchBook book(document.SwatchList());
            book.LoadSnapshot();
            EXPECT_EQ(formats::WriteSwatchExchange(file, book), 1);
        }
        kv::ReleaseAllSuites();
        return file.Bytes();
    }
};

TEST_F(ExportThroughSuiteTest, TheFileHoldsWhatTheWriterMakesOfTheDocument) {
    kelvra::Document& source = host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(kSource)));
    const std::string out = Home("out.ose");
    ASSERT_EQ(Export(out, source.Handle()), kZPNoErr);
    const std::vector<std::uint8_t> exported = Contents(out);
    ASSERT_GT(exported.size(), 12u);
    EXPECT_EQ(exported, WrittenHere(source));
}

TEST_F(ExportThroughSuiteTest, ANullDocumentIsTheCurrentOne) {
    kelvra::Document& source = host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(kSource)));
    const std::string named = Home("named.ose");
    const std::string current = Home("current.ose");
    ASSERT_EQ(Export(named, source.Handle()), kZPNoErr);
    host_.Documents().MakeCurrent(source);
    ASSERT_EQ(Export(current, nullptr), kZPNoErr);
    EXPECT_EQ(Contents(current), Contents(named));
}

TEST_F(ExportThroughSuiteTest, TheExportImportsAsTheSameSwatchesLessThoseWithoutAColourOfTheirOwn) {
    kelvra::Document& source = host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(kSource)));
    const std::string out = Home("out.ose");
    ASSERT_EQ(Export(out, source.Handle()), kZPNoErr);

    kelvra::Document& fresh = host_.Documents().New("Fresh");
    const kelvra::FormatOpening opening = host_.OpenWithFormats(out, kelvra::FormatTarget{&fresh, {}});
    ASSERT_TRUE(opening.go);
    EXPECT_EQ(opening.go->result, kZPNoErr);
    EXPECT_THAT(DescribeSwatches(fresh),
                ElementsAre("[]", "Paper: gray 0.25", "Sky: rgb 0.25 0.5 1", "[Brand]", "Ink: cmyk 0.1 0.2 0.3 0.4",
                            "Gold: custom \"Gold\" tint 0.5", "Leaf: custom \"Leaf\" tint 0", "[Empty]"));
    EXPECT_THAT(DescribeCustomColors(fresh),
                ElementsAre("Gold: lab 80 5 60 spot book 0", "Leaf: rgb 0 0.5 0.25 global book 0"));
}

TEST_F(ExportThroughSuiteTest, WithoutADocumentTheExportAnswersCant) {
    const std::string out = Home("out.ose");
    EXPECT_EQ(Export(out, nullptr), ZP_FOURCC('C', 'A', 'N', 'T'));
}

}  // namespace
