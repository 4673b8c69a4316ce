// Before the first message the module knows no basic suite. This program
// holds nothing else, so that nothing has given it one.
#include <gtest/gtest.h>

#include "FakeHost.h"
#include "KVFrameworkSuites.h"
#include "SuiteNode.h"

namespace {

TEST(SuiteNodeFirstUseTest, AcquiringBeforeAnyMessageAnswersNullWithoutError) {
    static kv::SuiteNode node(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, kv::SuiteNode::kOnDemand);
    fake::Host& host = fake::ResetHost();
    ASSERT_EQ(kv::SuiteListBasicSuite(), nullptr);

    const void* suite = reinterpret_cast<const void*>(1);
    EXPECT_NO_THROW(suite = kv::AcquireSuiteOrThrow(node));
    EXPECT_EQ(suite, nullptr);
    EXPECT_TRUE(host.calls.empty());

    // Once the list has a basic suite, the same node acquires.
    kv::OfferSuiteListBasicSuite(fake::BasicSuite());
    EXPECT_NE(kv::AcquireSuiteOrThrow(node), nullptr);
    kv::ReleaseAllSuites();
}

}  // namespace
