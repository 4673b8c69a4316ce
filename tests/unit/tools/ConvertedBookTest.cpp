#include "ConvertedBook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "tests/support/Utf16Text.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using tool::BuildConvertedBook;
using tool::ConvertRules;
using tool::ConvertSource;
using testsupport::U16;

// A palette-like book: one 8-bit RGB format, process swatches.
class Source {
public:
    explicit Source(std::u16string title = u"") {
        book.SetTitle(title);
        rgb = book.AddFormat();
        book.SetFormatEncoding(rgb, swatchbook::kInt8Encoding);
        book.SetFormatColorSpace(rgb, swatchbook::kRGBSpace);
    }

    std::int32_t Add(const std::u16string& name, std::uint8_t red = 0, std::int32_t kind = swatchbook::kProcessKind) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchKind(swatch, kind);
        book.SetSwatchName(swatch, name);
        const std::uint8_t values[3] = {red, 0, 0};
        book.SetSwatchValuesInt8(swatch, rgb, values);
        return swatch;
    }

    std::int32_t FloatFormat(std::int32_t colorSpace) {
        const std::int32_t format = book.AddFormat();
        book.SetFormatEncoding(format, swatchbook::kFloatEncoding);
        book.SetFormatColorSpace(format, colorSpace);
        return format;
    }

    CompleteBook book;
    std::int32_t rgb;
};

std::vector<std::u16string> Names(const CompleteBook& book, std::size_t group = 0) {
    std::vector<std::u16string> names;
    for (const auto& swatch : book.Groups()[group].swatches) names.push_back(swatch.name);
    return names;
}

TEST(ConvertedBookTest, FullNamesAndTheSourcesGroupsAreKept) {
    Source first;
    first.book.SetPrefix(u"P ");
    first.book.SetPostfix(u" C");
    first.Add(u"Loose");
    first.book.AddGroup();
    first.book.SelectGroup(1);
    first.book.SetGroupName(u"Reds");
    first.Add(u"Red", 255, swatchbook::kSpotKind);
    Source second;
    second.Add(u"Blue", 7);
    CompleteBook out;
    const auto report = BuildConvertedBook({{"a.ocb", first.book, {}}, {"b.txt", second.book, {3}}}, {}, out);
    EXPECT_THAT(report.errors, ElementsAre());
    EXPECT_THAT(report.notes, ElementsAre());
    ASSERT_EQ(out.Groups().size(), 2u);
    EXPECT_THAT(Names(out, 0), ElementsAre(u"P Loose C", u"Blue"));
    EXPECT_EQ(out.Groups()[1].name, u"Reds");
    EXPECT_THAT(Names(out, 1), ElementsAre(u"P Red C"));
    EXPECT_EQ(out.Groups()[1].swatches[0].kind, swatchbook::kSpotKind);
    EXPECT_TRUE(out.GetPrefix().empty());
    // The values come along in their own encoding.
    EXPECT_EQ(out.GetFormatEncoding(out.Groups()[0].swatches[1].values[0].format), swatchbook::kInt8Encoding);
    EXPECT_THAT(out.Groups()[0].swatches[1].values[0].bytes, ElementsAre(7, 0, 0));
}

TEST(ConvertedBookTest, AGroupPerFileIsNamedByTheTitleOrTheFile) {
    Source titled(u"Harbour");
    titled.Add(u"A");
    titled.book.AddGroup();
    titled.book.SelectGroup(1);
    titled.Add(u"In a group");
    Source untitled;
    untitled.Add(u"B");
    ConvertRules rules;
    rules.groupPerFile = true;
    CompleteBook out;
    const auto report =
        BuildConvertedBook({{"x/h.ocb", titled.book, {}}, {"x/pier.colours.txt", untitled.book, {1}}}, rules, out);
    EXPECT_THAT(report.errors, ElementsAre());
    ASSERT_EQ(out.Groups().size(), 3u);
    EXPECT_TRUE(out.Groups()[0].swatches.empty());
    EXPECT_EQ(out.Groups()[1].name, u"Harbour");
    EXPECT_THAT(Names(out, 1), ElementsAre(u"A", u"In a group"));
    EXPECT_EQ(out.Groups()[2].name, u"pier.colours");
    EXPECT_THAT(Names(out, 2), ElementsAre(u"B"));
}

