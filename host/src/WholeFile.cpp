#include "WholeFile.h"

#include <fstream>
#include <sstream>

namespace kelvra {

std::optional<std::string> ReadWholeFile(const std::filesystem::path& file) {
    // A folder opens as a stream but fails on the first read.
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    // An empty file is read as an empty text, not as a failure.
    if (!in || (in.peek() != std::ifstream::traits_type::eof() && !(text << in.rdbuf()))) return std::nullopt;
    return text.str();
}

}  // namespace kelvra
