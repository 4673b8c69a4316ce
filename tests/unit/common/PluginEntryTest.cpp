// The entry body: the plug-in's life through the messages of the host.
#include "PluginEntry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeHost.h"
#include "KVFrameworkSuites.h"
#include "TestMessages.h"
#include "TestPlugin.h"

namespace {

using Ran = std::vector<std::string>;

// The fake host's string lists: the plug-in's own error list, short.
void AddErrorStrings(fake::Host& host) {
    const void* owner = fake::kPlugin;
    host.strings[{owner, 16050, 1}] = "DOC?";
    host.strings[{owner, 16050, 2}] = "$$$/Test/OpenDoc=No open document.";
    host.strings[{owner, 16050, 3}] = "<Others>";
    host.strings[{owner, 16050, 4}] = "$$$/Test/Unknown=Unknown error [%s]";
}

bool NothingHeld(const fake::Host& host) {
    for (const auto& [name, count] : host.acquisitions) {
        if (host.Held(name) != 0) return false;
    }
    return true;
}

class PluginEntryTest : public testing::Test {
protected:
    void SetUp() override {
        test_plugin::Reset();
        AddErrorStrings(fake::ResetHost());
    }
    void TearDown() override {
        if (messages_.globals != nullptr) messages_.Shutdown();
    }

    void Start() {
        ASSERT_EQ(messages_.Startup(), kv::kNoErr);
        test_plugin::Ran().clear();
        fake::TheHost().calls.clear();
    }

    TestMessages messages_;
};

TEST_F(PluginEntryTest, StartupRunsTheSequenceInOrder) {
    fake::Host& host = fake::TheHost();
    ASSERT_EQ(messages_.Startup(), kv::kNoErr);
    ASSERT_NE(messages_.globals, nullptr);
    EXPECT_EQ(test_plugin::Global(), messages_.globals);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"NewPlugin", "SetGlobal", "AllocateSuiteTables", "FillSuiteTables",
                                       "StartupPlugin"}));
    EXPECT_EQ(host.CallsStartingWith("SetPluginName"), Ran{"SetPluginName Test Plugin"});
    EXPECT_EQ(host.CallsStartingWith("AddNotifier"),
              Ran{"AddNotifier Test Plugin Save User Data Notifier / KV Save User Data Notifier"});
    EXPECT_EQ(host.Held(kZPAccessSuite), 1);
    EXPECT_EQ(host.Held("Test Required Suite"), 1);
}

TEST_F(PluginEntryTest, ShutdownRunsTheSequenceAndLeavesNothingHeld) {
    Start();
    const fake::Host& host = fake::TheHost();
    EXPECT_EQ(messages_.Shutdown(), kv::kNoErr);
    EXPECT_EQ(messages_.globals, nullptr);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"ShutdownPlugin", "FreeSuiteTables", "SetGlobal null", "~TestPlugin"}));
    EXPECT_EQ(test_plugin::Global(), nullptr);
    EXPECT_TRUE(NothingHeld(host));
}

TEST_F(PluginEntryTest, ShutdownBeforeAnyStartupAnswers0AndShowsNothing) {
    EXPECT_EQ(messages_.Shutdown(), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());
    EXPECT_TRUE(fake::TheHost().calls.empty());
}

TEST_F(PluginEntryTest, WithoutAnObjectEveryOtherMessageAnswers0) {
    EXPECT_EQ(messages_.Send("Somebody Else", "Hello"), kv::kNoErr);
    EXPECT_EQ(messages_.Notify(fake::kSaveNotifier), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());
}

TEST_F(PluginEntryTest, AMessageFromAnUnknownCallerAnswers0) {
    Start();
    EXPECT_EQ(messages_.Send("Somebody Else", "Hello"), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());
}

TEST_F(PluginEntryTest, ANullMessageIsABadParameter) {
    EXPECT_EQ(kv::PluginEntry(kZPInterfaceCaller, kZPStartupSelector, nullptr), kv::kBadParameterErr);
}

