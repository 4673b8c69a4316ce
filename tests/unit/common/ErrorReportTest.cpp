// The error report against a fake host; the texts of the real string list
// are shown through the module in the integration tests.
#include "ErrorReport.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "EntryBasicSuite.h"
#include "FakeHost.h"
#include "KVFrameworkSuites.h"
#include "KVStringSuites.h"
#include "SuiteNode.h"
#include "TestClock.h"
#include "TestMessages.h"
#include "TestPlugin.h"

namespace {

using Ran = std::vector<std::string>;

const void* const kOwner = fake::kPlugin;

class ErrorReportTest : public testing::Test {
protected:
    void SetUp() override {
        fake::Host& host = fake::ResetHost();
        host.strings[{kOwner, 16050, 1}] = "-108";
        host.strings[{kOwner, 16050, 2}] = "$$$/Test/Memory=Not enough memory.";
        host.strings[{kOwner, 16050, 3}] = "DOC?";
        host.strings[{kOwner, 16050, 4}] = "$$$/Test/OpenDoc=No open document. %s";
        host.strings[{kOwner, 16050, 5}] = "<Others>";
        host.strings[{kOwner, 16050, 6}] = "$$$/Test/Unknown=Unknown error.   [%s] ";
        kv::KeepEntryBasicSuite(fake::BasicSuite());
        kv::OfferSuiteListBasicSuite(fake::BasicSuite());
    }
    void TearDown() override { kv::ReleaseAllSuites(); }

    static Ran Shown() {
        Ran shown = fake::TheHost().CallsStartingWith("ErrorAlert ");
        for (const std::string& dialog : fake::TheHost().CallsStartingWith("ErrorDialogWithMoreInfo ")) {
            shown.push_back(dialog);
        }
        return shown;
    }
};

TEST_F(ErrorReportTest, CodeZeroAndEverySilentCodeShowNothing) {
    const kv::ResultCode silent[] = {
        0,              kv::FourCC("FMT?"), kv::FourCC("RFSE"), kv::FourCC("AFTR"), kv::FourCC("VALD"),
        kv::FourCC("MOOT"), kv::FourCC("TRSH"), kv::FourCC("CHEK"), kv::FourCC("CHIT"), kv::FourCC("TLTK"),
        kv::FourCC("pFls"), kv::FourCC("S!Fd"), kv::FourCC("!Acq"), kv::FourCC("Bchn"), kv::FourCC("dsRP"),
        kv::FourCC("skpE"), kv::FourCC("DONE"), kv::FourCC("ASTR"), 2139,               kv::FourCC("STOP"),
        kv::FourCC("CLP?"), 361,
    };
    for (kv::ResultCode code : silent) kv::ReportErrorToUser(fake::kPlugin, code, "Test Plugin");
    EXPECT_TRUE(fake::TheHost().calls.empty());
}

TEST_F(ErrorReportTest, AMatchingEntryIsShownAsItStands) {
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, "Test Plugin");
    EXPECT_EQ(Shown(), Ran{"ErrorAlert No open document. %s"});
}

TEST_F(ErrorReportTest, ANegativeDecimalEntryMatchesItsCode) {
    kv::ReportErrorToUser(fake::kPlugin, static_cast<kv::ResultCode>(-108), "Test Plugin");
    EXPECT_EQ(Shown(), Ran{"ErrorAlert Not enough memory."});
}

TEST_F(ErrorReportTest, TheFallbackReceivesTheCodeAsFourCharactersOrAsADecimalNumber) {
    kv::ReportErrorToUser(fake::kPlugin, 0x41424344, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, 5000, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, 16384, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, 0x80000000u, nullptr);
    EXPECT_EQ(Shown(), (Ran{"ErrorAlert Unknown error.   [ABCD] ", "ErrorAlert Unknown error.   [5000] ",
                            "ErrorAlert Unknown error.   [16384] ", "ErrorAlert Unknown error.   [-2147483648] "}));
}

TEST_F(ErrorReportTest, OnlyAFallbackShorterThan120CharactersIsFormatted) {
    const std::string message120 = "$$$/T=" + std::string(109, 'x') + " [%s]";
    ASSERT_EQ(message120.size(), 120u);
    fake::TheHost().strings[{kOwner, 16050, 6}] = message120;
    kv::ReportErrorToUser(fake::kPlugin, 0x41424344, nullptr);

    const std::string message119 = "$$$/T=" + std::string(108, 'y') + " [%s]";
    fake::TheHost().strings[{kOwner, 16050, 6}] = message119;
    kv::ReportErrorToUser(fake::kPlugin, 0x41424344, nullptr);

    EXPECT_EQ(Shown(), (Ran{"ErrorAlert " + std::string(109, 'x') + " [%s]",
                            "ErrorAlert " + std::string(108, 'y') + " [ABCD]"}));
}

