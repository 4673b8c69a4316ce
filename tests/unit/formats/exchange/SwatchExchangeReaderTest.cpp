#include "formats/exchange/SwatchExchangeReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "formats/ReaderResult.h"
#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/MockSwatchbook.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace formats {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::StrictMock;
using testsupport::BuildSwatchExchange;
using testsupport::ByteWriter;
using testsupport::Bytes;
using testsupport::ColorBlock;
using testsupport::ExchangeBlock;
using testsupport::ExchangeColor;
using testsupport::GroupEndBlock;
using testsupport::GroupStartBlock;
using testsupport::MemoryStream;
using testsupport::MockSwatchbook;
using testsupport::SwatchExchangeDescription;
using testsupport::U16;

std::int32_t Read(const Bytes& file, OrvikSwatchbook& book, std::uint32_t flags = 0) {
    auto stream = MemoryStream::Reading(file);
    return ReadSwatchExchange(stream, book, flags);
}

SwatchExchangeDescription FileOf(std::vector<ExchangeBlock> blocks) {
    SwatchExchangeDescription file;
    file.blocks = std::move(blocks);
    return file;
}

// Compares doubles bit for bit, so that NaN, -0.0 and the exact clamped
// values all count.
MATCHER_P(PointsToDoubles, expected, "points to " + ::testing::PrintToString(expected)) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (std::memcmp(&arg[i], &expected[i], sizeof(double)) != 0) return false;
    }
    return true;
}

// A mock that answers like a plain book: formats from 0 up with their
// channel counts, swatches from 0 up.
class PlainMockBook : public NiceMock<MockSwatchbook> {
public:
    PlainMockBook() {
        ON_CALL(*this, AddFormat()).WillByDefault([this] {
            channels.push_back(0);
            return std::int32_t(channels.size() - 1);
        });
        ON_CALL(*this, SetFormatColorSpace(_, _)).WillByDefault([this](std::int32_t format, std::int32_t space) {
            channels.at(std::size_t(format)) = space == 2 ? 1 : space == 5 ? 4 : 3;
            return true;
        });
        ON_CALL(*this, GetFormatChannels(_)).WillByDefault([this](std::int32_t format) {
            return channels.at(std::size_t(format));
        });
        ON_CALL(*this, AddSwatch(_)).WillByDefault([this](std::int32_t) { return swatches++; });
    }
    std::vector<std::int32_t> channels;
    std::int32_t swatches = 0;
};

TEST(SwatchExchangeReaderTest, AClosedOrWritingStreamGives1) {
    StrictMock<MockSwatchbook> book;
    auto closed = MemoryStream::Closed(true);
    EXPECT_EQ(ReadSwatchExchange(closed, book, 0), kReadStreamNotOpen);
    auto writing = MemoryStream::Writing();
    EXPECT_EQ(ReadSwatchExchange(writing, book, 0), kReadStreamNotOpen);
}

TEST(SwatchExchangeReaderTest, HeaderChecksComeBeforeTheBookIsTouched) {
    StrictMock<MockSwatchbook> book;
    EXPECT_EQ(Read({'O', 'S', 'E'}, book), kReadTruncated);
    EXPECT_EQ(Read({'O', 'S', 'E', 'F', 0, 1, 0}, book), kReadTruncated);
    EXPECT_EQ(Read({'O', 'S', 'E', 'F', 0, 1, 0, 0, 0, 0, 0}, book), kReadTruncated);
    SwatchExchangeDescription file;
    file.magic = "OSEG";
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadBadMagic);
}

TEST(SwatchExchangeReaderTest, ExactlyTwelveBytesWithNoBlocksSucceedAndClearTheBook) {
    const Bytes file = BuildSwatchExchange({});
    ASSERT_EQ(file.size(), 12u);
    StrictMock<MockSwatchbook> book;
    EXPECT_CALL(book, BeginFill());
    EXPECT_EQ(Read(file, book), kReadOK);

    CompleteBook filled;
    ASSERT_EQ(Read(BuildSwatchExchange(testsupport::SampleSwatchExchange()), filled), kReadOK);
    ASSERT_GT(filled.CountSwatches(), 0);
    EXPECT_EQ(Read(file, filled), kReadOK);
    EXPECT_EQ(filled.CountSwatches(), 0);
    EXPECT_EQ(filled.CountFormats(), 0);
    EXPECT_EQ(filled.Groups().size(), 1u);
}

