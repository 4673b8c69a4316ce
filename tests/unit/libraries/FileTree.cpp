#include "FileTree.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>
#include <stdexcept>

namespace testsupport {

std::string FileTree::At(const std::string& relative) const { return (Root() / relative).string(); }

std::string FileTree::File(const std::string& relative, const std::string& contents) {
    const std::filesystem::path path = Root() / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path.string();
}

std::string FileTree::Folder(const std::string& relative) {
    const std::filesystem::path path = Root() / relative;
    std::filesystem::create_directories(path);
    return path.string();
}

std::string FileTree::Link(const std::string& relative, const std::string& target) {
    const std::filesystem::path path = Root() / relative;
    std::filesystem::create_directories(path.parent_path());
    std::filesystem::create_symlink(target, path);
    return path.string();
}

void FileTree::Remove(const std::string& relative) { std::filesystem::remove_all(Root() / relative); }

void FileTree::SetTime(const std::string& relative, std::int64_t seconds, long nanoseconds) {
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    if (utimensat(AT_FDCWD, At(relative).c_str(), times, AT_SYMLINK_NOFOLLOW) != 0) {
        throw std::runtime_error("cannot set the time of " + At(relative));
    }
}

kv::platform::FileTime FileTimeAt(std::int64_t seconds, long nanoseconds) {
    // 369 years of 365 days and 89 leap days lie between 1601 and 1970.
    const std::uint64_t ticks = (std::uint64_t(seconds) + (369ull * 365 + 89) * 86400) * 10'000'000 +
                                std::uint64_t(nanoseconds) / 100;
    return {std::uint32_t(ticks & 0xFFFFFFFF), std::uint32_t(ticks >> 32)};
}

}  // namespace testsupport
