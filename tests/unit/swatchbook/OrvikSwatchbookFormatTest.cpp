// The format table, through the smallest concrete book.
#include "swatchbook/OrvikSwatchbookFormat.h"

#include <gtest/gtest.h>

#include <string>

#include "AllocationCounting.h"
#include "swatchbook/ReferenceBook.h"
#include "swatchbook/SwatchbookCodes.h"

using testsupport::AllocationFailureScope;
using namespace swatchbook;

namespace {

class OrvikSwatchbookFormatTest : public testing::Test {
protected:
    ReferenceBook book;
    OrvikSwatchbookFormat& formats = book;
};

TEST_F(OrvikSwatchbookFormatTest, ANewFormatIsAllZeroAndEmpty) {
    EXPECT_EQ(formats.CountFormats(), 0);
    ASSERT_EQ(formats.AddFormat(), 0);
    EXPECT_EQ(formats.CountFormats(), 1);
    EXPECT_EQ(formats.GetFormatColorSpace(0), 0);
    EXPECT_EQ(formats.GetFormatEncoding(0), 0);
    EXPECT_EQ(formats.GetFormatChannels(0), 0);
    EXPECT_EQ(formats.GetFormatCondition(0), u"");
    EXPECT_EQ(formats.GetFormatColorSpaceName(0, false), u"");
    EXPECT_EQ(formats.GetFormatID(0, false), u"");
}

TEST_F(OrvikSwatchbookFormatTest, CmykSetsFourChannelsAndOnlyCustomTakesAnExplicitCount) {
    const std::int32_t f = formats.AddFormat();
    ASSERT_TRUE(formats.SetFormatColorSpace(f, 5));
    EXPECT_EQ(formats.GetFormatChannels(f), 4);
    EXPECT_FALSE(formats.SetFormatChannels(f, 7));
    EXPECT_EQ(formats.GetFormatChannels(f), 4);
    ASSERT_TRUE(formats.SetFormatColorSpace(f, 1));
    EXPECT_EQ(formats.GetFormatChannels(f), 4);
    EXPECT_TRUE(formats.SetFormatChannels(f, 7));
    EXPECT_EQ(formats.GetFormatChannels(f), 7);
}

TEST_F(OrvikSwatchbookFormatTest, EachColorSpaceSetsItsDefaultChannelCount) {
    const std::int32_t f = formats.AddFormat();
    const std::int32_t expected[] = {0, 0, 1, 3, 3, 4, 3};
    ASSERT_TRUE(formats.SetFormatChannels(f, 9));
    for (std::int32_t space = 2; space <= 6; ++space) {
        ASSERT_TRUE(formats.SetFormatColorSpace(f, space));
        EXPECT_EQ(formats.GetFormatColorSpace(f), space);
        EXPECT_EQ(formats.GetFormatChannels(f), expected[space]) << "space " << space;
    }
}

TEST_F(OrvikSwatchbookFormatTest, AFormatWithoutColorSpaceTakesAnExplicitCountButNotANegativeOne) {
    const std::int32_t f = formats.AddFormat();
    EXPECT_TRUE(formats.SetFormatChannels(f, 0));
    EXPECT_TRUE(formats.SetFormatChannels(f, 12));
    EXPECT_FALSE(formats.SetFormatChannels(f, -1));
    EXPECT_EQ(formats.GetFormatChannels(f), 12);
}

TEST_F(OrvikSwatchbookFormatTest, ColorSpacesOutsideOneToSixAndEncodingsOutsideOneToThreeFail) {
    const std::int32_t f = formats.AddFormat();
    EXPECT_FALSE(formats.SetFormatColorSpace(f, 0));
    EXPECT_FALSE(formats.SetFormatColorSpace(f, 7));
    EXPECT_EQ(formats.GetFormatColorSpace(f), 0);
    EXPECT_FALSE(formats.SetFormatEncoding(f, 4));
    EXPECT_FALSE(formats.SetFormatEncoding(f, 0));
    EXPECT_EQ(formats.GetFormatEncoding(f), 0);
    for (std::int32_t encoding = 1; encoding <= 3; ++encoding) {
        EXPECT_TRUE(formats.SetFormatEncoding(f, encoding));
        EXPECT_EQ(formats.GetFormatEncoding(f), encoding);
    }
}

TEST_F(OrvikSwatchbookFormatTest, BadIndicesFailAndAnswerNothing) {
    formats.AddFormat();
    for (std::int32_t bad : {-1, 1, 1000}) {
        EXPECT_FALSE(formats.SetFormatColorSpace(bad, 4));
        EXPECT_FALSE(formats.SetFormatEncoding(bad, 1));
        EXPECT_FALSE(formats.SetFormatChannels(bad, 1));
        EXPECT_FALSE(formats.SetFormatCondition(bad, u"x"));
        EXPECT_FALSE(formats.SetFormatColorSpaceName(bad, u"x"));
        EXPECT_FALSE(formats.SetFormatID(bad, u"x"));
        EXPECT_EQ(formats.GetFormatColorSpace(bad), 0);
        EXPECT_EQ(formats.GetFormatEncoding(bad), 0);
        EXPECT_EQ(formats.GetFormatChannels(bad), 0);
        EXPECT_EQ(formats.GetFormatCondition(bad), u"");
        EXPECT_EQ(formats.GetFormatColorSpaceName(bad, true), u"");
        EXPECT_EQ(formats.GetFormatID(bad, true), u"");
    }
}

TEST_F(OrvikSwatchbookFormatTest, TheDefaultIdOfAnUnnamedFormatIsItsIndexAndFindsIt) {
    formats.AddFormat();
    formats.AddFormat();
    const std::int32_t third = formats.AddFormat();
    ASSERT_TRUE(formats.SetFormatID(0, u"2"));
    EXPECT_EQ(formats.GetFormatID(third, true), u"2");
    EXPECT_EQ(formats.GetFormatID(third, false), u"");
    // The first format's stored ID is also "2": the first match wins.
    EXPECT_EQ(formats.FindFormat(u"2"), 0);
    ASSERT_TRUE(formats.SetFormatID(0, u"spot"));
    EXPECT_EQ(formats.FindFormat(u"2"), third);
    EXPECT_EQ(formats.FindFormat(u"1"), 1);
    EXPECT_EQ(formats.FindFormat(u"spot"), 0);
    EXPECT_EQ(formats.FindFormat(u"0"), -1);
}

TEST_F(OrvikSwatchbookFormatTest, DefaultIdsAreDecimalIndices) {
    for (int i = 0; i < 1235; ++i) {
        formats.AddFormat();
    }
    EXPECT_EQ(formats.GetFormatID(10, true), u"10");
    EXPECT_EQ(formats.GetFormatID(1234, true), u"1234");
    EXPECT_EQ(formats.FindFormat(u"1234"), 1234);
}

TEST_F(OrvikSwatchbookFormatTest, FindFormatInABookWithoutFormatsFindsNothing) {
    EXPECT_EQ(formats.FindFormat(u"0"), -1);
    EXPECT_EQ(formats.FindFormat(u""), -1);
}

TEST_F(OrvikSwatchbookFormatTest, DefaultColorSpaceNamesAndNoneForGrayAndCustom) {
    const std::int32_t f = formats.AddFormat();
    EXPECT_EQ(formats.GetFormatColorSpaceName(f, true), u"");
    const std::pair<std::int32_t, std::u16string> expected[] = {
        {1, u""}, {2, u""}, {3, u"LAB"}, {4, u"RGB"}, {5, u"CMYK"}, {6, u"XYZ"}};
    for (const auto& [space, name] : expected) {
        ASSERT_TRUE(formats.SetFormatColorSpace(f, space));
        EXPECT_EQ(formats.GetFormatColorSpaceName(f, true), name) << "space " << space;
        EXPECT_EQ(formats.GetFormatColorSpaceName(f, false), u"");
    }
    ASSERT_TRUE(formats.SetFormatColorSpaceName(f, u"Wide"));
    EXPECT_EQ(formats.GetFormatColorSpaceName(f, true), u"Wide");
}

TEST_F(OrvikSwatchbookFormatTest, StringsReplaceEachOtherPerFieldAndFormat) {
    const std::int32_t a = formats.AddFormat();
    const std::int32_t b = formats.AddFormat();
    EXPECT_TRUE(formats.SetFormatCondition(a, u"Coated"));
    EXPECT_TRUE(formats.SetFormatColorSpaceName(a, u"Name A"));
    EXPECT_TRUE(formats.SetFormatID(a, u"id-a"));
    EXPECT_TRUE(formats.SetFormatCondition(b, u"Uncoated"));
    EXPECT_TRUE(formats.SetFormatCondition(a, u"Matte"));
    EXPECT_EQ(formats.GetFormatCondition(a), u"Matte");
    EXPECT_EQ(formats.GetFormatColorSpaceName(a, false), u"Name A");
    EXPECT_EQ(formats.GetFormatID(a, false), u"id-a");
    EXPECT_EQ(formats.GetFormatCondition(b), u"Uncoated");
    EXPECT_TRUE(formats.SetFormatCondition(b, u""));
    EXPECT_EQ(formats.GetFormatCondition(b), u"");
}

TEST_F(OrvikSwatchbookFormatTest, TheTableGrowsPastOne64KiBStepKeepingItsRows) {
    // 2730 rows of 24 bytes fit in one step: one allocation for the first
    // row, none up to the 2730th, one more for the 2731st.
    for (std::int32_t i = 0; i < 2731; ++i) {
        const std::size_t allocations = AllocationsDuring([&] { ASSERT_EQ(formats.AddFormat(), i); });
        ASSERT_EQ(allocations, i == 0 || i == 2730 ? 1u : 0u) << "format " << i;
        ASSERT_TRUE(formats.SetFormatColorSpace(i, 1 + i % 6));
        ASSERT_TRUE(formats.SetFormatEncoding(i, 1 + i % 3));
    }
    for (std::int32_t i = 0; i < 2731; ++i) {
        ASSERT_EQ(formats.GetFormatColorSpace(i), 1 + i % 6);
        ASSERT_EQ(formats.GetFormatEncoding(i), 1 + i % 3);
    }
}

TEST_F(OrvikSwatchbookFormatTest, AddFormatFailsWithMinusOneWhenTheTableCannotGrow) {
    {
        AllocationFailureScope failure(0);
        EXPECT_EQ(formats.AddFormat(), -1);
    }
    EXPECT_EQ(formats.CountFormats(), 0);
    for (int i = 0; i < 2730; ++i) {
        ASSERT_EQ(formats.AddFormat(), i);
    }
    {
        AllocationFailureScope failure(0);
        EXPECT_EQ(formats.AddFormat(), -1);
    }
    EXPECT_EQ(formats.CountFormats(), 2730);
    EXPECT_EQ(formats.AddFormat(), 2730);
}

TEST_F(OrvikSwatchbookFormatTest, AStringThatCannotBeStoredLeavesTheFieldEmptyButTheCallSucceeds) {
    const std::int32_t f = formats.AddFormat();
    ASSERT_TRUE(formats.SetFormatCondition(f, u"old"));
    const std::u16string large(40000, u'n');
    {
        AllocationFailureScope failure(0);
        EXPECT_TRUE(formats.SetFormatCondition(f, large));
    }
    EXPECT_EQ(formats.GetFormatCondition(f), u"");
}

TEST_F(OrvikSwatchbookFormatTest, BeginFillEmptiesTheTableAndFreesItsStorage) {
    formats.AddFormat();
    formats.SetFormatColorSpace(0, 4);
    formats.SetFormatID(0, u"kept");
    formats.BeginFill();
    EXPECT_EQ(formats.CountFormats(), 0);
    EXPECT_EQ(formats.GetFormatColorSpace(0), 0);
    // The next row needs new storage.
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_EQ(formats.AddFormat(), 0); }), 1u);
    EXPECT_EQ(formats.GetFormatColorSpace(0), 0);
    EXPECT_EQ(formats.GetFormatID(0, false), u"");
}