TEST(SwatchExchangeReaderTest, TenThousandBlocksAreAcceptedAndOneMoreGives6) {
    SwatchExchangeDescription file = FileOf(std::vector<ExchangeBlock>(10000, ExchangeBlock{0x8000, {}, {}}));
    NiceMock<MockSwatchbook> book;
    EXPECT_CALL(book, BeginFill());
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadOK);

    file.blocks.push_back({0x8000, {}, {}});
    StrictMock<MockSwatchbook> untouched;
    EXPECT_EQ(Read(BuildSwatchExchange(file), untouched), kReadTooManyBlocks);
}

TEST(SwatchExchangeReaderTest, ABookWithNoRoomForAFormatGives1BeforeTheEntryIsRead) {
    const SwatchExchangeDescription file = FileOf({ColorBlock({{}, U16("A"), {}, "RGB ", {0.5f, 0.5f, 0.5f}, 0}),
                                                   ColorBlock({{}, U16("B"), {}, "Gray", {0.5f}, 1})});
    PlainMockBook book;
    EXPECT_CALL(book, AddFormat()).WillOnce(Return(-1));
    EXPECT_CALL(book, AddSwatch(_)).Times(0);
    EXPECT_CALL(book, SetSwatchKind(_, _)).Times(0);
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadStreamNotOpen);
}

TEST(SwatchExchangeReaderTest, OnlyTheMajorVersionCounts) {
    SwatchExchangeDescription file = FileOf({ColorBlock({{}, U16("A"), {}, "Gray", {0.5f}, 0})});
    file.version = 0x00010005;
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(0, U16("A")));
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadOK);

    file.version = 0x00020000;
    StrictMock<MockSwatchbook> untouched;
    EXPECT_EQ(Read(BuildSwatchExchange(file), untouched), kReadBadVersion);
}

TEST(SwatchExchangeReaderTest, CallsFollowTheFileInOrder) {
    const Bytes file = BuildSwatchExchange(testsupport::SampleSwatchExchange());
    StrictMock<MockSwatchbook> book;
    InSequence order;
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, AddGroup()).WillOnce(Return(1));
    EXPECT_CALL(book, SelectGroup(1)).WillOnce(Return(true));
    EXPECT_CALL(book, SetGroupName(U16("Brand"))).WillOnce(Return(true));

    EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
    EXPECT_CALL(book, SetFormatEncoding(0, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(0, 4)).WillOnce(Return(true));
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
    EXPECT_CALL(book, SetSwatchName(0, U16("Signal Red"))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchTint(0, 0.5)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(3));
    EXPECT_CALL(book, SetSwatchValuesFloat(0, 0, PointsToDoubles(std::vector<double>{1.0, 0.25, 0.0})))
        .WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchKind(0, 1));

    EXPECT_CALL(book, AddFormat()).WillOnce(Return(1));
    EXPECT_CALL(book, SetFormatEncoding(1, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(1, 5)).WillOnce(Return(true));
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(1));
    EXPECT_CALL(book, SetSwatchName(1, U16("Ink"))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchTint(1, 0.0)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(1)).WillOnce(Return(4));
    EXPECT_CALL(book, SetSwatchValuesFloat(1, 1, PointsToDoubles(std::vector<double>{0.1f, 0.2f, 0.3f, 0.4f})))
        .WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchKind(1, 3));

    // The group end: its type, the offset of its type field, its index.
    const std::int64_t groupEnd = 12 + (6 + 2 + 12) + (6 + 4 + 2 + 22 + 4 + 12 + 2) + (6 + 2 + 8 + 4 + 16 + 2);
    EXPECT_CALL(book, EndGroup(0xC002, groupEnd, 3));

    EXPECT_CALL(book, AddFormat()).WillOnce(Return(2));
    EXPECT_CALL(book, SetFormatEncoding(2, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(2, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(2));
    EXPECT_CALL(book, SetSwatchName(2, U16("Leaf"))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchTint(2, 0.0)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(2)).WillOnce(Return(3));
    EXPECT_CALL(book, SetSwatchValuesFloat(2, 2, PointsToDoubles(std::vector<double>{50.0, -20.0, 30.0})))
        .WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchKind(2, 2));

    EXPECT_CALL(book, AddFormat()).WillOnce(Return(3));
    EXPECT_CALL(book, SetFormatEncoding(3, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(3, 2)).WillOnce(Return(true));
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(3));
    EXPECT_CALL(book, SetSwatchName(3, U16("Shadow"))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchTint(3, 0.0)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(3)).WillOnce(Return(1));
    EXPECT_CALL(book, SetSwatchValuesFloat(3, 3, PointsToDoubles(std::vector<double>{0.75}))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchKind(3, 2));
    // No EndFill: the caller completes the book.
    EXPECT_EQ(Read(file, book), kReadOK);
}

