#include "swatchbook/ReferenceBook.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "AllocationCounting.h"
#include "swatchbook/SwatchbookCodes.h"

using testsupport::AllocationFailureScope;
using namespace swatchbook;

namespace {

class ReferenceBookTest : public testing::Test {
protected:
    std::int32_t AddFormatOf(std::int32_t colorSpace, std::int32_t encoding) {
        const std::int32_t format = book.AddFormat();
        book.SetFormatColorSpace(format, colorSpace);
        book.SetFormatEncoding(format, encoding);
        return format;
    }
    std::int32_t AddNamed(const std::u16string& name, std::int32_t kind = kProcessKind) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchKind(swatch, kind);
        book.SetSwatchName(swatch, name);
        return swatch;
    }
    std::int32_t AddColor(const std::u16string& name, std::int32_t colorSpace, const double* values,
                          std::int32_t kind = kProcessKind) {
        const std::int32_t swatch = AddNamed(name, kind);
        EXPECT_TRUE(book.SetSwatchValuesFloat(swatch, AddFormatOf(colorSpace, kFloatEncoding), values));
        return swatch;
    }

    ReferenceBook book;
};

TEST_F(ReferenceBookTest, ANewBookIsEmpty) {
    EXPECT_EQ(book.GetVersion(), 0);
    EXPECT_EQ(book.GetPageSize(), 0);
    EXPECT_EQ(book.GetPageKeyOffset(), 0);
    EXPECT_EQ(book.GetBookID(), 0);
    EXPECT_EQ(book.GetTitle(), u"");
    EXPECT_EQ(book.GetCopyright(), u"");
    EXPECT_EQ(book.GetPrefix(), u"");
    EXPECT_EQ(book.GetPostfix(), u"");
    EXPECT_EQ(book.CountSwatches(), 0);
    EXPECT_EQ(book.CountFormats(), 0);
}

TEST_F(ReferenceBookTest, PropertiesAreKeptAsSet) {
    book.SetVersion(3);
    book.SetPageSize(7);
    book.SetPageKeyOffset(4);
    book.SetBookID(3005);
    book.SetTitle(u"Pastels");
    book.SetCopyright(u"(c) us");
    book.SetPrefix(u"ORV ");
    book.SetPostfix(u" C");
    EXPECT_EQ(book.GetVersion(), 3);
    EXPECT_EQ(book.GetPageSize(), 7);
    EXPECT_EQ(book.GetPageKeyOffset(), 4);
    EXPECT_EQ(book.GetBookID(), 3005);
    EXPECT_EQ(book.GetTitle(), u"Pastels");
    EXPECT_EQ(book.GetCopyright(), u"(c) us");
    EXPECT_EQ(book.GetPrefix(), u"ORV ");
    EXPECT_EQ(book.GetPostfix(), u" C");
}

TEST_F(ReferenceBookTest, AddSwatchAppendsToAnEmptyBookAtZero) {
    EXPECT_EQ(book.AddSwatch(-1), 0);
    EXPECT_EQ(book.CountSwatches(), 1);
}

TEST_F(ReferenceBookTest, AddSwatchBeyondTheCountAppends) {
    for (int i = 0; i < 5; ++i) {
        AddNamed(u"s" + std::u16string(1, char16_t(u'0' + i)));
    }
    EXPECT_EQ(book.AddSwatch(7), 5);
    EXPECT_EQ(book.CountSwatches(), 6);
    EXPECT_EQ(book.GetSwatchName(5, false), u"");
    EXPECT_EQ(book.AddSwatch(-5), 6);
}

TEST_F(ReferenceBookTest, AddSwatchInsertsBeforeTheSwatchAtItsPosition) {
    for (int i = 0; i < 5; ++i) {
        AddNamed(u"s" + std::u16string(1, char16_t(u'0' + i)), kSpotKind);
    }
    EXPECT_EQ(book.AddSwatch(2), 2);
    ASSERT_EQ(book.CountSwatches(), 6);
    EXPECT_EQ(book.GetSwatchName(1, false), u"s1");
    EXPECT_EQ(book.GetSwatchName(2, false), u"");
    EXPECT_EQ(book.GetSwatchKind(2), 0);
    EXPECT_EQ(book.GetSwatchName(3, false), u"s2");
    EXPECT_EQ(book.GetSwatchKind(3), kSpotKind);
    EXPECT_EQ(book.GetSwatchName(5, false), u"s4");
    EXPECT_EQ(book.AddSwatch(6), 6);
}

