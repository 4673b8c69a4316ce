// Expectations here are worked out from the conversion rules in the test's
// own arithmetic (integer shifts and divisions, std::floor/std::trunc, 64-bit
// sums with an explicit 32-bit wrap), never by calling the code under test.
#include "swatchbook/ColorValueConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "swatchbook/SwatchbookCodes.h"

using namespace swatchbook;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct SpaceCase {
    std::int32_t space;
    int channels;
};
constexpr SpaceCase kSpaces[] = {{kGraySpace, 1}, {kLabSpace, 3}, {kRGBSpace, 3}, {kCMYKSpace, 4}, {kXYZSpace, 3}};

bool IsLabAB(std::int32_t space, int channel) {
    return space == kLabSpace && channel > 0;
}
bool IsLabL(std::int32_t space, int channel) {
    return space == kLabSpace && channel == 0;
}

// --- The rules, restated

// Toward zero; NaN and anything outside the 32-bit range become INT32_MIN.
std::int64_t RuleTruncate(double x) {
    if (std::isnan(x) || x <= -2147483649.0 || x >= 2147483648.0) {
        return -2147483648LL;
    }
    return static_cast<std::int64_t>(std::trunc(x));
}

// Integer arithmetic after truncation is 32-bit.
std::int64_t Wrap32(std::int64_t n) {
    const std::int64_t low = n & 0xFFFFFFFFLL;
    return low >= 0x80000000LL ? low - 0x100000000LL : low;
}

int ClampTo(std::int64_t n, int high) {
    return n < 0 ? 0 : (n > high ? high : static_cast<int>(n));
}

int SaturateAbove255(std::int64_t n) {
    return n > 255 ? 65535 : (n < 0 ? 0 : static_cast<int>(n));
}

int ExpectedFloatToInt8(std::int32_t space, int channel, double x) {
    if (IsLabL(space, channel)) {
        return ClampTo(RuleTruncate(x * 255 / 100 + 0.5), 255);
    }
    if (IsLabAB(space, channel)) {
        return ClampTo(Wrap32(RuleTruncate(x + 0.5) + 128), 255);
    }
    return ClampTo(RuleTruncate(x * 255 + 0.5), 255);
}

int ExpectedLabABToInt16(double x) {
    return ClampTo(Wrap32(RuleTruncate(x * 256 + 0.5) + 128), 65535);
}

int ExpectedFloatToInt16(std::int32_t space, int channel, double x) {
    if (IsLabL(space, channel)) {
        return SaturateAbove255(RuleTruncate(x * 65535 / 100 + 0.5));
    }
    if (IsLabAB(space, channel)) {
        return ExpectedLabABToInt16(x);
    }
    return SaturateAbove255(RuleTruncate(x * 65535 + 0.5));
}

int ExpectedInt8ToInt16(std::int32_t space, int channel, int v) {
    return IsLabAB(space, channel) ? v << 8 : (v << 8) | v;
}

double ExpectedInt8ToFloat(std::int32_t space, int channel, int v) {
    if (IsLabL(space, channel)) {
        return v * 100.0 / 255;
    }
    if (IsLabAB(space, channel)) {
        return v - 128.0;
    }
    if (space == kCMYKSpace) {
        // 100 v / 255 = 20 v / 51 is never exactly halfway, so integer
        // rounding half up gives the whole percentage.
        return ((40 * v + 51) / 102) / 100.0;
    }
    return v / 255.0;
}

int ExpectedInt16ToInt8(std::int32_t space, int channel, int v) {
    if (IsLabAB(space, channel)) {
        return std::min(255, static_cast<int>(std::floor(v / 256.0 + 0.5)));
    }
    return static_cast<int>(std::floor(v / 257.0));
}

double ExpectedInt16ToFloat(std::int32_t space, int channel, int v) {
    if (IsLabL(space, channel)) {
        return v * 100.0 / 65535;
    }
    if (IsLabAB(space, channel)) {
        return v / 256.0 - 128;
    }
    return v / 65535.0;
}

// --- Small helpers for single conversions

