#include <kelvra/HostError.h>
#include <kelvra/StringList.h>

#include <gtest/gtest.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(StringListTest, ReadsStringsInOrder) {
    const Bytes bytes = {0, 3, 0, 4, '-', '1', '0', '8', 0, 0, 0, 2, 'h', 'i'};
    const kelvra::StringList list = kelvra::ParseStringList(bytes);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0], "-108");
    EXPECT_EQ(list[1], "");
    EXPECT_EQ(list[2], "hi");
}

TEST(StringListTest, AnEmptyListHasNoStrings) { EXPECT_TRUE(kelvra::ParseStringList(Bytes{0, 0}).empty()); }

TEST(StringListTest, RefusesDataThatEndsEarly) {
    EXPECT_THROW(kelvra::ParseStringList(Bytes{}), kelvra::HostError);
    EXPECT_THROW(kelvra::ParseStringList(Bytes{0, 1, 0, 5, 'a'}), kelvra::HostError);
    EXPECT_THROW(kelvra::ParseStringList(Bytes{0, 2, 0, 0}), kelvra::HostError);
}

TEST(StringListTest, RefusesBytesAfterTheLastString) {
    try {
        kelvra::ParseStringList(Bytes{0, 1, 0, 0, 'x'});
        FAIL() << "accepted";
    } catch (const kelvra::HostError& error) {
        EXPECT_STREQ(error.what(), "string list: 1 bytes after the last string");
    }
}

}  // namespace
