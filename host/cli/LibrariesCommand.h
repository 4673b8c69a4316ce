// kelvra-host libraries: remembers library files as the host's "open other
// library" command does, and shows the host's side of the library list:
// the folder of each host folder type and the remembered files as the
// preferences hold them.
#pragma once

#include "HostSetup.h"

#include <filesystem>
#include <vector>

namespace kelvra::cli {

struct LibrariesOptions {
    HostSetup setup;
    std::vector<std::filesystem::path> remember;  // in the order given, before anything else
    bool json = false;
};

// 0 when every file was remembered and the remembered list reads without a
// failure; 1 otherwise.
int Libraries(const LibrariesOptions& options);

}  // namespace kelvra::cli
