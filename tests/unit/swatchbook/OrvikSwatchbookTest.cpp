// The operations every book inherits from the interface's base: name search,
// affix stripping, values in a foreign encoding and the choice of a format.
#include "swatchbook/OrvikSwatchbook.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "AllocationCounting.h"
#include "swatchbook/ReferenceBook.h"
#include "swatchbook/SwatchbookCodes.h"

using testsupport::AllocationFailureScope;
using namespace swatchbook;

namespace {

// A reference book that can list value formats, claim a channel count and
// hand out native values, and that notes what reaches SetSwatchValuesNative.
class ProbeBook : public ReferenceBook {
public:
    // Room for any values up front, so that noting them allocates nothing.
    ProbeBook() { lastNativeBytes.reserve(64); }

    std::vector<std::int32_t> valueFormats;
    std::int32_t claimedChannels = -1;
    std::vector<std::uint8_t> nativeValues;
    bool nativeReadSucceeds = true;
    // What reached SetSwatchValuesNative last: the pointer, and a copy of
    // the values in the format's encoding.
    const void* lastNativeValues = nullptr;
    std::vector<std::uint8_t> lastNativeBytes;
    int nativeWrites = 0;

    std::int32_t GetFormatChannels(std::int32_t format) const override {
        return claimedChannels >= 0 ? claimedChannels : ReferenceBook::GetFormatChannels(format);
    }
    std::int32_t GetValueFormats(std::int32_t, std::int32_t* formats) const override {
        if (formats != nullptr) {
            std::copy(valueFormats.begin(), valueFormats.end(), formats);
        }
        return static_cast<std::int32_t>(valueFormats.size());
    }
    bool GetSwatchValuesNative(std::int32_t, std::int32_t, void* values) const override {
        if (nativeReadSucceeds) {
            std::memcpy(values, nativeValues.data(), nativeValues.size());
        }
        return nativeReadSucceeds;
    }
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override {
        lastNativeValues = values;
        const std::int32_t bytes = GetFormatChannels(format) * BytesPerChannel(GetFormatEncoding(format));
        if (values != nullptr && bytes > 0) {
            lastNativeBytes.assign(static_cast<const std::uint8_t*>(values),
                                   static_cast<const std::uint8_t*>(values) + bytes);
        }
        ++nativeWrites;
        return ReferenceBook::SetSwatchValuesNative(swatch, format, values);
    }

