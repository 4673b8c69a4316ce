#include <kelvra/FlatNameIndex.h>

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <random>
#include <string>

namespace {

using kelvra::FlatNameIndex;

struct Named {
    std::u16string name;
};

TEST(FlatNameIndexTest, FindsWhatWasAddedByItsNameAndNothingElse) {
    Named red{u"Red"}, blue{u"Blue"}, empty{u""};
    FlatNameIndex<Named> index;
    EXPECT_EQ(index.Find(u"Red"), nullptr);
    index.Add(&red, index.Hash(red.name));
    index.Add(&blue, index.Hash(blue.name));
    index.Add(&empty, index.Hash(empty.name));
    EXPECT_EQ(index.Find(u"Red"), &red);
    EXPECT_EQ(index.Find(u"Blue"), &blue);
    EXPECT_EQ(index.Find(u""), &empty);
    EXPECT_EQ(index.Find(u"red"), nullptr);
    EXPECT_EQ(index.Find(u"Red "), nullptr);
    EXPECT_EQ(index.Find(u"Re"), nullptr);
    EXPECT_EQ(index.Size(), 3u);
}

TEST(FlatNameIndexTest, NamesAreComparedUnitForUnitAndNotOnlyByHash) {
    Named lone{u"a\xD800"}, other{u"a\xDC00"};
    FlatNameIndex<Named> index;
    index.Add(&lone, index.Hash(lone.name));
    // The same hash given for another name: found by name only.
    EXPECT_EQ(index.Find(other.name, index.Hash(lone.name)), nullptr);
    index.Add(&other, index.Hash(other.name));
    EXPECT_EQ(index.Find(u"a\xD800"), &lone);
    EXPECT_EQ(index.Find(u"a\xDC00"), &other);
}

TEST(FlatNameIndexTest, ReservingKeepsWhatIsThere) {
    std::deque<Named> items;
    FlatNameIndex<Named> index;
    for (int i = 0; i < 10; ++i) {
        items.push_back({u"n" + std::u16string(std::size_t(i), u'x')});
        index.Add(&items.back(), index.Hash(items.back().name));
    }
    index.Reserve(100000);
    EXPECT_EQ(index.Size(), 10u);
    for (const Named& item : items) EXPECT_EQ(index.Find(item.name), &item);
}

// Seeded random adds and look-ups, each checked against an ordered map; a
// small alphabet makes many names share their beginnings and lengths.
TEST(FlatNameIndexTest, AgreesWithAnOrderedMapOverRandomOperations) {
    for (std::size_t letters : {2u, 5u, 26u}) {
        std::mt19937 random{std::uint32_t(letters)};
        std::deque<Named> items;
        FlatNameIndex<Named> index;
        std::map<std::u16string, const Named*> expected;
        for (std::size_t step = 0; step < 20000; ++step) {
            std::u16string name(random() % 6, u'a');
            for (char16_t& unit : name) unit = char16_t(u'a' + random() % letters);
            const Named* found = index.Find(name);
            const auto wanted = expected.find(name);
            ASSERT_EQ(found, wanted == expected.end() ? nullptr : wanted->second)
                << "letters " << letters << ", step " << step;
            if (found == nullptr && random() % 2 == 0) {
                items.push_back({name});
                index.Add(&items.back(), index.Hash(name));
                expected.emplace(name, &items.back());
            }
            ASSERT_EQ(index.Size(), expected.size());
        }
        for (const auto& [name, item] : expected) EXPECT_EQ(index.Find(name), item);
    }
}

}  // namespace
