#include "SuiteRegistry.h"

#include <gtest/gtest.h>

namespace {

const int tableA = 1;
const int tableB = 2;

TEST(SuiteRegistryTest, HandsOutASuiteByExactNameAndVersion) {
    kelvra::SuiteRegistry registry;
    ASSERT_EQ(registry.Add("KV Thing Suite", 3, &tableA, nullptr), 0u);
    const void* table = nullptr;
    EXPECT_EQ(registry.Acquire("KV Thing Suite", 3, &table), 0u);
    EXPECT_EQ(table, &tableA);
}

TEST(SuiteRegistryTest, AnUnknownNameOrVersionIsNotFoundAndGivesNoSuite) {
    kelvra::SuiteRegistry registry;
    registry.Add("KV Thing Suite", 3, &tableA, nullptr);
    const void* table = &tableB;
    EXPECT_EQ(registry.Acquire("KV Thing Suite", 4, &table), kZPSuiteNotFoundErr);
    EXPECT_EQ(table, nullptr);
    table = &tableB;
    EXPECT_EQ(registry.Acquire("KV thing Suite", 3, &table), kZPSuiteNotFoundErr);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(registry.Release("KV Other Suite", 1), kZPSuiteNotFoundErr);
    EXPECT_TRUE(registry.Counts().empty());
}

TEST(SuiteRegistryTest, CountsAcquisitionsAndReleasesPerSuiteInOrderOfFirstUse) {
    kelvra::SuiteRegistry registry;
    registry.Add("A", 1, &tableA, nullptr);
    registry.Add("B", 2, &tableB, nullptr);
    const void* table = nullptr;
    registry.Acquire("B", 2, &table);
    registry.Acquire("A", 1, &table);
    registry.Acquire("B", 2, &table);
    EXPECT_EQ(registry.Release("B", 2), 0u);
    const auto counts = registry.Counts();
    ASSERT_EQ(counts.size(), 2u);
    EXPECT_EQ(counts[0].name, "B");
    EXPECT_EQ(counts[0].acquired, 2u);
    EXPECT_EQ(counts[0].released, 1u);
    EXPECT_EQ(counts[0].Held(), 1u);
    EXPECT_EQ(counts[1].name, "A");
    EXPECT_EQ(counts[1].Held(), 1u);
}

TEST(SuiteRegistryTest, AReleaseWithNothingHeldIsRefusedAndCounted) {
    kelvra::SuiteRegistry registry;
    registry.Add("A", 1, &tableA, nullptr);
    EXPECT_EQ(registry.Release("A", 1), kZPBadParameterErr);
    ASSERT_EQ(registry.Counts().size(), 1u);
    EXPECT_EQ(registry.Counts()[0].extraReleases, 1u);
    EXPECT_EQ(registry.Counts()[0].released, 0u);
}

TEST(SuiteRegistryTest, ASuiteIsPublishedOnlyOnce) {
    kelvra::SuiteRegistry registry;
    EXPECT_EQ(registry.Add("A", 1, &tableA, nullptr), 0u);
    EXPECT_EQ(registry.Add("A", 1, &tableB, nullptr), kZPBadParameterErr);
    EXPECT_EQ(registry.Add("A", 2, &tableB, nullptr), 0u);
    EXPECT_EQ(registry.Add("B", 1, nullptr, nullptr), kZPBadParameterErr);
}

TEST(SuiteRegistryTest, WithdrawnSuitesCanNoLongerBeAcquiredButKeepTheirCounts) {
    kelvra::SuiteRegistry registry;
    const auto* publisher = reinterpret_cast<const kelvra::Module*>(&tableB);
    registry.Add("Published", 1, &tableA, publisher);
    const void* table = nullptr;
    registry.Acquire("Published", 1, &table);
    registry.Withdraw(publisher);
    EXPECT_EQ(registry.Acquire("Published", 1, &table), kZPSuiteNotFoundErr);
    EXPECT_EQ(registry.Release("Published", 1), 0u);
    EXPECT_EQ(registry.Counts()[0].acquired, 1u);
    EXPECT_EQ(registry.Add("Published", 1, &tableB, publisher), 0u);  // started again
    EXPECT_EQ(registry.Acquire("Published", 1, &table), 0u);
    EXPECT_EQ(table, &tableB);
}

}  // namespace