TEST_F(ReferenceBookTest, ANewSwatchIsAllZero) {
    const ReferenceSwatch& record = book.GetSwatchRecord(book.AddSwatch(-1));
    EXPECT_EQ(record.kind, 0);
    EXPECT_EQ(record.colorSpace, 0);
    EXPECT_EQ(record.name[0], u'\0');
    for (double value : record.values) {
        EXPECT_EQ(value, 0.0);
    }
}

TEST_F(ReferenceBookTest, ANameOf31UnitsIsAcceptedAnd32AreRefused) {
    const std::int32_t swatch = AddNamed(u"old");
    const std::u16string longest(31, u'x');
    EXPECT_TRUE(book.SetSwatchName(swatch, longest));
    EXPECT_EQ(book.GetSwatchName(swatch, false), longest);
    EXPECT_FALSE(book.SetSwatchName(swatch, std::u16string(32, u'y')));
    EXPECT_EQ(book.GetSwatchName(swatch, false), longest);
}

TEST_F(ReferenceBookTest, ANameTakenFromUnitsWhereTheyLieIsKeptAsAStringWouldBe) {
    // Host-order units at an odd address, as a reader finds them in its buffer.
    std::uint8_t buffer[1 + 2 * 32] = {};
    const std::u16string longest(31, u'x');
    std::memcpy(buffer + 1, longest.data(), 2 * longest.size());
    const std::int32_t swatch = AddNamed(u"old");
    EXPECT_TRUE(book.SetSwatchNameUnits(swatch, buffer + 1, 31));
    EXPECT_EQ(book.GetSwatchName(swatch, false), longest);
    EXPECT_FALSE(book.SetSwatchNameUnits(swatch, buffer + 1, 32));
    EXPECT_EQ(book.GetSwatchName(swatch, false), longest);
    const char16_t shorter[] = {u'R', u'e', u'd'};
    std::memcpy(buffer + 1, shorter, sizeof shorter);
    EXPECT_TRUE(book.SetSwatchNameUnits(swatch, buffer + 1, 3));
    EXPECT_EQ(book.GetSwatchName(swatch, false), u"Red");
    EXPECT_TRUE(book.SetSwatchNameUnits(swatch, buffer + 1, 0));
    EXPECT_EQ(book.GetSwatchName(swatch, false), u"");
    EXPECT_FALSE(book.SetSwatchNameUnits(swatch + 1, buffer + 1, 3));
}

TEST_F(ReferenceBookTest, AShorterNameReplacesALongerOne) {
    const std::int32_t swatch = AddNamed(u"Longer name");
    EXPECT_TRUE(book.SetSwatchName(swatch, u"Red"));
    EXPECT_EQ(book.GetSwatchName(swatch, false), u"Red");
}

TEST_F(ReferenceBookTest, ANameReadsBackUpToItsFirstZeroUnit) {
    const std::int32_t swatch = book.AddSwatch(-1);
    EXPECT_TRUE(book.SetSwatchName(swatch, std::u16string(u"AB\0CD", 5)));
    EXPECT_EQ(book.GetSwatchName(swatch, false), u"AB");
    EXPECT_EQ(book.FindSwatchIndex(u"AB"), swatch);
}

TEST_F(ReferenceBookTest, NamesWithAffixesArePrefixNamePostfix) {
    book.SetPrefix(u"ORV ");
    book.SetPostfix(u" C");
    const std::int32_t swatch = AddNamed(u"100");
    EXPECT_EQ(book.GetSwatchName(swatch, true), u"ORV 100 C");
    EXPECT_EQ(book.GetSwatchName(swatch, false), u"100");
}

TEST_F(ReferenceBookTest, ReadingABadSwatchIndexAnswersNothing) {
    AddNamed(u"Red", kSpotKind);
    for (std::int32_t bad : {-1, 1, 100}) {
        EXPECT_EQ(book.GetSwatchName(bad, true), u"");
        EXPECT_EQ(book.GetSwatchKind(bad), 0);
        EXPECT_EQ(book.GetSwatchRecord(bad).kind, 0);
    }
}

TEST_F(ReferenceBookTest, WritingABadSwatchIndexChangesNothing) {
    const std::int32_t f = AddFormatOf(kRGBSpace, kFloatEncoding);
    const double values[3] = {1, 1, 1};
    for (std::int32_t bad : {-1, 0, 5}) {
        EXPECT_EQ(book.SetSwatchKind(bad, kSpotKind), 0);
        EXPECT_FALSE(book.SetSwatchName(bad, u"x"));
        EXPECT_FALSE(book.SetSwatchValuesNative(bad, f, values));
    }
    EXPECT_EQ(book.CountSwatches(), 0);
}

