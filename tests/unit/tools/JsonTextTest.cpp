#include "JsonText.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace tool;

TEST(JsonString, KeepsPrintableAscii) { EXPECT_EQ(JsonString(u"Red 032 ~!"), "\"Red 032 ~!\""); }

TEST(JsonString, EscapesQuoteAndBackslashAsCodeUnits) {
    EXPECT_EQ(JsonString(u"a\"b\\c"), "\"a\\u0022b\\u005cc\"");
}

TEST(JsonString, EscapesControlsDeleteAndNonAsciiInLowerCaseHex) {
    EXPECT_EQ(JsonString(u"\n\t\u001f\u007f"), "\"\\u000a\\u0009\\u001f\\u007f\"");
    EXPECT_EQ(JsonString(u"caf\u00e9 \u20ac\uFFFF"), "\"caf\\u00e9 \\u20ac\\uffff\"");
    EXPECT_EQ(JsonString(std::u16string(1, u'\0')), "\"\\u0000\"");
}

TEST(JsonString, WritesEachUnitOfASurrogatePairAndLoneSurrogates) {
    EXPECT_EQ(JsonString(u"\U0001F3A8"), "\"\\ud83c\\udfa8\"");
    EXPECT_EQ(JsonString(std::u16string{char16_t(0xD800), u'x'}), "\"\\ud800x\"");
    EXPECT_EQ(JsonString(std::u16string{u'x', char16_t(0xDFFF)}), "\"x\\udfff\"");
}

TEST(JsonString, EmptyIsTwoQuotes) { EXPECT_EQ(JsonString(u""), "\"\""); }

TEST(JsonDouble, WritesSeventeenSignificantDigits) {
    EXPECT_EQ(JsonDouble(0.1), "0.10000000000000001");
    EXPECT_EQ(JsonDouble(double(0.1f)), "0.10000000149011612");
    EXPECT_EQ(JsonDouble(1.0 / 3.0), "0.33333333333333331");
    EXPECT_EQ(JsonDouble(123456789.0), "123456789");
}

TEST(JsonDouble, WritesWholeNumbersAndZeroesPlainly) {
    EXPECT_EQ(JsonDouble(1.0), "1");
    EXPECT_EQ(JsonDouble(0.0), "0");
    EXPECT_EQ(JsonDouble(-0.0), "-0");
    EXPECT_EQ(JsonDouble(-128.0), "-128");
}

TEST(JsonDouble, WritesExtremesWithAnExponent) {
    EXPECT_EQ(JsonDouble(1e300), "1.0000000000000001e+300");
    EXPECT_EQ(JsonDouble(std::numeric_limits<double>::denorm_min()), "4.9406564584124654e-324");
    EXPECT_EQ(JsonDouble(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
}

TEST(JsonDouble, WritesNonFiniteValuesAsStrings) {
    EXPECT_EQ(JsonDouble(std::numeric_limits<double>::quiet_NaN()), "\"NaN\"");
    EXPECT_EQ(JsonDouble(-std::numeric_limits<double>::quiet_NaN()), "\"NaN\"");
    EXPECT_EQ(JsonDouble(std::numeric_limits<double>::infinity()), "\"Infinity\"");
    EXPECT_EQ(JsonDouble(-std::numeric_limits<double>::infinity()), "\"-Infinity\"");
}

TEST(JsonInt, WritesDecimals) {
    EXPECT_EQ(JsonInt(-1), "-1");
    EXPECT_EQ(JsonInt(4294967296), "4294967296");
    EXPECT_EQ(JsonBool(true), "true");
    EXPECT_EQ(JsonBool(false), "false");
}

}  // namespace