TEST(SwatchExchangeReaderTest, EachModelGetsOneFormatPerRead) {
    PlainMockBook book;
    EXPECT_CALL(book, AddFormat()).Times(2);
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({
                       ColorBlock({{}, U16("A"), {}, "RGB ", {0, 0, 0}, 0}),
                       ColorBlock({{}, U16("B"), {}, "Gray", {0}, 0}),
                       ColorBlock({{}, U16("C"), {}, "RGB ", {1, 1, 1}, 0}),
                       ColorBlock({{}, U16("D"), {}, "Gray", {1}, 0}),
                   })),
                   book),
              kReadOK);
    EXPECT_EQ(book.swatches, 4);
}

TEST(SwatchExchangeReaderTest, AGroupIsNamedOnlyWhenItCouldBeAddedAndSelected) {
    const Bytes file = BuildSwatchExchange(FileOf({GroupStartBlock(U16("G")), GroupStartBlock(U16("H"))}));
    StrictMock<MockSwatchbook> book;
    InSequence order;
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, AddGroup()).WillOnce(Return(-1));
    EXPECT_CALL(book, AddGroup()).WillOnce(Return(4));
    EXPECT_CALL(book, SelectGroup(4)).WillOnce(Return(false));
    EXPECT_EQ(Read(file, book), kReadOK);
}

TEST(SwatchExchangeReaderTest, AnXYZEntryMakesNoSwatchAndReadingGoesOn) {
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(_, U16("Before")));
    EXPECT_CALL(book, SetSwatchName(_, U16("After")));
    EXPECT_CALL(book, SetSwatchName(_, U16("Xyz"))).Times(0);
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({
                       ColorBlock({{}, U16("Before"), {}, "RGB ", {0, 0, 0}, 0}),
                       ColorBlock({{}, U16("Xyz"), {}, "XYZ ", {0.1f, 0.2f, 0.3f}, 0}),
                       ColorBlock({{}, U16("After"), {}, "RGB ", {0, 0, 0}, 0}),
                   })),
                   book),
              kReadOK);
    EXPECT_EQ(book.swatches, 2);
    EXPECT_EQ(book.channels.size(), 1u);
}

TEST(SwatchExchangeReaderTest, UnknownBlockTypesAreSkippedByTheirLength) {
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(_, U16("Kept")));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({
                       {0x0003, {1, 2, 3, 4, 5}, {}},
                       {0x8000, {0xC0, 0x01}, {}},
                       ColorBlock({{}, U16("Kept"), {}, "RGB ", {0, 0, 0}, 0}),
                   })),
                   book),
              kReadOK);
    EXPECT_EQ(book.swatches, 1);
}

TEST(SwatchExchangeReaderTest, ALongerDeclaredLengthIsSkippedToItsEnd) {
    ExchangeBlock padded = ColorBlock({{}, U16("A"), {}, "Gray", {0.5f}, 0});
    padded.data.insert(padded.data.end(), {0xC0, 0x01, 0, 0, 0, 9});  // looks like a block, is padding
    PlainMockBook book;
    EXPECT_CALL(book, AddGroup()).Times(0);
    EXPECT_CALL(book, SetSwatchName(_, U16("A")));
    EXPECT_CALL(book, SetSwatchName(_, U16("B")));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({padded, ColorBlock({{}, U16("B"), {}, "Gray", {0.5f}, 0})})), book),
              kReadOK);
}

