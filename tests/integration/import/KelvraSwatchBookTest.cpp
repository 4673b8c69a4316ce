// The book over a document's swatch list, in this process against the
// emulated host: how a reader's calls become groups, swatches and custom
// colours of the current document, and what a snapshot of a document
// answers the writer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <kelvra/DocumentJson.h>

#include "ImportTesting.h"
#include "KVError.h"
#include "tests/support/InProcessHost.h"
#include "swatchbook/KelvraSwatchBook.h"
#include "tests/support/Utf16Text.h"

namespace {

using import_testing::DescribeCustomColors;
using import_testing::DescribeSwatches;
using import_testing::FloatText;
using testing::ElementsAre;
using testsupport::U16;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');

class KelvraSwatchBookTest : public testsupport::InProcessHostTest {
protected:
    void SetUp() override {
        InProcessHostTest::SetUp();
        document_ = &host_.Documents().New("Import");
    }

    // A Float format of `colorSpace` in `book`.
    static std::int32_t FloatFormat(OrvikSwatchbook& book, std::int32_t colorSpace) {
        const std::int32_t format = book.AddFormat();
        book.SetFormatEncoding(format, swatchbook::kFloatEncoding);
        book.SetFormatColorSpace(format, colorSpace);
        return format;
    }

    // One swatch as a reader adds it.
    static void AddSwatch(OrvikSwatchbook& book, const char* name, std::int32_t kind, std::int32_t format,
                          std::vector<double> values, double tint = 0.0) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchName(swatch, U16(name));
        book.SetSwatchTint(swatch, tint);
        book.SetSwatchValuesFloat(swatch, format, values.data());
        book.SetSwatchKind(swatch, kind);
    }

    // Expects `call` to throw kv::Error with `code`.
    template <class Call>
    static void ExpectError(kv::ResultCode code, Call call) {
        try {
            call();
            ADD_FAILURE() << "no kv::Error";
        } catch (const kv::Error& error) {
            EXPECT_EQ(error.Code(), code);
        }
    }

    std::vector<std::string> Swatches() const { return DescribeSwatches(*document_); }
    std::vector<std::string> CustomColors() const { return DescribeCustomColors(*document_); }

    kelvra::Document* document_ = nullptr;
};

TEST_F(KelvraSwatchBookTest, ANameOf31UnitsWithItsAffixesIsTakenAnd32AreRefused) {
    KelvraSwatchBook book(nullptr);
    book.SetPrefix(u"P ");
    book.SetPostfix(u" C");
    const std::u16string name27(27, u'n');
    const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
    const double white = 0.0;
    EXPECT_EQ(book.AddSwatch(-1), 0);
    EXPECT_TRUE(book.SetSwatchName(0, name27));
    EXPECT_FALSE(book.SetSwatchName(0, name27 + u"n"));
    book.SetSwatchValuesFloat(0, gray, &white);
    book.SetSwatchKind(0, swatchbook::kProcessKind);
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", "P " + std::string(27, 'n') + " C: gray 1"));

    EXPECT_EQ(book.AddGroup(), 1);
    ASSERT_TRUE(book.SelectGroup(1));
    EXPECT_FALSE(book.SetGroupName(name27));
    EXPECT_EQ(document_->Groups()[1]->name, u"P " + name27 + u" C");
    const std::uint64_t named = Calls(kKVSwatchGroupSuite, "SetGroupName");
    EXPECT_FALSE(book.SetGroupName(name27 + u"n"));
    EXPECT_EQ(Calls(kKVSwatchGroupSuite, "SetGroupName"), named);
}

