#include "formats/colorbook/ColorBookReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "formats/ReaderResult.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/MockSwatchbook.h"
#include "tests/support/Utf16Text.h"

namespace formats {
namespace {

using ::testing::_;
using ::testing::InSequence;
using ::testing::NiceMock;
using ::testing::Return;
using ::testing::StrictMock;
using testsupport::Bytes;
using testsupport::BuildColorBook;
using testsupport::ColorBookDescription;
using testsupport::ColorBookRecord;
using testsupport::ColorBookTrailer;
using testsupport::MemoryStream;
using testsupport::MockSwatchbook;
using testsupport::U16;

MATCHER_P(PointsToBytes, expected, "points to the bytes " + ::testing::PrintToString(expected)) {
    return std::equal(expected.begin(), expected.end(), arg);
}

Bytes Concat(Bytes first, const Bytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

std::int32_t Read(const Bytes& file, OrvikSwatchbook& book, std::uint32_t flags) {
    auto stream = MemoryStream::Reading(file);
    return ReadColorBook(stream, book, flags);
}

ColorBookDescription OneRecordBook(std::uint16_t colorSpace, ColorBookRecord record) {
    ColorBookDescription book;
    book.colorSpace = colorSpace;
    book.records = {std::move(record)};
    return book;
}

// The calls up to the channel count, for a book whose format is index 0.
void ExpectHeader(MockSwatchbook& book, const ColorBookDescription& file, std::int32_t colorSpace,
                  std::int32_t channels) {
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, SetTitle(file.title));
    EXPECT_CALL(book, SetPrefix(file.prefix));
    EXPECT_CALL(book, SetPostfix(file.postfix));
    EXPECT_CALL(book, SetCopyright(file.copyright));
    EXPECT_CALL(book, SetPageSize(file.pageSize));
    EXPECT_CALL(book, SetPageKeyOffset(file.pageKeyOffset));
    EXPECT_CALL(book, SetBookID(file.bookId));
    EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
    EXPECT_CALL(book, SetFormatEncoding(0, 1)).WillOnce(Return(true));
    EXPECT_CALL(book, SetFormatColorSpace(0, colorSpace)).WillOnce(Return(true));
    EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(channels));
}

void ExpectSwatch(MockSwatchbook& book, std::int32_t index, std::int32_t kind, const std::u16string& name,
                  const std::vector<std::uint8_t>& values, std::optional<std::u16string> key = {}) {
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(index));
    EXPECT_CALL(book, SetSwatchKind(index, kind));
    EXPECT_CALL(book, SetSwatchName(index, name)).WillOnce(Return(true));
    if (key) EXPECT_CALL(book, SetSwatchKey(index, *key)).WillOnce(Return(true));
    EXPECT_CALL(book, SetSwatchValuesInt8(index, 0, PointsToBytes(values))).WillOnce(Return(true));
}

// A book double that only counts; answers like a plain book would.
class CountingBook : public NiceMock<MockSwatchbook> {
public:
    CountingBook() {
        ON_CALL(*this, AddFormat()).WillByDefault(Return(0));
        ON_CALL(*this, GetFormatChannels(_)).WillByDefault([this](std::int32_t) { return channels; });
        ON_CALL(*this, SetFormatColorSpace(_, _)).WillByDefault([this](std::int32_t, std::int32_t space) {
            channels = space == 5 ? 4 : 3;
            return true;
        });
        ON_CALL(*this, AddSwatch(_)).WillByDefault([this](std::int32_t) { return swatches++; });
        ON_CALL(*this, SetSwatchKind(_, _)).WillByDefault([this](std::int32_t, std::int32_t kind) {
            kinds.push_back(kind);
            return 0;
        });
    }
    std::int32_t channels = 0;
    std::int32_t swatches = 0;
    std::vector<std::int32_t> kinds;
};

TEST(IsColorBookTest, TellsTheMagic) {
    auto book = MemoryStream::Reading(BuildColorBook({}));
    EXPECT_EQ(IsColorBook(book), 1);
    auto other = MemoryStream::Reading({'7', 'K', 'C', 'X', 0, 1});
    EXPECT_EQ(IsColorBook(other), 0);
    auto shortFile = MemoryStream::Reading({'7', 'K', 'C'});
    EXPECT_EQ(IsColorBook(shortFile), 0);
    auto closed = MemoryStream::Closed(true);
    EXPECT_EQ(IsColorBook(closed), 0);
    EXPECT_EQ(closed.ReadCalls(), 0u);
}

