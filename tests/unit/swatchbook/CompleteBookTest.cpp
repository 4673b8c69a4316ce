#include "swatchbook/CompleteBook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

#include "formats/ReaderResult.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/SwatchbookCodes.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/FailingNew.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace {

using testing::ElementsAre;
using testsupport::MemoryStream;

std::int32_t FloatFormat(CompleteBook& book, std::int32_t colorSpace) {
    const std::int32_t format = book.AddFormat();
    book.SetFormatEncoding(format, swatchbook::kFloatEncoding);
    book.SetFormatColorSpace(format, colorSpace);
    return format;
}

std::vector<std::uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

TEST(CompleteBookTest, KeepsGroupsInOrderWithTheirOwnSwatches) {
    CompleteBook book;
    book.AddSwatch(-1);
    book.SetSwatchName(0, u"Loose");
    EXPECT_EQ(book.AddGroup(), 1);
    EXPECT_EQ(book.AddGroup(), 2);
    ASSERT_TRUE(book.SelectGroup(2));
    book.SetGroupName(u"Second");
    EXPECT_EQ(book.AddSwatch(-1), 0);  // indices count within the group
    book.SetSwatchName(0, u"B");
    EXPECT_EQ(book.AddSwatch(0), 0);
    book.SetSwatchName(0, u"A");
    ASSERT_TRUE(book.SelectGroup(1));
    book.SetGroupName(u"First");

    std::int32_t defaults = 0;
    EXPECT_EQ(book.CountGroups(&defaults), 3);
    EXPECT_EQ(defaults, 1);
    EXPECT_EQ(book.CountSwatches(), 3);
    EXPECT_EQ(book.CountGroupSwatches(), 0);
    EXPECT_EQ(book.GetGroupName(), u"First");
    EXPECT_TRUE(book.IsDefaultGroup(0));
    EXPECT_FALSE(book.IsDefaultGroup(1));
    EXPECT_FALSE(book.SelectGroup(3));
    EXPECT_FALSE(book.SelectGroup(-1));

    ASSERT_EQ(book.Groups().size(), 3u);
    EXPECT_EQ(book.Groups()[0].swatches[0].name, u"Loose");
    EXPECT_EQ(book.Groups()[2].name, u"Second");
    EXPECT_EQ(book.Groups()[2].swatches[0].name, u"A");
    EXPECT_EQ(book.Groups()[2].swatches[1].name, u"B");
}

TEST(CompleteBookTest, KeepsNamesOfAnyLengthKeysTintsAndAffixes) {
    CompleteBook book;
    book.SetPrefix(u"P ");
    book.SetPostfix(u" C");
    const std::int32_t swatch = book.AddSwatch(-1);
    const std::u16string longName(40, u'x');
    EXPECT_TRUE(book.SetSwatchName(swatch, longName));
    EXPECT_TRUE(book.SetSwatchKey(swatch, u"K-12"));
    EXPECT_TRUE(book.SetSwatchTint(swatch, 0.25));
    EXPECT_EQ(book.GetSwatchName(swatch, false), longName);
    EXPECT_EQ(book.GetSwatchName(swatch, true), u"P " + longName + u" C");
    EXPECT_EQ(book.GetSwatchKey(swatch), u"K-12");
    std::int32_t ok = 0;
    EXPECT_EQ(book.GetSwatchTint(swatch, &ok), 0.25);
    EXPECT_EQ(ok, 1);
    EXPECT_FALSE(book.SetSwatchName(1, u"none"));
    EXPECT_EQ(book.GetSwatchName(1, true), u"");
}

TEST(CompleteBookTest, KeepsAnEmptyPlaceButAnswersItAsNoKind) {
    CompleteBook book;
    book.AddSwatch(-1);
    EXPECT_EQ(book.SetSwatchKind(0, swatchbook::kEmptyPlaceKind), swatchbook::kEmptyPlaceKind);
    EXPECT_EQ(book.GetSwatchKind(0), 0);  // so the writer leaves it out
    EXPECT_EQ(book.Groups()[0].swatches[0].kind, swatchbook::kEmptyPlaceKind);
    EXPECT_EQ(book.SetSwatchKind(0, swatchbook::kGlobalKind), swatchbook::kGlobalKind);
    EXPECT_EQ(book.SetSwatchKind(0, 5), swatchbook::kGlobalKind);
    EXPECT_EQ(book.SetSwatchKind(0, 0), swatchbook::kGlobalKind);
    EXPECT_EQ(book.GetSwatchKind(0), swatchbook::kGlobalKind);
}

