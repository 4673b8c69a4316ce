// The dialogs' global strings are made on their first use and then kept for
// the life of the module; this program holds nothing else, so no report has
// made them before.
#include <gtest/gtest.h>

#include "EntryBasicSuite.h"
#include "ErrorReport.h"
#include "FakeHost.h"
#include "KVFrameworkSuites.h"
#include "SuiteNode.h"

namespace {

TEST(ErrorReportFirstUseTest, AGlobalStringTheHostFailsToMakeEndsTheReportWithTheErrorThrowerMessage) {
    fake::Host& host = fake::ResetHost();
    kv::KeepEntryBasicSuite(fake::BasicSuite());
    kv::OfferSuiteListBasicSuite(fake::BasicSuite());
    host.newGlobalStringResult = kv::FourCC("FULL");
    try {
        kv::ReportErrorToUser(fake::kPlugin, kv::kCantHappenErr, nullptr);
        FAIL() << "no exception";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::FourCC("FULL"));
        EXPECT_STREQ(error.what(), "KV exception from ErrorThrower declared in file: IKVGlobalUnicodeString line: 36 ");
    }
    EXPECT_EQ(host.Held(kKVUserSuite), 0);
    EXPECT_EQ(host.Held(kUXKBasicSuite), 0);

    host.newGlobalStringResult = kv::kNoErr;
    host.newGlobalStringGivesNull = true;
    try {
        kv::ReportErrorToUser(fake::kPlugin, kv::kOutOfMemoryErr, nullptr);
        FAIL() << "no exception";
    } catch (const kv::Contract::Violation& violation) {
        EXPECT_EQ(violation.Code(), kv::kBadParameterErr);
        EXPECT_STREQ(violation.what(), "Failed Postcondition");
    }
    EXPECT_TRUE(host.CallsStartingWith("ErrorDialogWithMoreInfo").empty());
    kv::ReleaseAllSuites();
}

}  // namespace
