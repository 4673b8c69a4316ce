#include "CommandRunner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using kelvra::testing::RunKelvraHost;
using ::testing::HasSubstr;

std::string Module(const char* name) { return std::string(TEST_MODULES_DIR) + "/" + name + ".so"; }

TEST(RunCommandTest, ShowsTheLifecycleWithResultCodes) {
    const auto result = RunKelvraHost({"run", Module("WellBehavedModule")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("plug-in: TestModule (entry main), shown as \"Test Module\"\n"
                                         "messages:\n"
                                         "  ZP Interface / Startup -> 0\n"
                                         "  ZP Cache / Plug-in Purge -> pFls\n"
                                         "  KV Notifier / KV Notify -> 0\n"
                                         "  ZP Access / Unload -> 0\n"
                                         "  ZP Access / Reload -> 0\n"
                                         "  ZP Interface / Shutdown -> 0\n"));
    EXPECT_THAT(result.output, HasSubstr("  Test Module Save User Data Notifier [KV Save User Data Notifier]\n"));
    EXPECT_THAT(result.output, HasSubstr("  KV Context Suite 10: 2 / 2\n"));
    EXPECT_THAT(result.output, HasSubstr("events:\n  (none)\n"));
    EXPECT_THAT(result.output, HasSubstr("live at the end: 0 ZPBasic blocks, 0 ZP Blocks blocks"));
}

TEST(RunCommandTest, ShowsWhatALeakingModuleLeftLive) {
    const auto result = RunKelvraHost({"run", Module("LeakingModule")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("live at the end: 1 ZPBasic blocks, 0 ZP Blocks blocks"));
}

TEST(RunCommandTest, JsonGivesTheSameRun) {
    const auto result = RunKelvraHost({"run", Module("WellBehavedModule"), "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    const nlohmann::json run = nlohmann::json::parse(result.output);
    EXPECT_EQ(run["pluginName"], "TestModule");
    EXPECT_EQ(run["name"], "Test Module");
    ASSERT_EQ(run["messages"].size(), 6u);
    EXPECT_EQ(run["messages"][1], (nlohmann::json{{"caller", "ZP Cache"},
                                                  {"selector", "Plug-in Purge"},
                                                  {"result", 0x70466C73},
                                                  {"resultText", "pFls"}}));
    EXPECT_EQ(run["notifiers"][0]["type"], "KV Save User Data Notifier");
    EXPECT_EQ(run["live"]["zpBasicBlocks"], 0);
    EXPECT_EQ(run["events"], nlohmann::json::array());
}

TEST(RunCommandTest, ARefusedModuleFails) {
    const auto result = RunKelvraHost({"run", Module("BadPropertyListModule")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("refused: " + Module("BadPropertyListModule") +
                                         ": property list: property 2 (ivrs): interface version 3, expected 2"));
    const auto json = RunKelvraHost({"run", Module("NoPropertyListModule"), "--json"});
    EXPECT_EQ(json.exitStatus, 1);
    EXPECT_THAT(nlohmann::json::parse(json.output)["error"].get<std::string>(), HasSubstr("no property list"));
}

TEST(RunCommandTest, EachSubcommandHasHelp) {
    for (const char* command : {"run", "validate"}) {
        const auto result = RunKelvraHost({command, "--help"});
        EXPECT_EQ(result.exitStatus, 0) << command;
        EXPECT_THAT(result.output, HasSubstr("MODULE")) << command;
    }
    EXPECT_THAT(RunKelvraHost({"validate", "--help"}).output, HasSubstr("--timeout"));
}

TEST(RunCommandTest, AMissingModuleArgumentIsAUsageError) {
    EXPECT_NE(RunKelvraHost({"run"}).exitStatus, 0);
    EXPECT_NE(RunKelvraHost({"validate", Module("WellBehavedModule"), "--timeout", "-1"}).exitStatus, 0);
}

}  // namespace
