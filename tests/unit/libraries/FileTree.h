// Real directory trees for the library tests, built in a temporary folder:
// files, folders, symbolic links and last-write times set exactly.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/FileTime.h"
#include "tests/support/TemporaryFolder.h"

namespace testsupport {

class FileTree {
public:
    const std::filesystem::path& Root() const { return folder_.Path(); }
    // The path of `relative` in the tree, as a string.
    std::string At(const std::string& relative) const;

    // Each makes the folders above it as needed and answers its path.
    std::string File(const std::string& relative, const std::string& contents = "library");
    std::string Folder(const std::string& relative);
    std::string Link(const std::string& relative, const std::string& target);
    void Remove(const std::string& relative);

    // Sets the last-write time (of the link itself, for a link) to
    // `seconds` after the epoch and `nanoseconds`.
    void SetTime(const std::string& relative, std::int64_t seconds, long nanoseconds = 0);

private:
    TemporaryFolder folder_;
};

// The FILETIME of seconds and nanoseconds after the epoch, worked out here
// independently of the code under test.
kv::platform::FileTime FileTimeAt(std::int64_t seconds, long nanoseconds = 0);

}  // namespace testsupport
