#include "IKVGlobalUnicodeString.h"

#include <gtest/gtest.h>

#include "FakeHost.h"
#include "KVError.h"

namespace {

const KVGlobalUnicodeStringSuite* GlobalStrings() {
    const void* suite = nullptr;
    fake::BasicSuite()->AcquireSuite("KV Global UnicodeString Suite", 1, &suite);
    return static_cast<const KVGlobalUnicodeStringSuite*>(suite);
}

TEST(IKVGlobalUnicodeStringTest, TheStringIsMadeOnFirstUseAndKept) {
    fake::Host& host = fake::ResetHost();
    kv::IKVGlobalUnicodeString string("$$$/Test/Key=Kept text");
    const KVUnicodeStringRef first = string.Get(*GlobalStrings());
    const KVUnicodeStringRef second = string.Get(*GlobalStrings());
    EXPECT_EQ(first, second);
    EXPECT_EQ(fake::TextOf(first), "Kept text");
    EXPECT_EQ(host.CallsStartingWith("NewGlobalString"), std::vector<std::string>{"NewGlobalString $$$/Test/Key=Kept text"});
}

TEST(IKVGlobalUnicodeStringTest, AHostFailureThrowsTheHostsCodeWithTheErrorThrowerMessage) {
    fake::ResetHost().newGlobalStringResult = kv::FourCC("FULL");
    kv::IKVGlobalUnicodeString string("text");
    try {
        string.Get(*GlobalStrings());
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::FourCC("FULL"));
        EXPECT_STREQ(error.Message(),
                     "KV exception from ErrorThrower declared in file: IKVGlobalUnicodeString line: 36 ");
    }
    // Not made: the next use tries again.
    fake::TheHost().newGlobalStringResult = kv::kNoErr;
    EXPECT_NE(string.Get(*GlobalStrings()), nullptr);
}

TEST(IKVGlobalUnicodeStringTest, ASuccessWithoutAStringIsAFailedPostcondition) {
    fake::ResetHost().newGlobalStringGivesNull = true;
    kv::IKVGlobalUnicodeString string("text");
    try {
        string.Get(*GlobalStrings());
        FAIL() << "no exception";
    } catch (const kv::Contract::Violation& violation) {
        EXPECT_EQ(violation.Code(), kv::kBadParameterErr);
        EXPECT_EQ(violation.Message(), nullptr);
        EXPECT_STREQ(violation.what(), "Failed Postcondition");
    }
}

}  // namespace
