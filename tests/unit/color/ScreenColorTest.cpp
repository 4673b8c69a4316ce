#include "color/ScreenColor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using testing::ElementsAre;
using testing::FloatEq;

TEST(ScreenColorTest, CmykTakesEachInkOffWhiteAndBlackOffAll) {
    EXPECT_THAT(color::CmykToSrgbApproximation(0, 0, 0, 0), ElementsAre(1.0f, 1.0f, 1.0f));
    EXPECT_THAT(color::CmykToSrgbApproximation(1, 0, 0, 0), ElementsAre(0.0f, 1.0f, 1.0f));
    EXPECT_THAT(color::CmykToSrgbApproximation(0, 0, 0, 0.5f), ElementsAre(0.5f, 0.5f, 0.5f));
    EXPECT_THAT(color::CmykToSrgbApproximation(0.2f, 0.4f, 0.6f, 0.5f),
                ElementsAre(FloatEq(0.4f), FloatEq(0.3f), FloatEq(0.2f)));
}

TEST(ScreenColorTest, ATintMixesTowardWhite) {
    const color::Srgb colour{0.0f, 0.5f, 1.0f};
    EXPECT_THAT(color::TintTowardWhite(colour, 0), ElementsAre(0.0f, 0.5f, 1.0f));
    EXPECT_THAT(color::TintTowardWhite(colour, 0.5f), ElementsAre(0.5f, 0.75f, 1.0f));
    EXPECT_THAT(color::TintTowardWhite(colour, 1), ElementsAre(1.0f, 1.0f, 1.0f));
}

TEST(ScreenColorTest, ChannelsBecomeRoundedClampedBytes) {
    EXPECT_EQ(color::SrgbByte(0.0f), 0);
    EXPECT_EQ(color::SrgbByte(1.0f), 255);
    EXPECT_EQ(color::SrgbByte(0.5f), 128);  // 127.5 rounds up
    EXPECT_EQ(color::SrgbByte(0.25f), 64);  // 63.75
    EXPECT_EQ(color::SrgbByte(0.9f), 229);  // 229.49999 in double; 229.5 in float
    EXPECT_EQ(color::SrgbByte(1.5f), 255);
    EXPECT_EQ(color::SrgbByte(-0.5f), 0);
    EXPECT_EQ(color::SrgbByte(std::nanf("")), 0);
    EXPECT_THAT(color::SrgbBytes({0.0f, 0.2f, 1.0f}), ElementsAre(0, 51, 255));
}

TEST(ScreenColorTest, BytesAreWrittenAsUpperCaseHex) {
    EXPECT_EQ(color::HexColour({0, 0, 0}), "#000000");
    EXPECT_EQ(color::HexColour({0x1A, 0x2B, 0xFF}), "#1A2BFF");
}

}  // namespace