TEST_F(OrvikSwatchbookFormatTest, EndFillTrimsTheTableAndKeepsEveryString) {
    for (int i = 0; i < 3; ++i) {
        formats.AddFormat();
        formats.SetFormatID(i, u"replaced");
        formats.SetFormatID(i, u"id " + std::u16string(1, char16_t(u'A' + i)));
        formats.SetFormatCondition(i, u"cond");
    }
    formats.EndFill();
    EXPECT_EQ(formats.GetFormatID(0, false), u"id A");
    EXPECT_EQ(formats.GetFormatID(2, false), u"id C");
    EXPECT_EQ(formats.GetFormatCondition(1), u"cond");
    // Trimmed to its 3 rows, the table must grow for a fourth.
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_EQ(formats.AddFormat(), 3); }), 1u);
    EXPECT_TRUE(formats.SetFormatID(3, u"after"));
    EXPECT_EQ(formats.GetFormatID(3, false), u"after");
    EXPECT_EQ(formats.GetFormatID(1, false), u"id B");
}

TEST_F(OrvikSwatchbookFormatTest, EndFillOfAnEmptyBookAllocatesNothing) {
    formats.AddFormat();
    formats.BeginFill();
    EXPECT_EQ(AllocationsDuring([&] { formats.EndFill(); }), 0u);
    EXPECT_EQ(AllocationsDuring([&] { formats.AddFormat(); }), 1u);
}

// Leaks show up under the sanitizers.
TEST(OrvikSwatchbookFormat, ABookWithManyFormatsAndReplacedStringsIsFilledAndRefilled) {
    ReferenceBook book;
    for (int fill = 0; fill < 2; ++fill) {
        book.BeginFill();
        for (int i = 0; i < 5000; ++i) {
            ASSERT_EQ(book.AddFormat(), i);
            book.SetFormatCondition(i, u"condition text");
            book.SetFormatCondition(i, u"replaced condition");
        }
        book.EndFill();
        book.SetFormatID(0, u"after the fill");
        EXPECT_EQ(book.GetFormatCondition(4999), u"replaced condition");
        EXPECT_EQ(book.GetFormatID(0, true), u"after the fill");
        EXPECT_EQ(book.FindFormat(u"4999"), 4999);
    }
}

}  // namespace
