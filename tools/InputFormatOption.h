// The --format option of the commands that read any input (BookInput.h).
#pragma once

#include <CLI/CLI.hpp>

#include <iterator>
#include <string>
#include <vector>

#include "BookInput.h"

namespace tool {

inline void AddInputFormatOption(CLI::App& command, std::string& format, const std::string& description) {
    command.add_option("--format", format, description)
        ->check(CLI::IsMember(std::vector<std::string>(std::begin(kInputFormatNames), std::end(kInputFormatNames))))
        ->capture_default_str();
}

}  // namespace tool
