#include <kelvra/FlatPointerMap.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <vector>

namespace {

using kelvra::FlatPointerMap;

// Addresses from one array, so that neighbours share their low bits' pattern
// as objects of one kind do.
struct Objects {
    std::vector<std::uint64_t> storage = std::vector<std::uint64_t>(4096);
    const std::uint64_t* At(std::size_t i) const { return &storage[i]; }
};

TEST(FlatPointerMapTest, FindsWhatWasAddedAndNothingElse) {
    Objects objects;
    FlatPointerMap<const std::uint64_t*, int> map;
    EXPECT_EQ(map.Find(objects.At(0)), nullptr);
    EXPECT_TRUE(map.Emplace(objects.At(1), 10));
    EXPECT_FALSE(map.Emplace(objects.At(1), 11));
    ASSERT_NE(map.Find(objects.At(1)), nullptr);
    EXPECT_EQ(*map.Find(objects.At(1)), 10);
    EXPECT_EQ(map.Find(objects.At(2)), nullptr);
    EXPECT_EQ(map.Find(nullptr), nullptr);
    EXPECT_EQ(map.Size(), 1u);
}

TEST(FlatPointerMapTest, AnErasedKeyIsGoneAndTheOthersStay) {
    Objects objects;
    FlatPointerMap<const std::uint64_t*, int> map;
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(map.Emplace(objects.At(std::size_t(i)), i));
    EXPECT_TRUE(map.Erase(objects.At(50)));
    EXPECT_FALSE(map.Erase(objects.At(50)));
    EXPECT_EQ(map.Find(objects.At(50)), nullptr);
    for (int i = 0; i < 100; ++i) {
        if (i != 50) {
            EXPECT_EQ(*map.Find(objects.At(std::size_t(i))), i) << i;
        }
    }
    EXPECT_EQ(map.Size(), 99u);
}

TEST(FlatPointerMapTest, EraseIfErasesExactlyTheEntriesThatMatch) {
    Objects objects;
    FlatPointerMap<const std::uint64_t*, int> map;
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(map.Emplace(objects.At(std::size_t(i)), i));
    map.EraseIf([](const std::uint64_t*, int value) { return value % 3 == 0; });
    EXPECT_EQ(map.Size(), 666u);
    for (int i = 0; i < 1000; ++i) {
        const int* found = map.Find(objects.At(std::size_t(i)));
        if (i % 3 == 0) {
            EXPECT_EQ(found, nullptr) << i;
        } else {
            ASSERT_NE(found, nullptr) << i;
            EXPECT_EQ(*found, i);
        }
    }
}

// Seeded random adds, erases and look-ups, each checked against an ordered
// map; small key ranges keep the runs of the probe sequence long and make
// erasures shift entries around the end of the array.
TEST(FlatPointerMapTest, AgreesWithAnOrderedMapOverRandomOperations) {
    Objects objects;
    for (std::size_t keys : {8u, 40u, 4096u}) {
        std::mt19937 random{std::uint32_t(keys)};
        FlatPointerMap<const std::uint64_t*, std::size_t> map;
        std::map<const std::uint64_t*, std::size_t> expected;
        for (std::size_t step = 0; step < 50000; ++step) {
            const std::uint64_t* key = objects.At(random() % keys);
            switch (random() % 4) {
            case 0:
            case 1:
                EXPECT_EQ(map.Emplace(key, step), expected.emplace(key, step).second);
                break;
            case 2: EXPECT_EQ(map.Erase(key), expected.erase(key) == 1); break;
            default:
                if (random() % 64 == 0) {
                    map.EraseIf([](const std::uint64_t*, std::size_t value) { return value % 2 == 0; });
                    std::erase_if(expected, [](const auto& entry) { return entry.second % 2 == 0; });
                }
                break;
            }
            const std::size_t* found = map.Find(key);
            const auto wanted = expected.find(key);
            ASSERT_EQ(found != nullptr, wanted != expected.end()) << "keys " << keys << ", step " << step;
            if (found != nullptr) {
                ASSERT_EQ(*found, wanted->second);
            }
            ASSERT_EQ(map.Size(), expected.size());
        }
        std::size_t visited = 0;
        map.ForEach([&](const std::uint64_t* key, std::size_t value) {
            ++visited;
            EXPECT_EQ(expected.at(key), value);
        });
        EXPECT_EQ(visited, expected.size());
    }
}

}  // namespace
