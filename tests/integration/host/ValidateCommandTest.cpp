// kelvra-host validate on modules built to misbehave: each is caught by the
// check for its rule, with a clear line and a failing exit status.
#include "CommandRunner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using kelvra::testing::LinesStartingWith;
using kelvra::testing::RunKelvraHost;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string Module(const char* name) { return std::string(TEST_MODULES_DIR) + "/" + name + ".so"; }

kelvra::testing::CommandResult Validate(const char* module, std::vector<std::string> extra = {}) {
    std::vector<std::string> arguments = {"validate", Module(module), "--seed", "7"};
    arguments.insert(arguments.end(), extra.begin(), extra.end());
    return RunKelvraHost(arguments);
}

// The line of check `id`, or "" when it was not printed.
std::string CheckLine(const std::string& output, const std::string& id) {
    for (const char* status : {"pass ", "fail ", "crash "}) {
        for (const std::string& line : LinesStartingWith(output, status + id)) {
            const std::size_t end = std::string(status).size() + id.size();
            if (line.size() == end || line[end] == ':') return line;
        }
    }
    return "";
}

std::string LastLine(const std::string& output) {
    const std::size_t end = output.find_last_not_of('\n');
    return output.substr(output.rfind('\n', end) + 1, end - output.rfind('\n', end));
}

const char* kBehaviourChecks[] = {"only-main-exported", "startup-shutdown", "shutdown-before-startup",
                                  "unknown-messages",   "unload-reload",    "purge",
                                  "save-notification",  "suites-released",  "no-live-blocks",
                                  "thousand-cycles"};

const char* kSuiteChecks[] = {"suite-published", "suite-emptied-at-unload", "suite-kept-at-reload",
                              "suite-withdrawn-at-shutdown", "save-reaches-handler"};

TEST(ValidateCommandTest, AWellBehavedModulePassesEveryCheck) {
    const auto result = Validate("WellBehavedModule");
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(CheckLine(result.output, "property-list-valid"), "pass property-list-valid: TestModule, entry \"main\"");
    for (const char* id : kBehaviourChecks) EXPECT_THAT(CheckLine(result.output, id), StartsWith("pass ")) << id;
    for (const char* suite : {"zp-plug-ins-suite", "kv-notifier-suite", "zp-blocks-suite", "kv-context-suite"})
        EXPECT_EQ(CheckLine(result.output, std::string("startup-without-") + suite),
                  std::string("pass startup-without-") + suite + ": start-up answered S!Fd");
    for (const char* id : kSuiteChecks)
        EXPECT_EQ(CheckLine(result.output, id), std::string("pass ") + id + ": not applicable: the module publishes no suite");
    EXPECT_EQ(LastLine(result.output), "20 passed, 0 failed");
}

