// The real module's life in the emulated host: start-up, shut-down, unload,
// reload and the messages it does not handle.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <KVFileSuites.h>
#include <KVFrameworkSuites.h>
#include <KVHeldSuites.h>
#include <KVStringSuites.h>
#include <KVSwatchSuites.h>
#include <ZPMessages.h>
#include <ZPPluginSuites.h>

#include <map>

#include "ModuleTesting.h"

namespace {

using module_testing::Holdings;
using module_testing::kTintora;
using testing::IsEmpty;

// Acquisitions per suite so far.
std::map<std::string, std::uint64_t> Acquisitions(kelvra::Host& host) {
    std::map<std::string, std::uint64_t> acquired;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) acquired[suite.name] = suite.acquired;
    return acquired;
}

TEST(ModuleLifecycleTest, StartupNamesThePluginRegistersItsNotifierAndShutdownGivesEverythingBack) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    EXPECT_EQ(module.Name(), "Orvik Tintora Core");
    ASSERT_EQ(host.Notifiers().size(), 1u);
    EXPECT_EQ(host.Notifiers()[0].name, "Orvik Tintora Core Save User Data Notifier");
    EXPECT_EQ(host.Notifiers()[0].type, kKVSaveUserDataNotifier);
    EXPECT_NE(module.Globals(), nullptr);
    EXPECT_THAT(Holdings(host), testing::Not(IsEmpty()));

    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_EQ(module.Globals(), nullptr);
    EXPECT_THAT(Holdings(host), IsEmpty());
    EXPECT_THAT(host.Events().All(), IsEmpty());
}

TEST(ModuleLifecycleTest, StartupAcquiresEverySuiteThePluginNeeds) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    std::vector<std::string> held;
    for (const kelvra::SuiteCount& suite : host.SuiteCounts()) {
        if (suite.Held() != 0) held.push_back(suite.name + " " + std::to_string(suite.version));
    }
    EXPECT_THAT(held, testing::UnorderedElementsAre(
                          "ZP Access Suite 3", "ZP Plug-ins Suite 6", "KV Notifier Suite 4", "KV Context Suite 10",
                          "KV Context PrivateSuite 1", "UXK Basic Suite 13", "KV MdMemory Suite 3",
                          "KV Matching Art Suite 7", "KV File Format Suite 16", "KV User Suite 21",
                          "KV Folders Suite 5", "KV Preference Suite 7", "KV Swatch List Suite 7",
                          "KV Swatch Group Suite 4", "KV Custom Color Suite 8", "KV Color Conversion Suite 10",
                          "KV Data Filter Suite 10", "KV Path Style Suite 14", "KV Art Set Suite 9",
                          "KV Art Set Generator Suite 3", "KV File Path Suite 8", "KV Global UnicodeString Suite 1",
                          "KV Counted Object Suite 3", "KV Unicode String Suite 9", "ZP Blocks Suite 2",
                          // through which the plug-in publishes its own suite
                          "ZP Suites Suite 2"));
    module.Shutdown();
}

TEST(ModuleLifecycleTest, ShutdownBeforeAnyStartupAnswers0AndShowsNothing) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(host.Events().All(), IsEmpty());
    EXPECT_THAT(Holdings(host), IsEmpty());
}

TEST(ModuleLifecycleTest, MessagesFromUnknownCallersAndWithUnknownSelectorsAnswer0) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    KVFileFormatMessage record{};
    EXPECT_EQ(module.Send("Unknown Caller", "Anything", record.d), kZPNoErr);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    for (const char* caller : {"Unknown Caller", kZPInterfaceCaller, kZPAccessCaller, kZPCacheCaller,
                               kKVNotifierCaller, kKVFileFormatCaller}) {
        record = {};
        EXPECT_EQ(module.Send(caller, "Unknown Selector", record.d), kZPNoErr) << caller;
    }
    // File-format requests that name none of the plug-in's formats: nothing
    // to do, and a file that is not of its formats (silently).
    for (const char* selector : {kKVGetFileFormatParametersSelector, kKVSetFileFormatParametersSelector,
                                 kKVGoFileFormatSelector, kKVUpdateFileFormatSelector}) {
        record = {};
        EXPECT_EQ(module.Send(kKVFileFormatCaller, selector, record.d), kZPNoErr) << selector;
    }
    record = {};
    EXPECT_EQ(module.Send(kKVFileFormatCaller, kKVCheckFileFormatSelector, record.d), ZP_FOURCC('F', 'M', 'T', '?'));
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(host.Events().All(), IsEmpty());
}