TEST(ColorBookReaderTest, AClosedOrWritingStreamGives1AndLeavesTheBookAlone) {
    StrictMock<MockSwatchbook> book;
    auto closed = MemoryStream::Closed(true);
    EXPECT_EQ(ReadColorBook(closed, book, 0), kReadStreamNotOpen);
    auto writing = MemoryStream::Writing();
    EXPECT_EQ(ReadColorBook(writing, book, 0), kReadStreamNotOpen);
}

TEST(ColorBookReaderTest, ThreeBytesGive5) {
    StrictMock<MockSwatchbook> book;
    EXPECT_EQ(Read({'7', 'K', 'C'}, book, 0), kReadTruncated);
}

TEST(ColorBookReaderTest, AWrongFourthMagicByteGives3) {
    StrictMock<MockSwatchbook> book;
    ColorBookDescription file;
    file.magic = "7KCX";
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadBadMagic);
}

TEST(ColorBookReaderTest, Version2Gives4) {
    StrictMock<MockSwatchbook> book;
    ColorBookDescription file;
    file.version = 2;
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadBadVersion);
}

TEST(ColorBookReaderTest, AHeaderCutShortGives5WithoutTouchingTheBook) {
    const Bytes whole = BuildColorBook(testsupport::SampleColorBook());
    // Magic, version, identifier, four texts and four 16-bit values.
    const std::size_t headerEnd = 8 + (4 + 2 * 11) + (4 + 4) + (4 + 4) + (4 + 2 * 17) + 8;
    for (std::size_t size = 4; size < headerEnd; ++size) {
        SCOPED_TRACE(size);
        StrictMock<MockSwatchbook> book;
        EXPECT_EQ(Read(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)), book, 0), kReadTruncated);
    }
}

TEST(ColorBookReaderTest, ColorSpace1Gives8AfterTheHeaderAndTheFormatWereSet) {
    StrictMock<MockSwatchbook> book;
    ColorBookDescription file = OneRecordBook(1, {U16("Red"), "R", {1, 2, 3}, {}});
    file.title = U16("T");
    InSequence order;
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, SetTitle(U16("T")));
    EXPECT_CALL(book, SetPrefix(U16("")));
    EXPECT_CALL(book, SetPostfix(U16("")));
    EXPECT_CALL(book, SetCopyright(U16("")));
    EXPECT_CALL(book, SetPageSize(0));
    EXPECT_CALL(book, SetPageKeyOffset(0));
    EXPECT_CALL(book, SetBookID(0));
    EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
    EXPECT_CALL(book, SetFormatEncoding(0, 1)).WillOnce(Return(true));
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadUnknownColorSpace);
}

TEST(ColorBookReaderTest, ABookWithNoRoomForTheFormatGives1AndGetsNoSwatch) {
    NiceMock<MockSwatchbook> book;
    const auto file = OneRecordBook(0, {U16("Red"), "R", {1, 2, 3}, {}});
    EXPECT_CALL(book, SetTitle(_));
    EXPECT_CALL(book, AddFormat()).WillOnce(Return(-1));
    EXPECT_CALL(book, AddSwatch(_)).Times(0);
    EXPECT_CALL(book, EndFill()).Times(0);
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadStreamNotOpen);
}

TEST(ColorBookReaderTest, NoColoursGiveTheHeaderValuesAndSucceed) {
    StrictMock<MockSwatchbook> book;
    ColorBookDescription file;
    file.bookId = 3005;
    file.title = U16("Pastels");
    file.prefix = U16("P ");
    file.postfix = U16(" C");
    file.copyright = U16("© us");
    file.pageSize = 7;
    file.pageKeyOffset = 65535;
    file.colorSpace = testsupport::kColorBookCMYK;
    InSequence order;
    ExpectHeader(book, file, 5, 4);
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadOK);
}

TEST(ColorBookReaderTest, CallsFollowTheFileInOrderWithoutSettingTheVersion) {
    StrictMock<MockSwatchbook> book;
    const ColorBookDescription file = testsupport::SampleColorBook();
    InSequence order;
    ExpectHeader(book, file, 4, 3);
    // The trailer says spot; the gap is dropped; the key is cut.
    ExpectSwatch(book, 0, 1, U16("Red 032"), {255, 0, 0}, U16("RED"));
    ExpectSwatch(book, 1, 1, U16("Grün"), {0, 160, 64}, U16("123456"));
    ExpectSwatch(book, 2, 1, U16("Sky"), {90, 160, 255}, U16("SKY"));
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, kColorBookWithCodes), kReadOK);
}

