#include "ZPAlloc.h"

#include <gtest/gtest.h>

#include "FakeHost.h"
#include "KVError.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"

namespace {

class ZPAllocTest : public testing::Test {
protected:
    void SetUp() override {
        fake::ResetHost();
        kv::registered::ListRegisteredSuites();
        ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    }
    void TearDown() override { kv::ReleaseAllSuites(); }
};

TEST_F(ZPAllocTest, ABlockComesFromTheBlocksSuiteWithItsDebugName) {
    void* block = kv::ZPAlloc::AllocateBlock(112);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(fake::TheHost().liveBlocks, 1);
    EXPECT_EQ(fake::TheHost().CallsStartingWith("AllocateBlock"),
              std::vector<std::string>{"AllocateBlock 112 kv::ZPAlloc::AllocateBlock"});
    kv::ZPAlloc::FreeBlock(block);
    EXPECT_EQ(fake::TheHost().liveBlocks, 0);
}

TEST_F(ZPAllocTest, AHostFailureThrowsOutOfMemory) {
    fake::TheHost().allocateBlockResult = kv::FourCC("FULL");
    try {
        kv::ZPAlloc::AllocateBlock(16);
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), 0x214D454Du);
    }
}

TEST_F(ZPAllocTest, FreeingNullDoesNothing) {
    kv::ZPAlloc::FreeBlock(nullptr);
    EXPECT_TRUE(fake::TheHost().CallsStartingWith("FreeBlock").empty());
}

}  // namespace
