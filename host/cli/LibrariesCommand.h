// kelvra-host libraries: remembers library files as the host's "open other
// library" command does, shows the host's side of the library list (the
// folder of each host folder type and the remembered files as the
// preferences hold them), then starts the module and, as another plug-in
// of its suite, shows the numbered list a swatches panel would show and
// opens libraries by number or by file.
#pragma once

#include "HostSetup.h"
#include "TerminalColor.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace kelvra::cli {

struct LibrariesOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    HostSetup setup;
    std::vector<std::filesystem::path> remember;  // in the order given, before anything else
    std::vector<std::int32_t> open;               // OpenLibrary, in the order given
    std::vector<std::filesystem::path> openFiles;  // OpenLibraryFile, after them
    bool json = false;
    ColorChoice color = ColorChoice::Auto;  // chips of an opened library's swatches
};

// 0 when every file was remembered, the remembered list reads without a
// failure, the module started, every library opened and the list was read;
// 1 otherwise.
int Libraries(const LibrariesOptions& options);

}  // namespace kelvra::cli