    std::int32_t AddFormatOf(std::int32_t colorSpace, std::int32_t encoding) {
        const std::int32_t format = AddFormat();
        SetFormatColorSpace(format, colorSpace);
        SetFormatEncoding(format, encoding);
        return format;
    }
    std::int32_t AddNamed(const std::u16string& name) {
        const std::int32_t swatch = AddSwatch(-1);
        SetSwatchName(swatch, name);
        return swatch;
    }
};

// --- StripAffixes

class StripAffixesTest : public testing::Test {
protected:
    void SetUp() override {
        book.SetPrefix(u"P ");
        book.SetPostfix(u" C");
    }
    ReferenceBook book;
};

TEST_F(StripAffixesTest, GivesTheMiddleOfAFullName) {
    EXPECT_EQ(book.StripAffixes(u"P 100 C"), u"100");
}

TEST_F(StripAffixesTest, ANameOfOnlyPrefixAndPostfixStripsToEmpty) {
    EXPECT_EQ(book.StripAffixes(u"P  C"), u"");
}

TEST_F(StripAffixesTest, ANameWithoutThePrefixStripsToEmpty) {
    EXPECT_EQ(book.StripAffixes(u"100 C"), u"");
}

TEST_F(StripAffixesTest, ANameWithoutThePostfixStripsToEmpty) {
    EXPECT_EQ(book.StripAffixes(u"P 100 U"), u"");
}

TEST_F(StripAffixesTest, ANameShorterThanTheAffixesStripsToEmpty) {
    EXPECT_EQ(book.StripAffixes(u"P"), u"");
    EXPECT_EQ(book.StripAffixes(u""), u"");
}

TEST(StripAffixes, AffixesThatOverlapInTheNameStripToEmpty) {
    ReferenceBook book;
    book.SetPrefix(u"ab");
    book.SetPostfix(u"ba");
    EXPECT_EQ(book.StripAffixes(u"aba"), u"");
    EXPECT_EQ(book.StripAffixes(u"abxba"), u"x");
}

TEST(StripAffixes, WithoutAffixesANonEmptyNameIsItself) {
    ReferenceBook book;
    EXPECT_EQ(book.StripAffixes(u"Red"), u"Red");
    EXPECT_EQ(book.StripAffixes(u""), u"");
}

TEST(StripAffixes, ComparesExactCodeUnits) {
    ReferenceBook book;
    book.SetPrefix(u"p");
    EXPECT_EQ(book.StripAffixes(u"P1"), u"");
    EXPECT_EQ(book.StripAffixes(u"p1"), u"1");
}

// --- FindSwatch

class FindSwatchTest : public testing::Test {
protected:
    ProbeBook book;
};

TEST_F(FindSwatchTest, FindsTheFirstExactMatchFromTheStart) {
    book.AddNamed(u"Red");
    book.AddNamed(u"Green");
    book.AddNamed(u"Red");
    EXPECT_EQ(book.FindSwatch(u"Red", false, false), 0);
    EXPECT_EQ(book.FindSwatch(u"Green", false, false), 1);
    EXPECT_EQ(book.FindSwatch(u"red", false, false), -1);
    EXPECT_EQ(book.FindSwatch(u"Blue", false, false), -1);
}

TEST_F(FindSwatchTest, SearchesFromTheStartPositionAndWrapsAround) {
    book.AddNamed(u"A");
    book.AddNamed(u"B");
    book.AddNamed(u"A");
    book.AddNamed(u"C");
    EXPECT_EQ(book.FindSwatch(u"A", false, false, 1), 2);
    EXPECT_EQ(book.FindSwatch(u"A", false, false, 3), 0);
    EXPECT_EQ(book.FindSwatch(u"B", false, false, 2), 1);
}

TEST_F(FindSwatchTest, AStartBeyondTheCountSearchesFromZero) {
    book.AddNamed(u"A");
    book.AddNamed(u"B");
    book.AddNamed(u"A");
    EXPECT_EQ(book.FindSwatch(u"A", false, false, 3), 0);
    EXPECT_EQ(book.FindSwatch(u"A", false, false, 99), 0);
    EXPECT_EQ(book.FindSwatch(u"A", false, false, -1), 0);
}

TEST_F(FindSwatchTest, StrippingLooksForTheNameWithoutPrefixAndPostfix) {
    book.SetPrefix(u"ORV ");
    book.SetPostfix(u" C");
    book.AddNamed(u"ORV 100 C");
    book.AddNamed(u"100");
    EXPECT_EQ(book.FindSwatch(u"ORV 100 C", true, false), 1);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 C", false, false), 0);
}

TEST_F(FindSwatchTest, ANameThatStripsToNothingFindsNothing) {
    book.SetPrefix(u"ORV ");
    book.AddNamed(u"");
    EXPECT_EQ(book.FindSwatch(u"ORV ", true, true), -1);
    EXPECT_EQ(book.FindSwatch(u"100", true, false), -1);
    EXPECT_EQ(book.FindSwatch(u"", false, false), 0);
}

class BookQuirksTest : public FindSwatchTest {
protected:
    void SetUp() override {
        book.SetPrefix(u"ORV ");
        book.AddNamed(u"100 CVU");
        book.AddNamed(u"100 CVC");
        book.AddNamed(u"100 U");
        book.AddNamed(u"100 C");
    }
};

TEST_F(BookQuirksTest, Book3005LooksForCvuWithUInItsPlace) {
    book.SetBookID(3005);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, true), 2);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVC", true, true), 1);
}

TEST_F(BookQuirksTest, Book3002LooksForCvcWithCInItsPlace) {
    book.SetBookID(3002);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVC", true, true), 3);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, true), 0);
}

