// The suite list is process-wide, as in the module, so every test uses
// nodes of its own.
#include "SuiteNode.h"

#include <gtest/gtest.h>

#include "FakeHost.h"
#include "KVFrameworkSuites.h"

namespace {

using kv::SuiteNode;

class SuiteNodeTest : public testing::Test {
protected:
    void SetUp() override {
        fake::ResetHost();
        ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    }
    void TearDown() override { kv::ReleaseAllSuites(); }
};

TEST_F(SuiteNodeTest, AnOnDemandNodeIsAcquiredOnFirstUseOnlyAndReleasedByReleaseAll) {
    static SuiteNode node(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, SuiteNode::kOnDemand);
    fake::Host& host = fake::TheHost();
    const auto* first = kv::AcquireSuiteOrThrow<KVThreadPoolSuite>(node);
    const auto* second = kv::AcquireSuiteOrThrow<KVThreadPoolSuite>(node);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    EXPECT_EQ(host.acquisitions[kKVThreadPoolSuite], 1);

    kv::ReleaseAllSuites();
    EXPECT_EQ(host.Held(kKVThreadPoolSuite), 0);
    EXPECT_EQ(node.Suite(), nullptr);
}

TEST_F(SuiteNodeTest, AHostRefusalThrowsTheHostsCode) {
    static SuiteNode node(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, SuiteNode::kOnDemand);
    fake::TheHost().acquireFailures[kKVThreadPoolSuite] = kv::FourCC("NOPE");
    try {
        kv::AcquireSuiteOrThrow(node);
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::FourCC("NOPE"));
        EXPECT_EQ(error.Message(), nullptr);
    }
    EXPECT_EQ(node.Suite(), nullptr);
    EXPECT_EQ(kv::AcquireSuiteOrNull<KVThreadPoolSuite>(node), nullptr);
}

TEST_F(SuiteNodeTest, ASuccessWithoutASuiteIsABrokenPromiseOfTheHost) {
    static SuiteNode node(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, SuiteNode::kOnDemand);
    fake::TheHost().acquireWithoutSuite.insert(kKVThreadPoolSuite);
    try {
        kv::AcquireSuiteOrThrow(node);
        FAIL() << "no exception";
    } catch (const kv::Contract::Violation& violation) {
        EXPECT_EQ(violation.Code(), kv::kBadParameterErr);
        EXPECT_STREQ(violation.what(), "Failed Postcondition");
    }
}

TEST_F(SuiteNodeTest, ReleasingAllSuitesTwiceIsHarmless) {
    static SuiteNode onDemand(kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, SuiteNode::kOnDemand);
    static SuiteNode registered(kKVUserPrivateSuite, kKVUserPrivateSuiteVersion, SuiteNode::kRegistered);
    fake::Host& host = fake::TheHost();
    ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    kv::AcquireSuiteOrThrow(onDemand);
    kv::ReleaseAllSuites();
    ASSERT_EQ(host.releases[kKVThreadPoolSuite], 1);
    ASSERT_EQ(host.releases[kKVUserPrivateSuite], 1);
    const auto callsAfterFirst = host.calls.size();

    kv::ReleaseAllSuites();
    EXPECT_EQ(host.calls.size(), callsAfterFirst);
    EXPECT_EQ(host.releases[kKVThreadPoolSuite], 1);
    EXPECT_EQ(host.releases[kKVUserPrivateSuite], 1);
}

TEST_F(SuiteNodeTest, ARegisteredNodeUsedAfterTheListWasEmptiedIsNotReleasedAgain) {
    static SuiteNode node(kKVUserPrivateSuite, kKVUserPrivateSuiteVersion, SuiteNode::kRegistered);
    fake::Host& host = fake::TheHost();
    ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    ASSERT_NE(node.Suite(), nullptr);
    kv::ReleaseAllSuites();
    ASSERT_EQ(host.releases[kKVUserPrivateSuite], 1);

    // Off the list now: using it acquires it, but neither a walk nor a
    // release finds it any more.
    ASSERT_NE(kv::AcquireSuiteOrThrow(node), nullptr);
    EXPECT_EQ(host.acquisitions[kKVUserPrivateSuite], 2);
    kv::ReleaseAllSuites();
    EXPECT_EQ(host.releases[kKVUserPrivateSuite], 1);
    EXPECT_NE(node.Suite(), nullptr);
}

