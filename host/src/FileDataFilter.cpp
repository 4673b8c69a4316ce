#include "FileDataFilter.h"

#include "HostCodes.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace kelvra {

namespace {

std::atomic<unsigned> temporaryCounter{0};

// A hidden name beside the target, so folder scans skip it.
std::string TemporaryName(const std::string& target, unsigned attempt) {
    const std::size_t slash = target.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : target.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? target : target.substr(slash + 1);
    return folder + "." + name + ".kvtmp-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
}

}  // namespace

FileDataFilter::~FileDataFilter() { Discard(); }

void FileDataFilter::Discard() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
    if (!temporary_.empty()) unlink(temporary_.c_str());
    temporary_.clear();
}

ZPErr FileDataFilter::Open() {
    if (IsOpen()) return kZPBadParameterErr;
    if (mode_ == Mode::Read) {
        fd_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
        return fd_ >= 0 ? kZPNoErr : kFileOpenErr;
    }
    for (int tries = 0; tries < 100; ++tries) {
        std::string name = TemporaryName(path_, temporaryCounter++);
        fd_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd_ >= 0) {
            temporary_ = std::move(name);
            return kZPNoErr;
        }
        if (errno != EEXIST) break;
    }
    return kFileOpenErr;
}

ZPErr FileDataFilter::Read(char* store, std::size_t* count) {
    if (mode_ != Mode::Read || !IsOpen()) return kZPBadParameterErr;
    std::size_t done = 0;
    while (done < *count) {
        const ssize_t n = read(fd_, store + done, *count - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            *count = done;
            return kFileReadErr;
        }
        if (n == 0) break;
        done += std::size_t(n);
    }
    *count = done;
    return kZPNoErr;
}

ZPErr FileDataFilter::Write(const char* store, std::size_t* count) {
    if (mode_ != Mode::Write || !IsOpen()) return kZPBadParameterErr;
    std::size_t done = 0;
    while (done < *count) {
        const ssize_t n = write(fd_, store + done, *count - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            failed_ = true;
            *count = done;
            return kFileWriteErr;
        }
        done += std::size_t(n);
    }
    *count = done;
    return kZPNoErr;
}

ZPErr FileDataFilter::Finish() {
    if (!IsOpen()) return kZPNoErr;
    if (mode_ == Mode::Read) {
        close(fd_);
        fd_ = -1;
        return kZPNoErr;
    }
    const bool closed = close(fd_) == 0;
    fd_ = -1;
    if (failed_) {
        // The failure was answered when it happened; the old file stays.
        Discard();
        return kZPNoErr;
    }
    if (!closed || std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        Discard();
        return kFileWriteErr;
    }
    temporary_.clear();
    return kZPNoErr;
}

}  // namespace kelvra