TEST_F(BookQuirksTest, AnyOtherBookOnlyStrips) {
    book.SetBookID(3003);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, true), 0);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVC", true, true), 1);
}

TEST_F(BookQuirksTest, QuirksNeedBothFlags) {
    book.SetBookID(3005);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, false), 0);
    EXPECT_EQ(book.FindSwatch(u"100 CVU", false, true), 0);
}

TEST_F(BookQuirksTest, AQuirkThatStripsToNothingFallsBackToPlainStripping) {
    // The quirk's name "ORV 7 U" does not end with the postfix; the plain
    // strip of "ORV 7 CVU" gives "7 C".
    book.SetPostfix(u"VU");
    book.SetBookID(3005);
    book.AddNamed(u"7 C");
    EXPECT_EQ(book.FindSwatch(u"ORV 7 CVU", true, true), 4);
}

TEST_F(BookQuirksTest, ANameOfJustTheCodeIsReplacedWhole) {
    book.SetPrefix(u"");
    book.SetBookID(3005);
    book.AddNamed(u"U");
    EXPECT_EQ(book.FindSwatch(u"CVU", true, true), 4);
}

// With a postfix, the code has to be replaced before the affixes are
// stripped: "ORV 100 CVU" ends with " U" only once "CVU" has become "U".
// Both the search from position 0 and the book's own search are asked.
class QuirkWithPostfixTest : public FindSwatchTest {
protected:
    void SetUp() override {
        book.SetPrefix(u"ORV ");
        book.AddNamed(u"100");
    }
};

TEST_F(QuirkWithPostfixTest, Book3005FindsTheNameWhoseUReplacedCvu) {
    book.SetBookID(3005);
    book.SetPostfix(u" U");
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, true), 0);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVU", true, true, 0), 0);
}

TEST_F(QuirkWithPostfixTest, Book3002FindsTheNameWhoseCReplacedCvc) {
    book.SetBookID(3002);
    book.SetPostfix(u" C");
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVC", true, true), 0);
    EXPECT_EQ(book.FindSwatch(u"ORV 100 CVC", true, true, 0), 0);
}

// --- SetSwatchValues

class SetSwatchValuesTest : public testing::Test {
protected:
    ProbeBook book;
    std::int32_t swatch = book.AddSwatch(-1);
};

TEST_F(SetSwatchValuesTest, TheFormatsOwnEncodingIsPassedOnUnchanged) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    const std::uint8_t values[3] = {255, 0, 51};
    EXPECT_TRUE(book.SetSwatchValuesInt8(swatch, f, values));
    EXPECT_EQ(book.lastNativeValues, values);
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[2], 0.2);
}

TEST_F(SetSwatchValuesTest, ValuesAreConvertedToTheFormatsEncodingFirst) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt16Encoding);
    const double values[3] = {0.003, 0.5, -0.1};
    EXPECT_TRUE(book.SetSwatchValuesFloat(swatch, f, values));
    std::uint16_t passed[3];
    ASSERT_EQ(book.lastNativeBytes.size(), sizeof passed);
    std::memcpy(passed, book.lastNativeBytes.data(), sizeof passed);
    EXPECT_EQ(passed[0], 197);
    EXPECT_EQ(passed[1], 65535);
    EXPECT_EQ(passed[2], 0);
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[0], 197.0 / 65535);
}

TEST_F(SetSwatchValuesTest, EachTypedEntryGivesItsEncoding) {
    const std::int32_t f = book.AddFormatOf(kGraySpace, kFloatEncoding);
    const std::uint16_t int16[1] = {65535};
    const std::uint8_t int8[1] = {51};
    EXPECT_TRUE(book.SetSwatchValuesInt16(swatch, f, int16));
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[0], 1.0);
    EXPECT_TRUE(book.SetSwatchValuesInt8(swatch, f, int8));
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[0], 0.2);
    const double any[1] = {0.75};
    EXPECT_TRUE(book.SetSwatchValues(swatch, f, kFloatEncoding, any));
    EXPECT_EQ(book.lastNativeValues, any);
}