std::vector<std::uint8_t> FloatToInt8(std::int32_t space, std::vector<double> in) {
    std::vector<std::uint8_t> out(in.size());
    EXPECT_TRUE(ConvertColorValues(space, kFloatEncoding, in.data(), kInt8Encoding, out.data()));
    return out;
}

std::vector<std::uint16_t> FloatToInt16(std::int32_t space, std::vector<double> in) {
    std::vector<std::uint16_t> out(in.size());
    EXPECT_TRUE(ConvertColorValues(space, kFloatEncoding, in.data(), kInt16Encoding, out.data()));
    return out;
}

std::vector<double> Int16ToFloat(std::int32_t space, std::vector<std::uint16_t> in) {
    std::vector<double> out(in.size());
    EXPECT_TRUE(ConvertColorValues(space, kInt16Encoding, in.data(), kFloatEncoding, out.data()));
    return out;
}

std::vector<double> Int8ToFloat(std::int32_t space, std::vector<std::uint8_t> in) {
    std::vector<double> out(in.size());
    EXPECT_TRUE(ConvertColorValues(space, kInt8Encoding, in.data(), kFloatEncoding, out.data()));
    return out;
}

std::vector<std::uint8_t> Int16ToInt8(std::int32_t space, std::vector<std::uint16_t> in) {
    std::vector<std::uint8_t> out(in.size());
    EXPECT_TRUE(ConvertColorValues(space, kInt16Encoding, in.data(), kInt8Encoding, out.data()));
    return out;
}

using Bytes = std::vector<std::uint8_t>;
using Words = std::vector<std::uint16_t>;
using Doubles = std::vector<double>;

// --- The documented cases

TEST(ColorValueConversion, FloatRgbToInt16SaturatesEarly) {
    EXPECT_EQ(FloatToInt16(kRGBSpace, {1.0, 0.5, 0.003}), (Words{65535, 65535, 197}));
    EXPECT_EQ(FloatToInt16(kRGBSpace, {-0.1, 0.0, 0.0})[0], 0);
}

TEST(ColorValueConversion, FloatLabToInt16AndBack) {
    const Words wide = FloatToInt16(kLabSpace, {50, 0, 0});
    EXPECT_EQ(wide, (Words{65535, 128, 128}));
    EXPECT_EQ(Int16ToFloat(kLabSpace, wide), (Doubles{100, -127.5, -127.5}));
}

TEST(ColorValueConversion, FloatLabToInt8TruncatesTowardZero) {
    EXPECT_EQ(FloatToInt8(kLabSpace, {50, -10, 20}), (Bytes{128, 119, 148}));
}

TEST(ColorValueConversion, Int8CmykBecomesWholePercentages) {
    EXPECT_EQ(Int8ToFloat(kCMYKSpace, {128, 255, 1, 3}), (Doubles{0.5, 1.0, 0.0, 0.01}));
}

TEST(ColorValueConversion, Int8CmykZeroTakesTheBranchBelowHalfAndIsNegativeZero) {
    // 0 is not above 0, so it becomes ceil(0 - 0.5) / 100.
    const Doubles values = Int8ToFloat(kCMYKSpace, {0, 0, 0, 0});
    EXPECT_EQ(values[0], 0.0);
    EXPECT_TRUE(std::signbit(values[0]));
}

TEST(ColorValueConversion, Int16LabABToInt8) {
    EXPECT_EQ(Int16ToInt8(kLabSpace, {0, 65408, 65407}), (Bytes{0, 255, 255}));
    EXPECT_EQ(Int16ToInt8(kLabSpace, {0, 0, 65535}), (Bytes{0, 0, 255}));
    EXPECT_EQ(Int16ToInt8(kLabSpace, {0, 127, 128}), (Bytes{0, 0, 1}));
}