TEST(ColorBookReaderTest, ALocalisationKeyNameIsCutUnlessKeysAreKept) {
    const auto file = BuildColorBook(OneRecordBook(0, {U16("$$$/Book/Red=Red 032"), "", {1, 2, 3}, {}}));
    for (std::uint32_t flags : {0u, kColorBookKeepKeys}) {
        NiceMock<MockSwatchbook> book;
        ON_CALL(book, GetFormatChannels(_)).WillByDefault(Return(3));
        EXPECT_CALL(book, SetSwatchName(_, flags ? U16("$$$/Book/Red=Red 032") : U16("Red 032")));
        EXPECT_EQ(Read(file, book, flags), kReadOK);
    }
}

TEST(ColorBookReaderTest, HeaderTextsFollowTheSameKeyRule) {
    ColorBookDescription file;
    file.title = U16("$$$/Book/Title=Pastels");
    file.prefix = U16("$$$/NoEquals");
    file.postfix = U16("$$/Two=Dollars");
    file.copyright = U16("$$$/Empty=");
    NiceMock<MockSwatchbook> book;
    EXPECT_CALL(book, SetTitle(U16("Pastels")));
    EXPECT_CALL(book, SetPrefix(U16("$$$/NoEquals")));
    EXPECT_CALL(book, SetPostfix(U16("$$/Two=Dollars")));
    EXPECT_CALL(book, SetCopyright(U16("")));
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadOK);
    NiceMock<MockSwatchbook> keeping;
    EXPECT_CALL(keeping, SetTitle(U16("$$$/Book/Title=Pastels")));
    EXPECT_CALL(keeping, SetCopyright(U16("$$$/Empty=")));
    EXPECT_EQ(Read(BuildColorBook(file), keeping, kColorBookKeepKeys), kReadOK);
}

TEST(ColorBookReaderTest, ANameCutToNothingIsANamedSwatchNotAGap) {
    StrictMock<MockSwatchbook> book;
    const auto file = OneRecordBook(7, {U16("$$$/Only/Key="), "", {10, 20, 30}, {}});
    InSequence order;
    ExpectHeader(book, file, 3, 3);
    ExpectSwatch(book, 0, 1, U16(""), {10, 20, 30});
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadOK);
}

TEST(ColorBookReaderTest, ZeroUnitsInsideANameAreKept) {
    NiceMock<MockSwatchbook> book;
    ON_CALL(book, GetFormatChannels(_)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchName(_, std::u16string(u"A\0B", 3)));
    EXPECT_EQ(Read(BuildColorBook(OneRecordBook(0, {std::u16string(u"A\0B", 3), "", {0, 0, 0}, {}})), book, 0),
              kReadOK);
}

TEST(ColorBookReaderTest, CMYKComponentsAreStoredInverted) {
    StrictMock<MockSwatchbook> book;
    const auto file = OneRecordBook(2, {U16("Ink"), "", {0x00, 0xFF, 0x80, 0x7F}, {}});
    InSequence order;
    ExpectHeader(book, file, 5, 4);
    ExpectSwatch(book, 0, 2, U16("Ink"), {255, 0, 127, 128});
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadOK);
}

TEST(ColorBookReaderTest, TheCodeEndsAtItsFirstZeroByteAndIsLatin1) {
    ColorBookDescription file;
    file.records = {{U16("A"), "ABC", {1, 2, 3}, {}},
                    {U16("B"), "123456", {1, 2, 3}, {}},
                    {U16("C"), "\xE9t\xE9", {1, 2, 3}, {}}};
    NiceMock<MockSwatchbook> book;
    ON_CALL(book, AddSwatch(_)).WillByDefault(Return(0));
    ON_CALL(book, GetFormatChannels(_)).WillByDefault(Return(3));
    InSequence order;
    EXPECT_CALL(book, SetSwatchKey(0, U16("ABC")));
    EXPECT_CALL(book, SetSwatchKey(0, U16("123456")));
    EXPECT_CALL(book, SetSwatchKey(0, U16("été")));
    EXPECT_EQ(Read(BuildColorBook(file), book, kColorBookWithCodes), kReadOK);
}

TEST(ColorBookReaderTest, WithoutFlagBit1NoCodeIsGiven) {
    NiceMock<MockSwatchbook> book;
    ON_CALL(book, GetFormatChannels(_)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchKey(_, _)).Times(0);
    EXPECT_EQ(Read(BuildColorBook(testsupport::SampleColorBook()), book, 0), kReadOK);
}

struct KindCase {
    const char* name;
    std::uint16_t colorSpace;
    std::uint32_t flags;
    std::int32_t kind;
    Bytes trailer;
};

