#include "SuiteImports.h"

#include <gtest/gtest.h>

#include <vector>

#include "FakeHost.h"
#include "KVFrameworkSuites.h"
#include "KVHeldSuites.h"
#include "SuiteNode.h"
#include "TestPlugin.h"
#include "ZPPluginSuites.h"

namespace {

const void* gOptional = nullptr;
const void* gSecondOptional = nullptr;
const void* gRequired = nullptr;

const kv::SuiteImportEntry kImportsWithOptional[] = {
    {"Test Required Suite", 1, &gRequired},
    {nullptr, kv::kOptionalImports, nullptr},
    {"Test Optional Suite", 1, &gOptional},
    {"Test Second Optional Suite", 1, &gSecondOptional},
    {nullptr, 0, nullptr},
};

const std::vector<std::string> kFrameworkAcquisitions = {
    "acquire ZP Access Suite",        "acquire ZP Plug-ins Suite", "acquire KV Notifier Suite",
    "acquire KV Context Suite",       "acquire KV Context PrivateSuite", "acquire UXK Basic Suite",
    "acquire KV MdMemory Suite",      "acquire KV Matching Art Suite",
};

class SuiteImportsTest : public testing::Test {
protected:
    void SetUp() override {
        test_plugin::Reset();
        fake::ResetHost();
        kv::OfferSuiteListBasicSuite(fake::BasicSuite());
    }
};

TEST_F(SuiteImportsTest, TheFirstObjectAcquiresTheFrameworkThenTheRequiredImportsAndTheLastReleasesThem) {
    fake::Host& host = fake::TheHost();
    {
        kv::SuiteImports imports;
        EXPECT_EQ(imports.AcquisitionError(), kv::kNoErr);
        std::vector<std::string> expected = kFrameworkAcquisitions;
        expected.push_back("acquire Test Required Suite");
        EXPECT_EQ(host.CallsStartingWith("acquire"), expected);
        EXPECT_NE(kv::framework::Access(), nullptr);
        EXPECT_NE(kv::framework::Plugins(), nullptr);
        EXPECT_NE(kv::framework::Notifier(), nullptr);
        EXPECT_NE(kv::framework::Context(), nullptr);
        EXPECT_NE(kv::framework::UXKBasic(), nullptr);

        kv::SuiteImports second;
        EXPECT_EQ(host.CallsStartingWith("acquire").size(), expected.size());
    }
    for (const auto& [name, count] : host.acquisitions) EXPECT_EQ(host.Held(name), 0) << name;
    EXPECT_EQ(host.releases["ZP Access Suite"], 1);
    EXPECT_EQ(kv::framework::Access(), nullptr);
    EXPECT_EQ(kv::framework::UXKBasic(), nullptr);
}

TEST_F(SuiteImportsTest, AcquisitionStopsAtTheFirstFailureWhoseCodeIsTheError) {
    fake::Host& host = fake::TheHost();
    host.acquireFailures[kKVContextSuite] = kv::FourCC("GONE");
    {
        kv::SuiteImports imports;
        EXPECT_EQ(imports.AcquisitionError(), kv::FourCC("GONE"));
        EXPECT_EQ(host.acquisitions.count(kKVContextPrivateSuite), 0u);
        EXPECT_EQ(host.acquisitions.count("Test Required Suite"), 0u);
        EXPECT_EQ(kv::framework::Context(), nullptr);
    }
    EXPECT_EQ(host.Held(kZPAccessSuite), 0);
    EXPECT_EQ(host.Held(kKVNotifierSuite), 0);
}

TEST_F(SuiteImportsTest, AMissingRequiredImportIsTheError) {
    fake::Host& host = fake::TheHost();
    host.unavailable.insert("Test Required Suite");
    kv::SuiteImports imports;
    EXPECT_EQ(imports.AcquisitionError(), kv::kSuiteNotFoundErr);
    EXPECT_EQ(host.Held(kKVMatchingArtSuite), 1);
}

TEST_F(SuiteImportsTest, ASuccessWithoutASuiteCountsAsNotFound) {
    fake::TheHost().acquireWithoutSuite.insert(kZPPluginsSuite);
    kv::SuiteImports imports;
    EXPECT_EQ(imports.AcquisitionError(), kv::kSuiteNotFoundErr);
    EXPECT_EQ(kv::framework::Plugins(), nullptr);
}

TEST_F(SuiteImportsTest, OptionalImportsAreAcquiredOnRequestCountedAndReleasedWithTheRest) {
    test_plugin::Imports() = kImportsWithOptional;
    fake::Host& host = fake::TheHost();
    host.unavailable.insert("Test Second Optional Suite");
    {
        kv::SuiteImports imports;
        ASSERT_EQ(imports.AcquisitionError(), kv::kNoErr);
        EXPECT_EQ(host.acquisitions.count("Test Optional Suite"), 0u);

        imports.AcquireOptionalSuites();
        EXPECT_EQ(host.Held("Test Optional Suite"), 1);
        EXPECT_NE(gOptional, nullptr);
        EXPECT_EQ(gSecondOptional, nullptr);

        // Only what is not held is asked for again.
        host.unavailable.clear();
        imports.AcquireOptionalSuites();
        EXPECT_EQ(host.acquisitions["Test Optional Suite"], 1);
        EXPECT_EQ(host.Held("Test Second Optional Suite"), 1);

        const auto callsBefore = host.calls.size();
        imports.AcquireOptionalSuites();
        EXPECT_EQ(host.calls.size(), callsBefore);
    }
    EXPECT_EQ(host.Held("Test Optional Suite"), 0);
    EXPECT_EQ(host.Held("Test Second Optional Suite"), 0);
    EXPECT_EQ(gOptional, nullptr);
    EXPECT_EQ(gSecondOptional, nullptr);
}

TEST_F(SuiteImportsTest, WithoutTheOptionalMarkNothingAfterTheRequiredImportsIsAcquired) {
    static const void* notAnImport = nullptr;
    static const kv::SuiteImportEntry imports[] = {
        {"Test Required Suite", 1, &gRequired},
        {nullptr, 0, nullptr},
        {"Test Optional Suite", 1, &notAnImport},
        {nullptr, 0, nullptr},
    };
    test_plugin::Imports() = imports;
    kv::SuiteImports suiteImports;
    suiteImports.AcquireOptionalSuites();
    EXPECT_EQ(fake::TheHost().acquisitions.count("Test Optional Suite"), 0u);
}

TEST_F(SuiteImportsTest, ReleasingStopsAtTheFirstReleaseTheHostRefuses) {
    fake::Host& host = fake::TheHost();
    host.releaseFailures[kKVContextSuite] = kv::FourCC("STCK");
    { kv::SuiteImports imports; }
    EXPECT_EQ(host.Held(kZPAccessSuite), 0);
    EXPECT_EQ(host.Held(kKVContextPrivateSuite), 1);
    EXPECT_EQ(host.Held("Test Required Suite"), 1);
}

TEST_F(SuiteImportsTest, MarkingASingleReferenceLetsTheNextDestructionRelease) {
    fake::Host& host = fake::TheHost();
    auto* first = new kv::SuiteImports;
    auto* second = new kv::SuiteImports;
    kv::SuiteImports::MarkSingleReference();
    delete second;
    EXPECT_EQ(host.Held(kZPAccessSuite), 0);
    delete first;  // the count is already 0: nothing more happens
    EXPECT_EQ(host.releases[kZPAccessSuite], 1);
}

}  // namespace