TEST(ConvertedBookTest, ANamedGroupHoldsEverySwatchAndAKindCanBeGivenToAll) {
    Source source;
    source.Add(u"A", 0, swatchbook::kSpotKind);
    source.Add(u"B");
    ConvertRules rules;
    rules.groupName = u"Pier";
    rules.kind = swatchbook::kGlobalKind;
    CompleteBook out;
    EXPECT_THAT(BuildConvertedBook({{"p.txt", source.book, {1, 2}}}, rules, out).errors, ElementsAre());
    ASSERT_EQ(out.Groups().size(), 2u);
    EXPECT_EQ(out.Groups()[1].name, u"Pier");
    EXPECT_THAT(Names(out, 1), ElementsAre(u"A", u"B"));
    EXPECT_EQ(out.Groups()[1].swatches[0].kind, swatchbook::kGlobalKind);
    EXPECT_EQ(out.Groups()[1].swatches[1].kind, swatchbook::kGlobalKind);
}

TEST(ConvertedBookTest, WhatTheHostCannotImportIsLeftOutWithANote) {
    Source source;
    const std::int32_t xyz = source.FloatFormat(swatchbook::kXYZSpace);
    source.book.SetSwatchKind(source.book.AddSwatch(-1), swatchbook::kEmptyPlaceKind);  // dropped silently
    const std::int32_t far = source.Add(u"Far");
    const double values[3] = {0.2, 0.3, 0.4};
    source.book.SetSwatchValuesFloat(far, xyz, values);  // given last: the writer would write XYZ
    const std::int32_t pale = source.Add(u"Pale");
    source.book.SetSwatchTint(pale, 0.5);
    const std::int32_t bare = source.book.AddSwatch(-1);
    source.book.SetSwatchKind(bare, swatchbook::kGlobalKind);
    source.book.SetSwatchName(bare, u"Bare");
    source.Add(u"Kept");
    CompleteBook out;
    const auto report = BuildConvertedBook({{"s.xml", source.book, {}}}, {}, out);
    EXPECT_THAT(report.errors, ElementsAre());
    EXPECT_THAT(report.notes, ElementsAre("s.xml, swatch 2: left out \"Far\": the host does not import XYZ colours",
                                          "s.xml, swatch 3: left out \"Pale\": a swatch exchange file cannot carry a "
                                          "process colour with a tint",
                                          "s.xml, swatch 4: left out \"Bare\": it has no colour the host imports"));
    EXPECT_THAT(Names(out), ElementsAre(u"Kept"));
}

TEST(ConvertedBookTest, ALongNameIsAnErrorUnlessNamesAreCut) {
    Source source;
    source.Add(std::u16string(31, u'a'));
    source.Add(std::u16string(30, u'b') + U16("😀"));  // 32 units: the pair is not split
    const std::u16string forty(40, u'c');
    source.Add(forty);
    CompleteBook refused;
    const auto report = BuildConvertedBook({{"p.txt", source.book, {2, 3, 9}}}, {}, refused);
    EXPECT_THAT(report.errors,
                ElementsAre("p.txt:3: name \"" + std::string(30, 'b') +
                                "😀\" has 32 UTF-16 units; the host holds at most 31 (--cut-names cuts it)",
                            "p.txt:9: name \"" + std::string(40, 'c') +
                                "\" has 40 UTF-16 units; the host holds at most 31 (--cut-names cuts it)"));
    EXPECT_EQ(refused.CountSwatches(), 0);

    ConvertRules rules;
    rules.cutNames = true;
    CompleteBook cut;
    const auto cutReport = BuildConvertedBook({{"p.txt", source.book, {2, 3, 9}}}, rules, cut);
    EXPECT_THAT(cutReport.errors, ElementsAre());
    EXPECT_THAT(Names(cut), ElementsAre(std::u16string(31, u'a'), std::u16string(30, u'b'), std::u16string(31, u'c')));
    ASSERT_EQ(cutReport.notes.size(), 2u);
    EXPECT_EQ(cutReport.notes[1], "p.txt:9: cut \"" + std::string(40, 'c') + "\" to \"" + std::string(31, 'c') + "\"");
}

