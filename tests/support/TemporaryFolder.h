// A fresh folder under the system's temporary folder for the files a test
// writes, removed with everything in it when the object goes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    // Writes the file `name` in the folder; answers its path.
    std::string Write(const std::string& name, std::string_view bytes) const;
    std::string Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const;

private:
    std::filesystem::path path_;
};

}  // namespace testsupport