TEST_F(KelvraSwatchBookTest, AnAppendedSwatchIsWrittenOnlyOnceTheReaderMovesOn) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    const double red[3] = {1.0, 0.0, 0.0};
    EXPECT_EQ(book.AddSwatch(-1), 0);
    EXPECT_TRUE(book.SetSwatchName(0, u"Red"));
    book.SetSwatchValuesFloat(0, rgb, red);
    book.SetSwatchKind(0, swatchbook::kProcessKind);
    EXPECT_THAT(Swatches(), ElementsAre("[]", ": none"));

    EXPECT_EQ(book.AddSwatch(7), 1);  // beyond the end: appended
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Red: rgb 1 0 0", ": none"));
    book.SetSwatchName(1, u"Second");
    book.SetSwatchValuesFloat(1, rgb, red);
    EXPECT_TRUE(book.SelectGroup(0));
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Red: rgb 1 0 0", "Second: rgb 1 0 0"));

    EXPECT_EQ(book.AddSwatch(-1), 2);
    book.SetSwatchName(2, u"Third");
    book.SetSwatchValuesFloat(2, rgb, red);
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Red: rgb 1 0 0", "Second: rgb 1 0 0", "Third: rgb 1 0 0"));
}

TEST_F(KelvraSwatchBookTest, ANameAloneOrAKindOutside1To3WritesNothing) {
    KelvraSwatchBook book(nullptr);
    book.AddSwatch(-1);
    book.SetSwatchName(0, u"Gap");
    book.SetSwatchKind(0, swatchbook::kEmptyPlaceKind);
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", ": none"));
}

TEST_F(KelvraSwatchBookTest, ANameGivenForAnotherSwatchGoesWithThePendingOne) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    const double blue[3] = {0.0, 0.0, 1.0};
    book.AddSwatch(-1);
    book.AddSwatch(-1);
    book.SetSwatchValuesFloat(1, rgb, blue);
    book.SetSwatchName(0, u"Blue");  // writes swatch 1 with it; swatch 0 becomes pending, unnamed
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", ": none", "Blue: rgb 0 0 1"));
}

TEST_F(KelvraSwatchBookTest, AGlobalLabSwatchArrivesAsAnRGBCustomColourAndASpotOneStaysLab) {
    KelvraSwatchBook book(nullptr);
    book.SetBookID(3002);
    const std::int32_t lab = FloatFormat(book, swatchbook::kLabSpace);
    AddSwatch(book, "Leaf", swatchbook::kGlobalKind, lab, {60.0, 40.0, 30.0});
    AddSwatch(book, "Deep", swatchbook::kSpotKind, lab, {60.0, 40.0, 30.0}, 0.5);
    AddSwatch(book, "Plain", swatchbook::kProcessKind, lab, {60.0, 40.0, 30.0});
    book.FlushPendingSwatch();

    EXPECT_THAT(Swatches(), ElementsAre("[]", "Leaf: custom \"Leaf\" tint 0", "Deep: custom \"Deep\" tint 0.5",
                                        testing::StartsWith("Plain: rgb ")));
    ASSERT_EQ(document_->CustomColors().size(), 2u);
    const kelvra::CustomColor& leaf = *document_->CustomColors()[0];
    const auto expected = import_testing::LabToSRGB(60.0, 40.0, 30.0);
    EXPECT_EQ(leaf.definition.kind, kKVCustomThreeColor);
    EXPECT_NEAR(leaf.definition.c.three.red, expected[0], 2e-3);
    EXPECT_NEAR(leaf.definition.c.three.green, expected[1], 2e-3);
    EXPECT_NEAR(leaf.definition.c.three.blue, expected[2], 2e-3);
    EXPECT_EQ(leaf.definition.flags, 0u);
    EXPECT_EQ(leaf.bookId, 0);
    EXPECT_EQ(DescribeCustomColors(*document_)[1], "Deep: lab 60 40 30 spot book 3002");

    const KVColor& plain = document_->Groups()[0]->swatches[2]->color;
    EXPECT_NEAR(plain.c.three.red, expected[0], 2e-3);
    EXPECT_NEAR(plain.c.three.green, expected[1], 2e-3);
    EXPECT_NEAR(plain.c.three.blue, expected[2], 2e-3);
}

TEST_F(KelvraSwatchBookTest, AGrayValueOf02IsWrittenAsGray08OrBlack08) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
    AddSwatch(book, "Light", swatchbook::kProcessKind, gray, {0.2});
    AddSwatch(book, "Light Ink", swatchbook::kGlobalKind, gray, {0.2});
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Light: gray 0.8", "Light Ink: custom \"Light Ink\" tint 0"));
    EXPECT_THAT(CustomColors(), ElementsAre("Light Ink: cmyk 0 0 0 0.8 global book 0"));
}

