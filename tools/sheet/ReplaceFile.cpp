#include "ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace sheet {
namespace {

std::string Failed(const std::string& what) { return what + ": " + std::strerror(errno); }

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        bytes.remove_prefix(std::size_t(n));
    }
    return true;
}

}  // namespace

std::string ReplaceFile(const std::string& path, std::string_view bytes) {
    const std::filesystem::path target(path);
    std::error_code error;
    if (std::filesystem::is_directory(target, error)) return path + ": is a directory";
    // Hidden, so that a folder scan running meanwhile passes it by.
    std::string temporary = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    const int fd = mkstemp(temporary.data());
    if (fd < 0) return Failed(path + ": cannot write beside it");
    std::string why;
    if (!WriteAll(fd, bytes)) why = Failed(path + ": cannot write");
    if (close(fd) != 0 && why.empty()) why = Failed(path + ": cannot write");
    // mkstemp makes the file private; give it the permissions a new file gets.
    const mode_t mask = umask(0);
    umask(mask);
    if (why.empty() && chmod(temporary.c_str(), 0666 & ~mask) != 0) why = Failed(path + ": cannot write");
    if (why.empty() && std::rename(temporary.c_str(), path.c_str()) != 0) why = Failed(path + ": cannot replace");
    if (!why.empty()) unlink(temporary.c_str());
    return why;
}

}  // namespace sheet
