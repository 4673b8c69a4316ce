#include "HostCodes.h"
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVFileSuites.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');
constexpr const char* kPrefix = "KVSwatchLibPersistentPrefix";

class PreferenceSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Paths paths{host};
    const KVPreferenceSuite* preferences = kelvra::testing::Acquire<KVPreferenceSuite>(host, kKVPreferenceSuite, 7);
    testsupport::TemporaryFolder folder;
    std::string file = (folder.Path() / "preferences.json").string();

    void SetUp() override { host.Preferences().UseFile(file); }
    void Write(const std::string& json) { folder.Write("preferences.json", json); }
    // GetIntegerPreference's answer and the value it left in 77.
    std::pair<ZPErr, std::int32_t> Integer(const char* suffix) {
        std::int32_t value = 77;
        const ZPErr result = preferences->GetIntegerPreference(kPrefix, suffix, &value);
        return {result, value};
    }
    // GetFilePathPreference's answer and the path it left in "before".
    std::pair<ZPErr, std::string> Path(const char* suffix) {
        KVFilePathRef path = paths.Make("before");
        const ZPErr result = preferences->GetFilePathPreference(kPrefix, suffix, path);
        return {result, paths.Text(path)};
    }
};

TEST_F(PreferenceSuiteTest, ReadsIntegersAndPathsUnderPrefixAndSuffix) {
    Write(R"({"KVSwatchLibPersistentPrefix_count": 2,
              "KVSwatchLibPersistentPrefix0": "/libraries/a.ose",
              "KVSwatchLibPersistentPrefix1": "/libraries/b \u00e9.ocb",
              "Other": 5})");
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNoErr, 2));
    EXPECT_EQ(Path("0"), std::make_pair(kZPNoErr, std::string("/libraries/a.ose")));
    EXPECT_EQ(Path("1"), std::make_pair(kZPNoErr, std::string("/libraries/b \u00e9.ocb")));
    std::int32_t other = 0;
    EXPECT_EQ(preferences->GetIntegerPreference("Oth", "er", &other), kZPNoErr);
    EXPECT_EQ(other, 5);
}

TEST_F(PreferenceSuiteTest, AnAbsentKeyOrNoFileAnswersNameNotFoundAndChangesNothing) {
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNameNotFoundErr, 77));
    EXPECT_EQ(Path("0"), std::make_pair(kZPNameNotFoundErr, std::string("before")));
    Write(R"({"KVSwatchLibPersistentPrefix0": "/a.ose"})");
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNameNotFoundErr, 77));
    EXPECT_EQ(Path("1"), std::make_pair(kZPNameNotFoundErr, std::string("before")));
    host.Preferences().UseFile("");
    EXPECT_EQ(Path("0"), std::make_pair(kZPNameNotFoundErr, std::string("before")));
}

TEST_F(PreferenceSuiteTest, TheFileIsReadAgainOnEveryCall) {
    Write(R"({"KVSwatchLibPersistentPrefix_count": 1})");
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNoErr, 1));
    Write(R"({"KVSwatchLibPersistentPrefix_count": 3})");
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNoErr, 3));
    std::filesystem::remove(file);
    EXPECT_EQ(Integer("_count").first, kZPNameNotFoundErr);
}

TEST_F(PreferenceSuiteTest, AValueOfAnotherTypeAnswersTyp) {
    Write(R"({"KVSwatchLibPersistentPrefix_count": "2", "KVSwatchLibPersistentPrefixA": 2.5,
              "KVSwatchLibPersistentPrefixB": true, "KVSwatchLibPersistentPrefixC": null,
              "KVSwatchLibPersistentPrefixD": [1], "KVSwatchLibPersistentPrefix0": 4,
              "KVSwatchLibPersistentPrefix1": {"path": "/a.ose"}})");
    const std::pair<ZPErr, std::int32_t> wrong = {ZP_FOURCC('T', 'Y', 'P', '?'), 77};
    for (const char* suffix : {"_count", "A", "B", "C", "D", "1"}) EXPECT_EQ(Integer(suffix), wrong) << suffix;
    EXPECT_EQ(Path("0"), std::make_pair(kelvra::kPreferenceTypeErr, std::string("before")));
    EXPECT_EQ(Path("1"), std::make_pair(kelvra::kPreferenceTypeErr, std::string("before")));
}