TEST_F(KelvraSwatchBookTest, RGBAndCMYKKeepTheirValuesAndATintGoesWithTheCustomColour) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    const std::int32_t cmyk = FloatFormat(book, swatchbook::kCMYKSpace);
    AddSwatch(book, "Sky", swatchbook::kProcessKind, rgb, {0.25, 0.5, 1.0});
    AddSwatch(book, "Ink", swatchbook::kProcessKind, cmyk, {0.1, 0.2, 0.3, 0.4});
    AddSwatch(book, "Brand", swatchbook::kSpotKind, cmyk, {1.0, 0.5, 0.0, 0.0}, 0.25);
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Sky: rgb 0.25 0.5 1", "Ink: cmyk 0.1 0.2 0.3 0.4",
                                        "Brand: custom \"Brand\" tint 0.25"));
    EXPECT_THAT(CustomColors(), ElementsAre("Brand: cmyk 1 0.5 0 0 spot book 0"));
}

TEST_F(KelvraSwatchBookTest, ACustomColourOfTheSameNameIsRedefinedNotMadeAgain) {
    KVCustomColor old{};
    old.kind = kKVCustomFourColor;
    old.c.four = {0.0f, 0.0f, 0.0f, 1.0f};
    document_->NewCustomColor(u"Gold", old);
    KelvraSwatchBook book(nullptr);
    book.SetBookID(77);
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    AddSwatch(book, "Gold", swatchbook::kSpotKind, rgb, {1.0, 0.75, 0.0});
    book.FlushPendingSwatch();
    EXPECT_THAT(CustomColors(), ElementsAre("Gold: rgb 1 0.75 0 spot book 0"));
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Gold: custom \"Gold\" tint 0"));
}

TEST_F(KelvraSwatchBookTest, GroupsAreMadeInTheDocumentAndSwatchesGoIntoTheSelectedOne) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
    AddSwatch(book, "Outside", swatchbook::kProcessKind, gray, {1.0});
    EXPECT_EQ(book.AddGroup(), 1);
    EXPECT_TRUE(book.SelectGroup(1));
    EXPECT_FALSE(book.SetGroupName(u"Brand"));
    AddSwatch(book, "Inside", swatchbook::kProcessKind, gray, {0.0});
    book.EndGroup(0xC002, 40, 3);
    book.FlushPendingSwatch();
    EXPECT_THAT(Swatches(), ElementsAre("[]", "Outside: gray 0", "[Brand]", "Inside: gray 1"));
    std::int32_t ok = 0;
    EXPECT_EQ(book.CountGroups(&ok), 2);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(book.CountGroupSwatches(), 1);
    EXPECT_EQ(book.CountSwatches(), 2);
    EXPECT_FALSE(book.SelectGroup(5));
}

TEST_F(KelvraSwatchBookTest, SetGroupNameAnswersFalseWhenTheHostTookTheNameAndTrueWhenItRefused) {
    KelvraSwatchBook book(nullptr);
    ASSERT_EQ(book.AddGroup(), 1);
    ASSERT_TRUE(book.SelectGroup(1));
    EXPECT_FALSE(book.SetGroupName(u"Brand"));
    EXPECT_EQ(document_->Groups()[1]->name, u"Brand");
    ASSERT_TRUE(book.SelectGroup(0));
    EXPECT_TRUE(book.SetGroupName(u"Default"));  // the default group takes no name
    EXPECT_EQ(document_->Groups()[0]->name, u"");
}

TEST_F(KelvraSwatchBookTest, IsDefaultGroupIsTrueExactlyForGroup0InBothModes) {
    const KelvraSwatchBook target(nullptr);
    const KelvraSwatchBook source(document_->SwatchList());
    for (const KelvraSwatchBook* book : {&target, &source}) {
        EXPECT_TRUE(book->IsDefaultGroup(0));
        EXPECT_FALSE(book->IsDefaultGroup(1));
        EXPECT_FALSE(book->IsDefaultGroup(-1));
    }
}