TEST_F(ReferenceBookTest, KindsOutsideOneToThreeAreIgnored) {
    const std::int32_t swatch = book.AddSwatch(-1);
    book.SetSwatchKind(swatch, kEmptyPlaceKind);
    EXPECT_EQ(book.GetSwatchKind(swatch), 0);
    book.SetSwatchKind(swatch, kGlobalKind);
    book.SetSwatchKind(swatch, 0);
    book.SetSwatchKind(swatch, -3);
    EXPECT_EQ(book.GetSwatchKind(swatch), kGlobalKind);
    for (std::int32_t kind : {1, 2, 3}) {
        book.SetSwatchKind(swatch, kind);
        EXPECT_EQ(book.GetSwatchKind(swatch), kind);
    }
}

TEST_F(ReferenceBookTest, GroupsAreNotKept) {
    std::int32_t ok = 42;
    EXPECT_EQ(book.AddGroup(), -1);
    book.EndGroup(0xC002, 12, 0);
    EXPECT_EQ(book.CountGroups(&ok), 0);
    EXPECT_EQ(ok, 42);
    EXPECT_EQ(book.CountGroups(nullptr), 0);
    EXPECT_FALSE(book.SelectGroup(0));
    EXPECT_FALSE(book.IsDefaultGroup(0));
    EXPECT_EQ(book.CountGroupSwatches(), -1);
    EXPECT_FALSE(book.SetGroupName(u"Group"));
    EXPECT_EQ(book.GetGroupName(), u"");
}

TEST_F(ReferenceBookTest, KeysAndTintsAreAcceptedAndNotKept) {
    const std::int32_t swatch = AddNamed(u"Red");
    EXPECT_TRUE(book.SetSwatchKey(swatch, u"K-17"));
    EXPECT_EQ(book.GetSwatchKey(swatch), u"");
    EXPECT_TRUE(book.SetSwatchTint(swatch, 0.4));
    std::int32_t ok = 0;
    EXPECT_EQ(book.GetSwatchTint(swatch, &ok), 0.0);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(book.GetSwatchTint(swatch, nullptr), 0.0);
}

TEST_F(ReferenceBookTest, ValuesAreNotReadBackThroughTheInterface) {
    const double values[3] = {0.1, 0.2, 0.3};
    const std::int32_t swatch = AddColor(u"Red", kRGBSpace, values);
    double out[3] = {7, 7, 7};
    std::int32_t formats[4] = {9, 9, 9, 9};
    EXPECT_EQ(book.GetSwatchColorSpace(swatch), 0);
    EXPECT_FALSE(book.GetSwatchValuesNative(swatch, 0, out));
    EXPECT_EQ(out[0], 7);
    EXPECT_EQ(book.GetValueFormats(swatch, formats), 0);
    EXPECT_EQ(formats[0], 9);
}

TEST_F(ReferenceBookTest, Int8CmykValuesAreStoredAsWholePercentages) {
    const std::int32_t swatch = AddNamed(u"Cyan");
    const std::int32_t f = AddFormatOf(kCMYKSpace, kInt8Encoding);
    const std::uint8_t values[4] = {255, 128, 0, 0};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, f, values));
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    EXPECT_EQ(record.colorSpace, kCMYKSpace);
    EXPECT_EQ(record.values[0], 1.0);
    EXPECT_EQ(record.values[1], 0.5);
    EXPECT_EQ(record.values[2], 0.0);
    EXPECT_EQ(record.values[3], 0.0);
}

TEST_F(ReferenceBookTest, ChannelsBeyondTheColorSpaceAreZero) {
    const std::int32_t swatch = AddNamed(u"Cyan");
    const std::int32_t cmyk = AddFormatOf(kCMYKSpace, kFloatEncoding);
    const std::int32_t gray = AddFormatOf(kGraySpace, kInt16Encoding);
    const double four[4] = {0.1, 0.2, 0.3, 0.4};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, cmyk, four));
    const std::uint16_t one[1] = {65535};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, gray, one));
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    EXPECT_EQ(record.colorSpace, kGraySpace);
    EXPECT_EQ(record.values[0], 1.0);
    EXPECT_EQ(record.values[1], 0.0);
    EXPECT_EQ(record.values[3], 0.0);
}