TEST(CompleteBookTest, KeepsValuesInEachFormatInItsOwnEncoding) {
    CompleteBook book;
    const std::int32_t lab = FloatFormat(book, swatchbook::kLabSpace);
    const std::int32_t cmyk = book.AddFormat();
    book.SetFormatEncoding(cmyk, swatchbook::kInt8Encoding);
    book.SetFormatColorSpace(cmyk, swatchbook::kCMYKSpace);
    const std::int32_t swatch = book.AddSwatch(-1);
    const std::uint8_t ink[4] = {0, 128, 200, 60};
    const double first[3] = {60, 2, 8};
    const double second[3] = {61, -3, 9};
    ASSERT_TRUE(book.SetSwatchValuesInt8(swatch, cmyk, ink));
    ASSERT_TRUE(book.SetSwatchValuesFloat(swatch, lab, first));
    ASSERT_TRUE(book.SetSwatchValuesFloat(swatch, lab, second));  // replaces the first

    std::int32_t formats[4] = {};
    ASSERT_EQ(book.GetValueFormats(swatch, formats), 2);
    EXPECT_EQ(formats[0], cmyk);
    EXPECT_EQ(formats[1], lab);
    EXPECT_EQ(book.GetSwatchColorSpace(swatch), swatchbook::kLabSpace);  // the last given
    std::uint8_t bytes[4] = {};
    ASSERT_TRUE(book.GetSwatchValuesNative(swatch, cmyk, bytes));
    EXPECT_THAT(bytes, ElementsAre(0, 128, 200, 60));
    double values[3] = {};
    ASSERT_TRUE(book.GetSwatchValuesNative(swatch, lab, values));
    EXPECT_THAT(values, ElementsAre(61, -3, 9));
    // Read in another encoding through the base's conversion.
    double percent[4] = {};
    ASSERT_TRUE(book.GetSwatchValuesFloat(swatch, cmyk, percent));
    EXPECT_THAT(percent, ElementsAre(0, 0.5, 0.78, 0.24));
    EXPECT_EQ(book.ChooseValueFormat(swatch, 0), lab);
}

TEST(CompleteBookTest, RefusesValuesItCannotPlace) {
    CompleteBook book;
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
    const std::int32_t swatch = book.AddSwatch(-1);
    const double values[3] = {1, 0, 0};
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, 2, values));
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch + 1, rgb, values));
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, rgb, nullptr));
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, rgb, values));
    double out[3] = {};
    EXPECT_FALSE(book.GetSwatchValuesNative(swatch, gray, out));  // never given in gray
    EXPECT_EQ(book.GetValueFormats(swatch + 1, nullptr), 0);
    // A format whose shape changed no longer fits what was given in it.
    book.SetFormatColorSpace(rgb, swatchbook::kCMYKSpace);
    EXPECT_FALSE(book.GetSwatchValuesNative(swatch, rgb, out));
}

TEST(CompleteBookTest, BeginFillForgetsSwatchesGroupsAndFormatsButNotProperties) {
    CompleteBook book;
    book.SetTitle(u"T");
    book.SetBookID(9);
    FloatFormat(book, swatchbook::kRGBSpace);
    book.AddGroup();
    book.SelectGroup(1);
    book.AddSwatch(-1);
    book.BeginFill();
    EXPECT_EQ(book.CountFormats(), 0);
    EXPECT_EQ(book.CountSwatches(), 0);
    EXPECT_EQ(book.CountGroups(nullptr), 1);
    EXPECT_EQ(book.CountGroupSwatches(), 0);  // the default group is selected again
    EXPECT_EQ(book.GetTitle(), u"T");
    EXPECT_EQ(book.GetBookID(), 9);
}

TEST(CompleteBookTest, AColorBookArrivesWithItsPagesKeysGapsAndBytes) {
    testsupport::ColorBookDescription description;
    description.bookId = 4100;
    description.title = u"Harbour";
    description.prefix = u"HB ";
    description.copyright = u"(c)";
    description.pageSize = 2;
    description.pageKeyOffset = 1;
    description.colorSpace = testsupport::kColorBookLab;
    description.records = {{u"Sea", "HB-100", {102, 128, 88}, {}}, {u"", "", {0, 0, 0}, {}}};
    auto stream = MemoryStream::Reading(testsupport::BuildColorBook(description));
    CompleteBook book;
    ASSERT_EQ(formats::ReadColorBook(stream, book, 2 | 16), formats::kReadOK);  // keys and gaps

    EXPECT_EQ(book.GetTitle(), u"Harbour");
    EXPECT_EQ(book.GetCopyright(), u"(c)");
    EXPECT_EQ(book.GetBookID(), 4100);
    EXPECT_EQ(book.GetPageSize(), 2);
    EXPECT_EQ(book.GetPageKeyOffset(), 1);
    ASSERT_EQ(book.Groups()[0].swatches.size(), 2u);
    const CompleteBook::Swatch& sea = book.Groups()[0].swatches[0];
    EXPECT_EQ(sea.kind, swatchbook::kSpotKind);
    EXPECT_EQ(sea.name, u"Sea");
    EXPECT_EQ(sea.key, u"HB-100");
    ASSERT_EQ(sea.values.size(), 1u);
    EXPECT_EQ(book.GetFormatEncoding(sea.values[0].format), swatchbook::kInt8Encoding);
    EXPECT_THAT(sea.values[0].bytes, ElementsAre(102, 128, 88));
    EXPECT_EQ(book.Groups()[0].swatches[1].kind, swatchbook::kEmptyPlaceKind);
    EXPECT_TRUE(book.Groups()[0].swatches[1].values.empty());
}

