// Plugin's dispatcher and base operations on a started object.
#include "Plugin.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeHost.h"
#include "PluginHooks.h"
#include "TestClock.h"
#include "TestMessages.h"
#include "TestPlugin.h"

namespace {

using Ran = std::vector<std::string>;

class PluginTest : public testing::Test {
protected:
    void SetUp() override {
        test_plugin::Reset();
        fake::ResetHost();
        ASSERT_EQ(plugin_.Startup(&messages_.interface), kv::kNoErr);
        test_plugin::Ran().clear();
        fake::TheHost().calls.clear();
    }
    void TearDown() override { plugin_.Shutdown(&messages_.interface); }

    kv::ResultCode Dispatch(const char* caller, const char* selector, void* message) {
        return plugin_.Message(caller, selector, message);
    }

    TestMessages messages_;
    TestPlugin plugin_{fake::kPlugin};
};

TEST_F(PluginTest, EachCallerAndSelectorReachesItsOperation) {
    KVFileFormatMessage* request = &messages_.fileFormat;
    const struct {
        const char* selector;
        const char* operation;
    } fileFormatOperations[] = {
        {kKVGetFileFormatParametersSelector, "GetFileFormatParameters"},
        {kKVSetFileFormatParametersSelector, "SetFileFormatParameters"},
        {kKVGoFileFormatSelector, "GoFileFormat"},
        {kKVCheckFileFormatSelector, "CheckFileFormat"},
        {kKVUpdateFileFormatSelector, "UpdateFileFormat"},
    };
    for (const auto& [selector, operation] : fileFormatOperations) {
        test_plugin::Ran().clear();
        EXPECT_EQ(Dispatch(kKVFileFormatCaller, selector, request), kv::kUnhandledMsgErr) << selector;
        EXPECT_EQ(test_plugin::Ran(), Ran{operation});
    }

    test_plugin::Ran().clear();
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), kv::kNoErr);
    EXPECT_EQ(Dispatch(kZPCacheCaller, kZPPurgeCachesSelector, &messages_.interface), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran(), (Ran{"Notify", "Purge"}));
}

TEST_F(PluginTest, MessagesNoOperationHandlesAnswerUnhandled) {
    EXPECT_EQ(Dispatch("Somebody Else", kKVNotifySelector, &messages_.notification), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(kZPInterfaceCaller, "Wake Up", &messages_.interface), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(kZPAccessCaller, "Lock", &messages_.interface), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(kZPCacheCaller, "Flush Everything", &messages_.interface), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(kKVNotifierCaller, "KV Something", &messages_.notification), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(kKVFileFormatCaller, "KV Update", &messages_.fileFormat), kv::kUnhandledMsgErr);
    EXPECT_EQ(Dispatch(nullptr, nullptr, &messages_.interface), kv::kUnhandledMsgErr);
    EXPECT_TRUE(test_plugin::Ran().empty());

    EXPECT_EQ(Dispatch(kZPInterfaceCaller, kZPStartupSelector, &messages_.interface), kv::kNoErr);
    EXPECT_TRUE(test_plugin::Ran().empty());
}

TEST_F(PluginTest, APurgeAnswersCachesFlushedExactlyWhenPurgeAnswersNonZero) {
    EXPECT_EQ(Dispatch(kZPCacheCaller, kZPPurgeCachesSelector, &messages_.interface), kv::kNoErr);
    test_plugin::Behaviours()["Purge"] = {Reaction::kAnswer, 1};
    EXPECT_EQ(Dispatch(kZPCacheCaller, kZPPurgeCachesSelector, &messages_.interface), 0x70466C73u);
    test_plugin::Behaviours()["Purge"] = {Reaction::kAnswer, kv::FourCC("CANT")};
    EXPECT_EQ(Dispatch(kZPCacheCaller, kZPPurgeCachesSelector, &messages_.interface), kv::kCachesFlushedResponse);
}

