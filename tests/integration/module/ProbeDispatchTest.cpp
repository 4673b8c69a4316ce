// The dispatcher and the entry's rules for what handlers answer and throw,
// seen through the probe module in the emulated host.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ZPMessages.h>

#include "ModuleTesting.h"

namespace {

using module_testing::Holdings;
using module_testing::kProbe;
using module_testing::SendProbe;
using module_testing::SendSaveNotification;
using module_testing::Shown;
using module_testing::UnknownErrorText;
using testing::ElementsAre;
using testing::IsEmpty;

class ProbeDispatchTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(module_.Startup(), kZPNoErr); }
    void TearDown() override {
        EXPECT_EQ(module_.Shutdown(), kZPNoErr);
        EXPECT_THAT(Holdings(host_), IsEmpty());
    }

    kelvra::Host host_;
    kelvra::Module& module_ = host_.Load(kProbe);
};

TEST_F(ProbeDispatchTest, APurgeAnswersCachesFlushedExactlyWhenPurgeAnswersNonZero) {
    EXPECT_EQ(module_.Purge(), kZPNoErr);
    SendProbe(module_, ProbeCommand::kSetPurgeAnswer, 1);
    EXPECT_EQ(module_.Purge(), kZPCachesFlushedResponse);
    SendProbe(module_, ProbeCommand::kSetPurgeAnswer, kZPCantHappenErr);
    EXPECT_EQ(module_.Purge(), 0x70466C73u);
    SendProbe(module_, ProbeCommand::kSetPurgeAnswer, 0);
    EXPECT_EQ(module_.Purge(), kZPNoErr);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(ProbeDispatchTest, ANotificationOnTheSaveNotifierReachesSaveUserDataWhateverItsSelector) {
    SendProbe(module_, ProbeCommand::kSetSaveAnswer, kZPNoDocumentErr);
    EXPECT_EQ(SendSaveNotification(host_, module_, kKVNotifySelector), kZPNoDocumentErr);
    EXPECT_EQ(SendSaveNotification(host_, module_, "Any Selector At All"), kZPNoDocumentErr);
    ProbeCommand count;
    count.action = ProbeCommand::kCountSaves;
    SendProbe(module_, count);
    EXPECT_EQ(count.count, 2);
    EXPECT_EQ(host_.LiveObjects().appContexts, 0u);
}

TEST_F(ProbeDispatchTest, AHandlersErrorIsAnsweredAndShown) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kAnswer, 0x41424344), 0x41424344u);
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kThrowError, 5000), 5000u);
    EXPECT_THAT(Shown(host_),
                ElementsAre("alert: " + UnknownErrorText("ABCD"), "alert: " + UnknownErrorText("5000")));
}

TEST_F(ProbeDispatchTest, NotHandledIsAnswered0AndNeverShown) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kAnswer, kZPUnhandledMsgErr), kZPNoErr);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(ProbeDispatchTest, BadAllocYieldsOutOfMemoryWithItsDialog) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kThrowBadAlloc), 0x214D454Du);
    ASSERT_THAT(Shown(host_), testing::SizeIs(1));
    EXPECT_THAT(Shown(host_)[0], testing::StartsWith("more-info 2103: We've hit a roadblock!"));
}

TEST_F(ProbeDispatchTest, AnotherStandardExceptionYieldsCantHappenWithItsDialog) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kThrowStandard), 0x43414E54u);
    ASSERT_THAT(Shown(host_), testing::SizeIs(2));
    EXPECT_EQ(Shown(host_)[0], "usage: Error Dialog with More Info Button / kCantHappenErr / Probe Plugin");
    EXPECT_THAT(Shown(host_)[1], testing::StartsWith("more-info 2102: An unknown error occurred."));
}

TEST_F(ProbeDispatchTest, AThrownIntegerYieldsUNEXAndIsNotShown) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kThrowInteger), 0x554E4558u);
    EXPECT_THAT(Shown(host_), IsEmpty());
    EXPECT_EQ(host_.LiveObjects().appContexts, 0u);
    // The plug-in goes on working.
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kAnswer, 0), kZPNoErr);
}

TEST_F(ProbeDispatchTest, AContractViolationYieldsPARM) {
    EXPECT_EQ(SendProbe(module_, ProbeCommand::kThrowContractViolation), 0x5041524Du);
    EXPECT_THAT(Shown(host_), ElementsAre("alert: " + UnknownErrorText("PARM")));
}

TEST_F(ProbeDispatchTest, AMessageFromAnUnknownCallerAnswers0) {
    ProbeCommand command;
    command.action = ProbeCommand::kAnswer;
    command.code = kZPCantHappenErr;
    KVNotifierMessage message{};
    message.notifyData = &command;
    EXPECT_EQ(module_.Send("Unknown Caller", kKVNotifySelector, message.d), kZPNoErr);
    EXPECT_THAT(Shown(host_), IsEmpty());
}

}  // namespace
