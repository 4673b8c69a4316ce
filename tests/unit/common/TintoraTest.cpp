// The module's plug-in object, started by the entry body against the fake host.
#include "Tintora.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FakeHost.h"
#include "KVFileSuites.h"
#include "TestMessages.h"

namespace {

using Calls = std::vector<std::string>;

class TintoraTest : public testing::Test {
protected:
    void SetUp() override { fake::ResetHost(); }
    void TearDown() override {
        if (messages_.globals != nullptr) messages_.Shutdown();
    }

    TestMessages messages_;
};

TEST_F(TintoraTest, ThePluginIsNamedOrvikTintoraCore) {
    ASSERT_EQ(messages_.Startup(), kv::kNoErr);
    EXPECT_STREQ(static_cast<Tintora*>(messages_.globals)->Name(), "Orvik Tintora Core");
    EXPECT_EQ(fake::TheHost().CallsStartingWith("SetPluginName"), Calls{"SetPluginName Orvik Tintora Core"});
    EXPECT_EQ(fake::TheHost().CallsStartingWith("AddNotifier"),
              Calls{"AddNotifier Orvik Tintora Core Save User Data Notifier / KV Save User Data Notifier"});
}

TEST_F(TintoraTest, TheStartedObjectIsTheGlobalOneUntilShutdownOrUnload) {
    EXPECT_EQ(Tintora::Global(), nullptr);
    ASSERT_EQ(messages_.Startup(), kv::kNoErr);
    EXPECT_EQ(Tintora::Global(), messages_.globals);

    ASSERT_EQ(messages_.Unload(), kv::kNoErr);
    EXPECT_EQ(Tintora::Global(), nullptr);
    ASSERT_EQ(messages_.Reload(), kv::kNoErr);
    EXPECT_EQ(Tintora::Global(), messages_.globals);
    EXPECT_STREQ(Tintora::Global()->Name(), "Orvik Tintora Core");

    ASSERT_EQ(messages_.Shutdown(), kv::kNoErr);
    EXPECT_EQ(Tintora::Global(), nullptr);
}

TEST_F(TintoraTest, TheFileFormatSuiteIsImportedForTheWholeRun) {
    ASSERT_EQ(messages_.Startup(), kv::kNoErr);
    // Once as a registered suite of the shell, once as the plug-in's import.
    EXPECT_EQ(fake::TheHost().Held(kKVFileFormatSuite), 2);
    ASSERT_EQ(messages_.Shutdown(), kv::kNoErr);
    EXPECT_EQ(fake::TheHost().Held(kKVFileFormatSuite), 0);
}

TEST_F(TintoraTest, WithoutTheFileFormatSuiteStartupFailsSilently) {
    fake::TheHost().unavailable.insert(kKVFileFormatSuite);
    EXPECT_EQ(messages_.Startup(), kv::kSuiteNotFoundErr);
    EXPECT_EQ(messages_.globals, nullptr);
    EXPECT_EQ(Tintora::Global(), nullptr);
    EXPECT_TRUE(fake::TheHost().CallsStartingWith("ErrorAlert").empty());
}

}  // namespace
