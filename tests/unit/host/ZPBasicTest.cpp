#include <ZPBasicBlocks.h>
#include <ZPBasicControl.h>

#include <gtest/gtest.h>

namespace {

class ZPBasicTest : public ::testing::Test {
protected:
    void SetUp() override { zpbasic::Reset(); }
    void TearDown() override { zpbasic::Reset(); }
};

TEST_F(ZPBasicTest, CountsLiveBlocksAndBytes) {
    void* a = nullptr;
    void* b = nullptr;
    ASSERT_EQ(kv::ZPBasicAllocateBlock(10, &a), 0u);
    ASSERT_EQ(kv::ZPBasicAllocateBlock(0, &b), 0u);
    EXPECT_NE(a, nullptr);
    EXPECT_NE(b, nullptr);
    EXPECT_EQ(zpbasic::GetCounts().liveBlocks, 2u);
    EXPECT_EQ(zpbasic::GetCounts().liveBytes, 10u);
    EXPECT_EQ(kv::ZPBasicFreeBlock(a), 0u);
    EXPECT_EQ(zpbasic::GetCounts().liveBlocks, 1u);
    EXPECT_EQ(zpbasic::GetCounts().allocations, 2u);
    EXPECT_EQ(zpbasic::GetCounts().frees, 1u);
    EXPECT_EQ(kv::ZPBasicFreeBlock(b), 0u);
    EXPECT_EQ(zpbasic::GetCounts().liveBlocks, 0u);
}

TEST_F(ZPBasicTest, FreeOfSomethingNotLiveAnswersParmAndIsCounted) {
    void* block = nullptr;
    ASSERT_EQ(kv::ZPBasicAllocateBlock(8, &block), 0u);
    ASSERT_EQ(kv::ZPBasicFreeBlock(block), 0u);
    EXPECT_EQ(kv::ZPBasicFreeBlock(block), kZPBadParameterErr);  // twice
    int onTheStack = 0;
    EXPECT_EQ(kv::ZPBasicFreeBlock(&onTheStack), kZPBadParameterErr);
    EXPECT_EQ(kv::ZPBasicFreeBlock(nullptr), kZPBadParameterErr);
    EXPECT_EQ(zpbasic::GetCounts().badFrees, 3u);
    EXPECT_EQ(zpbasic::GetCounts().frees, 1u);
}

TEST_F(ZPBasicTest, NullOutPointerIsRefused) {
    EXPECT_EQ(kv::ZPBasicAllocateBlock(8, nullptr), kZPBadParameterErr);
    EXPECT_EQ(zpbasic::GetCounts().allocations, 0u);
}

TEST_F(ZPBasicTest, TheNthAllocationFailsOnce) {
    zpbasic::FailAllocation(3, false);
    void* blocks[4] = {};
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &blocks[0]), 0u);
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &blocks[1]), 0u);
    blocks[2] = &blocks;  // must be cleared by the failure
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &blocks[2]), kZPOutOfMemoryErr);
    EXPECT_EQ(blocks[2], nullptr);
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &blocks[3]), 0u);
    EXPECT_EQ(zpbasic::GetCounts().failedAllocations, 1u);
    EXPECT_EQ(zpbasic::GetCounts().liveBlocks, 3u);
}

TEST_F(ZPBasicTest, TheNthAllocationFailsFromThenOn) {
    zpbasic::FailAllocation(2, true);
    void* block = nullptr;
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &block), 0u);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &block), kZPOutOfMemoryErr);
    zpbasic::ClearAllocationFault();
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &block), 0u);
    EXPECT_EQ(zpbasic::GetCounts().failedAllocations, 5u);
}

TEST_F(ZPBasicTest, ResetFreesEverythingAndClearsFaults) {
    void* block = nullptr;
    ASSERT_EQ(kv::ZPBasicAllocateBlock(32, &block), 0u);
    zpbasic::FailAllocation(1, true);
    zpbasic::Reset();
    EXPECT_EQ(zpbasic::GetCounts().liveBlocks, 0u);
    EXPECT_EQ(zpbasic::GetCounts().allocations, 0u);
    EXPECT_EQ(kv::ZPBasicAllocateBlock(1, &block), 0u);
}

}  // namespace