TEST_F(PluginEntryTest, AfterUnloadANotificationAnswers0WithoutReachingNotify) {
    Start();
    const fake::Host& host = fake::TheHost();
    EXPECT_EQ(messages_.Unload(), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"UnloadPlugin", "EmptySuiteTables", "SetGlobal null"}));
    EXPECT_NE(messages_.globals, nullptr);
    EXPECT_TRUE(NothingHeld(host));

    test_plugin::Ran().clear();
    test_plugin::Behaviours()["Notify"] = {Reaction::kAnswer, kv::FourCC("BUSY")};
    EXPECT_EQ(messages_.Notify(reinterpret_cast<KVNotifierHandle>(0x07E4)), kv::kNoErr);
    EXPECT_EQ(messages_.Notify(fake::kSaveNotifier), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());
}

TEST_F(PluginEntryTest, ReloadRebuildsTheObjectAndStartsItAgainWithoutRegisteringAnew) {
    Start();
    static_cast<TestPlugin*>(messages_.globals)->derivedField = 99;
    messages_.Unload();
    test_plugin::Ran().clear();
    fake::Host& host = fake::TheHost();
    host.calls.clear();

    EXPECT_EQ(messages_.Reload(), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"FixupReload", "SetGlobal", "FillSuiteTables", "ReloadPlugin"}));
    EXPECT_EQ(static_cast<TestPlugin*>(messages_.globals)->derivedField, 7);
    EXPECT_TRUE(host.CallsStartingWith("SetPluginName").empty());
    EXPECT_TRUE(host.CallsStartingWith("AddNotifier").empty());
    EXPECT_EQ(host.Held(kZPAccessSuite), 1);

    // Started again: notifications are dispatched.
    test_plugin::Ran().clear();
    EXPECT_EQ(messages_.Notify(reinterpret_cast<KVNotifierHandle>(0x07E4)), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran(), Ran{"Notify"});
}

TEST_F(PluginEntryTest, AFailedReloadLeavesTheObjectUnloadedHoldingNothing) {
    Start();
    messages_.Unload();
    fake::Host& host = fake::TheHost();
    host.acquireFailures[kKVNotifierSuite] = kv::FourCC("GONE");
    EXPECT_EQ(messages_.Reload(), kv::FourCC("GONE"));
    EXPECT_EQ(test_plugin::Global(), nullptr);
    EXPECT_TRUE(NothingHeld(host));
    test_plugin::Ran().clear();
    EXPECT_EQ(messages_.Notify(reinterpret_cast<KVNotifierHandle>(0x07E4)), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());

    EXPECT_EQ(messages_.Shutdown(), kv::kNoErr);
    EXPECT_TRUE(NothingHeld(host));
}

TEST_F(PluginEntryTest, AFailedStartupStepDestroysTheObjectReportsAndGivesEverythingBack) {
    fake::Host& host = fake::TheHost();
    host.addNotifierResult = kv::FourCC("WXYZ");
    EXPECT_EQ(messages_.Startup(), kv::FourCC("WXYZ"));
    EXPECT_EQ(messages_.globals, nullptr);
    EXPECT_EQ(test_plugin::Global(), nullptr);
    EXPECT_EQ(test_plugin::Ran().back(), "~TestPlugin");
    EXPECT_EQ(host.CallsStartingWith("ErrorAlert"), Ran{"ErrorAlert Unknown error [WXYZ]"});
    EXPECT_TRUE(NothingHeld(host));

    // A second start-up builds a new object from scratch.
    host.addNotifierResult = kv::kNoErr;
    test_plugin::Ran().clear();
    EXPECT_EQ(messages_.Startup(), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran().front(), "NewPlugin");
    EXPECT_EQ(host.Held(kKVNotifierSuite), 1);
}

TEST_F(PluginEntryTest, NoMemoryForTheObjectAnswersOutOfMemoryAndShowsItsDialog) {
    test_plugin::NoMemoryForPlugin() = true;
    fake::Host& host = fake::TheHost();
    EXPECT_EQ(messages_.Startup(), 0x214D454Du);
    EXPECT_EQ(messages_.globals, nullptr);
    ASSERT_EQ(host.CallsStartingWith("ErrorDialogWithMoreInfo").size(), 1u);
    EXPECT_EQ(host.CallsStartingWith("ErrorDialogWithMoreInfo")[0].rfind("ErrorDialogWithMoreInfo 2103 ", 0), 0u);
    EXPECT_TRUE(NothingHeld(host));
}