TEST(ValidateCommandTest, ALeakedBlockFailsTheLiveBlockChecks) {
    const auto result = Validate("LeakingModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "no-live-blocks"), "fail no-live-blocks: after shut-down: 1 ZPBasic blocks");
    EXPECT_EQ(CheckLine(result.output, "thousand-cycles"),
              "fail thousand-cycles: after the cycles: 1000 ZPBasic blocks");
    EXPECT_THAT(CheckLine(result.output, "suites-released"), StartsWith("pass "));
    EXPECT_EQ(LastLine(result.output), "18 passed, 2 failed");
}

TEST(ValidateCommandTest, AnExtraExportedSymbolIsNamed) {
    const auto result = Validate("ExtraSymbolModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "only-main-exported"), "fail only-main-exported: also exports TestModuleExtra");
    EXPECT_EQ(LastLine(result.output), "19 passed, 1 failed");
}

TEST(ValidateCommandTest, ASuiteLeftAcquiredIsNamed) {
    const auto result = Validate("SuiteKeepingModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "suites-released"),
              "fail suites-released: after shut-down: KV Context Suite 10 (2 held)");
    EXPECT_THAT(CheckLine(result.output, "no-live-blocks"), StartsWith("pass "));
}

TEST(ValidateCommandTest, ACrashAtStartUpIsEachChecksCrashNotTheValidators) {
    const auto result = Validate("CrashingModule");
    EXPECT_EQ(result.exitStatus, 1);
    for (const char* id : {"startup-shutdown", "unload-reload", "purge", "thousand-cycles"})
        EXPECT_THAT(CheckLine(result.output, id), StartsWith(std::string("crash ") + id + ": ")) << id;
    EXPECT_THAT(CheckLine(result.output, "shutdown-before-startup"), StartsWith("pass "));
    EXPECT_THAT(CheckLine(result.output, "startup-without-required-suite"),
                StartsWith("fail startup-without-required-suite: no normal start-up to observe: "));
    EXPECT_EQ(LastLine(result.output), "3 passed, 14 failed");
}

TEST(ValidateCommandTest, AHangAtStartUpRunsIntoTheTimeLimit) {
    const auto result = Validate("HangingModule", {"--timeout", "1"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "startup-shutdown"), "fail startup-shutdown: no answer within 1 s, stopped");
    EXPECT_THAT(CheckLine(result.output, "only-main-exported"), StartsWith("pass "));
    EXPECT_EQ(LastLine(result.output), "3 passed, 14 failed");
}

TEST(ValidateCommandTest, AMissingPropertyListIsRefused) {
    const auto result = Validate("NoPropertyListModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "property-list-valid"),
              "fail property-list-valid: " + Module("NoPropertyListModule") +
                  ": no property list (section .kvres.PIPL.PLUGIN)");
    EXPECT_EQ(CheckLine(result.output, "startup-shutdown"), "");  // nothing is loaded
    EXPECT_EQ(LastLine(result.output), "1 passed, 1 failed");
}

TEST(ValidateCommandTest, AWrongPropertyListIsRefused) {
    const auto result = Validate("BadPropertyListModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "property-list-valid"),
              "fail property-list-valid: " + Module("BadPropertyListModule") +
                  ": property list: property 2 (ivrs): interface version 3, expected 2");
}

TEST(ValidateCommandTest, OnlyFailedHidesThePasses) {
    const auto result = Validate("ExtraSymbolModule", {"--only-failed"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(LinesStartingWith(result.output, "pass ").empty());
    EXPECT_EQ(LinesStartingWith(result.output, "fail ").size(), 1u);
    EXPECT_EQ(LastLine(result.output), "19 passed, 1 failed");
}

TEST(ValidateCommandTest, TheSameSeedRunsTheChecksInTheSameOrder) {
    const auto first = Validate("WellBehavedModule");
    const auto second = Validate("WellBehavedModule");
    EXPECT_EQ(first.output, second.output);
    EXPECT_THAT(first.output, StartsWith("validating " + Module("WellBehavedModule") + " (seed 7)\n"));
}

TEST(ValidateCommandTest, JsonGivesTheSameResults) {
    const auto result = Validate("LeakingModule", {"--json"});
    EXPECT_EQ(result.exitStatus, 1);
    const nlohmann::json report = nlohmann::json::parse(result.output);
    EXPECT_EQ(report["module"], Module("LeakingModule"));
    EXPECT_EQ(report["seed"], 7);
    EXPECT_EQ(report["passed"], 18);
    EXPECT_EQ(report["failed"], 2);
    EXPECT_THAT(report["checks"], Contains(nlohmann::json{{"id", "no-live-blocks"}, {"status", "fail"},
                                                          {"detail", "after shut-down: 1 ZPBasic blocks"}}));
    EXPECT_EQ(report["checks"].size(), 20u);
}

TEST(ValidateCommandTest, JsonReportsACrash) {
    const auto result = Validate("CrashingModule", {"--json", "--only-failed"});
    const nlohmann::json report = nlohmann::json::parse(result.output);
    int crashes = 0;
    for (const auto& check : report["checks"]) crashes += check["status"] == "crash" ? 1 : 0;
    EXPECT_EQ(crashes, 13);
    EXPECT_EQ(report["checks"].size(), 14u);
}

TEST(ValidateCommandTest, AModuleThatPublishesASuiteIsCheckedForIt) {
    const auto result = Validate("SuiteModule");
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_EQ(CheckLine(result.output, "suite-published"),
              "pass suite-published: Test Suite 3 with 3 entries set, other versions refused");
    EXPECT_EQ(CheckLine(result.output, "suite-emptied-at-unload"),
              "pass suite-emptied-at-unload: every entry null after unload");
    EXPECT_EQ(CheckLine(result.output, "suite-kept-at-reload"),
              "pass suite-kept-at-reload: still published after reload, entries empty as left at unload");
    EXPECT_EQ(CheckLine(result.output, "suite-withdrawn-at-shutdown"),
              "pass suite-withdrawn-at-shutdown: withdrawn at shut-down, every block given back");
    EXPECT_EQ(CheckLine(result.output, "save-reaches-handler"),
              "pass save-reaches-handler: handled inside the module's application context");
    EXPECT_EQ(CheckLine(result.output, "startup-without-zp-suites-suite"),
              "pass startup-without-zp-suites-suite: start-up answered S!Fd");
    EXPECT_EQ(LastLine(result.output), "21 passed, 0 failed");
}

TEST(ValidateCommandTest, ATableLeftEmptyAtStartUpFails) {
    const auto result = Validate("UnfilledSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "suite-published"),
              "fail suite-published: Test Suite 3: at start-up entries 0, 1, 2 of 3 are null");
    EXPECT_EQ(LastLine(result.output), "20 passed, 1 failed");
}

TEST(ValidateCommandTest, ATableTheHostCannotReadAfterUnloadFails) {
    const auto result = Validate("StaticTableSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    const std::string why = ": Test Suite 3: its table is not a \"ZP Blocks Suite\" block, so the host cannot tell "
                            "how long it is or read it once the module's code is unloaded";
    EXPECT_EQ(CheckLine(result.output, "suite-emptied-at-unload"), "fail suite-emptied-at-unload" + why);
    EXPECT_EQ(CheckLine(result.output, "suite-published"), "fail suite-published" + why);
    EXPECT_EQ(CheckLine(result.output, "suite-kept-at-reload"), "fail suite-kept-at-reload" + why);
}

TEST(ValidateCommandTest, EntriesLeftSetAtUnloadFail) {
    const auto result = Validate("UnemptiedSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "suite-emptied-at-unload"),
              "fail suite-emptied-at-unload: Test Suite 3: after unload entries 0, 1, 2 of 3 are still set");
    EXPECT_THAT(CheckLine(result.output, "suite-published"), StartsWith("pass "));
}

TEST(ValidateCommandTest, EntriesFilledAgainAtReloadFail) {
    const auto result = Validate("RefillingSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "suite-kept-at-reload"),
              "fail suite-kept-at-reload: Test Suite 3: after reload entries 0, 1, 2 of 3 are set again; they stay "
              "as emptied at unload");
    EXPECT_THAT(CheckLine(result.output, "suite-emptied-at-unload"), StartsWith("pass "));
    EXPECT_EQ(LastLine(result.output), "20 passed, 1 failed");
}

TEST(ValidateCommandTest, ABlockKeptAfterShutDownIsNamed) {
    const auto result = Validate("LeakingSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "suite-withdrawn-at-shutdown"),
              "fail suite-withdrawn-at-shutdown: after shut-down 1 ZP Blocks blocks live: test suite cache");
}

TEST(ValidateCommandTest, ASaveNotificationLeftUnhandledFails) {
    const auto result = Validate("SaveIgnoringSuiteModule");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(CheckLine(result.output, "save-reaches-handler"),
              "fail save-reaches-handler: the save notification answered 0 without entering the module's "
              "application context: it reached no save handler");
    EXPECT_THAT(CheckLine(result.output, "save-notification"), StartsWith("pass "));
    EXPECT_EQ(LastLine(result.output), "20 passed, 1 failed");
}

#ifdef TINTORA_MODULE
TEST(ValidateCommandTest, TheRealModulePassesAlsoTheChecksOfItsSuite) {
    const auto result = RunKelvraHost({"validate", TINTORA_MODULE});
    EXPECT_EQ(result.exitStatus, 0) << result.output;
    EXPECT_THAT(LastLine(result.output), HasSubstr(" passed, 0 failed"));
    EXPECT_EQ(CheckLine(result.output, "suite-published"),
              "pass suite-published: KV Tintora Suite 1 with 14 entries set, other versions refused");
    for (const char* id : kSuiteChecks) {
        EXPECT_THAT(CheckLine(result.output, id), StartsWith(std::string("pass ") + id + ": ")) << id;
        EXPECT_THAT(CheckLine(result.output, id), Not(HasSubstr("not applicable"))) << id;
    }
}
#endif

}  // namespace