TEST_F(PreferenceSuiteTest, AnIntegerIsAnyNumberWithoutAFraction) {
    Write(R"({"KVSwatchLibPersistentPrefixA": 2.0, "KVSwatchLibPersistentPrefixB": -3e2,
              "KVSwatchLibPersistentPrefixC": 2147483647, "KVSwatchLibPersistentPrefixD": -2147483648})");
    EXPECT_EQ(Integer("A"), std::make_pair(kZPNoErr, 2));
    EXPECT_EQ(Integer("B"), std::make_pair(kZPNoErr, -300));
    EXPECT_EQ(Integer("C"), std::make_pair(kZPNoErr, 2147483647));
    EXPECT_EQ(Integer("D"), std::make_pair(kZPNoErr, -2147483647 - 1));
}

TEST_F(PreferenceSuiteTest, AnIntegerOutsideThirtyTwoBitsAnswersRng) {
    Write(R"({"KVSwatchLibPersistentPrefixA": 2147483648, "KVSwatchLibPersistentPrefixB": -2147483649,
              "KVSwatchLibPersistentPrefixC": 18446744073709551615,
              "KVSwatchLibPersistentPrefixD": 123456789012345678901234567890,
              "KVSwatchLibPersistentPrefixE": 1e10, "KVSwatchLibPersistentPrefixF": -9223372036854775808})");
    const std::pair<ZPErr, std::int32_t> outside = {ZP_FOURCC('R', 'N', 'G', '?'), 77};
    for (const char* suffix : {"A", "B", "C", "D", "E", "F"}) EXPECT_EQ(Integer(suffix), outside) << suffix;
}

TEST_F(PreferenceSuiteTest, AFileThatIsNoJsonObjectAnswersPref) {
    const std::pair<ZPErr, std::int32_t> broken = {ZP_FOURCC('P', 'R', 'E', 'F'), 77};
    for (const char* text : {"{", "", "[1, 2]", "\"text\"", "{\"a\": 1} trailing"}) {
        Write(text);
        EXPECT_EQ(Integer("_count"), broken) << text;
        EXPECT_EQ(Path("0"), std::make_pair(kelvra::kPreferencesFileErr, std::string("before"))) << text;
    }
    host.Preferences().UseFile(folder.Path());  // a folder
    EXPECT_EQ(Integer("_count"), broken);
}

TEST_F(PreferenceSuiteTest, NullArgumentsAnswerParm) {
    Write(R"({"KVSwatchLibPersistentPrefix_count": 1, "KVSwatchLibPersistentPrefix0": "/a.ose"})");
    std::int32_t value = 0;
    EXPECT_EQ(preferences->GetIntegerPreference(nullptr, "_count", &value), kZPBadParameterErr);
    EXPECT_EQ(preferences->GetIntegerPreference(kPrefix, nullptr, &value), kZPBadParameterErr);
    EXPECT_EQ(preferences->GetIntegerPreference(kPrefix, "_count", nullptr), kZPBadParameterErr);
    KVFilePathRef path = paths.Make("");
    EXPECT_EQ(preferences->GetFilePathPreference(nullptr, "0", path), kZPBadParameterErr);
    EXPECT_EQ(preferences->GetFilePathPreference(kPrefix, nullptr, path), kZPBadParameterErr);
    EXPECT_EQ(preferences->GetFilePathPreference(kPrefix, "0", nullptr), kZPBadParameterErr);
}

TEST_F(PreferenceSuiteTest, AnInjectedFaultAnswersItsCodeAndChangesNothing) {
    Write(R"({"KVSwatchLibPersistentPrefix_count": 1, "KVSwatchLibPersistentPrefix0": "/a.ose"})");
    const std::size_t livePaths = host.LiveObjects().filePaths;
    host.Faults().FailCall({kKVPreferenceSuite, "GetIntegerPreference", 1, false, kFailure});
    host.Faults().FailCall({kKVPreferenceSuite, "GetFilePathPreference", 1, false, kFailure});
    EXPECT_EQ(Integer("_count"), std::make_pair(kFailure, 77));
    EXPECT_EQ(Path("0"), std::make_pair(kFailure, std::string("before")));
    EXPECT_EQ(host.LiveObjects().filePaths, livePaths + 1);  // Path's own
    EXPECT_EQ(Integer("_count"), std::make_pair(kZPNoErr, 1));
    EXPECT_EQ(Path("0"), std::make_pair(kZPNoErr, std::string("/a.ose")));
}

}  // namespace