void PrintTo(const KindCase& c, std::ostream* os) {
    *os << c.name;
}

class ColorBookKindTest : public ::testing::TestWithParam<KindCase> {};

TEST_P(ColorBookKindTest, FlagsAndTrailerChooseTheKind) {
    const KindCase& c = GetParam();
    ColorBookDescription file = OneRecordBook(c.colorSpace, {U16("X"), "", {1, 2, 3, 4}, {}});
    if (c.colorSpace != testsupport::kColorBookCMYK) file.records[0].components.pop_back();
    file.trailer = c.trailer;
    CountingBook book;
    EXPECT_EQ(Read(BuildColorBook(file), book, c.flags), kReadOK);
    EXPECT_EQ(book.kinds, std::vector<std::int32_t>{c.kind});
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ColorBookKindTest,
    ::testing::Values(KindCase{"LabIsSpot", 7, 0, 1, {}},
                      KindCase{"Flag8IsGlobal", 7, 8, 2, {}},
                      KindCase{"SpotTrailerWinsOverFlag8", 0, 8, 1, ColorBookTrailer("spot")},
                      KindCase{"RGBIsGlobal", 0, 0, 2, {}},
                      KindCase{"CMYKIsGlobal", 2, 0, 2, {}},
                      KindCase{"Flag4IsSpot", 0, 4, 1, {}},
                      KindCase{"Flag4WinsOverFlag8", 7, 12, 1, {}},
                      KindCase{"OtherTrailerMarkIsGlobal", 7, 4, 2, ColorBookTrailer("proc")},
                      KindCase{"BytesBehindTheTrailerAreIgnored", 0, 0, 1, Concat(ColorBookTrailer("spot"), {1, 2})},
                      KindCase{"SevenBytesAreNoTrailer", 7, 0, 1, {'s', 'p', 'f', 'l', 'x', 'y', 'z'}},
                      KindCase{"NoMarkNoTrailer", 7, 0, 1, {'s', 'p', 'f', 'x', 'x', 'y', 'z', '!'}}),
    [](const ::testing::TestParamInfo<KindCase>& info) { return std::string(info.param.name); });

TEST(ColorBookReaderTest, AGapIsDroppedWithoutFlag16) {
    StrictMock<MockSwatchbook> book;
    const auto file = OneRecordBook(0, {U16(""), "GAP", {1, 2, 3}, {}});
    InSequence order;
    ExpectHeader(book, file, 4, 3);
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, kColorBookWithCodes), kReadOK);
}

TEST(ColorBookReaderTest, AGapBecomesAnEmptyPlaceWithFlag16AndTakesNoCodeOrColour) {
    StrictMock<MockSwatchbook> book;
    const auto file = OneRecordBook(0, {U16(""), "GAP", {1, 2, 3}, {}});
    InSequence order;
    ExpectHeader(book, file, 4, 3);
    EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
    EXPECT_CALL(book, SetSwatchKind(0, 4));
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, kColorBookKeepGaps | kColorBookWithCodes), kReadOK);
}

TEST(ColorBookReaderTest, ALastRecordShortByOneComponentFailsWholeAndAddsNoSwatch) {
    ColorBookDescription file = testsupport::SampleColorBook();
    file.trailer.clear();
    Bytes bytes = BuildColorBook(file);
    bytes.pop_back();
    StrictMock<MockSwatchbook> book;
    InSequence order;
    ExpectHeader(book, file, 4, 3);
    EXPECT_EQ(Read(bytes, book, 0), kReadTruncated);
}

TEST(ColorBookReaderTest, MoreColoursDeclaredThanPresentGive5) {
    ColorBookDescription file = testsupport::SampleColorBook();
    file.colorCount = 65535;
    CountingBook book;
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadTruncated);
    EXPECT_EQ(book.swatches, 0);
}

TEST(ColorBookReaderTest, LengthsFarPastTheEndNeverWrapAround) {
    // 2 × 0x80000000 is 0 in 32-bit arithmetic.
    for (std::uint32_t length : {0x80000000u, 0xFFFFFFFFu, 0x7FFFFFFFu}) {
        SCOPED_TRACE(length);
        ColorBookDescription file = testsupport::SampleColorBook();
        file.records[0].declaredNameLength = length;
        CountingBook book;
        EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadTruncated);
        EXPECT_EQ(book.swatches, 0);

        Bytes header = BuildColorBook(ColorBookDescription{});
        testsupport::PatchU32(header, 8, length);  // the title's unit count
        StrictMock<MockSwatchbook> untouched;
        EXPECT_EQ(Read(header, untouched, 0), kReadTruncated);
    }
}

