#include "PaletteText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Utf16Text.h"

namespace {

using testing::ElementsAre;
using testsupport::U16;
using tool::PaletteLayout;

tool::Palette Parsed(std::string_view text, PaletteLayout layout) {
    auto parsed = tool::ParsePalette(text, layout);
    if (const auto* error = std::get_if<tool::PaletteError>(&parsed)) {
        ADD_FAILURE() << "line " << error->line << ": " << error->message;
        return {};
    }
    return std::get<tool::Palette>(parsed);
}

tool::PaletteError Failure(std::string_view text, PaletteLayout layout) {
    auto parsed = tool::ParsePalette(text, layout);
    if (const auto* error = std::get_if<tool::PaletteError>(&parsed)) return *error;
    ADD_FAILURE() << "no error";
    return {};
}

TEST(PaletteTextTest, AHeadedPaletteHasANameCommentsAndColourLines) {
    const tool::Palette palette = Parsed("\xEF\xBB\xBFGIMP Palette\r\nName: Harbour \r\nColumns: 4\r\n#\r\n# blues\r\n"
                                         "  0  64 128\tDeep   Sea \r\n\r\n255 255 255 White\r\n10 20 30\r\n",
                                         PaletteLayout::kHeaded);
    EXPECT_EQ(palette.name, u"Harbour");
    ASSERT_EQ(palette.colors.size(), 3u);
    EXPECT_EQ(palette.colors[0].name, u"Deep   Sea");
    EXPECT_THAT(palette.colors[0].rgb, ElementsAre(0, 64, 128));
    EXPECT_EQ(palette.colors[0].line, 6u);
    EXPECT_EQ(palette.colors[1].line, 8u);
    EXPECT_EQ(palette.colors[2].name, u"#0A141E");  // no name: its hex form
}

TEST(PaletteTextTest, AColourListTakesNumbersAndHexLinesAndSkipsComments) {
    const tool::Palette palette = Parsed("! a header\n255 250 250\t\tsnow\n#fff\n# a comment\n#00FF7f spring green\n"
                                         "#bad\n  +7 0 0 dark   \n",
                                         PaletteLayout::kColorList);
    ASSERT_EQ(palette.colors.size(), 5u);
    EXPECT_EQ(palette.colors[0].name, u"snow");
    EXPECT_THAT(palette.colors[0].rgb, ElementsAre(255, 250, 250));
    EXPECT_EQ(palette.colors[1].name, u"#FFFFFF");
    EXPECT_THAT(palette.colors[1].rgb, ElementsAre(255, 255, 255));
    EXPECT_EQ(palette.colors[2].name, u"spring green");
    EXPECT_THAT(palette.colors[2].rgb, ElementsAre(0, 255, 127));
    EXPECT_THAT(palette.colors[3].rgb, ElementsAre(0xBB, 0xAA, 0xDD));
    EXPECT_EQ(palette.colors[4].name, u"dark");
    EXPECT_EQ(palette.colors[4].line, 7u);
    EXPECT_TRUE(palette.name.empty());
}

TEST(PaletteTextTest, NamesAreUtf8) {
    const tool::Palette palette = Parsed("1 2 3 Grün 😀\n", PaletteLayout::kColorList);
    ASSERT_EQ(palette.colors.size(), 1u);
    EXPECT_EQ(palette.colors[0].name, U16("Grün 😀"));
}

struct BadLine {
    const char* text;
    PaletteLayout layout;
    std::size_t line;
    const char* message;
};

class PaletteTextErrorTest : public testing::TestWithParam<BadLine> {};

TEST_P(PaletteTextErrorTest, NamesTheLineAndWhatIsWrong) {
    const tool::PaletteError error = Failure(GetParam().text, GetParam().layout);
    EXPECT_EQ(error.line, GetParam().line);
    EXPECT_EQ(error.message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, PaletteTextErrorTest,
    testing::Values(
        BadLine{"1 2 3 a\n12 34 Red\n", PaletteLayout::kColorList, 2,
                "expected three numbers 0..255 and a name, found 2 numbers"},
        BadLine{"12\n", PaletteLayout::kColorList, 1, "expected three numbers 0..255 and a name, found 1 number"},
        BadLine{"300 0 0 Red\n", PaletteLayout::kColorList, 1, "value 300 is out of range 0..255"},
        BadLine{"0 -1 0 Red\n", PaletteLayout::kColorList, 1, "value -1 is out of range 0..255"},
        BadLine{"0 0 99999999999999999999 x\n", PaletteLayout::kColorList, 1,
                "value 99999999999999999999 is out of range 0..255"},
        BadLine{"0 0.5 0 Red\n", PaletteLayout::kColorList, 1, "\"0.5\" is not a whole number"},
        BadLine{"\n#12345 x\n", PaletteLayout::kColorList, 2, "\"#12345\" is not a colour: expected #RRGGBB or #RGB"},
        BadLine{"Red 1 2 3\n", PaletteLayout::kColorList, 1, "expected \"R G B name\" or \"#RRGGBB name\""},
        BadLine{"1 2 3 \xFF\xFE\n", PaletteLayout::kColorList, 1, "not UTF-8 text"},
        BadLine{"1 2 3 \xED\xA0\x80\n", PaletteLayout::kColorList, 1, "not UTF-8 text"},  // a surrogate
        BadLine{"Palette\n1 2 3 x\n", PaletteLayout::kHeaded, 1, "the first line is not \"GIMP Palette\""},
        BadLine{"", PaletteLayout::kHeaded, 1, "the file is empty"},
        BadLine{"GIMP Palette\nColumns: four\n", PaletteLayout::kHeaded, 2,
                "Columns: needs a whole number, found \"four\""}));

TEST(PaletteTextTest, HexLinesAreCommentsInAHeadedPalette) {
    const tool::Palette palette = Parsed("GIMP Palette\n#ffffff white\n1 2 3 x\n", PaletteLayout::kHeaded);
    ASSERT_EQ(palette.colors.size(), 1u);
    EXPECT_EQ(palette.colors[0].name, u"x");
}

TEST(PaletteTextTest, TellsAHeadedPaletteByItsFirstLine) {
    EXPECT_TRUE(tool::StartsAsHeadedPalette("GIMP Palette\nName: x\n"));
    EXPECT_TRUE(tool::StartsAsHeadedPalette("\xEF\xBB\xBFGIMP Palette \r\n"));
    EXPECT_FALSE(tool::StartsAsHeadedPalette("255 0 0 GIMP Palette\n"));
    EXPECT_FALSE(tool::StartsAsHeadedPalette(""));
}

// Whatever byte stands wherever in a palette, the answer is a palette or an
// error, never a crash or a read outside the text (the sanitizers watch).
TEST(PaletteTextTest, AnyByteAnywhereGivesAPaletteOrAnError) {
    const std::string good = "GIMP Palette\nName: N\n# c\n1 2 3 A b\n#0a0B0c x\n";
    for (PaletteLayout layout : {PaletteLayout::kHeaded, PaletteLayout::kColorList}) {
        for (std::size_t at = 0; at <= good.size(); ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = good;
                text.insert(at, 1, char(byte));
                const auto parsed = tool::ParsePalette(text, layout);
                EXPECT_TRUE(std::holds_alternative<tool::Palette>(parsed) ||
                            std::get<tool::PaletteError>(parsed).line >= 1);
                tool::ParsePalette(text.substr(0, at), layout);  // cut anywhere
            }
        }
    }
}

}  // namespace
