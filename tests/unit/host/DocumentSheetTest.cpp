#include "DocumentSheet.h"

#include <kelvra/Document.h>
#include <kelvra/DocumentJson.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::FloatEq;

const nlohmann::json kDocuments = nlohmann::json::parse(R"([
  {"name": "Colours",
   "groups": [{"name": "", "swatches": [
                 {"name": "Paper", "kind": "gray", "values": [0.25]},
                 {"name": "Ink", "kind": "cmyk", "values": [0.2, 0.4, 0.6, 0.5]},
                 {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0.25},
                 {"name": "Stripes", "kind": "pattern"}]},
              {"name": "Greens", "swatches": [
                 {"name": "Leaf", "kind": "custom", "customColor": "Leaf"}]}],
   "customColors": [{"name": "Gold", "kind": "lab", "values": [100, 0, 0], "flags": 1, "bookId": 3000},
                    {"name": "Leaf", "kind": "rgb", "values": [0, 0.5, 0.25]}]},
  {"name": "Empty", "groups": [{"name": "", "swatches": []}]}])");

sheet::Sheet Made() {
    // Through the host's own JSON form, as kelvra-host import has it.
    nlohmann::json documents = nlohmann::json::array();
    for (const auto& document : kDocuments) documents.push_back(kelvra::ToJson(*kelvra::DocumentFromJson(document)));
    return kelvra::cli::DocumentsSheet(documents);
}

TEST(DocumentSheetTest, EachDocumentIsABookOfItsGroups) {
    const sheet::Sheet shown = Made();
    EXPECT_EQ(shown.title, "Imported documents");
    ASSERT_EQ(shown.books.size(), 2u);
    EXPECT_EQ(shown.books[0].title, "Colours");
    EXPECT_EQ(shown.books[0].bookId, std::nullopt);
    ASSERT_EQ(shown.books[0].groups.size(), 2u);
    EXPECT_EQ(shown.books[0].groups[0].name, "");
    EXPECT_EQ(shown.books[0].groups[1].name, "Greens");
    EXPECT_EQ(shown.books[1].title, "Empty");
}

TEST(DocumentSheetTest, DirectColoursAreProcessSwatchesWithTheHostsValues) {
    const sheet::Sheet shown = Made();
    const auto& swatches = shown.books[0].groups[0].swatches;
    EXPECT_EQ(swatches[0].kind, "process");
    EXPECT_THAT(swatches[0].values, ElementsAre("gray 0.25"));
    EXPECT_THAT(*swatches[0].srgb, ElementsAre(0.75f, 0.75f, 0.75f));  // the host's gray is ink
    EXPECT_EQ(swatches[0].preview, sheet::Preview::kDirect);
    EXPECT_THAT(swatches[1].values, ElementsAre("cmyk 0.2 0.4 0.6 0.5"));
    EXPECT_THAT(*swatches[1].srgb, ElementsAre(FloatEq(0.4f), FloatEq(0.3f), FloatEq(0.2f)));
    EXPECT_EQ(swatches[1].preview, sheet::Preview::kCmykApproximation);
    EXPECT_EQ(swatches[3].kind, "pattern");
    EXPECT_FALSE(swatches[3].srgb);
    EXPECT_TRUE(swatches[3].values.empty());
}

TEST(DocumentSheetTest, CustomColoursAreSpotOrGlobalAtTheSwatchesTint) {
    const sheet::Sheet shown = Made();
    const sheet::Swatch& gold = shown.books[0].groups[0].swatches[2];
    EXPECT_EQ(gold.kind, "spot");
    EXPECT_EQ(gold.tint, 0.25);
    EXPECT_THAT(gold.values, ElementsAre("custom colour \"Gold\": lab 100 0 0, spot, book id 3000"));
    EXPECT_EQ(gold.preview, sheet::Preview::kLab);
    EXPECT_NEAR((*gold.srgb)[0], 1.0f, 1e-3);  // Lab white
    const sheet::Swatch& leaf = shown.books[0].groups[1].swatches[0];
    EXPECT_EQ(leaf.kind, "global");
    EXPECT_THAT(*leaf.srgb, ElementsAre(0.0f, 0.5f, 0.25f));
}

// A host document cannot lose a swatch's custom colour, but its JSON could.
TEST(DocumentSheetTest, ASwatchWhoseCustomColourIsMissingHasNoPreview) {
    const sheet::Sheet shown = kelvra::cli::DocumentsSheet(nlohmann::json::parse(R"([{"name": "D",
        "groups": [{"name": "", "swatches": [{"name": "Lost", "kind": "custom", "customColor": "Nowhere",
                                               "tint": 0}]}], "customColors": []}])"));
    const sheet::Swatch& lost = shown.books[0].groups[0].swatches[0];
    EXPECT_EQ(lost.kind, "custom colour");
    EXPECT_THAT(lost.values, ElementsAre("custom colour \"Nowhere\", missing"));
    EXPECT_FALSE(lost.srgb);
}

}  // namespace