TEST_F(PluginTest, ANotificationOnTheOwnSaveNotifierReachesSaveUserDataWhateverItsSelector) {
    messages_.notification.notifier = fake::kSaveNotifier;
    test_plugin::Behaviours()["SaveUserData"] = {Reaction::kAnswer, kv::FourCC("SAVD")};
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), kv::FourCC("SAVD"));
    EXPECT_EQ(Dispatch(kKVNotifierCaller, "Anything At All", &messages_.notification), kv::FourCC("SAVD"));
    EXPECT_EQ(test_plugin::Ran(), (Ran{"SaveUserData", "SaveUserData"}));

    messages_.notification.notifier = reinterpret_cast<KVNotifierHandle>(0x07E4);
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), kv::kNoErr);
    EXPECT_EQ(test_plugin::Ran().back(), "Notify");
}

TEST_F(PluginTest, ANotificationRunsInsideTheApplicationContext) {
    const fake::Host& host = fake::TheHost();
    Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification);
    EXPECT_EQ(host.calls, (Ran{"PrepareAppContext 1", "PushAppContext", "PopAppContext"}));
}

TEST_F(PluginTest, TheApplicationContextIsNotEnteredWhenTheHostSaysNo) {
    fake::Host& host = fake::TheHost();
    host.prepareContextResult = kv::FourCC("NOPE");
    Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification);
    EXPECT_EQ(host.calls, Ran{"PrepareAppContext 1"});
    EXPECT_EQ(test_plugin::Ran(), Ran{"Notify"});
}

TEST_F(PluginTest, TheDispatcherTurnsStandardExceptionsIntoCodes) {
    auto& notify = test_plugin::Behaviours()["Notify"];
    notify = {Reaction::kThrowError, kv::FourCC("OOPS")};
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), kv::FourCC("OOPS"));
    notify = {Reaction::kThrowBadAlloc, 0};
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), 0x214D454Du);
    notify = {Reaction::kThrowStandard, 0};
    EXPECT_EQ(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), 0x43414E54u);
}

TEST_F(PluginTest, AThrownIntegerPassesTheDispatcherAndTheContextIsStillLeft) {
    test_plugin::Behaviours()["Notify"] = {Reaction::kThrowInteger, 0};
    EXPECT_THROW(Dispatch(kKVNotifierCaller, kKVNotifySelector, &messages_.notification), int);
    EXPECT_EQ(fake::TheHost().calls.back(), "PopAppContext");
}

TEST_F(PluginTest, TheLockHoldsTheAccessHandleWhileCounted) {
    const fake::Host& host = fake::TheHost();
    EXPECT_EQ(plugin_.LockPlugin(true), kv::kNoErr);
    EXPECT_EQ(plugin_.LockPlugin(true), kv::kNoErr);
    EXPECT_EQ(host.calls, Ran{"AcquirePluginAccess"});
    EXPECT_EQ(plugin_.LockPlugin(false), kv::kNoErr);
    EXPECT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(plugin_.LockPlugin(false), kv::kNoErr);
    EXPECT_EQ(host.calls, (Ran{"AcquirePluginAccess", "ReleasePluginAccess"}));

    // Unlocking below zero stays at zero: the next lock acquires again.
    EXPECT_EQ(plugin_.LockPlugin(false), kv::kNoErr);
    EXPECT_EQ(host.calls.size(), 2u);
    plugin_.LockPlugin(true);
    EXPECT_EQ(host.calls.back(), "AcquirePluginAccess");
    plugin_.LockPlugin(false);
}

