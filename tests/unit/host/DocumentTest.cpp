#include <kelvra/Document.h>
#include <kelvra/HostError.h>

#include <gtest/gtest.h>

namespace {

using kelvra::Document;

std::u16string Names(const kelvra::SwatchGroup& group) {
    std::u16string names;
    for (const auto& swatch : group.swatches) names += swatch->name;
    return names;
}

TEST(DocumentTest, ANewDocumentHasOnlyTheUnnamedDefaultGroup) {
    const Document document("Untitled");
    EXPECT_EQ(document.Name(), "Untitled");
    ASSERT_EQ(document.Groups().size(), 1u);
    EXPECT_EQ(document.Groups()[0]->name, u"");
    EXPECT_TRUE(document.Groups()[0]->swatches.empty());
    EXPECT_TRUE(document.CustomColors().empty());
    EXPECT_EQ(document.SwatchCount(), 0u);
    EXPECT_EQ(document.NthSwatch(0), nullptr);
}

TEST(DocumentTest, GroupsGoWhereAskedButNeverBeforeTheDefaultGroup) {
    Document document("d");
    document.InsertGroup(-1).name = u"B";
    document.InsertGroup(0).name = u"D";   // would go before the default group: appended
    document.InsertGroup(1).name = u"A";
    document.InsertGroup(2).name = u"A2";
    document.InsertGroup(99).name = u"E";  // past the end: appended
    std::u16string names;
    for (const auto& group : document.Groups()) names += group->name + u",";
    EXPECT_EQ(names, u",A,A2,B,D,E,");
}

TEST(DocumentTest, SwatchesGoWhereAskedOrAtTheEndWithNoNameAndNoColour) {
    Document document("d");
    kelvra::SwatchGroup& group = *document.Groups()[0];
    document.InsertSwatch(group, -1).name = u"b";
    document.InsertSwatch(group, 0).name = u"a";
    document.InsertSwatch(group, 2).name = u"d";
    document.InsertSwatch(group, 2).name = u"c";
    const kelvra::Swatch& fresh = document.InsertSwatch(group, 40);
    EXPECT_EQ(Names(group), u"abcd");
    EXPECT_EQ(group.swatches.back().get(), &fresh);
    EXPECT_EQ(fresh.name, u"");
    EXPECT_EQ(fresh.color.kind, kKVNoneColor);
}

TEST(DocumentTest, SwatchesAreCountedAndNumberedOverAllGroups) {
    Document document("d");
    kelvra::SwatchGroup& second = document.InsertGroup(-1);
    kelvra::SwatchGroup& first = *document.Groups()[0];
    document.InsertSwatch(second, -1).name = u"c";
    document.InsertSwatch(first, -1).name = u"a";
    document.InsertSwatch(first, -1).name = u"b";
    EXPECT_EQ(document.SwatchCount(), 3u);
    EXPECT_EQ(document.NthSwatch(0)->name, u"a");
    EXPECT_EQ(document.NthSwatch(1)->name, u"b");
    EXPECT_EQ(document.NthSwatch(2)->name, u"c");
    EXPECT_EQ(document.NthSwatch(3), nullptr);
}

TEST(DocumentTest, CustomColourNamesAreUniqueAndComparedExactly) {
    Document document("d");
    KVCustomColor definition{};
    definition.kind = kKVCustomThreeColor;
    definition.c.three = {1, 0, 0};
    kelvra::CustomColor* red = document.NewCustomColor(u"Red", definition);
    ASSERT_NE(red, nullptr);
    EXPECT_EQ(red->definition.c.three.red, 1.0f);
    EXPECT_EQ(red->bookId, 0);
    EXPECT_EQ(document.NewCustomColor(u"Red", definition), nullptr);
    EXPECT_NE(document.NewCustomColor(u"red", definition), nullptr);
    EXPECT_EQ(document.FindCustomColor(u"Red"), red);
    EXPECT_EQ(document.FindCustomColor(u"Red "), nullptr);
    EXPECT_EQ(document.CustomColors().size(), 2u);
}

TEST(DocumentTest, HandlesAreFoundOnlyInTheirOwnDocument) {
    Document mine("mine");
    Document other("other");
    const kelvra::SwatchGroup& group = mine.InsertGroup(-1);
    const kelvra::Swatch& swatch = mine.InsertSwatch(*mine.Groups()[0], -1);
    const kelvra::CustomColor& color = *mine.NewCustomColor(u"c", KVCustomColor{});
    EXPECT_EQ(mine.Find(kelvra::HandleOf(group)), &group);
    EXPECT_EQ(mine.Find(kelvra::HandleOf(swatch)), &swatch);
    EXPECT_EQ(mine.Find(kelvra::HandleOf(color)), &color);
    EXPECT_EQ(other.Find(kelvra::HandleOf(group)), nullptr);
    EXPECT_EQ(other.Find(kelvra::HandleOf(swatch)), nullptr);
    EXPECT_EQ(other.Find(kelvra::HandleOf(color)), nullptr);
    // A handle of one kind is no handle of another.
    EXPECT_EQ(mine.Find(reinterpret_cast<KVSwatchRef>(kelvra::HandleOf(group))), nullptr);
    EXPECT_EQ(mine.Find(reinterpret_cast<KVSwatchGroupRef>(kelvra::HandleOf(swatch))), nullptr);
    EXPECT_EQ(mine.Find(static_cast<KVCustomColorHandle>(nullptr)), nullptr);
    EXPECT_NE(mine.Handle(), other.Handle());
    EXPECT_NE(mine.SwatchList(), other.SwatchList());
}


TEST(DocumentTest, ASwatchsPlaceIsItsGroupAndItsIndexThere) {
    Document document("d");
    kelvra::SwatchGroup& brand = document.InsertGroup(-1);
    const kelvra::Swatch& first = document.InsertSwatch(*document.Groups()[0], -1);
    document.InsertSwatch(brand, -1);
    const kelvra::Swatch& second = document.InsertSwatch(brand, -1);
    const kelvra::Swatch& before = document.InsertSwatch(brand, 0);
    EXPECT_EQ(document.PlaceOf(first).group, 0u);
    EXPECT_EQ(document.PlaceOf(first).index, 0u);
    EXPECT_EQ(document.PlaceOf(second).group, 1u);
    EXPECT_EQ(document.PlaceOf(second).index, 2u);
    EXPECT_EQ(document.PlaceOf(before).index, 0u);
    Document other("o");
    EXPECT_THROW(other.PlaceOf(first), kelvra::HostError);
}

}  // namespace
