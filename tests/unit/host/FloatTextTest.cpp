#include <kelvra/FloatText.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

using kelvra::FloatText;

TEST(FloatTextTest, TheShortestDecimalThatReadsBackAsTheSameFloat) {
    EXPECT_EQ(FloatText(0.8f), "0.8");
    EXPECT_EQ(FloatText(0.1f), "0.1");
    EXPECT_EQ(FloatText(1.0f), "1");
    EXPECT_EQ(FloatText(0.0f), "0");
    EXPECT_EQ(FloatText(-0.0f), "-0");
    EXPECT_EQ(FloatText(-27.5f), "-27.5");
    EXPECT_EQ(FloatText(1e-5f), "1e-05");
    EXPECT_EQ(FloatText(100.0f), "100");
    EXPECT_EQ(FloatText(-1500.0f), "-1500");
    EXPECT_EQ(FloatText(1e8f), "100000000");
    EXPECT_EQ(FloatText(1e9f), "1e+09");
    EXPECT_EQ(FloatText(std::nextafter(0.1f, 1.0f)), "0.10000001");
    EXPECT_EQ(FloatText(std::numeric_limits<float>::max()), "3.4028235e+38");
}

TEST(FloatTextTest, EveryTextReadsBackExactly) {
    for (float value : {0.2f, 1.0f / 3.0f, 0.8f * 0.8f, 123456.789f, 1e-38f, 1e-45f, 65535.0f / 65536.0f, 300.0f,
                        16777217.0f, 255.0f, 12345678.0f}) {
        EXPECT_EQ(std::strtof(FloatText(value).c_str(), nullptr), value) << FloatText(value);
    }
}

TEST(FloatTextTest, NotANumberAndTheInfinitiesHaveNames) {
    EXPECT_EQ(FloatText(std::numeric_limits<float>::quiet_NaN()), "NaN");
    EXPECT_EQ(FloatText(std::numeric_limits<float>::infinity()), "Infinity");
    EXPECT_EQ(FloatText(-std::numeric_limits<float>::infinity()), "-Infinity");
}

}  // namespace
