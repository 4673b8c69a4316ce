#include "formats/xml/XmlAttributeValues.h"

#include <gtest/gtest.h>

namespace {

using namespace formats::xml;

TEST(ResolveAttributeValue, CutsAKeyToTheTextAfterItsFirstEquals) {
    EXPECT_EQ(ResolveAttributeValue("$$$/Book/Title=Pastels", false), "Pastels");
    EXPECT_EQ(ResolveAttributeValue("$$$/A=b=c", false), "b=c");
    EXPECT_EQ(ResolveAttributeValue("$$$/Empty=", false), "");
}

TEST(ResolveAttributeValue, AKeyWithoutEqualsBecomesEmpty) {
    EXPECT_EQ(ResolveAttributeValue("$$$abc", false), "");
    EXPECT_EQ(ResolveAttributeValue("$$$", false), "");
}

TEST(ResolveAttributeValue, SearchesForEqualsFromTheFourthCharacterOn) {
    EXPECT_EQ(ResolveAttributeValue("$$$=x", false), "x");
}

TEST(ResolveAttributeValue, KeepsKeysWhenAsked) {
    EXPECT_EQ(ResolveAttributeValue("$$$/Book/Title=Pastels", true), "$$$/Book/Title=Pastels");
    EXPECT_EQ(ResolveAttributeValue("$$$abc", true), "$$$abc");
}

TEST(ResolveAttributeValue, LeavesOtherValuesAlone) {
    EXPECT_EQ(ResolveAttributeValue("$$/A=b", false), "$$/A=b");
    EXPECT_EQ(ResolveAttributeValue(" $$$/A=b", false), " $$$/A=b");
    EXPECT_EQ(ResolveAttributeValue("a=b", false), "a=b");
    EXPECT_EQ(ResolveAttributeValue("", false), "");
}

TEST(ParseDecimalInt, ReadsSignedDecimals) {
    EXPECT_EQ(ParseDecimalInt("7"), 7);
    EXPECT_EQ(ParseDecimalInt("-42"), -42);
    EXPECT_EQ(ParseDecimalInt("+42"), 42);
    EXPECT_EQ(ParseDecimalInt("2147483647"), 2147483647);
    EXPECT_EQ(ParseDecimalInt("-2147483648"), -2147483647 - 1);
}

TEST(ParseDecimalInt, SkipsLeadingWhiteSpaceAndStopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(ParseDecimalInt(" \t\n\v\f\r12"), 12);
    EXPECT_EQ(ParseDecimalInt("12abc"), 12);
    EXPECT_EQ(ParseDecimalInt("3.9"), 3);
    EXPECT_EQ(ParseDecimalInt("0x10"), 0);
    EXPECT_EQ(ParseDecimalInt("1 2"), 1);
}

TEST(ParseDecimalInt, NoDigitsGiveZero) {
    EXPECT_EQ(ParseDecimalInt(""), 0);
    EXPECT_EQ(ParseDecimalInt("abc"), 0);
    EXPECT_EQ(ParseDecimalInt("-"), 0);
    EXPECT_EQ(ParseDecimalInt("+-1"), 0);
    EXPECT_EQ(ParseDecimalInt("- 1"), 0);
}

TEST(ParseDecimalInt, KeepsTheLowThirtyTwoBitsOfLargerValues) {
    EXPECT_EQ(ParseDecimalInt("99999999999"), 1215752191);
    EXPECT_EQ(ParseDecimalInt("-99999999999"), -1215752191);
    EXPECT_EQ(ParseDecimalInt("4294967296"), 0);
    EXPECT_EQ(ParseDecimalInt("2147483648"), -2147483647 - 1);
}

TEST(ParseDecimalInt, SaturatesAtSixtyFourBitsFirst) {
    // 2^63 - 1 and -2^63, whose low 32 bits are all ones and all zeros.
    EXPECT_EQ(ParseDecimalInt("9223372036854775807"), -1);
    EXPECT_EQ(ParseDecimalInt("9223372036854775808"), -1);
    EXPECT_EQ(ParseDecimalInt("123456789012345678901234567890"), -1);
    EXPECT_EQ(ParseDecimalInt("-9223372036854775808"), 0);
    EXPECT_EQ(ParseDecimalInt("-9223372036854775809"), 0);
    // Just below saturation the low bits still come through.
    EXPECT_EQ(ParseDecimalInt("9223372036854775806"), -2);
    EXPECT_EQ(ParseDecimalInt("-9223372036854775807"), 1);
}

TEST(ColorSpaceFromName, MapsTheFourNamesAndEverythingElseToCustom) {
    EXPECT_EQ(ColorSpaceFromName("LAB"), 3);
    EXPECT_EQ(ColorSpaceFromName("RGB"), 4);
    EXPECT_EQ(ColorSpaceFromName("CMYK"), 5);
    EXPECT_EQ(ColorSpaceFromName("XYZ"), 6);
    EXPECT_EQ(ColorSpaceFromName("Gray"), 1);
    EXPECT_EQ(ColorSpaceFromName("rgb"), 1);
    EXPECT_EQ(ColorSpaceFromName(""), 1);
}

TEST(EncodingFromName, MapsTheThreeNamesAndEverythingElseToZero) {
    EXPECT_EQ(EncodingFromName("Int8"), 1);
    EXPECT_EQ(EncodingFromName("Int16"), 2);
    EXPECT_EQ(EncodingFromName("Float"), 3);
    EXPECT_EQ(EncodingFromName("float"), 0);
    EXPECT_EQ(EncodingFromName("Int32"), 0);
    EXPECT_EQ(EncodingFromName(""), 0);
}

}  // namespace
