#include "CommandRunner.h"

#include <sstream>

namespace kelvra::testing {

namespace {

std::vector<std::string> Command(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {KELVRA_HOST};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

}  // namespace

CommandResult RunKelvraHost(const std::vector<std::string>& arguments, const testsupport::ProgramSettings& settings) {
    return testsupport::RunProgram(Command(arguments), settings);
}


CommandResult RunKelvraHostOnTerminal(const std::vector<std::string>& arguments, const std::string& input,
                                      const testsupport::ProgramSettings& settings) {
    return testsupport::RunProgramOnTerminal(Command(arguments), input, settings);
}

testsupport::ProgramSettings WithEnvironment(
    std::vector<std::pair<std::string, std::optional<std::string>>> variables) {
    testsupport::ProgramSettings settings;
    settings.environment = std::move(variables);
    return settings;
}

testsupport::ProgramSettings WithFileSizeLimit(std::size_t bytes) {
    testsupport::ProgramSettings settings;
    settings.fileSizeLimit = bytes;
    return settings;
}

std::vector<std::string> LinesStartingWith(const std::string& output, const std::string& prefix) {
    std::vector<std::string> lines;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(prefix)) lines.push_back(line);
    }
    return lines;
}

}  // namespace kelvra::testing
