#include "formats/exchange/SwatchExchangeWriter.h"

#include <gtest/gtest.h>

#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace formats {
namespace {

using testsupport::BuildSwatchExchange;
using testsupport::ByteWriter;
using testsupport::Bytes;
using testsupport::ColorBlock;
using testsupport::GroupEndBlock;
using testsupport::GroupStartBlock;
using testsupport::MemoryStream;
using testsupport::SwatchExchangeDescription;
using testsupport::U16;

class SwatchExchangeWriterTest : public ::testing::Test {
protected:
    std::int32_t Format(std::int32_t colorSpace, std::int32_t encoding = swatchbook::kFloatEncoding) {
        const std::int32_t format = book.AddFormat();
        book.SetFormatEncoding(format, encoding);
        book.SetFormatColorSpace(format, colorSpace);
        return format;
    }

    std::int32_t NamedGroup(const std::u16string& name) {
        const std::int32_t group = book.AddGroup();
        book.SelectGroup(group);
        book.SetGroupName(name);
        return group;
    }

    void Swatch(const std::u16string& name, std::int32_t kind, double tint, std::int32_t format,
                std::vector<double> values) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchName(swatch, name);
        if (kind != 0) book.SetSwatchKind(swatch, kind);
        book.SetSwatchTint(swatch, tint);
        book.SetSwatchValuesFloat(swatch, format, values.data());
    }

    Bytes Written() {
        auto stream = MemoryStream::Writing();
        EXPECT_EQ(WriteSwatchExchange(stream, book), 1);
        return stream.Bytes();
    }

    static Bytes Expected(std::uint32_t blockCount, std::vector<testsupport::ExchangeBlock> blocks) {
        SwatchExchangeDescription file;
        file.blockCount = blockCount;
        file.blocks = std::move(blocks);
        return BuildSwatchExchange(file);
    }

    CompleteBook book;
};

TEST_F(SwatchExchangeWriterTest, AClosedOrReadingStreamFails) {
    auto closed = MemoryStream::Closed(false);
    EXPECT_EQ(WriteSwatchExchange(closed, book), 0);
    auto reading = MemoryStream::Reading({});
    EXPECT_EQ(WriteSwatchExchange(reading, book), 0);
}

TEST_F(SwatchExchangeWriterTest, AnEmptyBookIsAHeaderWithNoBlocks) {
    EXPECT_EQ(Written(), Expected(0, {}));
}

TEST_F(SwatchExchangeWriterTest, TheDefaultGroupComesFirstThenNamedGroupsWithStartAndEnd) {
    const std::int32_t rgb = Format(swatchbook::kRGBSpace);
    Swatch(U16("Loose"), swatchbook::kGlobalKind, 0.0, rgb, {1.0, 0.5, 0.25});
    NamedGroup(U16("Brand"));
    Swatch(U16("Signal"), swatchbook::kSpotKind, 0.5, rgb, {0.0, 0.0, 1.0});
    EXPECT_EQ(Written(), Expected(4, {
                                         ColorBlock({{}, U16("Loose"), {}, "RGB ", {1.0f, 0.5f, 0.25f}, 0}),
                                         GroupStartBlock(U16("Brand")),
                                         ColorBlock({0.5f, U16("Signal"), {}, "RGB ", {0.0f, 0.0f, 1.0f}, 1}),
                                         GroupEndBlock(),
                                     }));
}

TEST_F(SwatchExchangeWriterTest, KindsBecomeColourTypes) {
    const std::int32_t cmyk = Format(swatchbook::kCMYKSpace);
    Swatch(U16("Spot"), swatchbook::kSpotKind, 0.0, cmyk, {0.1, 0.2, 0.3, 0.4});
    Swatch(U16("Process"), swatchbook::kProcessKind, 0.0, cmyk, {0.1, 0.2, 0.3, 0.4});
    Swatch(U16("Global"), swatchbook::kGlobalKind, 0.0, cmyk, {0.1, 0.2, 0.3, 0.4});
    const std::vector<float> values{0.1f, 0.2f, 0.3f, 0.4f};
    EXPECT_EQ(Written(), Expected(3, {
                                         ColorBlock({{}, U16("Spot"), {}, "CMYK", values, 1}),
                                         ColorBlock({{}, U16("Process"), {}, "CMYK", values, 2}),
                                         ColorBlock({{}, U16("Global"), {}, "CMYK", values, 0}),
                                     }));
}

