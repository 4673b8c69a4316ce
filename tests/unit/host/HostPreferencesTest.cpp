// Remembering library files the way the host's "open other library"
// command does; the suite reads them back (PreferenceSuiteTest.cpp).
#include <kelvra/HostError.h>
#include <kelvra/HostPreferences.h>

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class HostPreferencesTest : public ::testing::Test {
protected:
    testsupport::TemporaryFolder folder;
    kelvra::HostPreferences preferences;
    fs::path file = folder.Path() / "home" / "preferences.json";

    void SetUp() override { preferences.UseFile(file); }
    std::string Contents() const {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }
    // Every name in the preferences file's folder.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(file.parent_path())) names.push_back(entry.path().filename());
        return names;
    }
};

TEST_F(HostPreferencesTest, TheFirstFileRememberedMakesTheFileAndItsFolder) {
    const kelvra::RememberedLibrary remembered = preferences.RememberLibrary("/libraries/a.ose");
    EXPECT_EQ(remembered.key, "KVSwatchLibPersistentPrefix0");
    EXPECT_EQ(remembered.path, "/libraries/a.ose");
    EXPECT_EQ(json::parse(Contents()), json::parse(R"({"KVSwatchLibPersistentPrefix_count": 1,
        "KVSwatchLibPersistentPrefix0": "/libraries/a.ose"})"));
    std::int32_t count = 0;
    EXPECT_EQ(preferences.GetInteger("KVSwatchLibPersistentPrefix_count", count), kZPNoErr);
    EXPECT_EQ(count, 1);
}

TEST_F(HostPreferencesTest, EachFileGoesUnderTheCountThenTheCountRisesAndOtherKeysStay) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << R"({"KVSwatchLibPersistentPrefix_count": 9, "Theme": "dark",
                              "KVSwatchLibPersistentPrefix0": "/old.ose"})";
    EXPECT_EQ(preferences.RememberLibrary("/b.ocb").key, "KVSwatchLibPersistentPrefix9");
    EXPECT_EQ(preferences.RememberLibrary("/c.ose").key, "KVSwatchLibPersistentPrefix10");
    EXPECT_EQ(json::parse(Contents()), json::parse(R"({"KVSwatchLibPersistentPrefix_count": 11, "Theme": "dark",
        "KVSwatchLibPersistentPrefix0": "/old.ose", "KVSwatchLibPersistentPrefix9": "/b.ocb",
        "KVSwatchLibPersistentPrefix10": "/c.ose"})"));
    // Replaced through a file beside it, which is gone again.
    EXPECT_EQ(Names(), std::vector<std::string>{"preferences.json"});
}

TEST_F(HostPreferencesTest, ARelativePathIsRememberedAbsolute) {
    const std::string expected = (fs::current_path() / "relative" / "d.ose").string();
    EXPECT_EQ(preferences.RememberLibrary("relative/d.ose").path, expected);
    std::string path;
    EXPECT_EQ(preferences.GetString("KVSwatchLibPersistentPrefix0", path), kZPNoErr);
    EXPECT_EQ(path, expected);
}

TEST_F(HostPreferencesTest, AFileThatIsNoJsonObjectOrABadCountIsRefusedAndLeftAsItWas) {
    fs::create_directories(file.parent_path());
    for (const std::string text : {"{broken", "[]", R"({"KVSwatchLibPersistentPrefix_count": "2"})",
                                   R"({"KVSwatchLibPersistentPrefix_count": -1})",
                                   R"({"KVSwatchLibPersistentPrefix_count": 2.5})",
                                   R"({"KVSwatchLibPersistentPrefix_count": 2147483647})"}) {
        std::ofstream(file) << text;
        EXPECT_THROW(preferences.RememberLibrary("/a.ose"), kelvra::HostError) << text;
        EXPECT_EQ(Contents(), text);
        EXPECT_EQ(Names(), std::vector<std::string>{"preferences.json"});
    }
}

TEST_F(HostPreferencesTest, WithoutAFileNothingCanBeRemembered) {
    preferences.UseFile("");
    EXPECT_THROW(preferences.RememberLibrary("/a.ose"), kelvra::HostError);
}

TEST_F(HostPreferencesTest, AFileThatCannotBeWrittenIsReported) {
    std::ofstream(folder.Path() / "home") << "a file where the folder would be";
    try {
        preferences.RememberLibrary("/a.ose");
        FAIL() << "no error";
    } catch (const kelvra::HostError& error) {
        EXPECT_EQ(std::string(error.what()), file.string() + ": cannot be written");
    }
}

}  // namespace