TEST(ColorValueConversion, CustomAndUnknownColorSpacesFail) {
    for (std::int32_t space : {1, 7, 0, -1, 1000}) {
        const std::uint8_t in[4] = {1, 2, 3, 4};
        std::uint8_t out[4] = {9, 9, 9, 9};
        EXPECT_FALSE(ConvertColorValues(space, kInt8Encoding, in, kFloatEncoding, out)) << space;
        EXPECT_FALSE(ConvertColorValues(space, kInt8Encoding, in, kInt8Encoding, out)) << space;
        EXPECT_FALSE(ConvertColorValues(space, 0, in, 4, out)) << space;
        EXPECT_EQ(out[0], 9);
    }
}

TEST(ColorValueConversion, EncodingsOutsideOneToThreeSucceedWithoutWriting) {
    for (const SpaceCase& c : kSpaces) {
        const double in[4] = {0.5, 0.5, 0.5, 0.5};
        std::uint8_t out[32];
        std::memset(out, 0xA5, sizeof out);
        EXPECT_TRUE(ConvertColorValues(c.space, kFloatEncoding, in, 0, out));
        EXPECT_TRUE(ConvertColorValues(c.space, kFloatEncoding, in, 4, out));
        EXPECT_TRUE(ConvertColorValues(c.space, 0, in, kFloatEncoding, out));
        EXPECT_TRUE(ConvertColorValues(c.space, 4, in, kInt8Encoding, out));
        EXPECT_TRUE(ConvertColorValues(c.space, 0, in, 0, out));
        EXPECT_TRUE(ConvertColorValues(c.space, -2, nullptr, 9, nullptr));
        for (std::uint8_t byte : out) {
            ASSERT_EQ(byte, 0xA5);
        }
    }
}

TEST(ColorValueConversion, NullBuffersFailWithoutWriting) {
    const std::uint8_t in[4] = {1, 2, 3, 4};
    double out[4] = {9, 9, 9, 9};
    EXPECT_FALSE(ConvertColorValues(kRGBSpace, kInt8Encoding, nullptr, kFloatEncoding, out));
    EXPECT_FALSE(ConvertColorValues(kRGBSpace, kInt8Encoding, in, kFloatEncoding, nullptr));
    EXPECT_FALSE(ConvertColorValues(kRGBSpace, kFloatEncoding, nullptr, kFloatEncoding, out));
    EXPECT_EQ(out[0], 9);
}

TEST(ColorValueConversion, TheSameEncodingCopiesTheChannelsBitForBit) {
    for (const SpaceCase& c : kSpaces) {
        for (std::int32_t encoding : {kInt8Encoding, kInt16Encoding, kFloatEncoding}) {
            const int width = encoding == kInt8Encoding ? 1 : (encoding == kInt16Encoding ? 2 : 8);
            std::uint8_t in[32];
            std::uint8_t out[33];
            for (int i = 0; i < 32; ++i) {
                in[i] = static_cast<std::uint8_t>(0xF0 ^ (i * 37));
            }
            std::memset(out, 0x5A, sizeof out);
            // One byte off alignment: buffers may point into file data.
            ASSERT_TRUE(ConvertColorValues(c.space, encoding, in, encoding, out + 1));
            const int copied = c.channels * width;
            EXPECT_EQ(std::memcmp(out + 1, in, static_cast<std::size_t>(copied)), 0);
            EXPECT_EQ(out[0], 0x5A);
            for (int i = copied + 1; i < 33; ++i) {
                ASSERT_EQ(out[i], 0x5A) << "space " << c.space << " encoding " << encoding;
            }
        }
    }
}

TEST(ColorValueConversion, OnlyTheChannelsOfTheColorSpaceAreWritten) {
    for (const SpaceCase& c : kSpaces) {
        const double in[4] = {0.25, 0.25, 0.25, 0.25};
        std::uint16_t out[5] = {7, 7, 7, 7, 7};
        ASSERT_TRUE(ConvertColorValues(c.space, kFloatEncoding, in, kInt16Encoding, out));
        for (int channel = c.channels; channel < 5; ++channel) {
            EXPECT_EQ(out[channel], 7) << "space " << c.space;
        }
        EXPECT_NE(out[c.channels - 1], 7);
    }
}