TEST_F(PluginTest, EveryDispatchAcquiresTheOptionalImportsNotYetHeld) {
    static const void* required = nullptr;
    static const void* optional = nullptr;
    static const kv::SuiteImportEntry imports[] = {
        {"Test Required Suite", 1, &required},
        {nullptr, kv::kOptionalImports, nullptr},
        {"Test Optional Suite", 1, &optional},
        {nullptr, 0, nullptr},
    };
    // Started again with an import table that has an optional suite.
    plugin_.Shutdown(&messages_.interface);
    test_plugin::Imports() = imports;
    fake::Host& host = fake::ResetHost();
    host.unavailable.insert("Test Optional Suite");
    ASSERT_EQ(plugin_.Startup(&messages_.interface), kv::kNoErr);

    Dispatch("Somebody Else", "Hello", &messages_.interface);
    EXPECT_EQ(optional, nullptr);
    host.unavailable.clear();
    Dispatch("Somebody Else", "Hello", &messages_.interface);
    EXPECT_EQ(host.Held("Test Optional Suite"), 1);
    Dispatch("Somebody Else", "Hello", &messages_.interface);
    EXPECT_EQ(host.acquisitions["Test Optional Suite"], 1);
}

TEST_F(PluginTest, ARebuildAfterReloadStartsTheDerivedFieldsOverAndKeepsThePluginFields) {
    plugin_.derivedField = 99;
    plugin_.SetName("Kept Name");
    plugin_.LockPlugin(true);

    kv::FixupReload(plugin_);

    EXPECT_EQ(plugin_.derivedField, 7);
    EXPECT_STREQ(plugin_.Name(), "Kept Name");
    EXPECT_EQ(plugin_.Self(), fake::kPlugin);
    EXPECT_TRUE(plugin_.IsLoaded());
    EXPECT_EQ(plugin_.SaveUserDataNotifier(), fake::kSaveNotifier);
    // The lock count and the access handle were kept: one unlock releases.
    fake::TheHost().calls.clear();
    plugin_.LockPlugin(false);
    EXPECT_EQ(fake::TheHost().calls, Ran{"ReleasePluginAccess"});
}

TEST(PluginBaseTest, TheBaseIsNamedPluginAndHandlesNoFileFormatRequest) {
    kv::Plugin base(fake::kPlugin);
    EXPECT_STREQ(base.Name(), "Plugin");
    EXPECT_EQ(base.Self(), fake::kPlugin);
    EXPECT_FALSE(base.IsLoaded());
    KVFileFormatMessage request{};
    EXPECT_EQ(base.GetFileFormatParameters(&request), kv::kUnhandledMsgErr);
    EXPECT_EQ(base.SetFileFormatParameters(&request), kv::kUnhandledMsgErr);
    EXPECT_EQ(base.GoFileFormat(&request), kv::kUnhandledMsgErr);
    EXPECT_EQ(base.CheckFileFormat(&request), kv::kUnhandledMsgErr);
    EXPECT_EQ(base.UpdateFileFormat(&request), kv::kUnhandledMsgErr);
    ZPInterfaceMessage interface{};
    KVNotifierMessage notification{};
    EXPECT_EQ(base.StartupPlugin(&interface), kv::kNoErr);
    EXPECT_EQ(base.ShutdownPlugin(&interface), kv::kNoErr);
    EXPECT_EQ(base.UnloadPlugin(&interface), kv::kNoErr);
    EXPECT_EQ(base.ReloadPlugin(&interface), kv::kNoErr);
    EXPECT_EQ(base.SaveUserData(), kv::kNoErr);
    EXPECT_EQ(base.Purge(), kv::kNoErr);
    EXPECT_EQ(base.Notify(&notification), kv::kNoErr);
    EXPECT_EQ(base.SetGlobal(&base), kv::kNoErr);
    EXPECT_EQ(base.AllocateSuiteTables(), kv::kNoErr);
    EXPECT_EQ(base.FillSuiteTables(), kv::kNoErr);
    EXPECT_EQ(base.EmptySuiteTables(), kv::kNoErr);
    EXPECT_EQ(base.FreeSuiteTables(), kv::kNoErr);
    EXPECT_EQ(base.AcquireOptionalSuites(), kv::kNoErr);
}

TEST_F(PluginTest, ANameIsCutTo255Characters) {
    const std::string longName(300, 'n');
    plugin_.SetName(longName.c_str());
    EXPECT_EQ(std::string(plugin_.Name()), std::string(255, 'n'));
}

}  // namespace