TEST_F(KelvraSwatchBookTest, TheBookIsDestroyedWithoutWritingItsPendingSwatch) {
    {
        KelvraSwatchBook book(nullptr);
        const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
        AddSwatch(book, "Lost", swatchbook::kProcessKind, gray, {0.5});
    }
    EXPECT_THAT(Swatches(), ElementsAre("[]", ": none"));
    EXPECT_EQ(Calls(kKVSwatchListSuite, "SetSwatchName"), 0u);
}

TEST_F(KelvraSwatchBookTest, TheHostsFailuresAreThrownWithTheirCodes) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t rgb = FloatFormat(book, swatchbook::kRGBSpace);
    const std::int32_t lab = FloatFormat(book, swatchbook::kLabSpace);
    host_.Faults().FailCall({kKVSwatchGroupSuite, "InsertSwatch", 1, false, kFault});
    ExpectError(kv::kOutOfMemoryErr, [&] { book.AddSwatch(-1); });
    host_.Faults().FailCall({kKVSwatchGroupSuite, "InsertGroup", 1, false, kFault});
    ExpectError(kv::kOutOfMemoryErr, [&] { book.AddGroup(); });

    const auto failingFlush = [&](const char* suite, const char* function, kv::ResultCode code,
                                  std::int32_t kind, std::int32_t format) {
        const double values[3] = {50.0, 0.0, 0.0};
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchName(swatch, u"S" + std::u16string(1, char16_t(u'a' + swatch)));
        book.SetSwatchValuesFloat(swatch, format, values);
        book.SetSwatchKind(swatch, kind);
        host_.Faults().FailCall({suite, function, 1, false, kFault});
        ExpectError(code, [&] { book.FlushPendingSwatch(); });
        host_.Faults().Clear();
    };
    failingFlush(kKVSwatchGroupSuite, "GetNthSwatch", kv::kOutOfMemoryErr, swatchbook::kProcessKind, rgb);
    failingFlush(kKVSwatchListSuite, "SetSwatchName", kFault, swatchbook::kProcessKind, rgb);
    failingFlush(kKVSwatchListSuite, "SetSwatchColor", kFault, swatchbook::kProcessKind, rgb);
    failingFlush(kKVColorConversionSuite, "ConvertColor", kFault, swatchbook::kProcessKind, lab);
    failingFlush(kKVCustomColorSuite, "FindCustomColor", kFault, swatchbook::kSpotKind, rgb);
    failingFlush(kKVCustomColorSuite, "NewCustomColor", kFault, swatchbook::kSpotKind, rgb);
    failingFlush(kKVCustomColorSuite, "SetCustomColorBookID", kFault, swatchbook::kSpotKind, rgb);
}