TEST(ColorValueConversion, UnalignedInt16AndFloatBuffersConvert) {
    alignas(8) std::uint8_t in[1 + 3 * 8];
    const double lab[3] = {50, -10, 20};
    std::memcpy(in + 1, lab, sizeof lab);
    alignas(8) std::uint8_t out[1 + 3 * 2];
    ASSERT_TRUE(ConvertColorValues(kLabSpace, kFloatEncoding, in + 1, kInt16Encoding, out + 1));
    std::uint16_t wide[3];
    std::memcpy(wide, out + 1, sizeof wide);
    EXPECT_EQ(wide[0], 65535);
    EXPECT_EQ(wide[1], ExpectedLabABToInt16(-10));
    EXPECT_EQ(wide[2], 20 * 256 + 128);
}

// --- Every Int8 and every Int16 value, every colour space, every direction

TEST(ColorValueConversion, EveryInt8ValueInEveryDirection) {
    for (const SpaceCase& c : kSpaces) {
        for (int v = 0; v < 256; ++v) {
            std::uint8_t in[4];
            int given[4];
            for (int channel = 0; channel < 4; ++channel) {
                given[channel] = (v + 101 * channel) % 256;
                in[channel] = static_cast<std::uint8_t>(given[channel]);
            }
            std::uint16_t wide[4];
            double real[4];
            std::uint8_t same[4];
            ASSERT_TRUE(ConvertColorValues(c.space, kInt8Encoding, in, kInt16Encoding, wide));
            ASSERT_TRUE(ConvertColorValues(c.space, kInt8Encoding, in, kFloatEncoding, real));
            ASSERT_TRUE(ConvertColorValues(c.space, kInt8Encoding, in, kInt8Encoding, same));
            for (int channel = 0; channel < c.channels; ++channel) {
                const int g = given[channel];
                ASSERT_EQ(wide[channel], ExpectedInt8ToInt16(c.space, channel, g))
                    << "space " << c.space << " channel " << channel << " value " << g;
                ASSERT_EQ(real[channel], ExpectedInt8ToFloat(c.space, channel, g))
                    << "space " << c.space << " channel " << channel << " value " << g;
                ASSERT_EQ(same[channel], g);
            }
        }
    }
}

TEST(ColorValueConversion, EveryInt16ValueInEveryDirection) {
    for (const SpaceCase& c : kSpaces) {
        for (int v = 0; v < 65536; ++v) {
            std::uint16_t in[4];
            int given[4];
            for (int channel = 0; channel < 4; ++channel) {
                given[channel] = (v + 20011 * channel) % 65536;
                in[channel] = static_cast<std::uint16_t>(given[channel]);
            }
            std::uint8_t narrow[4];
            double real[4];
            std::uint16_t same[4];
            ASSERT_TRUE(ConvertColorValues(c.space, kInt16Encoding, in, kInt8Encoding, narrow));
            ASSERT_TRUE(ConvertColorValues(c.space, kInt16Encoding, in, kFloatEncoding, real));
            ASSERT_TRUE(ConvertColorValues(c.space, kInt16Encoding, in, kInt16Encoding, same));
            for (int channel = 0; channel < c.channels; ++channel) {
                const int g = given[channel];
                ASSERT_EQ(narrow[channel], ExpectedInt16ToInt8(c.space, channel, g))
                    << "space " << c.space << " channel " << channel << " value " << g;
                ASSERT_EQ(real[channel], ExpectedInt16ToFloat(c.space, channel, g))
                    << "space " << c.space << " channel " << channel << " value " << g;
                ASSERT_EQ(same[channel], g);
            }
        }
    }
}

// --- Float to the integer encodings, at and around every boundary

// x and its two neighbours.
std::vector<double> AroundEach(const std::vector<double>& points) {
    std::vector<double> all;
    for (double x : points) {
        all.push_back(std::nextafter(x, -kInf));
        all.push_back(x);
        all.push_back(std::nextafter(x, kInf));
    }
    return all;
}

