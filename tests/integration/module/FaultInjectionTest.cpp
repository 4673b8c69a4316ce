// Start-up, reload and the error report with the host failing the 1st, 2nd,
// 3rd ... block allocation or suite call, once or from then on, until the
// operation succeeds: every run answers its code, and afterwards no host
// block is live and no suite is held (unless the host refused to take a
// suite back: the framework stops releasing at the first refusal).
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HostChecks.h"
#include "ModuleTesting.h"

namespace {

using import_testing::RefusedInRun;
using import_testing::SuitesAndBlocks;
using module_testing::kProbe;
using module_testing::kTintora;
using module_testing::SendProbe;
using module_testing::Shown;
using testing::AnyOf;
using testing::Eq;
using testing::IsEmpty;

constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');
// Far more attempts than any of these operations makes calls.
constexpr std::uint64_t kAttempts = 200;

kelvra::CallFault EveryCall(std::uint64_t nth, bool fromThenOn) { return {"", "", nth, fromThenOn, kFault}; }

// What start-up or reload answers when a host call fails: the host's code,
// except that a suite the host did not hand out may also be reported as not
// found ("S!Fd"), which is what the walk over the registered suites answers.
testing::Matcher<ZPErr> AnswerToFailed(kelvra::Host& host) {
    const auto& failed = host.Faults().FailedCalls();
    const bool acquisition = !failed.empty() && failed.front() == std::pair<std::string, std::string>(
                                                                     kelvra::kBasicSuiteName, "AcquireSuite");
    if (acquisition) return AnyOf(Eq(kZPSuiteNotFoundErr), Eq(kFault));
    return Eq(kFault);
}

class FaultInjectionTest : public testing::TestWithParam<bool> {
protected:
    bool FromThenOn() const { return GetParam(); }
};

TEST_P(FaultInjectionTest, StartupWithABlockAllocationFailing) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        host.Faults().FailBlockAllocation(nth, FromThenOn());
        const ZPErr result = module.Startup();
        host.Faults().Clear();
        if (result == kZPNoErr) break;
        EXPECT_EQ(result, kZPOutOfMemoryErr) << nth;
        EXPECT_EQ(module.Globals(), nullptr) << nth;
        EXPECT_THAT(SuitesAndBlocks(host), IsEmpty()) << nth;
    }
    ASSERT_GT(nth, 1u);
    ASSERT_LE(nth, kAttempts);
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
}

TEST_P(FaultInjectionTest, StartupWithASuiteCallFailing) {
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        kelvra::Host host;  // a fresh host: what a refused release leaves held stays with it
        kelvra::Module& module = host.Load(kTintora);
        host.Faults().FailCall(EveryCall(nth, FromThenOn()));
        const ZPErr result = module.Startup();
        const testing::Matcher<ZPErr> expected = AnswerToFailed(host);
        const import_testing::Refused refused = RefusedInRun(host);
        host.Faults().Clear();
        if (result == kZPNoErr) {
            EXPECT_EQ(module.Shutdown(), kZPNoErr);
            EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
            break;
        }
        EXPECT_THAT(result, expected) << nth;
        EXPECT_EQ(module.Globals(), nullptr) << nth;
        EXPECT_THAT(import_testing::SuitesAndBlocksBeyond(host, refused), IsEmpty()) << nth;
    }
    ASSERT_GT(nth, 1u);
    ASSERT_LE(nth, kAttempts);
}

TEST_P(FaultInjectionTest, ReloadWithABlockAllocationFailing) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        ASSERT_EQ(module.Unload(), kZPNoErr);
        host.Faults().FailBlockAllocation(nth, FromThenOn());
        const ZPErr result = module.Reload();
        host.Faults().Clear();
        if (result == kZPNoErr) break;
        EXPECT_EQ(result, kZPOutOfMemoryErr) << nth;
    }
    ASSERT_GT(nth, 1u);
    ASSERT_LE(nth, kAttempts);
    EXPECT_EQ(module.Purge(), kZPNoErr);
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
}