TEST_F(ErrorReportTest, TheHostsOwnListReplacesTheMessageForCodes10To899) {
    fake::Host& host = fake::TheHost();
    host.strings[{fake::kHostOwner, 257, 500}] = "The host says 500: %s";
    host.strings[{fake::kHostOwner, 257, 10}] = "The host says 10";
    host.strings[{fake::kHostOwner, 257, 899}] = "The host says 899";
    host.strings[{fake::kHostOwner, 257, 900}] = "never";
    host.strings[{fake::kHostOwner, 257, 9}] = "never";
    for (kv::ResultCode code : {500u, 10u, 899u, 900u, 9u, 501u}) kv::ReportErrorToUser(fake::kPlugin, code, nullptr);
    EXPECT_EQ(Shown(), (Ran{"ErrorAlert The host says 500: %s", "ErrorAlert The host says 10",
                            "ErrorAlert The host says 899", "ErrorAlert Unknown error.   [900] ",
                            "ErrorAlert Unknown error.   [9] ", "ErrorAlert Unknown error.   [501] "}));
    EXPECT_EQ(host.Held(kLexoHostInitSuite), 0);
    EXPECT_EQ(host.acquisitions[kLexoHostInitSuite], 4);
}

TEST_F(ErrorReportTest, WithoutAnyEntryNothingIsShown) {
    fake::TheHost().strings.clear();
    kv::ReportErrorToUser(fake::kPlugin, 0x41424344, nullptr);
    EXPECT_TRUE(Shown().empty());
}

TEST_F(ErrorReportTest, AListThatNeverEndsEndsTheSearchAndShowsNothing) {
    fake::TheHost().endlessStrings = true;
    kv::ReportErrorToUser(fake::kPlugin, 0x41424344, nullptr);
    EXPECT_TRUE(Shown().empty());
}

TEST_F(ErrorReportTest, OutOfMemoryShowsItsMoreInfoDialogNeverTheList) {
    kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, "Test Plugin");
    EXPECT_EQ(Shown(), Ran{"ErrorDialogWithMoreInfo 2103 We've hit a roadblock! There isn't enough available memory "
                           "(RAM).\nTry to update Kelvra and your graphics card to the latest version and restart "
                           "your computer.\nStill no luck? Submit the crash report. | "
                           "$$$/Kelvra/app/RAMError/RAMErrorDialog/MoreInfoButton/OnClickURL"});
    EXPECT_TRUE(fake::TheHost().CallsStartingWith("GetIndexedString").empty());
}

TEST_F(ErrorReportTest, CantHappenRecordsTheUsageEventAndShowsItsMoreInfoDialog) {
    kv::ReportErrorToUser(fake::kPlugin, kv::kCantHappenErr, "Test Plugin");
    EXPECT_EQ(fake::TheHost().CallsStartingWith("LogUsageEvent"),
              Ran{"LogUsageEvent Error Dialog with More Info Button / kCantHappenErr / Test Plugin"});
    EXPECT_EQ(Shown(), Ran{"ErrorDialogWithMoreInfo 2102 An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and "
                           "try some of the solutions to fix the issue. | "
                           "$$$/Kelvra/app/UnknownErrorMessage/UnknownErrorMessageDialog/MoreInfoButton/OnClickURL"});

    fake::TheHost().calls.clear();
    kv::ReportErrorToUser(fake::kPlugin, kv::kCantHappenErr, nullptr);
    EXPECT_EQ(fake::TheHost().CallsStartingWith("LogUsageEvent"),
              Ran{"LogUsageEvent Error Dialog with More Info Button / kCantHappenErr / (none)"});
}

TEST_F(ErrorReportTest, TheDialogsGlobalStringsAreMadeOnce) {
    kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, nullptr);
    fake::TheHost().calls.clear();
    kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, nullptr);
    EXPECT_TRUE(fake::TheHost().CallsStartingWith("NewGlobalString").empty());
    EXPECT_EQ(fake::TheHost().CallsStartingWith("ErrorDialogWithMoreInfo 2103").size(), 1u);
}

