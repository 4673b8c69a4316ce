#include <kelvra/ObjectPool.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using kelvra::ObjectPool;

// Counts the live objects, so that a test sees the pool destroy each once.
struct Counted {
    explicit Counted(int value, int* live) : value(value), live(live) { ++*live; }
    Counted(const Counted&) = delete;
    ~Counted() { --*live; }
    int value;
    int* live;
};

TEST(ObjectPoolTest, ObjectsStayWhereTheyWereMadeAndAreDestroyedWithThePool) {
    int live = 0;
    {
        ObjectPool<Counted> pool;
        std::vector<Counted*> made;
        for (int i = 0; i < 1000; ++i) made.push_back(&pool.Add(i, &live));
        EXPECT_EQ(pool.Size(), 1000u);
        EXPECT_EQ(live, 1000);
        for (int i = 0; i < 1000; ++i) {
            EXPECT_EQ(made[std::size_t(i)]->value, i) << i;
        }
    }
    EXPECT_EQ(live, 0);
}

TEST(ObjectPoolTest, ContainsItsObjectsAndNoOtherAddress) {
    ObjectPool<std::string> pool;
    std::vector<const std::string*> made;
    // Past several blocks: the first holds 16, each next one twice as many.
    for (int i = 0; i < 200; ++i) made.push_back(&pool.Add(std::to_string(i)));
    for (const std::string* object : made) EXPECT_TRUE(pool.Contains(object));

    const std::string elsewhere;
    EXPECT_FALSE(pool.Contains(&elsewhere));
    EXPECT_FALSE(pool.Contains(nullptr));
    // Inside an object rather than at its start.
    const auto* inside = reinterpret_cast<const std::string*>(reinterpret_cast<const char*>(made[20]) + 8);
    EXPECT_FALSE(pool.Contains(inside));
    // Just past the last object made: room of the block not used yet.
    EXPECT_FALSE(pool.Contains(made.back() + 1));

    ObjectPool<std::string> other;
    const std::string& foreign = other.Add("x");
    EXPECT_FALSE(pool.Contains(&foreign));
    EXPECT_TRUE(other.Contains(&foreign));
}

struct ThrowsOn {
    explicit ThrowsOn(bool fail) {
        if (fail) throw std::runtime_error("refused");
    }
};

TEST(ObjectPoolTest, AnObjectWhoseConstructorThrowsIsNotAdded) {
    ObjectPool<ThrowsOn> pool;
    const ThrowsOn& first = pool.Add(false);
    EXPECT_THROW(pool.Add(true), std::runtime_error);
    EXPECT_EQ(pool.Size(), 1u);
    const ThrowsOn& second = pool.Add(false);
    // The failed one left no hole: the next takes its place.
    EXPECT_EQ(&second, &first + 1);
    EXPECT_FALSE(pool.Contains(&second + 1));
}

// Of a size that is no power of two, so that an object's start is not a
// matter of alignment.
struct Triple {
    std::uint64_t values[3] = {};
};

// Seeded random addresses around the pool's objects, checked against the
// set of addresses it handed out.
TEST(ObjectPoolTest, AgreesWithTheAddressesMadeOverRandomProbes) {
    std::mt19937 random{7};
    ObjectPool<Triple> pool;
    std::vector<const Triple*> made;
    for (int i = 0; i < 5000; ++i) {
        made.push_back(&pool.Add());
        const auto* base = reinterpret_cast<const char*>(made[random() % made.size()]);
        const std::ptrdiff_t offset = std::ptrdiff_t(random() % 97) - 48;
        const auto* probe = reinterpret_cast<const Triple*>(base + offset);
        bool expected = false;
        for (const auto* object : made) expected = expected || object == probe;
        ASSERT_EQ(pool.Contains(probe), expected) << "object " << i << ", offset " << offset;
    }
}

}  // namespace
