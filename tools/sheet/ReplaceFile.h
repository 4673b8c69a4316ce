// Writing an output file, a sheet or a converted library, so that a failure
// leaves what was there before.
#pragma once

#include <string>
#include <string_view>

namespace sheet {

// Writes `bytes` to a hidden temporary file beside `path` and renames it
// over `path` once it is complete. On failure the temporary file is removed,
// `path` is untouched, and the answer says why; empty on success.
std::string ReplaceFile(const std::string& path, std::string_view bytes);

}  // namespace sheet