TEST_F(ReferenceBookTest, ACustomFormatCannotStoreValues) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const std::int32_t f = AddFormatOf(kCustomSpace, kFloatEncoding);
    book.SetFormatChannels(f, 2);
    const double values[2] = {0.5, 0.5};
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, f, values));
    EXPECT_EQ(book.GetSwatchRecord(swatch).colorSpace, 0);
}

TEST_F(ReferenceBookTest, ValuesThatCannotBeStoredLeaveTheEarlierOnes) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const double earlier[3] = {0.25, 0.5, 0.75};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kFloatEncoding), earlier));
    const std::int32_t custom = AddFormatOf(kCustomSpace, kFloatEncoding);
    book.SetFormatChannels(custom, 2);
    const double values[2] = {0.9, 0.9};
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, custom, values));
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kInt8Encoding), nullptr));
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    EXPECT_EQ(record.colorSpace, kRGBSpace);
    EXPECT_EQ(record.values[0], 0.25);
    EXPECT_EQ(record.values[1], 0.5);
    EXPECT_EQ(record.values[2], 0.75);
}

TEST_F(ReferenceBookTest, ValuesHandedInFromTheRecordItselfAreConvertedAsTheyWere) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const double cmyk[4] = {0.1, 0.2, 0.3, 0.4};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, AddFormatOf(kCMYKSpace, kFloatEncoding), cmyk));
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    // The record's values read as three RGB channels, then from the second channel on.
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kFloatEncoding), record.values));
    EXPECT_EQ(record.values[0], 0.1);
    EXPECT_EQ(record.values[1], 0.2);
    EXPECT_EQ(record.values[2], 0.3);
    EXPECT_EQ(record.values[3], 0.0);
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kFloatEncoding), record.values + 1));
    EXPECT_EQ(record.values[0], 0.2);
    EXPECT_EQ(record.values[1], 0.3);
    EXPECT_EQ(record.values[2], 0.0);
}

TEST_F(ReferenceBookTest, AFormatWithoutColorSpaceCannotStoreValues) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const std::int32_t f = book.AddFormat();
    book.SetFormatEncoding(f, kFloatEncoding);
    const double values[4] = {};
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, f, values));
}

TEST_F(ReferenceBookTest, AnUnknownFormatEncodingStoresTheColorSpaceAndZeros) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const double first[3] = {0.5, 0.5, 0.5};
    ASSERT_TRUE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kFloatEncoding), first));
    const std::int32_t f = book.AddFormat();
    book.SetFormatColorSpace(f, kLabSpace);
    const std::uint8_t values[3] = {200, 200, 200};
    EXPECT_TRUE(book.SetSwatchValuesNative(swatch, f, values));
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    EXPECT_EQ(record.colorSpace, kLabSpace);
    EXPECT_EQ(record.values[0], 0.0);
    EXPECT_EQ(record.values[2], 0.0);
}

TEST_F(ReferenceBookTest, ABadFormatIndexCannotStoreValues) {
    const std::int32_t swatch = AddNamed(u"Ink");
    const double values[4] = {};
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, 0, values));
    AddFormatOf(kRGBSpace, kFloatEncoding);
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, -1, values));
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, 1, values));
    EXPECT_TRUE(book.SetSwatchValuesNative(swatch, 0, values));
}

TEST_F(ReferenceBookTest, NullValuesCannotBeStored) {
    const std::int32_t swatch = AddNamed(u"Ink");
    EXPECT_FALSE(book.SetSwatchValuesNative(swatch, AddFormatOf(kRGBSpace, kInt8Encoding), nullptr));
}

// --- Look-ups by full name