// Values every rule must survive: zeros, NaN, infinities, the ends of the
// 32-bit range and what lies beyond.
std::vector<double> Extremes() {
    return {0.0,     -0.0,         kNaN,          -kNaN,         kInf,
            -kInf,   1e300,        -1e300,        5e-324,        -5e-324,
            1e-300,  2147483647.0, 2147483648.0,  -2147483648.0, -2147483649.0,
            8e9,     -8e9};
}

// Where a channel's integer result steps, for each channel kind.
std::vector<double> Int8Boundaries(std::int32_t space, int channel) {
    std::vector<double> points;
    if (IsLabAB(space, channel)) {
        for (int j = -300; j <= 300; ++j) {
            points.push_back(j - 0.5);
        }
        // Beyond INT32_MAX - 128 the sum wraps to a negative number.
        points.insert(points.end(), {2147483519.0, 2147483519.5, 2147483647.5, -2147483648.5});
    } else {
        const double scale = IsLabL(space, channel) ? 255.0 / 100 : 255.0;
        for (int k = -2; k <= 258; ++k) {
            points.push_back((k - 0.5) / scale);
        }
        points.push_back(2147483647.5 / scale);
        points.push_back(-2147483648.5 / scale);
    }
    for (double x : Extremes()) {
        points.push_back(x);
    }
    return AroundEach(points);
}

std::vector<double> Int16Boundaries(std::int32_t space, int channel) {
    std::vector<double> points;
    if (IsLabAB(space, channel)) {
        for (int k = -2; k <= 65538; ++k) {
            points.push_back((k - 128 - 0.5) / 256);
        }
        points.insert(points.end(), {2147483519.0 / 256, 2147483519.5 / 256, 2147483647.5 / 256});
    } else {
        const double scale = IsLabL(space, channel) ? 65535.0 / 100 : 65535.0;
        for (int k = -2; k <= 258; ++k) {
            points.push_back((k - 0.5) / scale);
        }
        points.push_back(65535.0 / scale);
        points.push_back(2147483647.5 / scale);
    }
    for (double x : Extremes()) {
        points.push_back(x);
    }
    return AroundEach(points);
}

TEST(ColorValueConversion, FloatToInt8AroundEveryBoundary) {
    for (const SpaceCase& c : kSpaces) {
        for (int channel = 0; channel < c.channels; ++channel) {
            for (double x : Int8Boundaries(c.space, channel)) {
                double in[4] = {0.25, 0.25, 0.25, 0.25};
                in[channel] = x;
                std::uint8_t out[4];
                ASSERT_TRUE(ConvertColorValues(c.space, kFloatEncoding, in, kInt8Encoding, out));
                ASSERT_EQ(out[channel], ExpectedFloatToInt8(c.space, channel, x))
                    << "space " << c.space << " channel " << channel << " value " << x;
            }
        }
    }
}

TEST(ColorValueConversion, FloatToInt16AroundEveryBoundary) {
    for (const SpaceCase& c : kSpaces) {
        for (int channel = 0; channel < c.channels; ++channel) {
            for (double x : Int16Boundaries(c.space, channel)) {
                double in[4] = {0.25, 0.25, 0.25, 0.25};
                in[channel] = x;
                std::uint16_t out[4];
                ASSERT_TRUE(ConvertColorValues(c.space, kFloatEncoding, in, kInt16Encoding, out));
                ASSERT_EQ(out[channel], ExpectedFloatToInt16(c.space, channel, x))
                    << "space " << c.space << " channel " << channel << " value " << x;
            }
        }
    }
}

TEST(ColorValueConversion, FloatToInt8StepsHalfwayBetweenBytes) {
    const double half = 0.5;  // 127.5 + 0.5 is exactly 128
    EXPECT_EQ(FloatToInt8(kRGBSpace, {half, std::nextafter(half, 0.0), 1.0}), (Bytes{128, 127, 255}));
    EXPECT_EQ(FloatToInt8(kGraySpace, {-0.5 / 255})[0], 0);
    EXPECT_EQ(FloatToInt8(kGraySpace, {1.5})[0], 255);
}

