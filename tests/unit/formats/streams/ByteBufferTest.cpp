#include "formats/streams/ByteBuffer.h"

#include <gtest/gtest.h>

#include <cstring>

namespace formats {
namespace {

TEST(ByteBufferTest, ElementCountsComeFromSizesAndAreAtLeastOne) {
    ByteBuffer buffer(4, 10, 2);
    EXPECT_EQ(buffer.ElementSize(), 4);
    EXPECT_EQ(buffer.InitialCount(), 2);
    EXPECT_EQ(buffer.GrowthStep(), 1);
    EXPECT_EQ(buffer.Count(), 0);
}

TEST(ByteBufferTest, AppendCopiesOrZeroesAndAnswersTheFirstIndex) {
    ByteBuffer buffer(1, 4, 4);
    const std::uint8_t bytes[] = {1, 2, 3};
    EXPECT_EQ(buffer.Append(bytes, 3), 0u);
    EXPECT_EQ(buffer.Append(nullptr, 2), 3u);
    ASSERT_EQ(buffer.Count(), 5);
    const std::uint8_t expected[] = {1, 2, 3, 0, 0};
    EXPECT_EQ(std::memcmp(buffer.Data(), expected, 5), 0);
}

TEST(ByteBufferTest, AppendUnwrittenAnswersThePlaceOfTheNewElementsAndKeepsTheOldOnes) {
    ByteBuffer buffer(2, 4, 4);
    buffer.Append("abcd", 2);
    std::uint8_t* unwritten = buffer.AppendUnwritten(3);
    ASSERT_NE(unwritten, nullptr);
    EXPECT_EQ(unwritten, buffer.Data(2));
    EXPECT_EQ(buffer.Count(), 5);
    std::memcpy(unwritten, "efghij", 6);
    EXPECT_EQ(std::memcmp(buffer.Data(), "abcdefghij", 10), 0);
}

TEST(ByteBufferTest, RoomGrowsSixteenfoldUpToAMebibyteAndFourfoldBeyond) {
    // A file read in chunks of 64 KiB.
    ByteBuffer bytes(1, 65536, 65536);
    ASSERT_NE(bytes.AppendUnwritten(65536), nullptr);
    EXPECT_EQ(bytes.Capacity(), 65536);
    ASSERT_NE(bytes.AppendUnwritten(65536), nullptr);
    EXPECT_EQ(bytes.Capacity(), 1 << 20);
    ASSERT_NE(bytes.AppendUnwritten((1 << 20) - 131072 + 1), nullptr);
    EXPECT_EQ(bytes.Capacity(), 4 << 20);
    // The mebibyte counts bytes, not elements: 262,144 elements of four
    // bytes grow fourfold.
    ByteBuffer words(4, 1 << 20, 4);
    ASSERT_NE(words.AppendUnwritten(1 << 18), nullptr);
    EXPECT_EQ(words.Capacity(), 1 << 18);
    ASSERT_NE(words.AppendUnwritten(1), nullptr);
    EXPECT_EQ(words.Capacity(), 1 << 20);
    // The first room is what is asked for, at least the initial count.
    ByteBuffer small(4, 4, 4);
    ASSERT_NE(small.AppendUnwritten(2), nullptr);
    EXPECT_EQ(small.Capacity(), 2);
    ASSERT_NE(small.AppendUnwritten(1), nullptr);
    EXPECT_EQ(small.Capacity(), 32);
}

TEST(ByteBufferTest, GrowingKeepsTheContentsAcrossManySteps) {
    ByteBuffer buffer(1, 16, 16);
    for (int i = 0; i < 1000; ++i) {
        const std::uint8_t byte = std::uint8_t(i);
        ASSERT_EQ(buffer.Append(&byte, 1), std::uint32_t(i));
    }
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(*buffer.Data(i), std::uint8_t(i));
}

TEST(ByteBufferTest, ANegativeCountFails) {
    ByteBuffer buffer(1, 16, 16);
    EXPECT_EQ(buffer.Append(nullptr, -1), ByteBuffer::kAppendFailed);
    EXPECT_EQ(buffer.AppendUnwritten(-1), nullptr);
    EXPECT_EQ(buffer.Count(), 0);
}

TEST(ByteBufferTest, MoreThanThe32BitCountCanHoldFails) {
    ByteBuffer buffer(1, 16, 16);
    buffer.Append(nullptr, 8);
    EXPECT_EQ(buffer.Append(nullptr, INT32_MAX), ByteBuffer::kAppendFailed);
    EXPECT_EQ(buffer.Count(), 8);
}

TEST(ByteBufferTest, ClearTruncateAndFree) {
    ByteBuffer buffer(1, 16, 16);
    buffer.Append("abcdef", 6);
    buffer.Truncate(10);
    EXPECT_EQ(buffer.Count(), 6);
    buffer.Truncate(2);
    EXPECT_EQ(buffer.Count(), 2);
    buffer.Clear();
    EXPECT_EQ(buffer.Count(), 0);
    buffer.Append("xy", 2);
    buffer.Free();
    EXPECT_EQ(buffer.Count(), 0);
    EXPECT_EQ(buffer.Append("z", 1), 0u);
    EXPECT_EQ(*buffer.Data(), 'z');
}

}  // namespace
}  // namespace formats
