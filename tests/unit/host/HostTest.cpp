// The host's suites as another plug-in sees them. Suites that take a
// plug-in reference get the one of a loaded (not started) test module.
#include "HostTesting.h"

#include <KVFileSuites.h>
#include <KVFrameworkSuites.h>
#include <KVStringSuites.h>
#include <ZPPluginSuites.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using kelvra::testing::Acquire;

class HostTest : public ::testing::Test {
protected:
    kelvra::Host host;
    const ZPBasicSuite* basic = host.BasicSuite();

    KVUnicodeStringRef String(const char* text) {
        const auto* strings = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9);
        KVUnicodeStringRef string = nullptr;
        strings->NewFromPlatformText(text, &string);
        return string;
    }
};

TEST_F(HostTest, OnlyOneHostAtATime) { EXPECT_THROW(kelvra::Host(), kelvra::HostError); }

TEST_F(HostTest, AnUnknownSuiteNameOrVersionIsNotFound) {
    const void* suite = &basic;
    EXPECT_EQ(basic->AcquireSuite("KV No Such Suite", 1, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(suite, nullptr);
    suite = &basic;
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, 20, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(suite, nullptr);
    EXPECT_EQ(basic->AcquireSuite(nullptr, 1, &suite), kZPBadParameterErr);
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, 21, nullptr), kZPBadParameterErr);
}

TEST_F(HostTest, EverySuiteTheModuleAcquiresIsThere) {
    const std::pair<const char*, std::int32_t> suites[] = {
        {"ZP Access Suite", 3}, {"ZP Plug-ins Suite", 6}, {"KV Notifier Suite", 4}, {"KV Context Suite", 10},
        {"KV Context PrivateSuite", 1}, {"UXK Basic Suite", 13}, {"KV MdMemory Suite", 3},
        {"KV Matching Art Suite", 7}, {"KV File Format Suite", 16}, {"KV User Suite", 21},
        {"KV Folders Suite", 5}, {"KV Preference Suite", 7}, {"KV Swatch List Suite", 7},
        {"KV Swatch Group Suite", 4}, {"KV Custom Color Suite", 8}, {"KV Color Conversion Suite", 10},
        {"KV Data Filter Suite", 10}, {"KV Path Style Suite", 14}, {"KV Art Set Suite", 9},
        {"KV Art Set Generator Suite", 3}, {"KV File Path Suite", 8}, {"KV Global UnicodeString Suite", 1},
        {"KV Counted Object Suite", 3}, {"KV Unicode String Suite", 9}, {"ZP Blocks Suite", 2},
        {"ZP Suites Suite", 2}, {"KV Swatch Libraries Suite", 8}, {"KV Art Suite", 21},
        {"KV OrvikPIP Suite", 1}, {"KV ThreadPool Suite", 1}, {"KV User Private Suite", 1},
        {"KV OrvikBeacon Suite", 1}, {"Lexo Host Init Suite", 1},
    };
    for (const auto& [name, version] : suites) {
        const void* suite = nullptr;
        EXPECT_EQ(basic->AcquireSuite(name, version, &suite), 0u) << name;
        EXPECT_NE(suite, nullptr) << name;
        EXPECT_EQ(basic->ReleaseSuite(name, version), 0u) << name;
    }
    EXPECT_EQ(host.SuitesHeld(), 0u);
}

TEST_F(HostTest, FunctionsOfLaterWorkAnswerNotYetAvailable) {
    const auto* libraries = Acquire<KVSwatchLibrariesSuite>(host, kKVSwatchLibrariesSuite, 8);
    EXPECT_EQ(libraries->HandleSwatchLibraryFile(nullptr), ZP_FOURCC('!', 'I', 'M', 'P'));
}

TEST_F(HostTest, CountsAcquisitionsAndReleases) {
    Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    EXPECT_EQ(basic->ReleaseSuite(kKVUserSuite, 21), 0u);
    ASSERT_EQ(host.SuiteCounts().size(), 1u);
    EXPECT_EQ(host.SuiteCounts()[0].acquired, 2u);
    EXPECT_EQ(host.SuiteCounts()[0].released, 1u);
    EXPECT_EQ(host.SuitesHeld(), 1u);
}