TEST_F(SetSwatchValuesTest, FourFloatChannelsUseTheFixedBuffer) {
    const std::int32_t f = book.AddFormatOf(kCMYKSpace, kFloatEncoding);
    const std::uint8_t values[4] = {255, 128, 0, 0};
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_TRUE(book.SetSwatchValuesInt8(swatch, f, values)); }), 0u);
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[1], 0.5);
}

TEST_F(SetSwatchValuesTest, FiveFloatChannelsNeedFortyBytesAndAnAllocation) {
    const std::int32_t f = book.AddFormatOf(kCMYKSpace, kFloatEncoding);
    book.claimedChannels = 5;
    const std::uint8_t values[4] = {255, 128, 0, 0};
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_TRUE(book.SetSwatchValuesInt8(swatch, f, values)); }), 1u);
    const ReferenceSwatch& record = book.GetSwatchRecord(swatch);
    EXPECT_EQ(record.values[0], 1.0);
    EXPECT_EQ(record.values[1], 0.5);
}

TEST_F(SetSwatchValuesTest, WithoutMemoryForTheLargerBufferTheCallFails) {
    const std::int32_t f = book.AddFormatOf(kCMYKSpace, kFloatEncoding);
    book.claimedChannels = 5;
    const std::uint8_t values[4] = {255, 128, 0, 0};
    AllocationFailureScope failure(0);
    EXPECT_FALSE(book.SetSwatchValuesInt8(swatch, f, values));
    EXPECT_EQ(book.nativeWrites, 0);
    book.claimedChannels = 4;
    EXPECT_TRUE(book.SetSwatchValuesInt8(swatch, f, values));
}

TEST_F(SetSwatchValuesTest, ACustomFormatCannotTakeForeignValues) {
    const std::int32_t f = book.AddFormatOf(kCustomSpace, kFloatEncoding);
    book.SetFormatChannels(f, 100000000);
    const std::uint8_t values[4] = {1, 2, 3, 4};
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_FALSE(book.SetSwatchValuesInt8(swatch, f, values)); }), 0u);
    EXPECT_EQ(book.nativeWrites, 0);
}

TEST_F(SetSwatchValuesTest, ABadFormatIndexFails) {
    const std::uint8_t values[4] = {1, 2, 3, 4};
    EXPECT_FALSE(book.SetSwatchValuesInt8(swatch, 3, values));
    EXPECT_FALSE(book.SetSwatchValuesFloat(swatch, -1, nullptr));
}

TEST_F(SetSwatchValuesTest, AnUnknownGivenEncodingPassesZeroedValues) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    const std::uint8_t values[3] = {255, 255, 255};
    EXPECT_TRUE(book.SetSwatchValues(swatch, f, 7, values));
    ASSERT_NE(book.lastNativeValues, values);
    EXPECT_EQ(book.lastNativeBytes, (std::vector<std::uint8_t>{0, 0, 0}));
    EXPECT_EQ(book.GetSwatchRecord(swatch).colorSpace, kRGBSpace);
    EXPECT_EQ(book.GetSwatchRecord(swatch).values[0], 0.0);
}

TEST_F(SetSwatchValuesTest, NullValuesInAForeignEncodingFail) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    EXPECT_FALSE(book.SetSwatchValuesFloat(swatch, f, nullptr));
    EXPECT_EQ(book.nativeWrites, 0);
}

// --- GetSwatchValues

class GetSwatchValuesTest : public testing::Test {
protected:
    ProbeBook book;
    std::int32_t swatch = book.AddSwatch(-1);
};

TEST_F(GetSwatchValuesTest, NativeValuesAreConvertedToTheAskedEncoding) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    book.nativeValues = {255, 0, 51};
    double values[3] = {};
    EXPECT_TRUE(book.GetSwatchValuesFloat(swatch, f, values));
    EXPECT_EQ(values[0], 1.0);
    EXPECT_EQ(values[1], 0.0);
    EXPECT_EQ(values[2], 0.2);
    std::uint16_t wide[3] = {};
    EXPECT_TRUE(book.GetSwatchValues(swatch, f, kInt16Encoding, wide));
    EXPECT_EQ(wide[0], 65535);
    EXPECT_EQ(wide[2], 51 * 257);
}

