// Runs the built kelvra-host binary and collects what it printed and its
// exit status.
#pragma once

#include "tests/support/ChildProgram.h"

#include <string>
#include <vector>

namespace kelvra::testing {

using CommandResult = testsupport::ProgramResult;

// Standard input is empty and no terminal; standard output a pipe.
CommandResult RunKelvraHost(const std::vector<std::string>& arguments, const testsupport::ProgramSettings& settings = {});

// Standard input and output are a terminal; `input` is what the user types.
CommandResult RunKelvraHostOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                                      const testsupport::ProgramSettings& settings);

// Settings that set or unset these variables.
testsupport::ProgramSettings WithEnvironment(
    std::vector<std::pair<std::string, std::optional<std::string>>> variables);

// Settings that limit every file the command writes to `bytes`: a write
// past that fails, as on a full disk.
testsupport::ProgramSettings WithFileSizeLimit(std::size_t bytes);

// The lines of `output` that begin with `prefix`.
std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix);

}  // namespace kelvra::testing
