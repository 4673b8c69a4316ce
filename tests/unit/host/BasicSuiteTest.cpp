// The basic suite's own functions are host calls like the others: counted
// and failed on demand under the suite name "ZP Basic Suite".
#include "HostTesting.h"

#include <KVFrameworkSuites.h>

#include <gtest/gtest.h>

namespace {

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

class BasicSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    const ZPBasicSuite* basic = host.BasicSuite();

    std::uint64_t Calls(const char* function) {
        const auto& calls = host.Faults().Calls();
        auto found = calls.find({kelvra::kBasicSuiteName, function});
        return found == calls.end() ? 0 : found->second;
    }
};

TEST_F(BasicSuiteTest, AcquisitionsAndReleasesAreCounted) {
    const void* suite = nullptr;
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &suite), 0u);
    EXPECT_EQ(basic->AcquireSuite("KV No Such Suite", 1, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(basic->ReleaseSuite(kKVUserSuite, kKVUserSuiteVersion), 0u);
    EXPECT_EQ(Calls("AcquireSuite"), 2u);
    EXPECT_EQ(Calls("ReleaseSuite"), 1u);
    EXPECT_EQ(host.Faults().TotalCalls(), 3u);
}

TEST_F(BasicSuiteTest, TheNthAcquisitionFailsWithTheConfiguredCode) {
    host.Faults().FailCall({kelvra::kBasicSuiteName, "AcquireSuite", 2, false, kFailure});
    const void* first = nullptr;
    const void* second = &first;
    const void* third = nullptr;
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &first), 0u);
    EXPECT_EQ(basic->ReleaseSuite(kKVUserSuite, kKVUserSuiteVersion), 0u);  // not an acquisition
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &second), kFailure);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &third), 0u);
    EXPECT_NE(third, nullptr);
    ASSERT_EQ(host.SuiteCounts().size(), 1u);
    EXPECT_EQ(host.SuiteCounts()[0].acquired, 2u);  // the failed one is not held
}

TEST_F(BasicSuiteTest, AFailureOfEveryCallReachesTheBasicSuiteToo) {
    host.Faults().FailCall({"", "", 1, false, kFailure});
    const void* suite = &basic;
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &suite), kFailure);
    EXPECT_EQ(suite, nullptr);
}

TEST_F(BasicSuiteTest, AFailedReleaseAnswersTheCodeButLetsGoOfTheSuite) {
    const void* suite = nullptr;
    ASSERT_EQ(basic->AcquireSuite(kKVUserSuite, kKVUserSuiteVersion, &suite), 0u);
    host.Faults().FailCall({kelvra::kBasicSuiteName, "ReleaseSuite", 1, false, kFailure});
    EXPECT_EQ(basic->ReleaseSuite(kKVUserSuite, kKVUserSuiteVersion), kFailure);
    EXPECT_EQ(host.SuitesHeld(), 0u);
    EXPECT_EQ(basic->ReleaseSuite(kKVUserSuite, kKVUserSuiteVersion), kZPBadParameterErr);  // nothing held
}

TEST_F(BasicSuiteTest, BadArgumentsAreCountedAndRefused) {
    const void* suite = nullptr;
    EXPECT_EQ(basic->AcquireSuite(nullptr, 1, &suite), kZPBadParameterErr);
    EXPECT_EQ(basic->ReleaseSuite(nullptr, 1), kZPBadParameterErr);
    EXPECT_EQ(Calls("AcquireSuite"), 1u);
    EXPECT_EQ(Calls("ReleaseSuite"), 1u);
}

}  // namespace
