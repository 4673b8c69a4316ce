#include "HostTesting.h"

#include <KVFrameworkSuites.h>
#include <ZPPluginSuites.h>

#include <gtest/gtest.h>

namespace {

std::string Refusal(kelvra::Host& host, const char* path) {
    try {
        host.Load(path);
    } catch (const kelvra::HostError& error) {
        return error.what();
    }
    return "loaded";
}

std::uint64_t Calls(kelvra::Host& host, const char* suite, const char* function) {
    const auto& calls = host.Faults().Calls();
    auto found = calls.find({suite, function});
    return found == calls.end() ? 0 : found->second;
}

TEST(ModuleTest, AFileWithAWrongPropertyListIsRefused) {
    kelvra::Host host;
    EXPECT_EQ(Refusal(host, BAD_PROPERTY_LIST_MODULE),
              std::string(BAD_PROPERTY_LIST_MODULE) + ": property list: property 2 (ivrs): interface version 3, expected 2");
    EXPECT_EQ(Refusal(host, NO_PROPERTY_LIST_MODULE),
              std::string(NO_PROPERTY_LIST_MODULE) + ": no property list (section .kvres.PIPL.PLUGIN)");
    EXPECT_NE(Refusal(host, "/nonexistent/Module.so").find("cannot open"), std::string::npos);
}

TEST(ModuleTest, LoadingReadsThePropertyListAndStringLists) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    EXPECT_TRUE(module.IsLoaded());
    EXPECT_TRUE(module.IsMapped());
    EXPECT_EQ(module.File().properties.pluginName, "TestModule");
    EXPECT_EQ(module.File().properties.entryName, "main");
    EXPECT_EQ(module.File().stringLists.at(16050), kelvra::StringList{"Test"});
    EXPECT_EQ(module.File().exportedSymbols, std::vector<std::string>{"main"});
}

TEST(ModuleTest, TheGlobalsSlotIsKeptBetweenMessages) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    EXPECT_EQ(module.Globals(), nullptr);
    ASSERT_EQ(module.Startup(), 0u);
    void* globals = module.Globals();
    EXPECT_NE(globals, nullptr);
    EXPECT_EQ(module.Purge(), kZPCachesFlushedResponse);
    EXPECT_EQ(module.Globals(), globals);
    EXPECT_EQ(module.Shutdown(), 0u);
    EXPECT_EQ(module.Globals(), nullptr);
    ASSERT_EQ(host.Messages().size(), 3u);
    EXPECT_EQ(host.Messages()[1].caller, "ZP Cache");
    EXPECT_EQ(host.Messages()[1].selector, "Plug-in Purge");
    EXPECT_EQ(host.Messages()[1].result, kZPCachesFlushedResponse);
    EXPECT_EQ(host.Messages()[1].module, "Test Module");
}

TEST(ModuleTest, UnloadReallyUnmapsAndReloadSendsTheKeptGlobals) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    ASSERT_EQ(module.Startup(), 0u);
    void* globals = module.Globals();
    EXPECT_EQ(module.Unload(), 0u);
    EXPECT_FALSE(module.IsLoaded());
    EXPECT_FALSE(module.IsMapped());
    EXPECT_EQ(host.SuitesHeld(), 0u);  // the test module releases its suites on unload
    EXPECT_THROW(module.Purge(), kelvra::HostError);
    EXPECT_EQ(module.Reload(), 0u);
    EXPECT_TRUE(module.IsMapped());
    EXPECT_EQ(module.Globals(), globals);
    EXPECT_GT(host.SuitesHeld(), 0u);
    EXPECT_THROW(module.Reload(), kelvra::HostError);
    EXPECT_EQ(module.Shutdown(), 0u);
    EXPECT_EQ(host.SuitesHeld(), 0u);
}

TEST(ModuleTest, SaveUserDataNotifiesTheModulesSaveNotifier) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    EXPECT_FALSE(module.HasSaveUserDataNotifier());
    EXPECT_THROW(module.SaveUserData(), kelvra::HostError);  // not started: no notifier
    ASSERT_EQ(module.Startup(), 0u);
    EXPECT_TRUE(module.HasSaveUserDataNotifier());
    ASSERT_EQ(host.Notifiers().size(), 1u);
    EXPECT_EQ(host.Notifiers()[0].name, "Test Module Save User Data Notifier");
    EXPECT_EQ(module.SaveUserData(), 0u);
    EXPECT_EQ(Calls(host, kKVContextSuite, "PushAppContext"), 1u);
    EXPECT_EQ(host.Notify(host.Notifiers()[0].handle), 0u);
    EXPECT_EQ(Calls(host, kKVContextSuite, "PushAppContext"), 2u);
    EXPECT_EQ(host.LiveObjects().appContexts, 0u);
    EXPECT_EQ(host.Messages().back().caller, "KV Notifier");
    EXPECT_EQ(host.Messages().back().selector, "KV Notify");
    EXPECT_THROW(host.Notify(reinterpret_cast<KVNotifierHandle>(&host)), kelvra::HostError);
}

TEST(ModuleTest, ShutDownWithdrawsTheModulesRegistrations) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    ASSERT_EQ(module.Startup(), 0u);
    EXPECT_EQ(host.Notifiers().size(), 1u);
    ASSERT_EQ(module.Shutdown(), 0u);
    EXPECT_TRUE(host.Notifiers().empty());
    EXPECT_EQ(host.LiveBlocks().basic, 0u);
    EXPECT_EQ(host.LiveBlocks().blocks, 0u);
}

TEST(ModuleTest, AStartUpWithoutARequiredSuiteFails) {
    kelvra::Host host;
    host.Faults().MakeSuiteUnavailable(kKVContextSuite);
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    EXPECT_EQ(module.Startup(), kZPSuiteNotFoundErr);
    EXPECT_EQ(module.Globals(), nullptr);
    EXPECT_EQ(host.SuitesHeld(), 0u);
    EXPECT_EQ(host.LiveBlocks().basic, 0u);
}

TEST(ModuleTest, TheNthBlockAllocationFails) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    host.Faults().FailBlockAllocation(1);
    EXPECT_EQ(module.Startup(), kZPOutOfMemoryErr);  // the module's state is its first block
    EXPECT_EQ(module.Startup(), 0u);                 // once only
    EXPECT_EQ(module.Shutdown(), 0u);
}

TEST(ModuleTest, AHostCallFailureReachesTheModule) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    host.Faults().FailCall({kZPBlocksSuite, "AllocateBlock", 1, false, kZPOutOfMemoryErr});
    EXPECT_EQ(module.Startup(), kZPOutOfMemoryErr);
    EXPECT_EQ(host.SuitesHeld(), 0u);
    EXPECT_EQ(host.LiveBlocks().basic, 0u);
}

}  // namespace
