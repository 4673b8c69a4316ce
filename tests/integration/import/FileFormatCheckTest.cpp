// The two formats the module registers, and whether a file belongs to one:
// by its extension without opening it, by its contents when it has none,
// never when it has another.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <KVSwatchSuites.h>

#include "ModuleImport.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace {

using testsupport::BuildColorBook;
using testsupport::BuildSwatchExchange;
using testsupport::SampleColorBook;
using testsupport::SampleSwatchExchange;

constexpr ZPErr kNotRecognised = ZP_FOURCC('F', 'M', 'T', '?');

class FileFormatCheckTest : public import_testing::ModuleImportTest {
protected:
    std::uint64_t FiltersMade() { return Calls(kKVDataFilterSuite, "NewFileDataFilter"); }
};

TEST_F(FileFormatCheckTest, TheModuleRegistersTheColourBookThenTheSwatchExchangeFormat) {
    const std::vector<kelvra::FileFormatRecord> formats = host_.FileFormats();
    ASSERT_EQ(formats.size(), 2u);
    EXPECT_EQ(formats[0].name, "Orvik Color Book Reader");
    EXPECT_EQ(formats[0].title, "Orvik Color Book");
    EXPECT_EQ(formats[0].extension, "ocb");
    EXPECT_EQ(formats[1].name, "Orvik Swatch Exchange Reader");
    EXPECT_EQ(formats[1].title, "Orvik Swatch Exchange");
    EXPECT_EQ(formats[1].extension, "ose");
    for (const kelvra::FileFormatRecord& format : formats) {
        EXPECT_EQ(format.owner, module_);
        EXPECT_EQ(format.type, ZP_FOURCC('7', 'K', 'C', 'B'));
        EXPECT_EQ(format.titleOrder, 0);
        EXPECT_EQ(format.options, 16);
    }
}

TEST_F(FileFormatCheckTest, AnOseFileIsAcceptedWithoutBeingOpened) {
    const std::filesystem::path written = folder_.Write("book.ose", BuildSwatchExchange(SampleSwatchExchange()));
    EXPECT_EQ(Check(swatchExchange_, written), kZPNoErr);
    EXPECT_EQ(Check(swatchExchange_, folder_.Path() / "nowhere.ose"), kZPNoErr);  // not even there
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("junk.ose", testsupport::Bytes{1, 2, 3})), kZPNoErr);
    EXPECT_EQ(FiltersMade(), 0u);
}

TEST_F(FileFormatCheckTest, ASwatchExchangeFileWithoutExtensionIsOpenedAndExamined) {
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("book", BuildSwatchExchange(SampleSwatchExchange()))), kZPNoErr);
    EXPECT_EQ(FiltersMade(), 1u);
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("junk", testsupport::Bytes{'O', 'S', 'E', 'F', 0, 1})), kNotRecognised);
    EXPECT_EQ(Check(swatchExchange_, folder_.Path() / "nowhere"), kNotRecognised);
    EXPECT_EQ(FiltersMade(), 3u);
    EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
}

TEST_F(FileFormatCheckTest, AFileWithAnotherExtensionIsRefusedUnopenedEvenWhenItsContentsAreValid) {
    const testsupport::Bytes valid = BuildSwatchExchange(SampleSwatchExchange());
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("book.txt", valid)), kNotRecognised);
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("book.OSE", valid)), kNotRecognised);  // compared exactly
    EXPECT_EQ(Check(swatchExchange_, folder_.Write("book.ocb", valid)), kNotRecognised);
    EXPECT_EQ(FiltersMade(), 0u);
}

TEST_F(FileFormatCheckTest, AColourBookIsKnownByItsExtensionOrWithoutOneByItsMagic) {
    const testsupport::Bytes book = BuildColorBook(SampleColorBook());
    EXPECT_EQ(Check(colorBook_, folder_.Path() / "nowhere.ocb"), kZPNoErr);
    EXPECT_EQ(FiltersMade(), 0u);
    EXPECT_EQ(Check(colorBook_, folder_.Write("book", book)), kZPNoErr);
    EXPECT_EQ(FiltersMade(), 1u);
    EXPECT_EQ(Check(colorBook_, folder_.Write("exchange", BuildSwatchExchange(SampleSwatchExchange()))),
              kNotRecognised);
    EXPECT_EQ(Check(colorBook_, folder_.Write("short", testsupport::Bytes{'7', 'K', 'C'})), kNotRecognised);
    EXPECT_EQ(FiltersMade(), 3u);
    EXPECT_EQ(Check(colorBook_, folder_.Write("book.ose", book)), kNotRecognised);
    EXPECT_EQ(Check(colorBook_, folder_.Write("book.colors", book)), kNotRecognised);
    EXPECT_EQ(FiltersMade(), 3u);
}

TEST_F(FileFormatCheckTest, ARequestWithoutAFormatIsNotRecognisedAndShowsNothing) {
    EXPECT_EQ(Check(nullptr, folder_.Path() / "book.ose"), kNotRecognised);
    EXPECT_EQ(Check(reinterpret_cast<KVFileFormatHandle>(&host_), folder_.Path() / "book.ose"), kNotRecognised);
    EXPECT_TRUE(host_.Events().All().empty());
}

}  // namespace