TEST(SwatchExchangeReaderTest, AShorterDeclaredLengthIsReadWholeAndTheNextBlockStartsInsideIt) {
    // The entry's length leaves out its colour type, 0xC002, which then
    // doubles as the type of the next block; four zero bytes are its length.
    ExchangeBlock entry = ColorBlock({{}, U16("A"), {}, "Gray", {0.5f}, 0xC002});
    entry.declaredLength = std::uint32_t(entry.data.size() - 2);
    SwatchExchangeDescription file = FileOf({entry});
    file.blockCount = 2;
    file.trailing = {0, 0, 0, 0};
    StrictMock<MockSwatchbook> book;
    InSequence order;
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
    EXPECT_CALL(book, SetFormatEncoding(0, 3)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(0, 2)).WillOnce(Return(true));
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
    EXPECT_CALL(book, SetSwatchName(0, U16("A"))).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchTint(0, 0.0)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(1));
    EXPECT_CALL(book, SetSwatchValuesFloat(0, 0, _)).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchKind(0, 3));  // bit 1 of 0xC002
    EXPECT_CALL(book, EndGroup(0xC002, std::int64_t(12 + 6 + entry.data.size() - 2), 1));
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadOK);
}

struct ClampCase {
    const char* name;
    const char* model;
    std::vector<float> file;
    std::vector<double> book;
};

void PrintTo(const ClampCase& c, std::ostream* os) {
    *os << c.name;
}

class SwatchExchangeClampTest : public ::testing::TestWithParam<ClampCase> {};

TEST_P(SwatchExchangeClampTest, ValuesAreClampedAsWritten) {
    const ClampCase& c = GetParam();
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchValuesFloat(0, 0, PointsToDoubles(c.book)));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({ColorBlock({{}, U16("V"), {}, c.model, c.file, 0})})), book),
              kReadOK);
}

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

INSTANTIATE_TEST_SUITE_P(
    Clamping, SwatchExchangeClampTest,
    ::testing::Values(
        ClampCase{"LabOutOfRange", "LAB ", {1.2f, 200.0f, -300.0f}, {100.0, 128.0, -128.0}},
        ClampCase{"LabLIsScaledInDouble", "LAB ", {0.3f, 0.0f, 0.0f}, {double(0.3f) * 100.0, 0.0, 0.0}},
        ClampCase{"LabInfinities", "LAB ", {-kInf, kInf, -kInf}, {0.0, 128.0, -128.0}},
        ClampCase{"RGBBelowZero", "RGB ", {-0.5f, 0.5f, 1.5f}, {0.0, 0.5, 1.0}},
        ClampCase{"NaNPassesAndMinusZeroStays", "RGB ", {kNaN, -0.0f, kInf}, {double(kNaN), -0.0, 1.0}},
        ClampCase{"CMYK", "CMYK", {2.0f, -1.0f, 0.25f, 1.0f}, {1.0, 0.0, 0.25, 1.0}},
        ClampCase{"Gray", "Gray", {-kInf}, {0.0}}),
    [](const ::testing::TestParamInfo<ClampCase>& info) { return std::string(info.param.name); });

TEST(SwatchExchangeReaderTest, TheColourTypeGivesTheKind) {
    PlainMockBook book;
    InSequence order;
    EXPECT_CALL(book, SetSwatchKind(0, 2));
    EXPECT_CALL(book, SetSwatchKind(1, 1));
    EXPECT_CALL(book, SetSwatchKind(2, 3));
    EXPECT_CALL(book, SetSwatchKind(3, 1));  // 3 has bit 0: spot
    EXPECT_CALL(book, SetSwatchKind(4, 2));  // only bits 0 and 1 count
    std::vector<ExchangeBlock> blocks;
    for (std::uint16_t type : {0, 1, 2, 3, 0xFFFC}) blocks.push_back(ColorBlock({{}, U16("K"), {}, "Gray", {0}, type}));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf(blocks)), book), kReadOK);
}

