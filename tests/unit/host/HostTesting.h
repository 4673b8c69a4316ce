// Helpers for tests that act as a plug-in talking to the emulated host.
#pragma once

#include <kelvra/Host.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace kelvra::testing {

// The suite `name` in `version`, acquired through the host's basic suite.
template <typename Suite>
const Suite* Acquire(const Host& host, const char* name, std::int32_t version) {
    const void* suite = nullptr;
    EXPECT_EQ(host.BasicSuite()->AcquireSuite(name, version, &suite), 0u) << name;
    return static_cast<const Suite*>(suite);
}

// A fresh folder under the system's temporary folder, removed afterwards.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kelvra-host-test-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace kelvra::testing