TEST_F(ErrorReportTest, NothingIsShownWhenTheHostAllowsNoDialog) {
    fake::TheHost().canShowDialog = false;
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, kv::kCantHappenErr, nullptr);
    EXPECT_TRUE(Shown().empty());
    EXPECT_EQ(fake::TheHost().CallsStartingWith("CanShowModalDialog").size(), 3u);
    EXPECT_EQ(fake::TheHost().CallsStartingWith("LogUsageEvent").size(), 1u);
}

TEST_F(ErrorReportTest, TheReportsSuitesAreAcquiredAroundEachReport) {
    fake::Host& host = fake::TheHost();
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
    EXPECT_EQ(host.acquisitions[kUXKBasicSuite], 2);
    EXPECT_EQ(host.acquisitions[kKVUserSuite], 2);
    EXPECT_EQ(host.Held(kUXKBasicSuite), 0);
    EXPECT_EQ(host.Held(kKVUserSuite), 0);
    // Released in the reverse order.
    const Ran releases = host.CallsStartingWith("release");
    EXPECT_EQ(releases, (Ran{"release KV User Suite", "release UXK Basic Suite", "release KV User Suite",
                             "release UXK Basic Suite"}));
}

TEST_F(ErrorReportTest, AMissingSuiteShowsNothing) {
    fake::Host& host = fake::TheHost();
    for (const char* missing : {kUXKBasicSuite, kKVUserSuite, kKVThreadPoolSuite}) {
        kv::ReleaseAllSuites();
        host.unavailable = {missing};
        kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
        EXPECT_TRUE(Shown().empty()) << missing;
    }
    for (const char* missing : {kKVUserPrivateSuite, kKVGlobalUnicodeStringSuite}) {
        kv::ReleaseAllSuites();
        host.unavailable = {missing};
        kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, nullptr);
        EXPECT_TRUE(Shown().empty()) << missing;
    }
    kv::ReleaseAllSuites();
    host.unavailable = {kKVUnicodeStringSuite};
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
    EXPECT_TRUE(Shown().empty());
    for (const auto& [name, count] : host.acquisitions) {
        if (name != kKVThreadPoolSuite && name != kKVUserPrivateSuite && name != kKVGlobalUnicodeStringSuite &&
            name != kKVUnicodeStringSuite) {
            EXPECT_EQ(host.Held(name), 0) << name;
        }
    }
}

TEST_F(ErrorReportTest, WhileTheFrameworkHoldsTheStringSuiteTheReportDoesNotAcquireIt) {
    TestMessages messages;
    test_plugin::Reset();
    TestPlugin plugin(fake::kPlugin);
    ASSERT_EQ(plugin.Startup(&messages.interface), kv::kNoErr);
    fake::Host& host = fake::TheHost();
    const int held = host.acquisitions[kUXKBasicSuite];
    kv::ReportErrorToUser(fake::kPlugin, kv::kNoDocumentErr, nullptr);
    EXPECT_EQ(host.acquisitions[kUXKBasicSuite], held);
    EXPECT_EQ(Shown(), Ran{"ErrorAlert No open document. %s"});
    plugin.Shutdown(&messages.interface);
}

class ReportErrorTest : public ErrorReportTest {
protected:
    void SetUp() override {
        ErrorReportTest::SetUp();
        test_plugin::Reset();
        test_clock::Set(1'000'000);
    }
    TestPlugin plugin_{fake::kPlugin};
};

TEST_F(ReportErrorTest, TheSameCodeWithin5SecondsIsShownOnce) {
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    test_clock::Set(1'000'004);
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    EXPECT_EQ(Shown().size(), 1u);

    test_clock::Set(1'000'005);
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    EXPECT_EQ(Shown().size(), 2u);
}

TEST_F(ReportErrorTest, AnotherCodeInBetweenLetsTheCodeBeShownAgain) {
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    plugin_.ReportError(0x41424344, nullptr, nullptr, nullptr);
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    EXPECT_EQ(Shown(), (Ran{"ErrorAlert No open document. %s", "ErrorAlert Unknown error.   [ABCD] ",
                            "ErrorAlert No open document. %s"}));
}

TEST_F(ReportErrorTest, ASilentCodeInBetweenChangesNothing) {
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    plugin_.ReportError(kv::kBadFormatErr, nullptr, nullptr, nullptr);
    plugin_.ReportError(kv::kNoDocumentErr, nullptr, nullptr, nullptr);
    EXPECT_EQ(Shown().size(), 1u);
}

}  // namespace
