#include "swatchbook/GrowableRows.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "AllocationCounting.h"

using testsupport::AllocationFailureScope;
using swatchbook::GrowableRows;
using swatchbook::RowGrowth;

namespace {

struct Row24 {
    std::int32_t fields[6];
};

struct HugeRow {
    std::uint8_t bytes[100000];
};

TEST(GrowableRows, StepIs64KiBWorthOfRowsAndAtLeastOne) {
    EXPECT_EQ(GrowableRows<std::uint8_t>::kStepRows, 65536u);
    EXPECT_EQ(GrowableRows<std::uint64_t>::kStepRows, 8192u);
    EXPECT_EQ(GrowableRows<Row24>::kStepRows, 2730u);
    EXPECT_EQ(GrowableRows<HugeRow>::kStepRows, 1u);
}

TEST(GrowableRows, FirstAppendAllocatesOneStep) {
    GrowableRows<Row24> rows;
    EXPECT_EQ(AllocationsDuring([&] { ASSERT_TRUE(rows.Append()); }), 1u);
    EXPECT_EQ(rows.Count(), 1u);
    EXPECT_EQ(rows.Capacity(), 2730u);
    EXPECT_EQ(AllocationsDuring([&] { ASSERT_TRUE(rows.Append(2729)); }), 0u);
}

TEST(GrowableRows, GrowsByOneStepWhenThatIsEnough) {
    GrowableRows<Row24> rows;
    ASSERT_TRUE(rows.Append(2730));
    EXPECT_EQ(rows.Capacity(), 2730u);
    ASSERT_TRUE(rows.Append());
    EXPECT_EQ(rows.Capacity(), 5460u);
}

TEST(GrowableRows, GrowsToTheNeededCountWhenOneStepIsNotEnough) {
    GrowableRows<std::uint8_t> rows;
    ASSERT_TRUE(rows.Append(10));
    ASSERT_TRUE(rows.Append(200000));
    EXPECT_EQ(rows.Count(), 200010u);
    EXPECT_EQ(rows.Capacity(), 200010u);
}

TEST(GrowableRows, RowsSurviveGrowthAndNewRowsAreZero) {
    GrowableRows<std::int32_t> rows;
    for (std::int32_t i = 0; i < 20000; ++i) {
        ASSERT_TRUE(rows.Append());
        EXPECT_EQ(rows[static_cast<std::size_t>(i)], 0);
        rows[static_cast<std::size_t>(i)] = i + 1;
    }
    EXPECT_EQ(rows.Capacity(), 32768u);
    for (std::int32_t i = 0; i < 20000; ++i) {
        ASSERT_EQ(rows[static_cast<std::size_t>(i)], i + 1);
    }
}

TEST(GrowableRows, GeometricGrowthMultipliesByEightOnceBeyondOneStep) {
    GrowableRows<std::uint8_t> rows(RowGrowth::kGeometric);
    ASSERT_TRUE(rows.Append(65536));
    EXPECT_EQ(rows.Capacity(), 65536u);
    ASSERT_TRUE(rows.Append());
    EXPECT_EQ(rows.Capacity(), 524288u);
    ASSERT_TRUE(rows.Append(524288));
    EXPECT_EQ(rows.Capacity(), 4194304u);
    EXPECT_EQ(rows.Count(), 65536u + 1 + 524288);
}

TEST(GrowableRows, InsertMovesLaterRowsUpAndZeroesTheNewOne) {
    GrowableRows<std::int32_t> rows;
    for (std::int32_t value : {10, 20, 30}) {
        ASSERT_TRUE(rows.Append());
        rows[rows.Count() - 1] = value;
    }
    ASSERT_TRUE(rows.Insert(1));
    ASSERT_TRUE(rows.Insert(4));
    ASSERT_EQ(rows.Count(), 5u);
    EXPECT_EQ(rows[0], 10);
    EXPECT_EQ(rows[1], 0);
    EXPECT_EQ(rows[2], 20);
    EXPECT_EQ(rows[3], 30);
    EXPECT_EQ(rows[4], 0);
}

TEST(GrowableRows, TruncateKeepsTheStorage) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.Append(5));
    rows.Truncate(2);
    EXPECT_EQ(rows.Count(), 2u);
    rows.Truncate(7);
    EXPECT_EQ(rows.Count(), 2u);
    rows.Truncate(0);
    EXPECT_EQ(rows.Count(), 0u);
    EXPECT_EQ(rows.Capacity(), 16384u);
}

TEST(GrowableRows, ShrinkToFitMakesTheCapacityExactAndReleasesAnEmptyArray) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.Append(3));
    rows[2] = 7;
    rows.ShrinkToFit();
    EXPECT_EQ(rows.Capacity(), 3u);
    EXPECT_EQ(rows[2], 7);
    EXPECT_EQ(AllocationsDuring([&] { rows.ShrinkToFit(); }), 0u);
    rows.Truncate(0);
    rows.ShrinkToFit();
    EXPECT_EQ(rows.Capacity(), 0u);
    EXPECT_EQ(rows.Data(), nullptr);
}

TEST(GrowableRows, ReleaseFreesTheStorage) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.Append(3));
    rows.Release();
    EXPECT_EQ(rows.Count(), 0u);
    EXPECT_EQ(rows.Capacity(), 0u);
    EXPECT_EQ(rows.Data(), nullptr);
    EXPECT_EQ(AllocationsDuring([&] { ASSERT_TRUE(rows.Append()); }), 1u);
}

TEST(GrowableRows, ReserveExactlyAllocatesOnlyWhatIsAsked) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.ReserveExactly(5));
    EXPECT_EQ(rows.Capacity(), 5u);
    EXPECT_EQ(rows.Count(), 0u);
    ASSERT_TRUE(rows.ReserveExactly(3));
    EXPECT_EQ(rows.Capacity(), 5u);
}

TEST(GrowableRows, SwapExchangesTheContents) {
    GrowableRows<std::int32_t> a;
    GrowableRows<std::int32_t> b;
    ASSERT_TRUE(a.Append(2));
    a[1] = 5;
    a.Swap(b);
    EXPECT_EQ(a.Count(), 0u);
    ASSERT_EQ(b.Count(), 2u);
    EXPECT_EQ(b[1], 5);
}

TEST(GrowableRows, AppendThatCannotGrowChangesNothing) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.Append(16384));
    rows[16383] = 9;
    AllocationFailureScope failure(0);
    EXPECT_FALSE(rows.Append());
    EXPECT_FALSE(rows.Insert(0));
    EXPECT_FALSE(rows.ReserveExactly(20000));
    EXPECT_EQ(rows.Count(), 16384u);
    EXPECT_EQ(rows.Capacity(), 16384u);
    EXPECT_EQ(rows[16383], 9);
}

TEST(GrowableRows, ShrinkWithoutMemoryKeepsTheRows) {
    GrowableRows<std::int32_t> rows;
    ASSERT_TRUE(rows.Append(3));
    rows[0] = 4;
    AllocationFailureScope failure(0);
    rows.ShrinkToFit();
    EXPECT_EQ(rows.Capacity(), 16384u);
    EXPECT_EQ(rows[0], 4);
}

TEST(GrowableRows, AppendOfAnAbsurdCountFailsWithoutAllocating) {
    GrowableRows<std::int32_t> rows;
    EXPECT_EQ(AllocationsDuring([&] { EXPECT_FALSE(rows.Append(SIZE_MAX / 2)); }), 0u);
}

}  // namespace