// The book answers values already in the format's encoding in line; the
// base's path (OrvikSwatchbook::SetSwatchValues, called by name) must give
// the same answer and the same record for every colour space, format
// encoding, given encoding, index and buffer, valid or not.
TEST(ReferenceBookValues, TheInLinePathAnswersAndStoresAsTheBasesPath) {
    // Each buffer holds four values of the widest encoding, whatever it is read as.
    const double float64[kMaxChannels] = {-0.5, 0.25, 1.5, 100.0};
    double int16[kMaxChannels] = {};
    const std::uint16_t int16Values[kMaxChannels] = {0, 4000, 32768, 65535};
    std::memcpy(int16, int16Values, sizeof int16Values);
    double int8[kMaxChannels] = {};
    const std::uint8_t int8Values[kMaxChannels] = {0, 77, 128, 255};
    std::memcpy(int8, int8Values, sizeof int8Values);
    const void* const buffers[] = {int8, int16, float64, nullptr};
    int compared = 0;
    for (std::int32_t colorSpace = 0; colorSpace <= kXYZSpace + 1; ++colorSpace) {
        for (std::int32_t formatEncoding = 0; formatEncoding <= kFloatEncoding + 1; ++formatEncoding) {
            for (std::int32_t encoding = 0; encoding <= kFloatEncoding + 1; ++encoding) {
                for (const void* values : buffers) {
                    for (const std::int32_t format : {0, 1, -1}) {
                        for (const std::int32_t swatch : {0, 1, -1}) {
                            ReferenceBook books[2];
                            for (ReferenceBook& each : books) {
                                const std::int32_t added = each.AddFormat();
                                each.SetFormatColorSpace(added, colorSpace);
                                each.SetFormatEncoding(added, formatEncoding);
                                each.AddSwatch(-1);
                            }
                            const bool inLine = books[0].SetSwatchValues(swatch, format, encoding, values);
                            const bool base =
                                books[1].OrvikSwatchbook::SetSwatchValues(swatch, format, encoding, values);
                            ASSERT_EQ(inLine, base) << colorSpace << " " << formatEncoding << " " << encoding;
                            ASSERT_EQ(std::memcmp(&books[0].GetSwatchRecord(0), &books[1].GetSwatchRecord(0),
                                                  sizeof(ReferenceSwatch)),
                                      0)
                                << colorSpace << " " << formatEncoding << " " << encoding;
                            compared += inLine ? 1 : 0;
                        }
                    }
                }
            }
        }
    }
    EXPECT_GT(compared, 0);  // some calls stored values, so records were compared after a change
}

TEST_F(ReferenceBookTest, Int8AndFloatValuesGoThroughTheSameStoreAsTheGeneralCall) {
    const std::int32_t cmykInt8 = AddFormatOf(kCMYKSpace, kInt8Encoding);
    const std::int32_t rgbFloat = AddFormatOf(kRGBSpace, kFloatEncoding);
    const std::int32_t first = book.AddSwatch(-1);
    const std::int32_t second = book.AddSwatch(-1);
    const std::uint8_t ink[4] = {255, 0, 128, 51};
    const double light[4] = {0.25, 0.5, 1.0, 0.0};
    ASSERT_TRUE(book.SetSwatchValuesInt8(first, cmykInt8, ink));
    ASSERT_TRUE(book.SetSwatchValues(second, cmykInt8, kInt8Encoding, ink));
    EXPECT_EQ(std::memcmp(&book.GetSwatchRecord(first), &book.GetSwatchRecord(second), sizeof(ReferenceSwatch)), 0);
    ASSERT_TRUE(book.SetSwatchValuesFloat(first, rgbFloat, light));
    ASSERT_TRUE(book.SetSwatchValues(second, rgbFloat, kFloatEncoding, light));
    EXPECT_EQ(std::memcmp(&book.GetSwatchRecord(first), &book.GetSwatchRecord(second), sizeof(ReferenceSwatch)), 0);
    EXPECT_EQ(book.GetSwatchRecord(first).colorSpace, kRGBSpace);
    // Int8 values given for a Float format are converted first, as by the base.
    EXPECT_TRUE(book.SetSwatchValuesInt8(first, rgbFloat, ink));
    EXPECT_DOUBLE_EQ(book.GetSwatchRecord(first).values[0], 1.0);
}

TEST_F(ReferenceBookTest, TwoSwatchesNamedAlikeTheLookupFindsTheFirst) {
    AddNamed(u"Blue");
    AddNamed(u"Red");
    AddNamed(u"Green");
    AddNamed(u"Red");
    AddNamed(u"Amber");
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), 1);
    EXPECT_EQ(book.FindSwatchIndex(u"Blue"), 0);
    EXPECT_EQ(book.FindSwatchIndex(u"Amber"), 4);
    EXPECT_EQ(book.FindSwatchIndex(u"Green"), 2);
}

TEST_F(ReferenceBookTest, TheFirstOfManyEqualNamesWinsInALargeBook) {
    for (int i = 0; i < 3000; ++i) {
        AddNamed(u"n" + std::u16string(1, char16_t(u'a' + i % 26)) + std::u16string(1, char16_t(u'a' + i % 7)));
    }
    // i % 26 == 3 and i % 7 == 5 first meet at i = 159.
    EXPECT_EQ(book.FindSwatchIndex(u"ndf"), 159);
    EXPECT_EQ(book.FindSwatchIndex(u"naa"), 0);
    EXPECT_EQ(book.FindSwatchIndex(u"nzz"), -1);
}

