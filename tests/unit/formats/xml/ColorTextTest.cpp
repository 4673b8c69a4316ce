#include "formats/xml/ColorText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using formats::xml::ParseColorText;
using testing::ElementsAre;

constexpr std::int32_t kInt8 = 1;
constexpr std::int32_t kInt16 = 2;
constexpr std::int32_t kFloat = 3;

std::vector<double> Floats(std::string_view text, std::int32_t count, std::int32_t encoding = kFloat) {
    std::vector<double> values(std::size_t(count), 99.0);
    ParseColorText(text, encoding, count, values.data());
    return values;
}

std::vector<std::uint8_t> Int8s(std::string_view text, std::int32_t count) {
    std::vector<std::uint8_t> values(std::size_t(count), 99);
    ParseColorText(text, kInt8, count, values.data());
    return values;
}

std::vector<std::uint16_t> Int16s(std::string_view text, std::int32_t count) {
    std::vector<std::uint16_t> values(std::size_t(count), 99);
    ParseColorText(text, kInt16, count, values.data());
    return values;
}

TEST(ParseColorText, ReadsFloatsWithPointsAndMinus) {
    EXPECT_THAT(Floats("0.5 0.25 -1", 3), ElementsAre(0.5, 0.25, -1.0));
}

TEST(ParseColorText, CountsTheDigitsAfterTheFirstPointOnly) {
    EXPECT_THAT(Floats("1.2.3", 1), ElementsAre(1.23));
    EXPECT_THAT(Floats(".5", 1), ElementsAre(0.5));
    EXPECT_THAT(Floats("7.", 1), ElementsAre(7.0));
}

TEST(ParseColorText, DividesTheWholeDigitStringOnce) {
    EXPECT_EQ(Floats("0.1", 1)[0], 1.0 / 10.0);
    EXPECT_EQ(Floats("12.345", 1)[0], 12345.0 / 1000.0);
}

TEST(ParseColorText, AccumulatesDigitsTimesTenInDouble) {
    // Past 2^53 the running v * 10 + d rounds at each step, which a correctly
    // rounded decimal conversion would not.
    double digits = 0;
    for (char c : std::string_view("123456789012345678")) digits = digits * 10 + (c - '0');
    ASSERT_NE(digits, 123456789012345678.0);
    EXPECT_EQ(Floats("0.123456789012345678", 1)[0], digits / std::pow(10.0, 18));
}

TEST(ParseColorText, ReadsEveryCountOfDigitsAsTheRunningDoubleDoes) {
    // Short digit strings are gathered in an integer first; at any length
    // and with the point anywhere the result must be that of v * 10 + d in
    // double, divided once.
    for (const std::string_view stem : {"99999999999999999999", "12345678901234567891", "90071992547409931234"}) {
        for (std::size_t length = 1; length <= stem.size(); ++length) {
            double digits = 0;
            for (char c : stem.substr(0, length)) digits = digits * 10 + (c - '0');
            for (std::size_t point = 0; point <= length; ++point) {
                std::string text(stem.substr(0, length));
                text.insert(point, ".");
                const double expected = digits / std::pow(10.0, double(length - point));
                EXPECT_EQ(Floats(text, 1)[0], expected) << text;
                EXPECT_EQ(Floats("-" + text, 1)[0], -expected) << text;
            }
        }
    }
}

TEST(ParseColorText, AMinusAnywhereMakesTheNumberNegative) {
    EXPECT_THAT(Floats("5-3", 1), ElementsAre(-53.0));
    EXPECT_THAT(Floats("--2", 1), ElementsAre(-2.0));
    EXPECT_TRUE(std::signbit(Floats("-0", 1)[0]));
    EXPECT_THAT(Int8s("5-3", 1), ElementsAre(std::uint8_t(256 - 53)));
}

TEST(ParseColorText, SkipsOnlySpaces) {
    EXPECT_THAT(Floats("   1    2", 2), ElementsAre(1.0, 2.0));
    // A tab ends the first number and, never consumed, every later one.
    EXPECT_THAT(Floats("1\t2 3", 3), ElementsAre(1.0, 0.0, 0.0));
    EXPECT_THAT(Floats("1,2", 2), ElementsAre(1.0, 0.0));
    EXPECT_THAT(Floats("\n1 2", 2), ElementsAre(0.0, 0.0));
}

TEST(ParseColorText, ANonAsciiByteEndsANumber) {
    EXPECT_THAT(Floats("1\xC2\xA0" "2", 2), ElementsAre(1.0, 0.0));
    EXPECT_THAT(Int8s("4\xE2\x80\x83" "5", 2), ElementsAre(4, 0));
}

TEST(ParseColorText, MissingNumbersAreZero) {
    EXPECT_THAT(Floats("0.5", 3), ElementsAre(0.5, 0.0, 0.0));
    EXPECT_THAT(Floats("", 2), ElementsAre(0.0, 0.0));
    EXPECT_THAT(Int8s("1", 3), ElementsAre(1, 0, 0));
    EXPECT_THAT(Int16s("", 1), ElementsAre(0));
}

TEST(ParseColorText, ReadsOnlyTheNumbersAsked) {
    EXPECT_THAT(Floats("1 2 3 4 5", 2), ElementsAre(1.0, 2.0));
}

TEST(ParseColorText, WrapsInt8ModuloTwoHundredFiftySix) {
    EXPECT_THAT(Int8s("300 255 256 -1", 4), ElementsAre(44, 255, 0, 255));
    EXPECT_THAT(Int8s("99999999999", 1), ElementsAre(std::uint8_t(99999999999ULL % 256)));
}

TEST(ParseColorText, WrapsInt16ModuloSixtyFiveThousandFiveHundredThirtySix) {
    EXPECT_THAT(Int16s("70000 65535 -2", 3), ElementsAre(4464, 65535, 65534));
}

TEST(ParseColorText, APointEndsAnIntegerAndEveryLaterOne) {
    EXPECT_THAT(Int8s("1.5 2 3", 3), ElementsAre(1, 0, 0));
    EXPECT_THAT(Int16s("7.9 8", 2), ElementsAre(7, 0));
}

TEST(ParseColorText, UnknownEncodingsReadAsFloat) {
    EXPECT_THAT(Floats("0.5 2", 2, 0), ElementsAre(0.5, 2.0));
    EXPECT_THAT(Floats("1.25", 1, 7), ElementsAre(1.25));
}

TEST(ParseColorText, HugeNumbersStayFinitePowersOrBecomeInfinity) {
    const std::string manyDigits(400, '9');
    EXPECT_TRUE(std::isinf(Floats(manyDigits, 1)[0]));
    // As many digits after the point as before: infinity over infinity.
    EXPECT_TRUE(std::isnan(Floats(manyDigits + "." + manyDigits, 1)[0]));
    EXPECT_EQ(Floats("0." + std::string(400, '0') + "1", 1)[0], 0.0);
}

}  // namespace
