// A file of each registered format, made by the builders, checked and
// imported into a document through the real module: the groups, names,
// colours, tints and custom colours the document receives, written out here.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModuleImport.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using import_testing::DescribeCustomColors;
using import_testing::DescribeSwatches;
using import_testing::LabToSRGB;
using import_testing::Shown;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::ColorBlock;
using testsupport::U16;

class ImportEndToEndTest : public import_testing::ModuleImportTest {
protected:
    // Check, then Go into a new document; the document.
    kelvra::Document& Import(KVFileFormatHandle format, const std::filesystem::path& file) {
        kelvra::Document& document = host_.Documents().New(file.filename().string());
        EXPECT_EQ(Check(format, file), kZPNoErr);
        EXPECT_EQ(Go(format, file, document), kZPNoErr);
        return document;
    }

    static void ExpectRGB(const KVCustomColor& color, const std::array<double, 3>& expected) {
        EXPECT_EQ(color.kind, kKVCustomThreeColor);
        EXPECT_NEAR(color.c.three.red, expected[0], 2e-3);
        EXPECT_NEAR(color.c.three.green, expected[1], 2e-3);
        EXPECT_NEAR(color.c.three.blue, expected[2], 2e-3);
    }
};

TEST_F(ImportEndToEndTest, AnRGBColourBookBecomesSpotColoursOfTheBookWithItsAffixes) {
    // Prefix "P ", postfix " C", book 3002, a "spot" trailer; a gap that is
    // dropped and a name that is a localisation key.
    const kelvra::Document& document =
        Import(colorBook_, folder_.Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook())));
    EXPECT_THAT(DescribeSwatches(document),
                ElementsAre("[]", "P Red 032 C: custom \"P Red 032 C\" tint 0",
                            "P Grün C: custom \"P Grün C\" tint 0", "P Sky C: custom \"P Sky C\" tint 0"));
    EXPECT_THAT(DescribeCustomColors(document),
                ElementsAre("P Red 032 C: rgb 1 0 0 spot book 3002",
                            "P Grün C: rgb 0 0.627451 0.2509804 spot book 3002",
                            "P Sky C: rgb 0.3529412 0.627451 1 spot book 3002"));
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(ImportEndToEndTest, ALabColourBookKeepsLabForSpotColoursAndGivesRGBForGlobalOnes) {
    testsupport::ColorBookDescription book;
    book.bookId = 4000;
    book.colorSpace = testsupport::kColorBookLab;
    // L 153 is 60, a 168 is 40, b 98 is -30.
    book.records = {{U16("Leaf"), "L1", {153, 168, 98}, {}}};
    const kelvra::Document& spot = Import(colorBook_, folder_.Write("spot.ocb", testsupport::BuildColorBook(book)));
    EXPECT_THAT(DescribeSwatches(spot), ElementsAre("[]", "Leaf: custom \"Leaf\" tint 0"));
    EXPECT_THAT(DescribeCustomColors(spot), ElementsAre("Leaf: lab 60 40 -30 spot book 4000"));

    book.trailer = testsupport::ColorBookTrailer("proc");  // not spot: global
    const kelvra::Document& global =
        Import(colorBook_, folder_.Write("global.ocb", testsupport::BuildColorBook(book)));
    EXPECT_THAT(DescribeSwatches(global), ElementsAre("[]", "Leaf: custom \"Leaf\" tint 0"));
    ASSERT_EQ(global.CustomColors().size(), 1u);
    ExpectRGB(global.CustomColors()[0]->definition, LabToSRGB(60.0, 40.0, -30.0));
    EXPECT_EQ(global.CustomColors()[0]->definition.flags, 0u);
    EXPECT_EQ(global.CustomColors()[0]->bookId, 0);
}

TEST_F(ImportEndToEndTest, ASwatchExchangeFileGivesGroupsProcessColoursTintsAndCustomColours) {
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        ColorBlock({{}, U16("Paper"), {}, "Gray", {0.2f}, 2}),
        testsupport::GroupStartBlock(U16("Brand")),
        ColorBlock({0.25f, U16("Signal"), {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 0}),
        ColorBlock({{}, U16("Deep"), {}, "LAB ", {0.5f, 40.0f, -30.0f}, 1}),
        ColorBlock({{}, U16("Leaf"), {}, "LAB ", {0.5f, 40.0f, -30.0f}, 0}),
        ColorBlock({{}, U16("Shade"), {}, "Gray", {0.2f}, 0}),
        testsupport::GroupEndBlock(),
        ColorBlock({{}, U16("Sky"), {}, "RGB ", {0.25f, 0.5f, 1.0f}, 2}),
    };
    const kelvra::Document& document =
        Import(swatchExchange_, folder_.Write("brand.ose", testsupport::BuildSwatchExchange(file)));
    // Gray 0.2 is stored as its complement; a swatch after a group's end
    // still goes into the group last selected.
    EXPECT_THAT(DescribeSwatches(document),
                ElementsAre("[]", "Paper: gray 0.8", "[Brand]", "Signal: custom \"Signal\" tint 0.25",
                            "Deep: custom \"Deep\" tint 0", "Leaf: custom \"Leaf\" tint 0",
                            "Shade: custom \"Shade\" tint 0", "Sky: rgb 0.25 0.5 1"));
    const std::vector<std::string> colors = DescribeCustomColors(document);
    ASSERT_EQ(colors.size(), 4u);
    EXPECT_EQ(colors[0], "Signal: cmyk 0 0.8 0.9 0 global book 0");
    EXPECT_EQ(colors[1], "Deep: lab 50 40 -30 spot book 0");
    ExpectRGB(document.CustomColors()[2]->definition, LabToSRGB(50.0, 40.0, -30.0));
    EXPECT_EQ(colors[3], "Shade: cmyk 0 0 0 0.8 global book 0");
    EXPECT_THAT(Shown(host_), IsEmpty());
}

}  // namespace