TEST_F(GetSwatchValuesTest, TheFormatsOwnEncodingIsReadDirectly) {
    const std::int32_t f = book.AddFormatOf(kGraySpace, kInt8Encoding);
    book.nativeValues = {77};
    std::uint8_t value = 0;
    EXPECT_TRUE(book.GetSwatchValues(swatch, f, kInt8Encoding, &value));
    EXPECT_EQ(value, 77);
}

TEST_F(GetSwatchValuesTest, FailsWhenTheNativeValuesCannotBeRead) {
    const std::int32_t f = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    book.nativeValues = {1, 2, 3};
    book.nativeReadSucceeds = false;
    double values[3] = {9, 9, 9};
    EXPECT_FALSE(book.GetSwatchValuesFloat(swatch, f, values));
    EXPECT_EQ(values[0], 9);
}

TEST_F(GetSwatchValuesTest, FailsForACustomFormat) {
    const std::int32_t f = book.AddFormatOf(kCustomSpace, kInt8Encoding);
    book.SetFormatChannels(f, 2);
    book.nativeValues = {1, 2};
    double values[2] = {9, 9};
    EXPECT_FALSE(book.GetSwatchValuesFloat(swatch, f, values));
    EXPECT_EQ(values[0], 9);
}

TEST_F(GetSwatchValuesTest, MoreThan32NativeBytesAreReadThroughAnAllocatedBuffer) {
    const std::int32_t f = book.AddFormatOf(kCMYKSpace, kFloatEncoding);
    book.claimedChannels = 5;
    const double native[5] = {0.5, 0.25, 0, 1, 7};
    book.nativeValues.assign(reinterpret_cast<const std::uint8_t*>(native),
                             reinterpret_cast<const std::uint8_t*>(native) + sizeof native);
    std::uint8_t values[4] = {};
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_TRUE(book.GetSwatchValues(swatch, f, kInt8Encoding, values)); }), 1u);
    EXPECT_EQ(values[0], 128);
    EXPECT_EQ(values[1], 64);
    EXPECT_EQ(values[3], 255);
    AllocationFailureScope failure(0);
    EXPECT_FALSE(book.GetSwatchValues(swatch, f, kInt8Encoding, values));
}

TEST(GetSwatchValues, AReferenceBookDoesNotGiveItsValuesBack) {
    ReferenceBook book;
    const std::int32_t swatch = book.AddSwatch(-1);
    const std::int32_t f = book.AddFormat();
    book.SetFormatColorSpace(f, kRGBSpace);
    book.SetFormatEncoding(f, kFloatEncoding);
    const double values[3] = {0.1, 0.2, 0.3};
    ASSERT_TRUE(book.SetSwatchValuesFloat(swatch, f, values));
    double back[3] = {};
    EXPECT_FALSE(book.GetSwatchValuesFloat(swatch, f, back));
    std::uint8_t bytes[3] = {};
    EXPECT_FALSE(book.GetSwatchValues(swatch, f, kInt8Encoding, bytes));
}

// --- ChooseValueFormat

class ChooseValueFormatTest : public testing::Test {
protected:
    void SetUp() override { book.AddSwatch(-1); }
    std::int32_t Choose(std::vector<std::int32_t> formats, std::int32_t wanted) {
        book.valueFormats = std::move(formats);
        return book.ChooseValueFormat(0, wanted);
    }
    ProbeBook book;
    const std::int32_t rgb8 = book.AddFormatOf(kRGBSpace, kInt8Encoding);
    const std::int32_t rgbFloat = book.AddFormatOf(kRGBSpace, kFloatEncoding);
    const std::int32_t lab8 = book.AddFormatOf(kLabSpace, kInt8Encoding);
    const std::int32_t cmyk8 = book.AddFormatOf(kCMYKSpace, kInt8Encoding);
    const std::int32_t cmyk16 = book.AddFormatOf(kCMYKSpace, kInt16Encoding);
    const std::int32_t gray8 = book.AddFormatOf(kGraySpace, kInt8Encoding);
    const std::int32_t xyzFloat = book.AddFormatOf(kXYZSpace, kFloatEncoding);
    const std::int32_t rgb16 = book.AddFormatOf(kRGBSpace, kInt16Encoding);
    const std::int32_t rgb16Again = book.AddFormatOf(kRGBSpace, kInt16Encoding);
    const std::int32_t unset = book.AddFormat();
};

