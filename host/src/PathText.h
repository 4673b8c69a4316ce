// The parts of a path's string form the host shows: its file name and its
// extension. Both the File Path suite and the opening of library documents
// ask them, so they agree on what a ".kv" file is.
#pragma once

#include <string>

namespace kelvra {

// The last component, trailing slashes ignored ("/" stays "/").
std::string FileName(const std::string& path);

// After the name's last dot; none for a name that only starts with one.
std::string Extension(const std::string& path);

}  // namespace kelvra
