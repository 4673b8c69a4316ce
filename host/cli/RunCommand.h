// kelvra-host run: loads a module, runs its lifecycle and shows what
// happened.
#pragma once

#include "HostSetup.h"

#include <filesystem>

namespace kelvra::cli {

struct RunOptions {
    std::filesystem::path module;
    HostSetup setup;
    bool json = false;
};

// 0 when the module was loaded and its start-up answered 0; 1 otherwise.
int Run(const RunOptions& options);

}  // namespace kelvra::cli
