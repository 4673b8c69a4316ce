// Runs the built kelvra-host binary and collects what it printed on
// standard output and its exit status.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelvra::testing {

struct CommandResult {
    int exitStatus = -1;
    std::string output;
    std::string errors;  // what it printed on standard error
};

// A variable to set, or to unset when it has no value.
using Environment = std::vector<std::pair<std::string, std::optional<std::string>>>;

// Standard input is empty and no terminal; standard output a pipe.
CommandResult RunKelvraHost(const std::vector<std::string>& arguments, const Environment& environment = {});

// Standard input and output are a terminal; `input` is what the user types.
CommandResult RunKelvraHostOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                                      const Environment& environment);

// The lines of `output` that begin with `prefix`.
std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix);

}  // namespace kelvra::testing
