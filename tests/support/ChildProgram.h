// Runs a program as a child process the way a user or a script would, and
// collects what it printed and its exit status.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testsupport {

struct ProgramResult {
    int exitStatus = -1;  // -1 when it did not exit normally
    std::string output;   // standard output
    std::string errors;   // standard error
};

struct ProgramSettings {
    // Each variable is set, or unset when it has no value.
    std::vector<std::pair<std::string, std::optional<std::string>>> environment;
    // Run without the power to read any file whatever its permissions, which
    // a test running as root would otherwise keep: then a file whose
    // permissions the test dropped cannot be read by the program.
    bool withoutPermissionOverride = false;
    // Every file the program writes is limited to this many bytes: a write
    // past it fails as on a full disk.
    std::optional<std::size_t> fileSizeLimit;
};

// `command` is the program (a path, or a name looked up on PATH) and its
// arguments. Standard input is empty and no terminal; standard output and
// error are pipes.
ProgramResult RunProgram(const std::vector<std::string>& command, const ProgramSettings& settings = {});

// Standard input and output are a terminal, `input` what the user types;
// standard error goes to a pipe.
ProgramResult RunProgramOnTerminal(const std::vector<std::string>& command, const std::string& input,
                                   const ProgramSettings& settings = {});

}  // namespace testsupport
