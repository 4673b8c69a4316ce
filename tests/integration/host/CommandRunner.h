// Runs the built kelvra-host binary and collects what it printed on
// standard output and its exit status.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelvra::testing {

struct CommandResult {
    int exitStatus = -1;
    std::string output;
};

// Standard input is empty and no terminal; standard output a pipe.
CommandResult RunKelvraHost(const std::vector<std::string>& arguments);

// As RunKelvraHost, with every file the command writes limited to `bytes`:
// a write past that fails, as on a full disk.
CommandResult RunKelvraHostWithFileSizeLimit(const std::vector<std::string>& arguments, std::size_t bytes);

// Standard input and output are a terminal; `input` is what the user types.
// Each variable of `environment` is set, or unset when it has no value.
CommandResult RunKelvraHostOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                                      const std::vector<std::pair<std::string, std::optional<std::string>>>& environment);

// The lines of `output` that begin with `prefix`.
std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix);

}  // namespace kelvra::testing