TEST_F(HostTest, AnUnavailableSuiteCannotBeAcquired) {
    host.Faults().MakeSuiteUnavailable(kKVUserSuite, 21);
    const void* suite = &basic;
    EXPECT_EQ(basic->AcquireSuite(kKVUserSuite, 21, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(suite, nullptr);
    EXPECT_TRUE(host.SuiteCounts().empty());
}

TEST_F(HostTest, APublishedSuiteCanBeAcquiredByOthers) {
    const auto* suites = Acquire<ZPSuitesSuite>(host, kZPSuitesSuite, 2);
    static const int procs[2] = {1, 2};
    ZPSuiteRef published = nullptr;
    ASSERT_EQ(suites->AddSuite(nullptr, nullptr, "KV Test Suite", 1, 1, procs, &published), 0u);
    EXPECT_NE(published, nullptr);
    const void* suite = nullptr;
    EXPECT_EQ(basic->AcquireSuite("KV Test Suite", 1, &suite), 0u);
    EXPECT_EQ(suite, procs);
    EXPECT_EQ(suites->AddSuite(nullptr, nullptr, "KV Test Suite", 1, 1, procs, &published), kZPBadParameterErr);
}

TEST_F(HostTest, BlocksAreCountedWithTheirDebugNames) {
    const auto* blocks = Acquire<ZPBlocksSuite>(host, kZPBlocksSuite, 2);
    void* a = nullptr;
    void* b = nullptr;
    ASSERT_EQ(blocks->AllocateBlock(16, "kv::ZPAlloc::AllocateBlock", &a), 0u);
    ASSERT_EQ(blocks->AllocateBlock(0, nullptr, &b), 0u);
    EXPECT_EQ(host.LiveBlocks().blocks, 2u);
    EXPECT_EQ(blocks->FreeBlock(b), 0u);
    EXPECT_EQ(host.LiveBlocks().blockNames, std::vector<std::string>{"kv::ZPAlloc::AllocateBlock"});
    EXPECT_EQ(blocks->FreeBlock(b), kZPBadParameterErr);
    EXPECT_EQ(host.LiveBlocks().badFrees, 1u);
    EXPECT_EQ(host.LiveBlocks().basic, 0u);  // counted apart from libZPBasic
}

TEST_F(HostTest, QuestionsAreAnsweredByTheHostsPolicy) {
    const auto* user = Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    ZPBoolean yes = 0;
    EXPECT_EQ(user->QuestionAlert(String("First?"), &yes), 0u);
    EXPECT_EQ(yes, 1);
    host.AnswerQuestions(false);
    EXPECT_EQ(user->QuestionAlert(String("Second?"), &yes), 0u);
    EXPECT_EQ(yes, 0);
    std::string asked;
    host.AnswerQuestions([&](const std::string& question) {
        asked = question;
        return true;
    });
    EXPECT_EQ(user->QuestionAlert(String("$$$/Q=Third?"), &yes), 0u);
    EXPECT_EQ(yes, 1);
    EXPECT_EQ(asked, "Third?");
    const auto& events = host.Events().All();
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(kelvra::ReadableLine(events[0]), "question: First? -> yes");
    EXPECT_EQ(kelvra::ReadableLine(events[1]), "question: Second? -> no");
    EXPECT_EQ(events[2].key, "$$$/Q=Third?");
    EXPECT_EQ(user->QuestionAlert(nullptr, &yes), kZPBadParameterErr);
}

bool DeclineEveryQuestion(const std::string&) { return false; }

TEST_F(HostTest, AFunctionGivenAsPolicyIsAskedNotTakenForYes) {
    const auto* user = Acquire<KVUserSuite>(host, kKVUserSuite, 21);
    host.AnswerQuestions(DeclineEveryQuestion);
    ZPBoolean yes = 1;
    EXPECT_EQ(user->QuestionAlert(String("Continue?"), &yes), 0u);
    EXPECT_EQ(yes, 0);
}

TEST_F(HostTest, MoreInfoDialogsRecordMessageHelpKeyAndNumber) {
    const auto* dialogs = Acquire<KVUserPrivateSuite>(host, kKVUserPrivateSuite, 1);
    const auto* global = Acquire<KVGlobalUnicodeStringSuite>(host, kKVGlobalUnicodeStringSuite, 1);
    KVUnicodeStringRef message = nullptr;
    KVUnicodeStringRef help = nullptr;
    global->NewGlobalString("$$$/UIString/Str/Unknown=An unknown error occurred.", &message);
    global->NewGlobalString("$$$/Kelvra/app/UnknownErrorMessage/OnClickURL", &help);
    ASSERT_EQ(dialogs->ErrorDialogWithMoreInfo(message, help, 2102), 0u);
    ASSERT_EQ(host.Events().All().size(), 1u);
    const kelvra::Event& event = host.Events().All()[0];
    EXPECT_EQ(event.kind, kelvra::Event::Kind::MoreInfo);
    EXPECT_EQ(event.text, "An unknown error occurred.");
    EXPECT_EQ(event.key, "$$$/UIString/Str/Unknown=An unknown error occurred.");
    EXPECT_EQ(event.helpKey, "$$$/Kelvra/app/UnknownErrorMessage/OnClickURL");
    EXPECT_EQ(event.number, 2102);
}

TEST_F(HostTest, UsageEventsAreRecorded) {
    const auto* pip = Acquire<KVOrvikPIPSuite>(host, kKVOrvikPIPSuite, 1);
    EXPECT_EQ(pip->LogUsageEvent("Error Dialog with More Info Button", "kCantHappenErr", nullptr), 0u);
    EXPECT_EQ(pip->LogUsageEvent("c", "e", "TintoraPlugin"), 0u);
    EXPECT_EQ(pip->LogUsageEvent(nullptr, "e", nullptr), kZPBadParameterErr);
    ASSERT_EQ(host.Events().All().size(), 2u);
    EXPECT_FALSE(host.Events().All()[0].hasDetail);
    EXPECT_EQ(host.Events().All()[1].detail, "TintoraPlugin");
}

TEST_F(HostTest, WhetherDialogsMayBeShownIsSettable) {
    const auto* threads = Acquire<KVThreadPoolSuite>(host, kKVThreadPoolSuite, 1);
    EXPECT_EQ(threads->CanShowModalDialog(), 1);
    host.SetCanShowDialogs(false);
    EXPECT_EQ(threads->CanShowModalDialog(), 0);
}

TEST_F(HostTest, TheHostsStringList257IsATableTestsSet) {
    const auto* init = Acquire<LexoHostInitSuite>(host, kLexoHostInitSuite, 1);
    const auto* uxk = Acquire<UXKBasicSuite>(host, kUXKBasicSuite, 13);
    KVResourceOwner owner = nullptr;
    ASSERT_EQ(init->GetHostResourceOwner(&owner), 0u);
    char buffer[8] = "junk";
    EXPECT_EQ(uxk->GetIndexedString(owner, 257, 500, buffer, sizeof buffer), kZPBadParameterErr);
    EXPECT_STREQ(buffer, "");
    host.HostStrings().Set(500, "Disk full, really");
    EXPECT_EQ(uxk->GetIndexedString(owner, 257, 500, buffer, sizeof buffer), 0u);
    EXPECT_STREQ(buffer, "Disk fu");  // cut to the buffer
    EXPECT_EQ(uxk->GetIndexedString(owner, 16050, 1, buffer, sizeof buffer), kZPBadParameterErr);
    EXPECT_EQ(uxk->GetIndexedString(owner, 257, 500, nullptr, 8), kZPBadParameterErr);
}

TEST_F(HostTest, TheNthCallFailsWithTheConfiguredCode) {
    const auto* uxk = Acquire<UXKBasicSuite>(host, kUXKBasicSuite, 13);
    const auto* threads = Acquire<KVThreadPoolSuite>(host, kKVThreadPoolSuite, 1);
    host.Faults().FailCall({"", "", 2, false, ZP_FOURCC('B', 'O', 'O', 'M')});
    char buffer[8];
    EXPECT_EQ(uxk->GetIndexedString(nullptr, 1, 1, buffer, 8), kZPBadParameterErr);  // call 1 runs
    EXPECT_EQ(uxk->GetIndexedString(nullptr, 1, 1, buffer, 8), ZP_FOURCC('B', 'O', 'O', 'M'));
    host.Faults().FailCall({kKVThreadPoolSuite, "CanShowModalDialog", 1, true, 0});
    EXPECT_EQ(threads->CanShowModalDialog(), 0);  // a failure is its "no"
    EXPECT_EQ(threads->CanShowModalDialog(), 0);
    // The two acquisitions count too.
    EXPECT_EQ(host.Faults().TotalCalls(), 6u);
}

class HostWithModuleTest : public HostTest {
protected:
    kelvra::Module& module = host.Load(WELL_BEHAVED_MODULE);
    ZPPluginRef plugin = module.Ref();
};

TEST_F(HostWithModuleTest, ModulesReadTheirOwnStringLists) {
    const auto* uxk = Acquire<UXKBasicSuite>(host, kUXKBasicSuite, 13);
    const auto owner = reinterpret_cast<KVResourceOwner>(plugin);
    char buffer[32];
    EXPECT_EQ(uxk->GetIndexedString(owner, 16050, 1, buffer, sizeof buffer), 0u);
    EXPECT_STREQ(buffer, "Test");
    EXPECT_EQ(uxk->GetIndexedString(owner, 16050, 2, buffer, sizeof buffer), kZPBadParameterErr);
    EXPECT_EQ(uxk->GetIndexedString(owner, 16050, 0, buffer, sizeof buffer), kZPBadParameterErr);
    EXPECT_EQ(uxk->GetIndexedString(owner, 16051, 1, buffer, sizeof buffer), kZPBadParameterErr);
}

TEST_F(HostWithModuleTest, SetPluginNameRenamesTheModule) {
    const auto* plugins = Acquire<ZPPluginsSuite>(host, kZPPluginsSuite, 6);
    EXPECT_EQ(module.Name(), "TestModule");
    EXPECT_EQ(plugins->SetPluginName(plugin, "Shown Name"), 0u);
    EXPECT_EQ(module.Name(), "Shown Name");
    EXPECT_EQ(plugins->SetPluginName(reinterpret_cast<ZPPluginRef>(&host), "x"), kZPBadParameterErr);
    EXPECT_EQ(plugins->reserved0to22[0](), kZPReservedSlotErr);
}

TEST_F(HostWithModuleTest, ContextsAndAccessesMustBeGivenBack) {
    const auto* context = Acquire<KVContextSuite>(host, kKVContextSuite, 10);
    const auto* access = Acquire<ZPAccessSuite>(host, kZPAccessSuite, 3);
    KVAppContextHandle token = nullptr;
    EXPECT_EQ(context->PrepareAppContext(&token, plugin, 1), 0u);
    EXPECT_EQ(context->PushAppContext(plugin, &token), 0u);
    ZPAccessRef handle = nullptr;
    EXPECT_EQ(access->AcquirePluginAccess(plugin, &handle), 0u);
    EXPECT_EQ(host.LiveObjects().appContexts, 1u);
    EXPECT_EQ(host.LiveObjects().accesses, 1u);
    EXPECT_EQ(context->PopAppContext(token), 0u);
    EXPECT_EQ(context->PopAppContext(token), kZPBadParameterErr);
    EXPECT_EQ(access->ReleasePluginAccess(handle), 0u);
    EXPECT_EQ(host.LiveObjects().appContexts, 0u);
    EXPECT_EQ(host.LiveObjects().accesses, 0u);
}

TEST_F(HostWithModuleTest, FileFormatRegistrationsAreRecorded) {
    const auto* formats = Acquire<KVFileFormatSuite>(host, kKVFileFormatSuite, 16);
    const KVFileFormatDescription description = {ZP_FOURCC('O', 'S', 'E', 'F'), String("$$$/T=Swatch Exchange"), 0,
                                                 "ose"};
    KVFileFormatHandle handle = nullptr;
    ASSERT_EQ(formats->AddFileFormat(plugin, "Orvik Swatch Exchange Reader", &description, 0x13, &handle), 0u);
    const std::vector<kelvra::FileFormatRecord> records = host.FileFormats();
    ASSERT_EQ(records.size(), 1u);
    const kelvra::FileFormatRecord& record = records[0];
    EXPECT_EQ(record.handle, handle);
    EXPECT_EQ(record.owner, &module);
    EXPECT_EQ(record.name, "Orvik Swatch Exchange Reader");
    EXPECT_EQ(record.title, "Swatch Exchange");
    EXPECT_EQ(record.extension, "ose");
    EXPECT_EQ(record.type, ZP_FOURCC('O', 'S', 'E', 'F'));
    EXPECT_EQ(record.options, 0x13);
    EXPECT_EQ(formats->AddFileFormat(plugin, "x", nullptr, 0, &handle), kZPBadParameterErr);
}

TEST_F(HostWithModuleTest, NotifiersAreRegisteredForTheirOwner) {
    const auto* notifiers = Acquire<KVNotifierSuite>(host, kKVNotifierSuite, 4);
    KVNotifierHandle handle = nullptr;
    ASSERT_EQ(notifiers->AddNotifier(plugin, "n", kKVSaveUserDataNotifier, &handle), 0u);
    ASSERT_EQ(host.Notifiers().size(), 1u);
    EXPECT_EQ(host.Notifiers()[0].handle, handle);
    EXPECT_EQ(host.Notifiers()[0].owner, &module);
    EXPECT_EQ(host.Notifiers()[0].type, kKVSaveUserDataNotifier);
    EXPECT_EQ(notifiers->AddNotifier(nullptr, "n", "t", &handle), kZPBadParameterErr);
    EXPECT_EQ(handle, nullptr);
}

TEST_F(HostWithModuleTest, PublishedSuitesAreListedWithTheSizeOfATableTheHostAllocated) {
    const auto* suites = Acquire<ZPSuitesSuite>(host, kZPSuitesSuite, 2);
    const auto* blocks = Acquire<ZPBlocksSuite>(host, kZPBlocksSuite, 2);
    void* table = nullptr;
    ASSERT_EQ(blocks->AllocateBlock(24, "KV Test Suite", &table), 0u);
    static const int staticTable[2] = {1, 2};
    ZPSuiteRef published = nullptr;
    ASSERT_EQ(suites->AddSuite(nullptr, plugin, "KV Test Suite", 3, 1, table, &published), 0u);
    ASSERT_EQ(suites->AddSuite(nullptr, plugin, "KV Other Suite", 1, 1, staticTable, &published), 0u);
    ASSERT_EQ(suites->AddSuite(nullptr, nullptr, "KV Test Only", 1, 1, staticTable, &published), 0u);
    const std::vector<kelvra::PublishedSuite> listed = host.PublishedSuites();
    ASSERT_EQ(listed.size(), 2u);  // not the one a test published without a plug-in
    EXPECT_EQ(listed[0].name, "KV Other Suite");
    EXPECT_EQ(listed[0].version, 1);
    EXPECT_EQ(listed[0].table, staticTable);
    EXPECT_FALSE(listed[0].tableSize.has_value());
    EXPECT_EQ(listed[1].name, "KV Test Suite");
    EXPECT_EQ(listed[1].version, 3);
    EXPECT_EQ(listed[1].publisher, &module);
    EXPECT_EQ(listed[1].table, table);
    EXPECT_EQ(listed[1].tableSize, 24u);
    EXPECT_EQ(module.Shutdown(), 0u);  // never started: it holds nothing, and its suites are withdrawn
    EXPECT_TRUE(host.PublishedSuites().empty());
    EXPECT_EQ(host.LiveBlocks().blocks, 0u);  // the host freed the table it allocated
}

}  // namespace