TEST_P(FaultInjectionTest, ReloadWithASuiteCallFailing) {
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        kelvra::Host host;  // a fresh host: what a refused release leaves held stays with it
        kelvra::Module& module = host.Load(kTintora);
        ASSERT_EQ(module.Startup(), kZPNoErr);
        ASSERT_EQ(module.Unload(), kZPNoErr);
        host.Faults().FailCall(EveryCall(nth, FromThenOn()));
        const ZPErr result = module.Reload();
        const testing::Matcher<ZPErr> expected = AnswerToFailed(host);
        const import_testing::Refused refused = RefusedInRun(host);
        host.Faults().Clear();
        if (result == kZPNoErr) {
            EXPECT_EQ(module.Purge(), kZPNoErr);
            EXPECT_EQ(module.Shutdown(), kZPNoErr);
            EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
            break;
        }
        EXPECT_THAT(result, expected) << nth;
        EXPECT_EQ(module.Shutdown(), kZPNoErr) << nth;
        EXPECT_THAT(import_testing::SuitesAndBlocksBeyond(host, refused), IsEmpty()) << nth;
    }
    ASSERT_LE(nth, kAttempts);
}

// The report of a start-up without memory for the plug-in object: its dialog
// needs the host's consent and two global strings. A global string the host
// fails to make ends the report with the host's code.
TEST_P(FaultInjectionTest, TheOutOfMemoryReportWithASuiteCallFailing) {
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        kelvra::Host host;  // a fresh load: the global strings are made once per load
        kelvra::Module& module = host.Load(kTintora);
        host.Faults().FailBlockAllocation(1);
        host.Faults().FailCall(EveryCall(nth, FromThenOn()));
        const ZPErr result = module.Startup();
        EXPECT_THAT(result, AnyOf(Eq(kZPOutOfMemoryErr), Eq(kFault))) << nth;
        EXPECT_THAT(SuitesAndBlocks(host), IsEmpty()) << nth;
        const bool shown = !Shown(host).empty();
        if (result == kFault) {
            EXPECT_FALSE(shown) << nth;
        }
        if (shown) break;
    }
    // Calls 1 to 9 fail in turn: the acquisitions of the string list and user
    // suites and of the consent's suite, the consent, the acquisitions of the
    // dialog's and the global strings' suites, the two strings and the dialog.
    EXPECT_EQ(nth, 10u);
}

// The report of an error of the started probe: however the host fails the
// report's calls, the message answers its own code. The attempts go on
// until one makes fewer calls than the one chosen to fail.
TEST_P(FaultInjectionTest, AnAlertReportWithASuiteCallFailing) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kProbe);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    std::uint64_t nth = 1;
    for (; nth <= kAttempts; ++nth) {
        host.Clock().Advance(5);  // no repeat limit between the attempts
        host.Events().Clear();
        const std::uint64_t callsBefore = host.Faults().TotalCalls();
        host.Faults().FailCall(EveryCall(nth, FromThenOn()));
        const ZPErr result = SendProbe(module, ProbeCommand::kAnswer, kZPNoDocumentErr);
        host.Faults().Clear();
        EXPECT_EQ(result, kZPNoDocumentErr) << nth;
        if (host.Faults().TotalCalls() - callsBefore < nth) break;
    }
    ASSERT_LE(nth, kAttempts);
    EXPECT_THAT(Shown(host), testing::ElementsAre("alert: The operation cannot complete because there is no open "
                                                  "document."));
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
}

TEST(FaultInjectionBlocksTest, TheErrorReportTakesNoModuleBlock) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kProbe);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    host.Faults().FailBlockAllocation(1, true);
    EXPECT_EQ(SendProbe(module, ProbeCommand::kAnswer, kZPCantHappenErr), kZPCantHappenErr);
    EXPECT_EQ(SendProbe(module, ProbeCommand::kAnswer, kZPNoDocumentErr), kZPNoDocumentErr);
    host.Faults().Clear();
    EXPECT_THAT(Shown(host), testing::SizeIs(3));
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(SuitesAndBlocks(host), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OnceOrFromThenOn, FaultInjectionTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& info) {
                             return info.param ? "FromThenOn" : "Once";
                         });

}  // namespace
