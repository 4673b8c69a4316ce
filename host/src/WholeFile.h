// A whole small file read into memory, for the host's own files (its
// preferences, its documents).
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace kelvra {

// None when the path names no regular file (links followed) or it cannot
// be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& file);

}  // namespace kelvra