TEST_F(SwatchExchangeWriterTest, ATintedProcessSwatchAndAKind0SwatchAreLeftOutButCounted) {
    const std::int32_t gray = Format(swatchbook::kGraySpace);
    Swatch(U16("Tinted process"), swatchbook::kProcessKind, 0.5, gray, {0.5});
    Swatch(U16("No kind"), 0, 0.0, gray, {0.5});
    Swatch(U16("Tinted global"), swatchbook::kGlobalKind, 0.25, gray, {0.5});
    EXPECT_EQ(Written(), Expected(3, {ColorBlock({0.25f, U16("Tinted global"), {}, "Gray", {0.5f}, 0})}));
}

TEST_F(SwatchExchangeWriterTest, LabLIsAFractionAndGrayIsWrittenAsInk) {
    Swatch(U16("Lab"), swatchbook::kGlobalKind, 0.0, Format(swatchbook::kLabSpace), {50.0, -20.0, 30.0});
    Swatch(U16("Gray"), swatchbook::kGlobalKind, 0.0, Format(swatchbook::kGraySpace), {0.75});
    Swatch(U16("Xyz"), swatchbook::kGlobalKind, 0.0, Format(swatchbook::kXYZSpace), {0.1, 0.2, 0.3});
    EXPECT_EQ(Written(), Expected(3, {
                                         ColorBlock({{}, U16("Lab"), {}, "LAB ", {0.5f, -20.0f, 30.0f}, 0}),
                                         ColorBlock({{}, U16("Gray"), {}, "Gray", {0.25f}, 0}),
                                         ColorBlock({{}, U16("Xyz"), {}, "XYZ ", {0.1f, 0.2f, 0.3f}, 0}),
                                     }));
}

TEST_F(SwatchExchangeWriterTest, IntegerFormatsAreWrittenAsFloats) {
    const std::int32_t format = Format(swatchbook::kRGBSpace, swatchbook::kInt8Encoding);
    const std::int32_t swatch = book.AddSwatch(-1);
    book.SetSwatchName(swatch, U16("Bytes"));
    book.SetSwatchKind(swatch, swatchbook::kGlobalKind);
    const std::uint8_t bytes[] = {255, 0, 51};
    book.SetSwatchValuesInt8(swatch, format, bytes);
    EXPECT_EQ(Written(), Expected(1, {ColorBlock({{}, U16("Bytes"), {}, "RGB ", {1.0f, 0.0f, 0.2f}, 0})}));
}

TEST_F(SwatchExchangeWriterTest, ACustomSpaceOfFiveChannelsHasNoModelCodeAndAllItsValues) {
    const std::int32_t custom = Format(swatchbook::kCustomSpace);
    book.SetFormatChannels(custom, 5);
    Swatch(U16("Five"), swatchbook::kGlobalKind, 0.0, custom, {0.1, 0.2, 0.3, 0.4, 0.5});
    const Bytes data = ByteWriter()
                           .Raw(testsupport::ExchangeTextField(U16("Five")))
                           .U32(0)
                           .Float(0.1f).Float(0.2f).Float(0.3f).Float(0.4f).Float(0.5f)
                           .U16(0)
                           .Data();
    EXPECT_EQ(Written(), Expected(1, {{0x0001, data, {}}}));
}

TEST_F(SwatchExchangeWriterTest, NamesCarryAffixesAndCharactersOfOtherPlanes) {
    book.SetPrefix(U16("P "));
    book.SetPostfix(U16(" C"));
    Swatch(U16("Smile 😀"), swatchbook::kGlobalKind, 0.0, Format(swatchbook::kGraySpace), {1.0});
    EXPECT_EQ(Written(), Expected(1, {ColorBlock({{}, U16("P Smile 😀 C"), {}, "Gray", {0.0f}, 0})}));
}

TEST_F(SwatchExchangeWriterTest, AnEmptyGroupNameIsTwoZeroWordsAndAnEmptySwatchNameATerminator) {
    NamedGroup(u"");
    Swatch(u"", swatchbook::kGlobalKind, 0.0, Format(swatchbook::kGraySpace), {1.0});
    EXPECT_EQ(Written(), Expected(3, {
                                         {0xC001, {0, 0, 0, 0}, {}},
                                         ColorBlock({{}, u"", {}, "Gray", {0.0f}, 0}),
                                         GroupEndBlock(),
                                     }));
}

TEST_F(SwatchExchangeWriterTest, AShortWriteFailsAtOnceAndKeepsWhatWasWritten) {
    Swatch(U16("A"), swatchbook::kGlobalKind, 0.0, Format(swatchbook::kGraySpace), {1.0});
    const Bytes whole = Written();
    for (std::size_t limit = 0; limit < whole.size(); ++limit) {
        SCOPED_TRACE(limit);
        auto stream = MemoryStream::Writing();
        stream.LimitWrites(limit);
        EXPECT_EQ(WriteSwatchExchange(stream, book), 0);
        EXPECT_EQ(stream.Bytes(), Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(limit)));
    }
}

}  // namespace
}  // namespace formats