TEST(SwatchExchangeReaderTest, AnUntintedEntryHasTint0AndATintedOneItsFloat) {
    PlainMockBook book;
    InSequence order;
    EXPECT_CALL(book, SetSwatchTint(0, 0.0));
    EXPECT_CALL(book, SetSwatchTint(1, double(0.3f)));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({ColorBlock({{}, U16("A"), {}, "Gray", {0}, 0}),
                                               ColorBlock({0.3f, U16("B"), {}, "Gray", {0}, 0})})),
                   book),
              kReadOK);
}

TEST(SwatchExchangeReaderTest, ANameFieldOfCount1IsEmptyAndOfCount0HasNoUnits) {
    ExchangeColor terminatorOnly{{}, {}, ByteWriter().U16(1).U16(0).Data(), "Gray", {0}, 0};
    ExchangeColor noUnits{{}, {}, ByteWriter().U16(0).Data(), "Gray", {0}, 0};
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(_, U16(""))).Times(2);
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({ColorBlock(terminatorOnly), ColorBlock(noUnits)})), book), kReadOK);
    EXPECT_EQ(book.swatches, 2);
}

TEST(SwatchExchangeReaderTest, TheNameEndsAtItsFirstZeroUnitAndKeepsOtherPlanes) {
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(_, U16("Smile 😀")));
    EXPECT_CALL(book, SetSwatchName(_, U16("Cut")));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({
                       ColorBlock({{}, U16("Smile 😀"), {}, "Gray", {0}, 0}),
                       ColorBlock({{}, {}, ByteWriter().U16(6).Units(U16("Cut")).U16(0).Units(U16("x")).U16(0).Data(),
                                   "Gray", {0}, 0}),
                   })),
                   book),
              kReadOK);
}

// "$$$/K=Red" with each unit stored low byte first.
Bytes LittleEndianField(const std::u16string& text) {
    ByteWriter out;
    out.U16(std::uint16_t(text.size() + 1));
    for (char16_t unit : text) out.U8(std::uint8_t(unit)).U8(std::uint8_t(unit >> 8));
    return out.U16(0).Data();
}

std::u16string Swapped(const std::u16string& text) {
    std::u16string out;
    for (char16_t unit : text) out.push_back(char16_t((unit >> 8) | (unit << 8)));
    return out;
}

TEST(SwatchExchangeReaderTest, TheKeyTestLooksAtUnitsAsStoredBeforeSwapping) {
    const auto entry = [](Bytes nameField) { return ColorBlock({{}, {}, std::move(nameField), "Gray", {0}, 0}); };
    const Bytes file = BuildSwatchExchange(FileOf({
        entry(LittleEndianField(U16("$$$/K=Red"))),                       // cut, the rest swapped
        entry(testsupport::ExchangeTextField(U16("$$$/K=Red"))),          // file order: never cut
        entry(LittleEndianField(U16("$$$/NoEquals"))),                    // no "=": whole
        entry(LittleEndianField(std::u16string(u"$$$\0=x", 6))),          // the scan stops at a zero unit
        entry(LittleEndianField(U16("$$"))),                              // under 3 units: never cut
    }));
    PlainMockBook book;
    EXPECT_CALL(book, SetSwatchName(0, Swapped(U16("Red"))));
    EXPECT_CALL(book, SetSwatchName(1, U16("$$$/K=Red")));
    EXPECT_CALL(book, SetSwatchName(2, Swapped(U16("$$$/NoEquals"))));
    EXPECT_CALL(book, SetSwatchName(3, Swapped(U16("$$$"))));
    EXPECT_CALL(book, SetSwatchName(4, Swapped(U16("$$"))));
    EXPECT_EQ(Read(file, book), kReadOK);

    PlainMockBook keeping;
    EXPECT_CALL(keeping, SetSwatchName(_, _)).Times(4);
    EXPECT_CALL(keeping, SetSwatchName(0, Swapped(U16("$$$/K=Red"))));
    EXPECT_EQ(Read(file, keeping, kSwatchExchangeKeepKeys), kReadOK);
}

