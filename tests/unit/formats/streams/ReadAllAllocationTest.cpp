// Runs in a program whose operator new can be told to fail.
#include <gtest/gtest.h>

#include <vector>

#include "formats/streams/ByteBuffer.h"
#include "tests/support/FailingNew.h"
#include "tests/support/MemoryStream.h"

namespace formats {
namespace {

using testsupport::AllocationFailureScope;
using testsupport::MemoryStream;

TEST(ReadAllAllocationTest, NoMemoryForTheFirstChunkFails) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    auto stream = MemoryStream::Reading(std::vector<std::uint8_t>(10, 1));
    std::int32_t result;
    {
        AllocationFailureScope noMemory(0);
        result = ReadAll(buffer, stream);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(buffer.Count(), 0);
}

TEST(ReadAllAllocationTest, NoMemoryToGrowFreesTheBufferAndFails) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    auto stream = MemoryStream::Reading(std::vector<std::uint8_t>(150000, 1));
    std::int32_t result;
    {
        AllocationFailureScope oneBlockOnly(1);
        result = ReadAll(buffer, stream);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(buffer.Count(), 0);
    EXPECT_EQ(stream.ReadCalls(), 1u);
    // Freed, not merely emptied: the next append must allocate afresh.
    const std::size_t before = testsupport::AllocationCount();
    buffer.Append("x", 1);
    EXPECT_EQ(testsupport::AllocationCount(), before + 1);
}

TEST(ReadAllAllocationTest, GrowthIsGeometricSoLargeFilesCopyLittle) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    auto stream = MemoryStream::Reading(std::vector<std::uint8_t>(64 * 65536 + 5, 1));
    const std::size_t before = testsupport::AllocationCount();
    ASSERT_EQ(ReadAll(buffer, stream), 1);
    EXPECT_EQ(buffer.Count(), 64 * 65536 + 5);
    // 65 chunks: one allocation per doubling, not one per chunk.
    EXPECT_LE(testsupport::AllocationCount() - before, 8u);
}

}  // namespace
}  // namespace formats
