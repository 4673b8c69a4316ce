// How kelvra-host writes colours for a person: values in designers' units,
// the sRGB hex of what they show, and chips in 24-bit or 256 colours.
#include <ColorText.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace {

using kelvra::cli::ColorValues;
using kelvra::cli::Srgb;
using Model = ColorValues::Model;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::string Values(ColorValues color) {
    std::ostringstream out;
    kelvra::cli::WriteValues(out, color);
    return out.str();
}

std::string Hex(ColorValues color, float tint = 0) {
    std::ostringstream out;
    kelvra::cli::WriteHex(out, kelvra::cli::ShownColor(color, tint));
    return out.str();
}

std::string Chip(std::optional<Srgb> color, kelvra::cli::ChipDepth depth) {
    std::ostringstream out;
    kelvra::cli::WriteChip(out, color, depth);
    return out.str();
}

TEST(ColorTextTest, ValuesAreWrittenInTheUnitsADesignerReads) {
    EXPECT_EQ(Values({Model::Gray, {0.2f}}), "gray 20%");
    EXPECT_EQ(Values({Model::Rgb, {0.9882353f, 0.9137255f, 0.30980393f}}), "rgb 252 233 79");
    EXPECT_EQ(Values({Model::Cmyk, {1, 0.5f, 0, 0.125f}}), "cmyk 100% 50% 0% 13%");
    EXPECT_EQ(Values({Model::Lab, {91.76471f, -5, 73}}), "lab 91.8 -5.0 73.0");
}

TEST(ColorTextTest, RoundingGoesHalfAwayFromZeroAndNeverShowsMinusZero) {
    EXPECT_EQ(Values({Model::Lab, {-0.04f, 0.05f, -0.05f}}), "lab 0.0 0.1 -0.1");
    EXPECT_EQ(Values({Model::Rgb, {-0.001f, 0.5f, 1}}), "rgb 0 128 255");
    EXPECT_EQ(Values({Model::Gray, {-0.004f}}), "gray 0%");
}

TEST(ColorTextTest, ValuesOutOfRangeOrNotNumbersAreShownAsTheyAre) {
    EXPECT_EQ(Values({Model::Rgb, {kNaN, kInfinity, -2}}), "rgb NaN Infinity -510");
    EXPECT_EQ(Values({Model::Cmyk, {1.5f, -kInfinity, 0, 0}}), "cmyk 150% -Infinity 0% 0%");
}

TEST(ColorTextTest, HugeValuesAreWrittenWithAllTheirDigits) {
    // 1e13f is 9999999827968 and 1e14f is 100000000376832, both exactly.
    EXPECT_EQ(Values({Model::Gray, {1e13f}}), "gray 999999982796800%");
    EXPECT_EQ(Values({Model::Gray, {1e14f}}), "gray 10000000037683200%");
    EXPECT_EQ(Values({Model::Rgb, {-1e14f, 1e30f, 0}}),
              "rgb -25500000096092160 255000003837103886068555658035200 0");
}

TEST(ColorTextTest, TheShownColourIsInkOnWhiteOrTheConvertedLabMixedTowardsWhiteByTheTint) {
    EXPECT_EQ(Hex({Model::Gray, {0.2f}}), "#CCCCCC");
    // Cyan 1, magenta 0.5, black 0.5: (0, 0.25, 0.5).
    EXPECT_EQ(Hex({Model::Cmyk, {1, 0.5f, 0, 0.5f}}), "#004080");
    // (1, 0.8, 0) a quarter of the way to white: (1, 0.85, 0.25).
    EXPECT_EQ(Hex({Model::Cmyk, {0, 0.2f, 1, 0}}, 0.25f), "#FFD940");
    // Lab 50 -20 30 (D50) is sRGB 0.3805725, 0.5013323, 0.2561450.
    EXPECT_EQ(Hex({Model::Lab, {50, -20, 30}}), "#618041");
    // NaN shows as 0, the rest is clamped.
    EXPECT_EQ(Hex({Model::Rgb, {kNaN, kInfinity, -2}}), "#00FF00");
}

TEST(ColorTextTest, ValuesComeFromTheDocumentJsonOrACustomColoursDefinition) {
    const auto gray = kelvra::cli::ColorValuesFromJson("gray", nlohmann::json::array({0.25}));
    ASSERT_TRUE(gray);
    EXPECT_EQ(Values(*gray), "gray 25%");
    const auto odd = kelvra::cli::ColorValuesFromJson("rgb", nlohmann::json::array({"NaN", "-Infinity", 1}));
    EXPECT_EQ(Values(*odd), "rgb NaN -Infinity 255");
    EXPECT_FALSE(kelvra::cli::ColorValuesFromJson("pattern", nlohmann::json::array()));
    KVCustomColor lab{};
    lab.kind = kKVCustomLabColor;
    lab.c.lab = {80, 5, 60};
    EXPECT_EQ(Values(kelvra::cli::ColorValuesOf(lab)), "lab 80.0 5.0 60.0");
    KVCustomColor cmyk{};
    cmyk.kind = kKVCustomFourColor;
    cmyk.c.four = {0, 0.2f, 1, 0};
    EXPECT_EQ(Values(kelvra::cli::ColorValuesOf(cmyk)), "cmyk 0% 20% 100% 0%");
}

TEST(ColorTextTest, AChipCarriesTheColoursBytesOrItsNearestOf256) {
    using kelvra::cli::ChipDepth;
    EXPECT_EQ(Chip(Srgb{1, 128, 255}, ChipDepth::TrueColor), "\x1b[48;2;1;128;255m  \x1b[0m ");
    EXPECT_EQ(Chip(Srgb{255, 0, 0}, ChipDepth::Colors256), "\x1b[48;5;196m  \x1b[0m ");
    EXPECT_EQ(Chip(std::nullopt, ChipDepth::TrueColor), "   ");
    EXPECT_EQ(Chip(Srgb{255, 0, 0}, ChipDepth::None), "");
}

TEST(ColorTextTest, TheNearestOf256IsOnTheCubeOrTheGrayRamp) {
    using kelvra::cli::NearestOf256;
    EXPECT_EQ(NearestOf256({0, 0, 0}), 16);
    EXPECT_EQ(NearestOf256({255, 255, 255}), 231);
    EXPECT_EQ(NearestOf256({95, 135, 175}), 16 + 36 * 1 + 6 * 2 + 3);
    // Middle gray is 128 on the ramp (232 + 12), 135 on the cube.
    EXPECT_EQ(NearestOf256({128, 128, 128}), 244);
    EXPECT_EQ(NearestOf256({250, 10, 5}), 196);
}

}  // namespace