TEST_F(ReferenceBookTest, NamesFromAcrossTheCodeUnitRangeAndPrefixesOfEachOtherAreFound) {
    const std::u16string high(1, char16_t(0xFFFF));
    const std::u16string surrogate(1, char16_t(0xD800));
    AddNamed(high);
    AddNamed(u"ab");
    AddNamed(surrogate);
    AddNamed(u"a");
    AddNamed(u"b");
    EXPECT_EQ(book.FindSwatchIndex(high), 0);
    EXPECT_EQ(book.FindSwatchIndex(u"ab"), 1);
    EXPECT_EQ(book.FindSwatchIndex(surrogate), 2);
    EXPECT_EQ(book.FindSwatchIndex(u"a"), 3);
    EXPECT_EQ(book.FindSwatchIndex(u"b"), 4);
    EXPECT_EQ(book.FindSwatchIndex(u"A"), -1);
}

TEST_F(ReferenceBookTest, WithPrefixAndPostfixABareNameIsNotFound) {
    book.SetPrefix(u"ORV ");
    book.SetPostfix(u" C");
    AddNamed(u"100");
    EXPECT_EQ(book.FindSwatchIndex(u"ORV 100 C"), 0);
    EXPECT_EQ(book.FindSwatchIndex(u"100"), -1);
    ReferenceColor color{};
    EXPECT_FALSE(book.GetSwatchColor(u"100", color));
}

TEST_F(ReferenceBookTest, ANameTooLongToBeStoredIsNotLookedUp) {
    AddNamed(std::u16string(31, u'x'));
    EXPECT_EQ(book.FindSwatchIndex(std::u16string(31, u'x')), 0);
    EXPECT_EQ(book.FindSwatchIndex(std::u16string(32, u'x')), -1);
}

TEST_F(ReferenceBookTest, AnEmptyNameIsNotLookedUp) {
    book.AddSwatch(-1);
    EXPECT_EQ(book.FindSwatchIndex(u""), -1);
}

TEST_F(ReferenceBookTest, AnEmptyBookFindsNothing) {
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), -1);
}

TEST_F(ReferenceBookTest, LookupsSeeSwatchesAddedOrRenamedAfterAnEarlierLookup) {
    AddNamed(u"Red");
    AddNamed(u"Green");
    ASSERT_EQ(book.FindSwatchIndex(u"Green"), 1);
    book.AddSwatch(0);
    book.SetSwatchName(0, u"Blue");
    EXPECT_EQ(book.FindSwatchIndex(u"Green"), 2);
    EXPECT_EQ(book.FindSwatchIndex(u"Blue"), 0);
    book.SetSwatchName(1, u"Crimson");
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), -1);
    EXPECT_EQ(book.FindSwatchIndex(u"Crimson"), 1);
}

TEST_F(ReferenceBookTest, WithoutMemoryForTheIndexALookupStillFindsTheFirst) {
    AddNamed(u"Blue");
    AddNamed(u"Red");
    AddNamed(u"Red");
    AllocationFailureScope failure(0);
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), 1);
    EXPECT_EQ(book.FindSwatchIndex(u"Gold"), -1);
}

// --- Colour answers

TEST_F(ReferenceBookTest, AGraySwatchAnswersCmykWithBlackFromTheLightness) {
    const double gray[1] = {0.25};
    AddColor(u"Gray", kGraySpace, gray);
    ReferenceColor color{9, {9, 9, 9, 9}, 9};
    ASSERT_TRUE(book.GetSwatchColor(u"Gray", color));
    EXPECT_EQ(color.model, ReferenceColor::kCMYK);
    EXPECT_EQ(color.values[0], 0.0);
    EXPECT_EQ(color.values[1], 0.0);
    EXPECT_EQ(color.values[2], 0.0);
    EXPECT_EQ(color.values[3], 0.75);
    EXPECT_EQ(color.spot, 0);
}

