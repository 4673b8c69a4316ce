#include "TemporaryFolder.h"

#include <stdlib.h>

#include <fstream>
#include <stdexcept>

namespace testsupport {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tintora-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a folder like " + pattern);
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::Write(const std::string& name, std::string_view bytes) const {
    const std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    return file.string();
}

std::string TemporaryFolder::Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
    return Write(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

}  // namespace testsupport
