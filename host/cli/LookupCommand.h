// kelvra-host lookup: a colour book or XML swatchbook read into a reference
// book through the module's suite, and colours looked up in it by name, as
// another plug-in would.
#pragma once

#include "HostSetup.h"
#include "TerminalColor.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kelvra::cli {

struct LookupOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    std::filesystem::path file;
    std::vector<std::string> names;  // full names, prefix and postfix included
    HostSetup setup;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;  // chips in the readable form
};

// 0 when the book was read and every name found; 1 otherwise.
int Lookup(const LookupOptions& options);

}  // namespace kelvra::cli