TEST_F(ReferenceBookTest, LabRgbAndCmykSwatchesAnswerTheirModelAndValues) {
    const double lab[3] = {50, -10, 20};
    const double rgb[3] = {0.1, 0.2, 0.3};
    const double cmyk[4] = {0.4, 0.3, 0.2, 0.1};
    AddColor(u"Lab", kLabSpace, lab, kSpotKind);
    AddColor(u"RGB", kRGBSpace, rgb);
    AddColor(u"CMYK", kCMYKSpace, cmyk, kGlobalKind);
    ReferenceColor color{};
    ASSERT_TRUE(book.GetSwatchColor(u"Lab", color));
    EXPECT_EQ(color.model, ReferenceColor::kLab);
    EXPECT_EQ(color.values[1], -10.0);
    EXPECT_EQ(color.values[2], 20.0);
    EXPECT_EQ(color.spot, 1);
    ASSERT_TRUE(book.GetSwatchColor(u"RGB", color));
    EXPECT_EQ(color.model, ReferenceColor::kRGB);
    EXPECT_EQ(color.values[0], 0.1);
    EXPECT_EQ(color.values[2], 0.3);
    EXPECT_EQ(color.spot, 0);
    ASSERT_TRUE(book.GetSwatchColor(u"CMYK", color));
    EXPECT_EQ(color.model, ReferenceColor::kCMYK);
    EXPECT_EQ(color.values[0], 0.4);
    EXPECT_EQ(color.values[3], 0.1);
    EXPECT_EQ(color.spot, 0);
}

TEST_F(ReferenceBookTest, AnXyzSwatchAnswersTrueWithTheCallersColourUntouched) {
    const double xyz[3] = {0.3, 0.4, 0.5};
    AddColor(u"XYZ", kXYZSpace, xyz, kSpotKind);
    ReferenceColor color{ReferenceColor::kRGB, {0.9, 0.8, 0.7, 0.6}, 0};
    ASSERT_TRUE(book.GetSwatchColor(u"XYZ", color));
    EXPECT_EQ(color.model, ReferenceColor::kRGB);
    EXPECT_EQ(color.values[0], 0.9);
    EXPECT_EQ(color.values[3], 0.6);
    EXPECT_EQ(color.spot, 1);
}

TEST_F(ReferenceBookTest, ASwatchWithoutValuesAnswersTrueWithTheCallersColourUntouched) {
    AddNamed(u"Spacer");
    ReferenceColor color{ReferenceColor::kLab, {1, 2, 3, 4}, 5};
    ASSERT_TRUE(book.GetSwatchColor(u"Spacer", color));
    EXPECT_EQ(color.model, ReferenceColor::kLab);
    EXPECT_EQ(color.values[2], 3.0);
    EXPECT_EQ(color.spot, 0);
}

TEST_F(ReferenceBookTest, AnUnknownNameAnswersFalseAndLeavesTheColour) {
    ReferenceColor color{ReferenceColor::kLab, {1, 2, 3, 4}, 5};
    EXPECT_FALSE(book.GetSwatchColor(u"None", color));
    EXPECT_EQ(color.spot, 5);
}

// --- Filling

TEST_F(ReferenceBookTest, BeginFillForgetsSwatchesAndFormatsButNotProperties) {
    book.SetTitle(u"Title");
    book.SetBookID(9);
    const double gray[1] = {0.5};
    AddColor(u"Red", kGraySpace, gray);
    ASSERT_EQ(book.FindSwatchIndex(u"Red"), 0);
    book.BeginFill();
    EXPECT_EQ(book.CountSwatches(), 0);
    EXPECT_EQ(book.CountFormats(), 0);
    EXPECT_EQ(book.GetTitle(), u"Title");
    EXPECT_EQ(book.GetBookID(), 9);
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), -1);
    AddNamed(u"Blue");
    AddNamed(u"Red");
    EXPECT_EQ(book.FindSwatchIndex(u"Red"), 1);
}

TEST_F(ReferenceBookTest, BeginFillKeepsTheSwatchStorage) {
    AddNamed(u"Red");
    book.BeginFill();
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_EQ(book.AddSwatch(-1), 0); }), 0u);
}

TEST_F(ReferenceBookTest, EndFillTrimsTheSwatchStorageToTheCount) {
    AddNamed(u"Red");
    AddNamed(u"Green");
    EXPECT_EQ(AllocationsDuring([&] { book.EndFill(); }), 1u);
    EXPECT_EQ(book.GetSwatchName(1, false), u"Green");
    // Trimmed to its 2 records, the storage must grow for a third.
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_EQ(book.AddSwatch(-1), 2); }), 1u);
}

