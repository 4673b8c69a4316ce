#include "swatchbook/StringPool.h"

#include <gtest/gtest.h>

#include <string>

#include "AllocationCounting.h"

using testsupport::AllocationFailureScope;
using swatchbook::StringPool;

namespace {

TEST(StringPool, IdsStartAtOneAndLookUpTheirStrings) {
    StringPool pool;
    const std::uint32_t first = pool.Store(u"Coated");
    const std::uint32_t second = pool.Store(u"LAB");
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(second, 2u);
    EXPECT_EQ(pool.Lookup(first), u"Coated");
    EXPECT_EQ(pool.Lookup(second), u"LAB");
    EXPECT_EQ(pool.CountBytes(), 18u);
}

TEST(StringPool, AnEmptyStringGetsAnIdOfItsOwn) {
    StringPool pool;
    const std::uint32_t id = pool.Store(u"");
    EXPECT_EQ(id, 1u);
    EXPECT_EQ(pool.Lookup(id), u"");
    EXPECT_EQ(pool.CountEntries(), 1u);
}

TEST(StringPool, KeepsEveryCodeUnitIncludingZeroAndLoneSurrogates) {
    StringPool pool;
    const std::u16string text{u'a', u'\0', char16_t(0xD800), char16_t(0xFFFF)};
    EXPECT_EQ(pool.Lookup(pool.Store(text)), text);
}

TEST(StringPool, IdZeroUnknownIdsAndReleasedIdsLookUpEmpty) {
    StringPool pool;
    const std::uint32_t id = pool.Store(u"Matte");
    EXPECT_EQ(pool.Lookup(0), u"");
    EXPECT_EQ(pool.Lookup(2), u"");
    EXPECT_EQ(pool.Lookup(0xFFFFFFFFu), u"");
    pool.Release(id);
    EXPECT_EQ(pool.Lookup(id), u"");
}

TEST(StringPool, ReleasedBytesStayDeadUntilCompaction) {
    StringPool pool;
    const std::uint32_t id = pool.Store(u"abcd");
    pool.Store(u"xy");
    pool.Release(id);
    EXPECT_EQ(pool.DeadBytes(), 8u);
    EXPECT_EQ(pool.CountBytes(), 12u);
}

TEST(StringPool, ReleasingAnIdThatIsNotLiveChangesNothing) {
    StringPool pool;
    const std::uint32_t id = pool.Store(u"abcd");
    pool.Release(id);
    pool.Release(id);
    pool.Release(0);
    pool.Release(9);
    EXPECT_EQ(pool.DeadBytes(), 8u);
    EXPECT_EQ(pool.Store(u"new"), id);
    EXPECT_EQ(pool.Store(u"next"), 2u);
}

TEST(StringPool, ReleasedEntriesAreReusedLastReleasedFirst) {
    StringPool pool;
    for (const char16_t* text : {u"a", u"b", u"c", u"d"}) {
        pool.Store(text);
    }
    pool.Release(2);
    pool.Release(4);
    EXPECT_EQ(pool.Store(u"e"), 4u);
    EXPECT_EQ(pool.Store(u"f"), 2u);
    EXPECT_EQ(pool.Store(u"g"), 5u);
    EXPECT_EQ(pool.Lookup(2), u"f");
    EXPECT_EQ(pool.Lookup(4), u"e");
    EXPECT_EQ(pool.Lookup(1), u"a");
    EXPECT_EQ(pool.CountEntries(), 5u);
}

TEST(StringPool, CompactionDropsDeadBytesKeepsIdsAndTrimsBothArrays) {
    StringPool pool;
    pool.Store(u"first");
    const std::uint32_t dead = pool.Store(u"gone");
    pool.Store(u"third");
    pool.Release(dead);
    const std::uint32_t reused = pool.Store(u"last");
    ASSERT_EQ(reused, dead);
    pool.Compact();
    EXPECT_EQ(pool.DeadBytes(), 0u);
    EXPECT_EQ(pool.CountBytes(), 28u);
    EXPECT_EQ(pool.ByteCapacity(), 28u);
    EXPECT_EQ(pool.EntryCapacity(), 3u);
    EXPECT_EQ(pool.Lookup(1), u"first");
    EXPECT_EQ(pool.Lookup(2), u"last");
    EXPECT_EQ(pool.Lookup(3), u"third");
    // Storing after compaction grows the trimmed arrays again.
    EXPECT_EQ(pool.Store(u"more"), 4u);
    EXPECT_EQ(pool.Lookup(4), u"more");
    EXPECT_EQ(pool.Lookup(1), u"first");
}

TEST(StringPool, CompactionOfAPoolWithNothingLiveReleasesTheBytes) {
    StringPool pool;
    pool.Release(pool.Store(u"only"));
    pool.Compact();
    EXPECT_EQ(pool.CountBytes(), 0u);
    EXPECT_EQ(pool.ByteCapacity(), 0u);
    EXPECT_EQ(pool.EntryCapacity(), 1u);
    EXPECT_EQ(pool.Store(u"again"), 1u);
    EXPECT_EQ(pool.Lookup(1), u"again");
}

TEST(StringPool, CompactionOfAnEmptyPoolAllocatesNothing) {
    StringPool pool;
    EXPECT_EQ(AllocationsDuring([&] { pool.Compact(); }), 0u);
    EXPECT_EQ(pool.ByteCapacity(), 0u);
    EXPECT_EQ(pool.EntryCapacity(), 0u);
}

TEST(StringPool, BytesGrowIn64KiBSteps) {
    StringPool pool;
    const std::u16string chunk(1000, u'x');  // 2000 bytes
    pool.Store(chunk);
    EXPECT_EQ(pool.ByteCapacity(), 65536u);
    for (int i = 1; i < 32; ++i) {
        pool.Store(chunk);
    }
    EXPECT_EQ(pool.CountBytes(), 64000u);
    EXPECT_EQ(pool.ByteCapacity(), 65536u);
    const std::uint32_t beyond = pool.Store(chunk);
    EXPECT_EQ(pool.ByteCapacity(), 131072u);
    EXPECT_EQ(pool.Lookup(beyond), chunk);
    EXPECT_EQ(pool.Lookup(1), chunk);
}

TEST(StringPool, AStringLargerThanAStepGrowsTheBytesToWhatItNeeds) {
    StringPool pool;
    pool.Store(u"a");
    const std::u16string big(100000, u'b');
    const std::uint32_t id = pool.Store(big);
    EXPECT_EQ(pool.ByteCapacity(), 200002u);
    EXPECT_EQ(pool.Lookup(id), big);
}

TEST(StringPool, EntriesGrowIn64KiBSteps) {
    StringPool pool;
    for (int i = 0; i < 8192; ++i) {
        pool.Store(u"");
    }
    EXPECT_EQ(pool.EntryCapacity(), 8192u);
    EXPECT_EQ(pool.Store(u"z"), 8193u);
    EXPECT_EQ(pool.EntryCapacity(), 16384u);
    EXPECT_EQ(pool.Lookup(8193), u"z");
}

TEST(StringPool, StoringWithoutMemoryForTheBytesGivesZeroAndChangesNothing) {
    StringPool pool;
    {
        AllocationFailureScope failure(0);
        EXPECT_EQ(pool.Store(u"abc"), 0u);
    }
    EXPECT_EQ(pool.CountEntries(), 0u);
    EXPECT_EQ(pool.CountBytes(), 0u);
    EXPECT_EQ(pool.Store(u"abc"), 1u);
}

TEST(StringPool, StoringWithoutMemoryForTheEntryTakesBackTheBytes) {
    StringPool pool;
    pool.Store(u"ab");
    for (int i = 1; i < 8192; ++i) {
        pool.Store(u"");
    }
    ASSERT_EQ(pool.EntryCapacity(), pool.CountEntries());
    {
        AllocationFailureScope failure(0);
        EXPECT_EQ(pool.Store(u"xy"), 0u);
    }
    EXPECT_EQ(pool.CountBytes(), 4u);
    EXPECT_EQ(pool.CountEntries(), 8192u);
    EXPECT_EQ(pool.Store(u"xy"), 8193u);
    EXPECT_EQ(pool.Lookup(8193), u"xy");
}

TEST(StringPool, AReleasedEntryIsReusedWithoutMemoryForANewOne) {
    StringPool pool;
    const std::uint32_t id = pool.Store(u"abc");
    pool.Release(id);
    AllocationFailureScope failure(0);
    EXPECT_EQ(pool.Store(u"de"), id);
}

TEST(StringPool, CompactionWithoutMemoryKeepsEverythingReadable) {
    StringPool pool;
    pool.Store(u"keep");
    pool.Release(pool.Store(u"drop"));
    {
        AllocationFailureScope failure(0);
        pool.Compact();
    }
    EXPECT_EQ(pool.DeadBytes(), 8u);
    EXPECT_EQ(pool.Lookup(1), u"keep");
}

// Leaks show up under the sanitizers.
TEST(StringPool, GrowthReleaseCompactionAndReuseTogether) {
    StringPool pool;
    for (int i = 0; i < 10000; ++i) {
        ASSERT_EQ(pool.Store(u"some text"), static_cast<std::uint32_t>(i + 1));
    }
    for (std::uint32_t id = 5; id <= 10000; id += 5) {
        pool.Release(id);
    }
    pool.Compact();
    EXPECT_EQ(pool.CountBytes(), 8000u * 18);
    EXPECT_EQ(pool.Store(u"after"), 10000u);
    EXPECT_EQ(pool.Lookup(10000), u"after");
    EXPECT_EQ(pool.Lookup(9999), u"some text");
    EXPECT_EQ(pool.Lookup(5), u"");
}

}  // namespace
