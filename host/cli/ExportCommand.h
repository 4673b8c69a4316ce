// kelvra-host export: the swatches of a document written as a swatch
// exchange file by the module's suite, as another plug-in would export
// them; a failed export leaves an existing file as it was.
#pragma once

#include "HostSetup.h"
#include "TerminalColor.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace kelvra::cli {

struct ExportOptions {
    std::filesystem::path module;  // DefaultModule() unless given
    std::filesystem::path output;
    // The document: made by placing these files through the module's
    // registered formats into one new document ...
    std::vector<std::filesystem::path> files;
    // ... or read from the host's document file.
    std::optional<std::filesystem::path> document;
    std::optional<bool> answer;  // the answer to every question; else ask on a terminal, else yes
    HostSetup setup;
    bool json = false;
    ColorChoice color = ColorChoice::Auto;  // chips in the readable form
};

// 0 when the document was made or read and the file written; 1 otherwise.
int Export(const ExportOptions& options);

}  // namespace kelvra::cli