TEST_F(ReferenceBookTest, ReservedSwatchesNeitherGrowNorShrinkTheStorage) {
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_TRUE(book.ReserveSwatches(3)); }), 1u);
    EXPECT_EQ(AllocationsDuring([&] {
                  AddNamed(u"Red");
                  AddNamed(u"Green");
                  AddNamed(u"Blue");
                  book.EndFill();
              }),
              0u);
    EXPECT_EQ(book.CountSwatches(), 3);
    EXPECT_EQ(book.GetSwatchName(2, false), u"Blue");
    // Exactly three: a fourth swatch needs more storage.
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_EQ(book.AddSwatch(-1), 3); }), 1u);
}

TEST_F(ReferenceBookTest, ReservingAddsRoomBehindTheSwatchesThereAre) {
    AddNamed(u"Red");
    ASSERT_TRUE(book.ReserveSwatches(2));
    EXPECT_EQ(AllocationsDuring([&] {
                  AddNamed(u"Green");
                  AddNamed(u"Blue");
              }),
              0u);
    EXPECT_EQ(book.GetSwatchName(0, false), u"Red");
    EXPECT_EQ(book.GetSwatchName(1, false), u"Green");
}

TEST_F(ReferenceBookTest, ReservingWithoutMemoryChangesNothing) {
    AddNamed(u"Red");
    {
        AllocationFailureScope failure(0);
        EXPECT_FALSE(book.ReserveSwatches(100000));
    }
    EXPECT_EQ(book.CountSwatches(), 1);
    EXPECT_EQ(book.GetSwatchName(0, false), u"Red");
    EXPECT_EQ(book.AddSwatch(-1), 1);
}

TEST_F(ReferenceBookTest, ReservingMoreThanThirtyTwoBitIndicesCanReachFails) {
    AddNamed(u"Red");
    EXPECT_FALSE(book.ReserveSwatches(std::size_t(std::numeric_limits<std::int32_t>::max())));
    EXPECT_EQ(book.CountSwatches(), 1);
}

TEST_F(ReferenceBookTest, AddSwatchWithoutMemoryGivesMinusOne) {
    {
        AllocationFailureScope failure(0);
        EXPECT_EQ(book.AddSwatch(-1), -1);
    }
    EXPECT_EQ(book.CountSwatches(), 0);
}

TEST_F(ReferenceBookTest, SwatchStorageGrowsPastOneStepKeepingEveryRecord) {
    const std::int32_t f = AddFormatOf(kGraySpace, kInt8Encoding);
    for (int i = 0; i < 2000; ++i) {
        const std::int32_t swatch = book.AddSwatch(-1);
        ASSERT_EQ(swatch, i);
        book.SetSwatchName(swatch, u"g" + std::u16string(1, char16_t(0x100 + i)));
        const std::uint8_t value[1] = {static_cast<std::uint8_t>(i)};
        ASSERT_TRUE(book.SetSwatchValuesInt8(swatch, f, value));
    }
    book.EndFill();
    for (int i = 0; i < 2000; i += 97) {
        EXPECT_EQ(book.FindSwatchIndex(u"g" + std::u16string(1, char16_t(0x100 + i))), i);
        EXPECT_EQ(book.GetSwatchRecord(i).values[0], (i % 256) / 255.0);
    }
}

// Leaks show up under the sanitizers.
TEST(ReferenceBook, AFilledAndSearchedBookIsDestroyed) {
    {
        ReferenceBook book;
        book.SetTitle(std::u16string(100, u't'));
        book.SetPrefix(std::u16string(50, u'p'));
        const std::int32_t f = book.AddFormat();
        book.SetFormatColorSpace(f, kRGBSpace);
        book.SetFormatEncoding(f, kInt8Encoding);
        book.SetFormatCondition(f, u"Coated");
        for (int i = 0; i < 1000; ++i) {
            book.SetSwatchName(book.AddSwatch(-1), u"Name of some length");
        }
        EXPECT_EQ(book.FindSwatchIndex(std::u16string(50, u'p') + u"Name of some length"), 0);
        book.EndFill();
        EXPECT_EQ(book.GetFormatCondition(f), u"Coated");
    }
}

TEST(ReferenceBook, IsDestroyedThroughTheInterface) {
    OrvikSwatchbook* book = new ReferenceBook;
    book->SetSwatchName(book->AddSwatch(-1), u"Red");
    book->AddFormat();
    book->SetFormatID(0, u"id");
    EXPECT_EQ(book->FindSwatch(u"Red", false, false), 0);
    delete book;
}

}  // namespace