TEST(ColorBookReaderTest, AChannelCountThatIsNotPositiveReadsNoComponents) {
    StrictMock<MockSwatchbook> book;
    const auto file = OneRecordBook(0, {U16("A"), "", {}, {}});
    InSequence order;
    ExpectHeader(book, file, 4, -3);
    ExpectSwatch(book, 0, 2, U16("A"), {});
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(BuildColorBook(file), book, 0), kReadOK);
}

TEST(ColorBookReaderTest, ARealBookKeepsTheHeaderAfterALaterFailure) {
    ColorBookDescription file = testsupport::SampleColorBook();
    file.colorSpace = 1;
    ReferenceBook unknownSpace;
    EXPECT_EQ(Read(BuildColorBook(file), unknownSpace, 0), kReadUnknownColorSpace);
    EXPECT_EQ(unknownSpace.GetTitle(), U16("Sample Book"));
    EXPECT_EQ(unknownSpace.GetBookID(), 3002);
    EXPECT_EQ(unknownSpace.CountFormats(), 1);
    EXPECT_EQ(unknownSpace.GetFormatEncoding(0), 1);
    EXPECT_EQ(unknownSpace.CountSwatches(), 0);

    file = testsupport::SampleColorBook();
    file.records.back().declaredNameLength = 1000;
    ReferenceBook damagedRecord;
    EXPECT_EQ(Read(BuildColorBook(file), damagedRecord, 0), kReadTruncated);
    EXPECT_EQ(damagedRecord.GetPrefix(), U16("P "));
    EXPECT_EQ(damagedRecord.GetPageSize(), 7);
    EXPECT_EQ(damagedRecord.GetFormatColorSpace(0), 4);
    EXPECT_EQ(damagedRecord.CountSwatches(), 0);
}

TEST(ColorBookReaderTest, ARealBookReadsTheSample) {
    ReferenceBook book;
    ASSERT_EQ(Read(BuildColorBook(testsupport::SampleColorBook()), book, kColorBookKeepGaps), kReadOK);
    ASSERT_EQ(book.CountSwatches(), 4);
    EXPECT_EQ(book.GetSwatchName(0, true), U16("P Red 032 C"));
    EXPECT_EQ(book.GetSwatchKind(0), 1);
    EXPECT_EQ(book.GetSwatchKind(1), 0);  // an empty place has no kind the book keeps
    EXPECT_EQ(book.GetSwatchName(3, false), U16("Sky"));
    EXPECT_EQ(book.GetSwatchRecord(2).values[1], 160.0 / 255.0);
}

// Hostile input: the sample book cut at every length and with every byte
// flipped in turn ends with its result, and a failure among the records adds
// no swatch.
class ColorBookHostileTest : public ::testing::Test {
protected:
    const ColorBookDescription sample = testsupport::SampleColorBook();
    const Bytes whole = BuildColorBook(sample);
    const std::size_t recordsEnd = whole.size() - 8;
    const std::size_t colorSpaceField = 8 + (4 + 2 * 11) + (4 + 4) + (4 + 4) + (4 + 2 * 17) + 6;
};

TEST_F(ColorBookHostileTest, EveryTruncationEndsWith5OrWithoutTheTrailer) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        CountingBook book;
        const std::int32_t result = Read(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)), book, 0);
        if (size < recordsEnd) {
            EXPECT_EQ(result, kReadTruncated);
            EXPECT_EQ(book.swatches, 0);
        } else {
            EXPECT_EQ(result, kReadOK);
            EXPECT_EQ(book.kinds, std::vector<std::int32_t>(3, size == whole.size() ? 1 : 2));
        }
    }
}

TEST_F(ColorBookHostileTest, EveryFlippedByteEndsWithAResult) {
    for (std::size_t at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        Bytes damaged = whole;
        damaged[at] ^= 0xFF;
        CountingBook book;
        const std::int32_t result = Read(damaged, book, kColorBookKeepGaps | kColorBookWithCodes);
        if (at < 4) {
            EXPECT_EQ(result, kReadBadMagic);
        } else if (at < 6) {
            EXPECT_EQ(result, kReadBadVersion);
        } else if (at == colorSpaceField || at == colorSpaceField + 1) {
            EXPECT_EQ(result, kReadUnknownColorSpace);
        } else if (result == kReadOK) {
            EXPECT_LE(book.swatches, 65535);
        } else {
            EXPECT_EQ(result, kReadTruncated);
            EXPECT_EQ(book.swatches, 0);
        }
    }
}

}  // namespace
}  // namespace formats