TEST(ColorValueConversion, FloatToIntegersTreatNaNAndOutOfRangeAsTheLowestInteger) {
    // INT32_MIN clamps to 0, so even +Infinity and 1e300 become 0.
    EXPECT_EQ(FloatToInt8(kRGBSpace, {kNaN, kInf, 1e300}), (Bytes{0, 0, 0}));
    EXPECT_EQ(FloatToInt16(kRGBSpace, {kNaN, kInf, 1e300}), (Words{0, 0, 0}));
    EXPECT_EQ(FloatToInt8(kLabSpace, {kInf, kInf, kNaN}), (Bytes{0, 0, 0}));
    EXPECT_EQ(FloatToInt16(kLabSpace, {kNaN, kInf, -kInf}), (Words{0, 0, 0}));
    // Just inside the range the same channel still saturates high.
    EXPECT_EQ(FloatToInt8(kRGBSpace, {8421504.0, 0, 0})[0], 255);
    EXPECT_EQ(FloatToInt16(kRGBSpace, {32768.0, 0, 0})[0], 65535);
}

TEST(ColorValueConversion, LabABSumsWrapAt32Bits) {
    // 2147483519 + 128 is INT32_MAX; one more wraps to a negative number.
    EXPECT_EQ(FloatToInt8(kLabSpace, {0, 2147483519.0, 2147483519.5}), (Bytes{0, 255, 0}));
    EXPECT_EQ(FloatToInt16(kLabSpace, {0, 2147483519.0 / 256, 2147483519.5 / 256}), (Words{0, 65535, 0}));
}

TEST(ColorValueConversion, FloatToInt16LabLSaturatesAboveTheFirst256Steps) {
    // L 0.3898 is 255.46 steps: kept; 0.39 is 255.59, which rounds to 256:
    // full scale.
    EXPECT_EQ(FloatToInt16(kLabSpace, {0.3898, 0, 0})[0], 255);
    EXPECT_EQ(FloatToInt16(kLabSpace, {0.39, 0, 0})[0], 65535);
    EXPECT_EQ(FloatToInt16(kLabSpace, {-0.001, 0, 0})[0], 0);
}

TEST(ColorValueConversion, DoubleToLabInt16AddsTheOffsetAfterScaling) {
    EXPECT_EQ(DoubleToLabInt16(0.0), 128);
    EXPECT_EQ(DoubleToLabInt16(1.0), 384);
    EXPECT_EQ(DoubleToLabInt16(-0.5), 1);
    EXPECT_EQ(DoubleToLabInt16(-0.502), 0);
    EXPECT_EQ(DoubleToLabInt16(-1.0), 0);
    EXPECT_EQ(DoubleToLabInt16(127.5), 32768);
    EXPECT_EQ(DoubleToLabInt16(255.49609375), 65535);
    EXPECT_EQ(DoubleToLabInt16(255.5), 65535);
    EXPECT_EQ(DoubleToLabInt16(kNaN), 0);
    EXPECT_EQ(DoubleToLabInt16(kInf), 0);
    EXPECT_EQ(DoubleToLabInt16(-kInf), 0);
}

TEST(ColorValueConversion, DoubleToLabInt16AroundEveryStep) {
    for (double x : Int16Boundaries(kLabSpace, 1)) {
        ASSERT_EQ(DoubleToLabInt16(x), ExpectedLabABToInt16(x)) << "value " << x;
    }
}

TEST(ColorValueConversion, IntegerRulesAreNotSymmetric) {
    // Int8 128 widens to 32896 but narrows back from 32896 / 257 = 128; Lab a
    // 128 widens to 32768, which narrows back to 128 by its own rule.
    EXPECT_EQ(Int16ToInt8(kRGBSpace, {32896, 32895, 257}), (Bytes{128, 127, 1}));
    EXPECT_EQ(Int16ToInt8(kLabSpace, {257, 32768, 32767}), (Bytes{1, 128, 128}));
    EXPECT_EQ(Int16ToFloat(kLabSpace, {65535, 32768, 0}), (Doubles{100, 0, -128}));
    EXPECT_EQ(Int8ToFloat(kLabSpace, {255, 128, 0}), (Doubles{100, 0, -128}));
}

}  // namespace