TEST_F(KelvraSwatchBookTest, ASnapshotAnswersTheWriterWithTheDocumentsGroupsAndSwatches) {
    kelvra::Document& source = host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(R"({
        "name": "Source",
        "groups": [
          {"name": "", "swatches": [
             {"name": "Paper", "kind": "gray", "values": [0.25]},
             {"name": "Stripes", "kind": "pattern"},
             {"name": "Sky", "kind": "rgb", "values": [0.25, 0.5, 1]}]},
          {"name": "Brand", "swatches": [
             {"name": "Ink", "kind": "cmyk", "values": [0.1, 0.2, 0.3, 0.4]},
             {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0.5},
             {"name": "Leaf", "kind": "custom", "customColor": "Leaf"},
             {"name": "Registration", "kind": "custom", "customColor": "Registration"},
             {"name": "Nothing", "kind": "none"}]}],
        "customColors": [
          {"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1, "bookId": 3000},
          {"name": "Leaf", "kind": "rgb", "values": [0, 0.5, 0.25]},
          {"name": "Registration", "kind": "cmyk", "values": [1, 1, 1, 1], "flags": 3}]})")));
    KelvraSwatchBook book(source.SwatchList());
    book.LoadSnapshot();

    std::int32_t ok = 0;
    EXPECT_EQ(book.CountGroups(&ok), 2);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(book.CountSwatches(), 5);
    std::int32_t formats[4] = {};
    EXPECT_EQ(book.GetValueFormats(0, formats), 4);
    EXPECT_EQ(book.GetValueFormats(0, nullptr), 4);
    EXPECT_THAT(formats, ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(book.GetFormatColorSpace(formats[0]), swatchbook::kGraySpace);
    EXPECT_EQ(book.GetFormatColorSpace(formats[1]), swatchbook::kRGBSpace);
    EXPECT_EQ(book.GetFormatColorSpace(formats[2]), swatchbook::kLabSpace);
    EXPECT_EQ(book.GetFormatColorSpace(formats[3]), swatchbook::kCMYKSpace);

    ASSERT_TRUE(book.SelectGroup(0));
    EXPECT_EQ(book.GetGroupName(), u"");
    EXPECT_EQ(book.CountGroupSwatches(), 2);
    EXPECT_EQ(book.GetSwatchName(0, true), u"Paper");
    EXPECT_EQ(book.GetSwatchKind(0), swatchbook::kProcessKind);
    EXPECT_EQ(book.GetSwatchColorSpace(0), swatchbook::kGraySpace);
    double values[4] = {9, 9, 9, 9};
    EXPECT_TRUE(book.GetSwatchValuesFloat(0, formats[0], values));
    EXPECT_THAT(values, ElementsAre(0.25, 9, 9, 9));
    EXPECT_EQ(book.GetSwatchName(1, false), u"Sky");
    EXPECT_EQ(book.GetSwatchColorSpace(1), swatchbook::kRGBSpace);
    EXPECT_EQ(book.GetSwatchName(2, false), u"");
    EXPECT_EQ(book.GetSwatchKind(2), 0);
    EXPECT_FALSE(book.GetSwatchValuesFloat(2, formats[1], values));

    ASSERT_TRUE(book.SelectGroup(1));
    EXPECT_EQ(book.GetGroupName(), u"Brand");
    EXPECT_EQ(book.CountGroupSwatches(), 3);
    EXPECT_EQ(book.GetSwatchColorSpace(0), swatchbook::kCMYKSpace);
    EXPECT_EQ(book.GetSwatchName(1, true), u"Gold");
    EXPECT_EQ(book.GetSwatchKind(1), swatchbook::kSpotKind);
    EXPECT_EQ(book.GetSwatchColorSpace(1), swatchbook::kLabSpace);
    EXPECT_EQ(book.GetSwatchTint(1, &ok), 0.5);
    EXPECT_TRUE(book.GetSwatchValuesFloat(1, formats[2], values));
    EXPECT_THAT(values, ElementsAre(80, 5, 60, 9));
    EXPECT_EQ(book.GetSwatchKind(2), swatchbook::kGlobalKind);
    EXPECT_EQ(book.GetSwatchTint(2, &ok), 0.0);
    // Values are given in any of the formats, at most as many as the swatch has.
    std::fill(std::begin(values), std::end(values), 9.0);
    EXPECT_TRUE(book.GetSwatchValuesFloat(2, formats[3], values));
    EXPECT_THAT(values, ElementsAre(0, 0.5, 0.25, 9));
    EXPECT_FALSE(book.GetSwatchValuesNative(2, 4, values));
    EXPECT_FALSE(book.GetSwatchValuesNative(-1, formats[3], values));
    EXPECT_EQ(book.GetSwatchKey(0), u"");
}

TEST_F(KelvraSwatchBookTest, AnImportTargetAnswersNothingAboutItsSwatches) {
    KelvraSwatchBook book(nullptr);
    const std::int32_t gray = FloatFormat(book, swatchbook::kGraySpace);
    AddSwatch(book, "Paper", swatchbook::kProcessKind, gray, {1.0});
    book.FlushPendingSwatch();
    std::int32_t ok = 0;
    EXPECT_EQ(book.GetSwatchName(0, true), u"");
    EXPECT_EQ(book.GetSwatchKind(0), 0);
    EXPECT_EQ(book.GetSwatchColorSpace(0), 0);
    EXPECT_EQ(book.GetSwatchTint(0, &ok), 0.0);
    EXPECT_EQ(ok, 1);
    double value = 0.0;
    EXPECT_FALSE(book.GetSwatchValuesNative(0, gray, &value));
    EXPECT_EQ(book.GetGroupName(), u"");
    EXPECT_EQ(book.CountSwatches(), 1);
}

}  // namespace
