// The built command itself: its output and exit status.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>

#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace {

testsupport::ProgramResult RunBinary(std::vector<std::string> arguments,
                                     const testsupport::ProgramSettings& settings = {}) {
    arguments.insert(arguments.begin(), TINTORA_BINARY);
    return testsupport::RunProgram(arguments, settings);
}

TEST(TintoraBinary, TracesAFileAndExitsWithZero) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("book.xml", std::string("<OrvikSwatchbook Version=\"4\"/>"));
    const auto outcome = RunBinary({"trace", file});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.output,
              "{\"op\": \"BeginFill\", \"args\": []}\n"
              "{\"op\": \"SetVersion\", \"args\": [4]}\n"
              "{\"op\": \"EndFill\", \"args\": []}\n"
              "{\"result\": 0}\n");
}

TEST(TintoraBinary, ExitsWithOneWhenTheReaderFails) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("book.xml", std::string("<OrvikSwatchbook>"));
    const auto outcome = RunBinary({"dump", file});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_THAT(outcome.output, testing::StartsWith("{\"result\": 2, "));
}

TEST(TintoraBinary, ExitsWithTwoWhenItsOutputCannotBeWritten) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("book.xml", std::string("<OrvikSwatchbook Version=\"4\"/>"));
    const auto outcome = testsupport::RunProgram({"sh", "-c", "\"$0\" dump \"$1\" >/dev/full", TINTORA_BINARY, file});
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_THAT(outcome.errors, testing::HasSubstr("tintora: cannot write the output"));
}

TEST(TintoraBinary, ExitsWithTwoWhenItCannotRun) {
    testsupport::TemporaryFolder folder;
    EXPECT_EQ(RunBinary({"trace", "--no-such-option", "x"}).exitStatus, 2);
    EXPECT_EQ(RunBinary({"dump", (folder.Path() / "missing.xml").string()}).exitStatus, 2);
}

TEST(TintoraBinary, SaysWhyItCannotReadAFileWhosePermissionsWereDropped) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("locked.xml", std::string("<OrvikSwatchbook/>"));
    ASSERT_EQ(chmod(file.c_str(), 0), 0);
    testsupport::ProgramSettings settings;
    settings.withoutPermissionOverride = true;
    const auto outcome = RunBinary({"dump", file}, settings);
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "tintora: cannot read " + file + ": Permission denied\n");
}

TEST(TintoraBinary, AnswersHelpAndItsVersion) {
    const auto help = RunBinary({"prescan", "--help"});
    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_THAT(help.output, testing::HasSubstr("Usage: tintora prescan"));
    const auto version = RunBinary({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.output, "tintora 0.1.0\n");
}

}  // namespace
