// What every command of the tree does alike: the meaning of its exit
// statuses, --version, and the answer to a wrong command line (the command
// and the mistake named on standard error, and where to find help).
#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace commandline {

inline constexpr int kSucceeded = 0;  // it did what was asked
inline constexpr int kFailed = 1;     // it ran, and its output says what failed
inline constexpr int kCannotRun = 2;  // a wrong command line, or nothing to work on

// --version on `app`, which prints "NAME VERSION" (NAME the app's name).
void AddVersion(CLI::App& app);

// "Exit status: 0 <succeeded>; 1 <failed>; 2 <the command line was wrong or
// the command could not run>." for the footer of a command's help.
std::string ExitStatusHelp(std::string_view succeeded, std::string_view failed);

// Parses the command line. Answers the exit status when it has been dealt
// with already: help or the version printed on `out` (kSucceeded), or a
// mistake said on `err` (kCannotRun), an unknown subcommand by its name.
// Nothing when the command should run.
std::optional<int> Parse(CLI::App& app, int argc, const char* const* argv, std::ostream& out, std::ostream& err);

// Flushes `out`, where the command printed its results. When that output
// could not all be written (a full disk, say), says so on `err` under the
// command's `name` and answers kCannotRun instead of `status`: lost output
// must never pass for a success.
int FinishOutput(int status, std::ostream& out, std::ostream& err, std::string_view name);

// Why the file at `path` cannot be read ("No such file or directory", "Is a
// directory", "Permission denied", ...); empty when it can.
std::string WhyUnreadable(const std::string& path);

}  // namespace commandline
