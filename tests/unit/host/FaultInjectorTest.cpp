#include <kelvra/FaultInjector.h>

#include <gtest/gtest.h>

namespace {

constexpr ZPErr kCode = ZP_FOURCC('F', 'A', 'I', 'L');

TEST(FaultInjectorTest, NothingFailsWithoutAFault) {
    kelvra::FaultInjector faults;
    for (int i = 0; i < 10; ++i) EXPECT_FALSE(faults.OnCall("S", "f").has_value());
    EXPECT_EQ(faults.TotalCalls(), 10u);
    EXPECT_EQ(faults.Calls().at({"S", "f"}), 10u);
}

TEST(FaultInjectorTest, CallsAreCountedPerFunctionAndAskedForAsOftenAsWanted) {
    kelvra::FaultInjector faults;
    const kelvra::CallSite g = kelvra::CallSiteOf("S", "g");
    kelvra::CallSiteOf("S", "never called");
    faults.OnCall("S", "f");
    faults.OnCall(g);
    faults.OnCall("T", "f");
    faults.OnCall(g);
    EXPECT_EQ(faults.Calls(), (kelvra::CallCounts{{{"S", "f"}, 1}, {{"S", "g"}, 2}, {{"T", "f"}, 1}}));
    faults.OnCall("S", "f");
    faults.OnCall("U", "h");
    EXPECT_EQ(faults.Calls(), (kelvra::CallCounts{{{"S", "f"}, 2}, {{"S", "g"}, 2}, {{"T", "f"}, 1}, {{"U", "h"}, 1}}));
    EXPECT_EQ(faults.TotalCalls(), 6u);
    // Each host counts its own calls.
    kelvra::FaultInjector other;
    other.OnCall(g);
    EXPECT_EQ(other.Calls(), (kelvra::CallCounts{{{"S", "g"}, 1}}));
}

TEST(FaultInjectorTest, TheNthCallOfAnySuiteFailsOnce) {
    kelvra::FaultInjector faults;
    faults.FailCall({"", "", 3, false, kCode});
    EXPECT_FALSE(faults.OnCall("A", "f"));
    EXPECT_FALSE(faults.OnCall("B", "g"));
    EXPECT_EQ(faults.OnCall("C", "h"), kCode);
    EXPECT_FALSE(faults.OnCall("A", "f"));
}

TEST(FaultInjectorTest, TheNthCallFailsFromThenOn) {
    kelvra::FaultInjector faults;
    faults.FailCall({"", "", 2, true, kCode});
    EXPECT_FALSE(faults.OnCall("A", "f"));
    EXPECT_EQ(faults.OnCall("A", "f"), kCode);
    EXPECT_EQ(faults.OnCall("B", "g"), kCode);
    faults.Clear();
    EXPECT_FALSE(faults.OnCall("A", "f"));
}

TEST(FaultInjectorTest, OnlyCallsOfTheNamedSuiteAreCounted) {
    kelvra::FaultInjector faults;
    faults.FailCall({"B", "", 2, false, kCode});
    EXPECT_FALSE(faults.OnCall("B", "f"));
    EXPECT_FALSE(faults.OnCall("A", "f"));
    EXPECT_EQ(faults.OnCall("B", "g"), kCode);
}

TEST(FaultInjectorTest, OnlyCallsOfTheNamedFunctionAreCounted) {
    kelvra::FaultInjector faults;
    faults.FailCall({"B", "g", 2, false, kCode});
    EXPECT_FALSE(faults.OnCall("B", "g"));
    EXPECT_FALSE(faults.OnCall("B", "f"));
    EXPECT_FALSE(faults.OnCall("A", "g"));
    EXPECT_EQ(faults.OnCall("B", "g"), kCode);
    EXPECT_FALSE(faults.OnCall("B", "g"));
}

TEST(FaultInjectorTest, TheFailedCallsAreNamedUntilCleared) {
    kelvra::FaultInjector faults;
    faults.FailCall({"", "", 2, true, kCode});
    faults.OnCall("A", "f");
    faults.OnCall("B", "g");
    faults.OnCall("C", "h");
    using Call = std::pair<std::string, std::string>;
    EXPECT_EQ(faults.FailedCalls(), (std::vector<Call>{{"B", "g"}, {"C", "h"}}));
    faults.Clear();
    EXPECT_TRUE(faults.FailedCalls().empty());
    faults.OnCall("D", "i");
    EXPECT_TRUE(faults.FailedCalls().empty());
}

TEST(FaultInjectorTest, ASuiteIsUnavailableInEveryVersionOrInOne) {
    kelvra::FaultInjector faults;
    faults.MakeSuiteUnavailable("A");
    faults.MakeSuiteUnavailable("B", 7);
    EXPECT_TRUE(faults.IsSuiteUnavailable("A", 1));
    EXPECT_TRUE(faults.IsSuiteUnavailable("A", 9));
    EXPECT_TRUE(faults.IsSuiteUnavailable("B", 7));
    EXPECT_FALSE(faults.IsSuiteUnavailable("B", 6));
    EXPECT_FALSE(faults.IsSuiteUnavailable("C", 1));
}

}  // namespace
