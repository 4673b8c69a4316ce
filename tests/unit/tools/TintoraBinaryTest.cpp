// The built command itself: its output and exit status.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace {

struct Outcome {
    int status;
    std::string out;
};

Outcome RunBinary(const std::string& arguments) {
    const std::string command = std::string(TINTORA_BINARY) + " " + arguments + " 2>/dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char chunk[4096];
    for (std::size_t got; (got = fread(chunk, 1, sizeof chunk, pipe)) > 0;) out.append(chunk, got);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(TintoraBinary, TracesAFileAndExitsWithZero) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("book.xml", std::string("<OrvikSwatchbook Version=\"4\"/>"));
    const Outcome outcome = RunBinary("trace '" + file + "'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "{\"op\": \"BeginFill\", \"args\": []}\n"
              "{\"op\": \"SetVersion\", \"args\": [4]}\n"
              "{\"op\": \"EndFill\", \"args\": []}\n"
              "{\"result\": 0}\n");
}

TEST(TintoraBinary, ExitsWithZeroWhenTheReaderFails) {
    testsupport::TemporaryFolder folder;
    const auto file = folder.Write("book.xml", std::string("<OrvikSwatchbook>"));
    const Outcome outcome = RunBinary("dump '" + file + "'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, testing::StartsWith("{\"result\": 2, "));
}

TEST(TintoraBinary, ExitsWithNonZeroWhenItCannotRun) {
    testsupport::TemporaryFolder folder;
    EXPECT_NE(RunBinary("trace --no-such-option x").status, 0);
    EXPECT_NE(RunBinary("dump '" + (folder.Path() / "missing.xml").string() + "'").status, 0);
}

TEST(TintoraBinary, AnswersHelp) {
    const Outcome outcome = RunBinary("prescan --help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, testing::HasSubstr("Usage: tintora prescan"));
}

}  // namespace