TEST(ConvertedBookTest, ANameUsedTwiceIsAnErrorUnlessTheLaterUsesAreNumbered) {
    Source first;
    first.Add(u"Red");
    first.Add(u"Red 2");
    first.Add(u"Red");
    Source second;
    second.Add(u"Red");
    second.Add(std::u16string(31, u'x'));
    second.Add(std::u16string(31, u'x'));
    const std::vector<ConvertSource> sources = {{"a.txt", first.book, {1, 2, 5}}, {"b.ose", second.book, {}}};
    CompleteBook refused;
    const auto report = BuildConvertedBook(sources, {}, refused);
    EXPECT_THAT(report.errors,
                ElementsAre("name \"Red\" is used 3 times: a.txt:1, a.txt:5, b.ose, swatch 1 (--rename-duplicates "
                            "numbers the later ones)",
                            "name \"" + std::string(31, 'x') +
                                "\" is used 2 times: b.ose, swatch 2, b.ose, swatch 3 (--rename-duplicates numbers "
                                "the later ones)"));

    ConvertRules rules;
    rules.renameDuplicates = true;
    CompleteBook renamed;
    const auto renameReport = BuildConvertedBook(sources, rules, renamed);
    EXPECT_THAT(renameReport.errors, ElementsAre());
    EXPECT_THAT(Names(renamed), ElementsAre(u"Red", u"Red 2", u"Red 3", u"Red 4", std::u16string(31, u'x'),
                                            std::u16string(29, u'x') + u" 2"));
    EXPECT_THAT(renameReport.notes[0], HasSubstr("a.txt:5: renamed \"Red\" to \"Red 3\", used before at a.txt:1"));
}

TEST(ConvertedBookTest, MoreBlocksThanAnExchangeFileHoldsAreAnError) {
    Source source;
    for (int i = 0; i < 9999; ++i) source.Add(u"c" + U16(std::to_string(i)));
    ConvertRules rules;
    rules.groupName = u"All";  // two more blocks: 10001
    CompleteBook out;
    EXPECT_THAT(BuildConvertedBook({{"big.txt", source.book, {}}}, rules, out).errors,
                ElementsAre("the swatches and groups need 10001 blocks; a swatch exchange file holds at most 10000"));
    CompleteBook fits;
    EXPECT_THAT(BuildConvertedBook({{"big.txt", source.book, {}}}, {}, fits).errors, ElementsAre());
}

TEST(ConvertedBookTest, GrayGoesToTheWriterAsItsComplementAndTheLastValuesStayLast) {
    Source source;
    const std::int32_t gray = source.FloatFormat(swatchbook::kGraySpace);
    const std::int32_t lab = source.FloatFormat(swatchbook::kLabSpace);
    const std::int32_t paper = source.book.AddSwatch(-1);
    source.book.SetSwatchKind(paper, swatchbook::kGlobalKind);
    source.book.SetSwatchName(paper, u"Paper");
    const double light[1] = {0.75};
    const double labValues[3] = {50, 1, 2};
    source.book.SetSwatchValuesFloat(paper, gray, light);
    source.book.SetSwatchValuesFloat(paper, lab, labValues);
    source.book.SetSwatchValuesFloat(paper, gray, light);  // given last
    CompleteBook out;
    EXPECT_THAT(BuildConvertedBook({{"s.ose", source.book, {}}}, {}, out).errors, ElementsAre());
    EXPECT_EQ(out.GetSwatchColorSpace(0), swatchbook::kGraySpace);
    std::int32_t formats[2] = {};
    ASSERT_EQ(out.GetValueFormats(0, formats), 2);
    double ink = 0;
    ASSERT_TRUE(out.GetSwatchValuesFloat(0, formats[0], &ink));
    EXPECT_EQ(ink, 0.25);
    double labOut[3] = {};
    ASSERT_TRUE(out.GetSwatchValuesFloat(0, formats[1], labOut));
    EXPECT_THAT(labOut, ElementsAre(50, 1, 2));
}

}  // namespace