TEST(SwatchExchangeReaderTest, GroupNamesFollowTheKeyRuleToo) {
    PlainMockBook book;
    EXPECT_CALL(book, AddGroup()).WillOnce(Return(1));
    EXPECT_CALL(book, SelectGroup(1)).WillOnce(Return(true));
    EXPECT_CALL(book, SetGroupName(Swapped(U16("G"))));
    EXPECT_EQ(Read(BuildSwatchExchange(FileOf({{0xC001, LittleEndianField(U16("$$$/x=G")), {}}})), book), kReadOK);
}

struct TruncationCase {
    const char* name;
    Bytes block;  // type, length and data; the file ends with it
    std::int32_t swatchesAdded;
};

void PrintTo(const TruncationCase& c, std::ostream* os) {
    *os << c.name;
}

class SwatchExchangeTruncationTest : public ::testing::TestWithParam<TruncationCase> {};

TEST_P(SwatchExchangeTruncationTest, DataEndingInsideAFieldGives5AndKeepsTheSwatch) {
    SwatchExchangeDescription file = FileOf({ColorBlock({{}, U16("Whole"), {}, "Gray", {0}, 0})});
    file.blockCount = 2;
    file.trailing = GetParam().block;
    PlainMockBook book;
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadTruncated);
    EXPECT_EQ(book.swatches, 1 + GetParam().swatchesAdded);
}

Bytes Header(std::uint16_t type, std::uint32_t length) {
    return ByteWriter().U16(type).U32(length).Data();
}

Bytes With(Bytes head, const Bytes& tail) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

INSTANTIATE_TEST_SUITE_P(
    Truncation, SwatchExchangeTruncationTest,
    ::testing::Values(
        TruncationCase{"Type", {0x00}, 0},
        TruncationCase{"Length", {0x00, 0x01, 0, 0, 0}, 0},
        TruncationCase{"Tint", With(Header(2, 40), {0x3F, 0}), 0},
        TruncationCase{"NameCount", With(Header(1, 40), {0}), 0},
        TruncationCase{"NameUnits", With(Header(1, 40), {0, 3, 0, 'A'}), 0},
        TruncationCase{"FarTooManyNameUnits", With(Header(1, 40), {0xFF, 0xFF, 0, 'A'}), 0},
        TruncationCase{"GroupName", With(Header(0xC001, 40), {0, 3, 0, 'A'}), 0},
        TruncationCase{"Model", With(Header(1, 40), {0, 1, 0, 0, 'R', 'G'}), 0},
        TruncationCase{"Values", With(Header(1, 40), {0, 1, 0, 0, 'R', 'G', 'B', ' ', 0, 0, 0, 0, 0, 0, 0, 0, 0}), 1},
        TruncationCase{"ColourType",
                       With(Header(1, 40), {0, 1, 0, 0, 'G', 'r', 'a', 'y', 0, 0, 0, 0, 0}), 1},
        TruncationCase{"LengthPastTheEnd", With(Header(1, 17), {0, 1, 0, 0, 'G', 'r', 'a', 'y', 0, 0, 0, 0, 0, 0}), 1},
        TruncationCase{"LengthOf4GiB", With(Header(0x8000, 0xFFFFFFFF), {1, 2, 3}), 0},
        TruncationCase{"EmptyGroupEndLengthPastTheEnd", Header(0xC002, 1), 0}),
    [](const ::testing::TestParamInfo<TruncationCase>& info) { return std::string(info.param.name); });

TEST(SwatchExchangeReaderTest, ABlockCountFarPastTheEndGives5AfterTheBlocksThatExist) {
    SwatchExchangeDescription file = testsupport::SampleSwatchExchange();
    file.blockCount = 10000;
    CompleteBook book;
    EXPECT_EQ(Read(BuildSwatchExchange(file), book), kReadTruncated);
    EXPECT_EQ(book.CountSwatches(), 4);
}

}  // namespace
}  // namespace formats
