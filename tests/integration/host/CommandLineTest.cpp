// kelvra-host's command line: its version, a wrong command or option named
// in a message a person can read, and every command's exit statuses in its
// help.
#include "CommandRunner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using kelvra::testing::RunKelvraHost;
using ::testing::HasSubstr;

const std::string kModule = std::string(TEST_MODULES_DIR) + "/WellBehavedModule.so";

TEST(CommandLineTest, TellsItsVersion) {
    const auto result = RunKelvraHost({"--version"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "kelvra-host 0.1.0\n");
}

TEST(CommandLineTest, AnUnknownCommandIsNamed) {
    const auto result = RunKelvraHost({"frob", kModule});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "kelvra-host: unknown command \"frob\" (the commands are run, validate, import, libraries, lookup, export, session)\n"
                             "Run \"kelvra-host --help\" for help.\n");
    const auto none = RunKelvraHost({});
    EXPECT_EQ(none.exitStatus, 2);
    EXPECT_THAT(none.errors, HasSubstr("kelvra-host: A subcommand is required\n"));
}

TEST(CommandLineTest, AWrongTimeoutIsSaidPlainly) {
    for (const char* timeout : {"0", "-1", "1e300", "soon"}) {
        const auto result = RunKelvraHost({"validate", kModule, "--timeout", timeout});
        EXPECT_EQ(result.exitStatus, 2) << timeout;
        EXPECT_EQ(result.errors, "kelvra-host validate: --timeout: a number of seconds more than 0 and at most 86400, "
                                 "not \"" + std::string(timeout) + "\"\nRun \"kelvra-host validate --help\" for help.\n")
            << timeout;
    }
}

TEST(CommandLineTest, EveryCommandsHelpTellsItsExitStatuses) {
    const auto main = RunKelvraHost({"--help"});
    EXPECT_EQ(main.exitStatus, 0);
    EXPECT_THAT(main.output, HasSubstr("--version"));
    EXPECT_THAT(main.output, HasSubstr("2 always means that the command line was wrong"));
    const auto run = RunKelvraHost({"run", "--help"});
    EXPECT_THAT(run.output, HasSubstr("Exit status: 0 when the module loaded and its start-up answered 0; 1 when the "
                                      "module file was refused or its start-up failed; 2 when the command line was "
                                      "wrong or the command could not run.\n"));
    const auto validate = RunKelvraHost({"validate", "--help"});
    EXPECT_THAT(validate.output, HasSubstr("Exit status: 0 when every check passed; 1 when a check failed or crashed; 2 "));
}

}  // namespace