TEST(ModuleLifecycleTest, APurgeThatFlushedNothingAnswers0) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    EXPECT_EQ(module.Purge(), kZPNoErr);
    module.Shutdown();
}

TEST(ModuleLifecycleTest, TheSaveNotificationRunsInsideTheApplicationContext) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    EXPECT_EQ(module.SaveUserData(), kZPNoErr);
    EXPECT_EQ(host.LiveObjects().appContexts, 0u);
    module.Shutdown();
}

TEST(ModuleLifecycleTest, UnloadUnmapsTheCodeAndReloadRebuildsTheSameObject) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    void* object = module.Globals();

    EXPECT_EQ(module.Unload(), kZPNoErr);
    EXPECT_FALSE(module.IsMapped());
    EXPECT_EQ(module.Globals(), object);
    EXPECT_EQ(host.SuitesHeld(), 0u);

    EXPECT_EQ(module.Reload(), kZPNoErr);
    EXPECT_EQ(module.Globals(), object);
    EXPECT_EQ(module.Purge(), kZPNoErr);
    EXPECT_EQ(module.SaveUserData(), kZPNoErr);
    // Reload neither names the plug-in nor registers a notifier again.
    EXPECT_EQ(host.Notifiers().size(), 1u);
    EXPECT_EQ(module.Shutdown(), kZPNoErr);
    EXPECT_THAT(Holdings(host), IsEmpty());
}

TEST(ModuleLifecycleTest, EveryStartupInOneLoadAcquiresTheSameSuites) {
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    ASSERT_EQ(module.Startup(), kZPNoErr);
    ASSERT_EQ(module.Shutdown(), kZPNoErr);
    const auto first = Acquisitions(host);
    for (int cycle = 0; cycle < 3; ++cycle) {
        ASSERT_EQ(module.Startup(), kZPNoErr);
        ASSERT_EQ(module.Shutdown(), kZPNoErr);
    }
    for (const auto& [name, count] : Acquisitions(host)) EXPECT_EQ(count, 4 * first.at(name)) << name;
    EXPECT_THAT(Holdings(host), IsEmpty());
}

TEST(ModuleLifecycleTest, AStartupWithoutARequiredSuiteFailsSilentlyAndTheNextOneStartsAfresh) {
    const char* required[] = {
        kZPAccessSuite,       kZPPluginsSuite,       kKVNotifierSuite,         kKVContextSuite,
        kKVContextPrivateSuite, kUXKBasicSuite,      kKVMdMemorySuite,         kKVMatchingArtSuite,
        kKVFileFormatSuite,   kKVUserSuite,          kKVFoldersSuite,          kKVPreferenceSuite,
        kKVSwatchListSuite,   kKVSwatchGroupSuite,   kKVCustomColorSuite,      kKVColorConversionSuite,
        kKVDataFilterSuite,   kKVPathStyleSuite,     kKVArtSetSuite,           kKVArtSetGeneratorSuite,
        kKVFilePathSuite,     kKVGlobalUnicodeStringSuite, kKVCountedObjectSuite, kKVUnicodeStringSuite,
        kZPBlocksSuite,
    };
    kelvra::Host host;
    kelvra::Module& module = host.Load(kTintora);
    for (const char* suite : required) {
        host.Faults().MakeSuiteUnavailable(suite);
        EXPECT_EQ(module.Startup(), kZPSuiteNotFoundErr) << suite;
        EXPECT_EQ(module.Globals(), nullptr) << suite;
        EXPECT_THAT(Holdings(host), IsEmpty()) << suite;
        host.Faults().Clear();
        ASSERT_EQ(module.Startup(), kZPNoErr) << suite;
        ASSERT_EQ(module.Shutdown(), kZPNoErr) << suite;
    }
    EXPECT_THAT(host.Events().All(), IsEmpty());
}

}  // namespace