TEST_F(SuiteNodeTest, AMissingRegisteredSuiteFailsTheWalkAndGivesBackWhatTheWalkAcquired) {
    // Constructed in this order, `available` is listed before `missing`.
    static SuiteNode missing("Test Optional Suite", 1, SuiteNode::kRegistered);
    static SuiteNode available("Test Second Optional Suite", 1, SuiteNode::kRegistered);
    fake::Host& host = fake::TheHost();
    host.unavailable.insert("Test Optional Suite");

    EXPECT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kSuiteNotFoundErr);
    EXPECT_EQ(host.acquisitions["Test Second Optional Suite"], 1);
    EXPECT_EQ(host.Held("Test Second Optional Suite"), 0);
    EXPECT_EQ(available.Suite(), nullptr);
    EXPECT_EQ(missing.Suite(), nullptr);

    // Both stay listed: the next walk acquires them.
    host.unavailable.clear();
    EXPECT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    EXPECT_EQ(host.Held("Test Optional Suite"), 1);
    EXPECT_EQ(host.Held("Test Second Optional Suite"), 1);
}

TEST_F(SuiteNodeTest, AnOnDemandNodeReleasedByAFailedWalkIsNotLinkedTwice) {
    // Listed in the order onDemand, missing, deeper.
    static SuiteNode deeper("Test Second Optional Suite", 1, SuiteNode::kRegistered);
    static SuiteNode missing("Test Optional Suite", 1, SuiteNode::kRegistered);
    static SuiteNode onDemand(kKVOrvikPIPSuite, kKVOrvikPIPSuiteVersion, SuiteNode::kOnDemand);
    fake::Host& host = fake::TheHost();
    kv::AcquireSuiteOrThrow(onDemand);
    host.unavailable.insert("Test Optional Suite");
    ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kSuiteNotFoundErr);
    EXPECT_EQ(host.Held(kKVOrvikPIPSuite), 0);
    EXPECT_EQ(onDemand.Suite(), nullptr);

    // Still listed, the node is acquired again without being linked a
    // second time, which would hide the nodes behind it from the release.
    host.unavailable.clear();
    ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    kv::AcquireSuiteOrThrow(onDemand);
    kv::ReleaseAllSuites();
    EXPECT_EQ(host.acquisitions[kKVOrvikPIPSuite], 2);
    EXPECT_EQ(host.Held(kKVOrvikPIPSuite), 0);
    EXPECT_EQ(host.Held("Test Optional Suite"), 0);
    EXPECT_EQ(host.Held("Test Second Optional Suite"), 0);
}

TEST_F(SuiteNodeTest, ListingANodeTwiceLinksItOnce) {
    static SuiteNode node("Test Optional Suite", 1, SuiteNode::kRegistered);
    static SuiteNode behind("Test Second Optional Suite", 1, SuiteNode::kOnDemand);
    fake::Host& host = fake::TheHost();
    kv::ReleaseAllSuites();
    kv::ListSuite(behind);
    kv::ListSuite(node);
    kv::ListSuite(node);
    ASSERT_EQ(kv::AcquireRegisteredSuites(fake::BasicSuite()), kv::kNoErr);
    kv::AcquireSuiteOrThrow(behind);
    kv::ReleaseAllSuites();
    EXPECT_EQ(host.Held("Test Optional Suite"), 0);
    EXPECT_EQ(host.Held("Test Second Optional Suite"), 0);
}

TEST_F(SuiteNodeTest, TheBasicSuiteOfTheListIsOnlyOfferedWhenItHasNone) {
    kv::OfferSuiteListBasicSuite(nullptr);
    EXPECT_EQ(kv::SuiteListBasicSuite(), fake::BasicSuite());
}

}  // namespace