TEST(CompleteBookTest, AnXmlSwatchKeepsEveryFormatItsColourIsGivenIn) {
    const std::string xml = R"(<OrvikSwatchbook Title="Inks"><Formats>
        <Format ID="lab" ColorSpace="LAB" Encoding="Float"/><Format ID="cmyk" ColorSpace="CMYK" Encoding="Int16"/>
        </Formats><Swatches><Pr N="Copper"><C F="lab">50 10 -20</C><C F="cmyk">0 32768 65535 1</C></Pr>
        <Spacer/></Swatches></OrvikSwatchbook>)";
    auto stream = MemoryStream::Reading(Bytes(xml));
    CompleteBook book;
    ASSERT_EQ(formats::ReadXmlSwatchbook(stream, book, 16), formats::kReadOK);  // spacers kept

    ASSERT_EQ(book.Groups()[0].swatches.size(), 2u);
    const CompleteBook::Swatch& copper = book.Groups()[0].swatches[0];
    EXPECT_EQ(copper.kind, swatchbook::kGlobalKind);
    ASSERT_EQ(copper.values.size(), 2u);
    double lab[3] = {};
    std::memcpy(lab, copper.values[0].bytes.data(), sizeof lab);
    EXPECT_THAT(lab, ElementsAre(50, 10, -20));
    std::uint16_t cmyk[4] = {};
    std::memcpy(cmyk, copper.values[1].bytes.data(), sizeof cmyk);
    EXPECT_THAT(cmyk, ElementsAre(0, 32768, 65535, 1));
    EXPECT_EQ(book.Groups()[0].swatches[1].kind, swatchbook::kEmptyPlaceKind);
}

TEST(CompleteBookTest, AnExchangeFileArrivesWithItsGroupsAndTints) {
    using testsupport::ColorBlock;
    testsupport::SwatchExchangeDescription file;
    file.blocks = {ColorBlock({{}, u"Paper", {}, "Gray", {0.95f}, 2}), testsupport::GroupStartBlock(u"Brand"),
                   ColorBlock({0.5f, u"Light", {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 1}),
                   testsupport::GroupEndBlock()};
    auto stream = MemoryStream::Reading(testsupport::BuildSwatchExchange(file));
    CompleteBook book;
    ASSERT_EQ(formats::ReadSwatchExchange(stream, book, 0), formats::kReadOK);

    ASSERT_EQ(book.Groups().size(), 2u);
    EXPECT_EQ(book.Groups()[0].swatches[0].kind, swatchbook::kProcessKind);
    EXPECT_EQ(book.Groups()[1].name, u"Brand");
    const CompleteBook::Swatch& light = book.Groups()[1].swatches[0];
    EXPECT_EQ(light.kind, swatchbook::kSpotKind);
    EXPECT_EQ(light.tint, 0.5);
    double cmyk[4] = {};
    std::memcpy(cmyk, light.values[0].bytes.data(), sizeof cmyk);
    EXPECT_THAT(cmyk, ElementsAre(0.0, double(0.8f), double(0.9f), 0.0));
}

// Filling the book with any allocation failing either succeeds or throws
// std::bad_alloc out of the reader; nothing leaks (the sanitizers check).
TEST(CompleteBookTest, ANoMemoryFailureLeavesTheReaderWithBadAlloc) {
    const std::vector<std::uint8_t> file = testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange());
    bool succeeded = false;
    for (std::size_t allowed = 0; !succeeded; ++allowed) {
        ASSERT_LT(allowed, 1000u) << "the read never succeeded";
        auto stream = MemoryStream::Reading(file);
        CompleteBook book;
        try {
            testsupport::AllocationFailureScope noMemory(allowed);
            const std::int32_t result = formats::ReadSwatchExchange(stream, book, 0);
            // The reader's own buffer failing is its "cannot read" answer.
            EXPECT_TRUE(result == formats::kReadOK || result == formats::kReadStreamNotOpen) << result;
            succeeded = result == formats::kReadOK;
        } catch (const std::bad_alloc&) {
        }
    }
}

}  // namespace