TEST_F(PluginEntryTest, AStartupThatThrowsAnswersTheCodeWithoutReportAndLeavesNothing) {
    test_plugin::Behaviours()["StartupPlugin"] = {Reaction::kThrowError, kv::FourCC("DOC?")};
    fake::Host& host = fake::TheHost();
    EXPECT_EQ(messages_.Startup(), kv::kNoDocumentErr);
    EXPECT_EQ(messages_.globals, nullptr);
    EXPECT_TRUE(host.CallsStartingWith("ErrorAlert").empty());
    EXPECT_TRUE(NothingHeld(host));
}

TEST_F(PluginEntryTest, AShutdownThatThrowsStillEndsThePlugin) {
    Start();
    test_plugin::Behaviours()["ShutdownPlugin"] = {Reaction::kThrowInteger, 0};
    EXPECT_EQ(messages_.Shutdown(), kv::kUnknownExceptionErr);
    EXPECT_EQ(messages_.globals, nullptr);
    EXPECT_EQ(test_plugin::Ran().back(), "~TestPlugin");
    EXPECT_TRUE(NothingHeld(fake::TheHost()));
}

TEST_F(PluginEntryTest, AFailedShutdownIsReportedWithoutTheObject) {
    Start();
    test_plugin::Behaviours()["ShutdownPlugin"] = {Reaction::kAnswer, kv::kNoDocumentErr};
    EXPECT_EQ(messages_.Shutdown(), kv::kNoDocumentErr);
    EXPECT_EQ(fake::TheHost().CallsStartingWith("ErrorAlert"), Ran{"ErrorAlert No open document."});
    EXPECT_TRUE(NothingHeld(fake::TheHost()));
}

TEST_F(PluginEntryTest, AHandlersErrorIsAnsweredAndReported) {
    Start();
    test_plugin::Behaviours()["Notify"] = {Reaction::kAnswer, kv::kNoDocumentErr};
    EXPECT_EQ(messages_.Notify(nullptr), kv::kNoDocumentErr);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"Notify", "ReportError " + std::to_string(kv::kNoDocumentErr)}));
    EXPECT_EQ(fake::TheHost().CallsStartingWith("ErrorAlert"), Ran{"ErrorAlert No open document."});
}

TEST_F(PluginEntryTest, NotHandledAnswers0AndIsNeverReported) {
    Start();
    EXPECT_EQ(messages_.Send(kKVFileFormatCaller, kKVCheckFileFormatSelector), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran(), Ran{"CheckFileFormat"});
}

TEST_F(PluginEntryTest, ExceptionsOfAHandlerBecomeTheRulesCodes) {
    Start();
    auto& notify = test_plugin::Behaviours()["Notify"];
    notify = {Reaction::kThrowBadAlloc, 0};
    EXPECT_EQ(messages_.Notify(nullptr), 0x214D454Du);
    notify = {Reaction::kThrowStandard, 0};
    EXPECT_EQ(messages_.Notify(nullptr), 0x43414E54u);
    notify = {Reaction::kThrowInteger, 0};
    test_plugin::Ran().clear();
    EXPECT_EQ(messages_.Notify(nullptr), 0x554E4558u);
    // Passed to the entry: answered at once, not reported.
    EXPECT_EQ(test_plugin::Ran(), Ran{"Notify"});
}

TEST_F(PluginEntryTest, APurgeThatFlushedAnswersCachesFlushedSilently) {
    Start();
    test_plugin::Behaviours()["Purge"] = {Reaction::kAnswer, 1};
    EXPECT_EQ(messages_.Send(kZPCacheCaller, kZPPurgeCachesSelector), 0x70466C73u);
    EXPECT_TRUE(fake::TheHost().CallsStartingWith("ErrorAlert").empty());
}

TEST_F(PluginEntryTest, ALongPluginNameIsCutToFitTheNotifierName) {
    TestPlugin plugin(fake::kPlugin);
    plugin.SetName(std::string(250, 'n').c_str());
    ASSERT_EQ(plugin.Startup(&messages_.interface), kv::kNoErr);
    // 250 + 5 characters fill the 256-byte buffer with its terminator.
    EXPECT_EQ(fake::TheHost().CallsStartingWith("AddNotifier "),
              Ran{"AddNotifier " + std::string(250, 'n') + " Save / KV Save User Data Notifier"});
    plugin.Shutdown(&messages_.interface);
}

}  // namespace
