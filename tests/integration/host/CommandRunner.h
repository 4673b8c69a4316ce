// Runs the built kelvra-host binary and collects what it printed on
// standard output and its exit status.
#pragma once

#include <string>
#include <vector>

namespace kelvra::testing {

struct CommandResult {
    int exitStatus = -1;
    std::string output;
};

CommandResult RunKelvraHost(const std::vector<std::string>& arguments);

// The lines of `output` that begin with `prefix`.
std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix);

}  // namespace kelvra::testing