TEST_F(ChooseValueFormatTest, ABadSwatchIndexGivesZero) {
    book.valueFormats = {rgbFloat};
    EXPECT_EQ(book.ChooseValueFormat(-1, 0), 0);
    EXPECT_EQ(book.ChooseValueFormat(1, 0), 0);
    EXPECT_EQ(book.ChooseValueFormat(1, kRGBSpace), 0);
}

TEST_F(ChooseValueFormatTest, NoListedFormatGivesMinusOne) {
    EXPECT_EQ(Choose({}, 0), -1);
}

TEST_F(ChooseValueFormatTest, AHigherColorSpaceRankWinsWhateverTheEncoding) {
    EXPECT_EQ(Choose({rgbFloat, lab8}, 0), lab8);
    EXPECT_EQ(Choose({cmyk16, rgb8}, 0), rgb8);
}

TEST_F(ChooseValueFormatTest, ALowerColorSpaceRankIsSkippedWhateverTheEncoding) {
    EXPECT_EQ(Choose({lab8, rgbFloat}, 0), lab8);
    EXPECT_EQ(Choose({rgb8, cmyk16, gray8}, 0), rgb8);
}

TEST_F(ChooseValueFormatTest, WithinAColorSpaceOnlyAStrictlyBetterEncodingReplaces) {
    EXPECT_EQ(Choose({rgb8, rgbFloat}, 0), rgbFloat);
    EXPECT_EQ(Choose({rgbFloat, rgb8}, 0), rgbFloat);
    EXPECT_EQ(Choose({rgb8, rgb16, rgbFloat}, 0), rgbFloat);
    EXPECT_EQ(Choose({rgb16, rgb16Again}, 0), rgb16);
}

TEST_F(ChooseValueFormatTest, DifferentSpacesOfEqualRankGoOnToTheEncoding) {
    EXPECT_EQ(Choose({gray8, xyzFloat}, 0), xyzFloat);
    EXPECT_EQ(Choose({xyzFloat, gray8}, 0), xyzFloat);
    EXPECT_EQ(Choose({unset, gray8}, 0), gray8);
}

TEST_F(ChooseValueFormatTest, AWantedColorSpaceSkipsEveryOther) {
    EXPECT_EQ(Choose({rgbFloat, cmyk8, lab8, cmyk16}, kCMYKSpace), cmyk16);
    EXPECT_EQ(Choose({cmyk16, cmyk8}, kCMYKSpace), cmyk16);
    EXPECT_EQ(Choose({lab8, rgb8}, kRGBSpace), rgb8);
}

TEST_F(ChooseValueFormatTest, WhenEveryFormatIsSkippedTheAnswerIsMinusOne) {
    EXPECT_EQ(Choose({rgbFloat, lab8}, kCMYKSpace), -1);
}

TEST_F(ChooseValueFormatTest, WithoutMemoryForTheListTheAnswerIsMinusOne) {
    book.valueFormats = {rgbFloat};
    AllocationFailureScope failure(0);
    EXPECT_EQ(book.ChooseValueFormat(0, 0), -1);
}

TEST(ChooseValueFormat, AReferenceBookListsNoFormats) {
    ReferenceBook book;
    book.AddSwatch(-1);
    EXPECT_EQ(book.ChooseValueFormat(0, 0), -1);
    EXPECT_EQ(book.ChooseValueFormat(1, 0), 0);
}

}  // namespace
