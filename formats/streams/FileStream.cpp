#include "FileStream.h"

namespace formats {

FileStream::FileStream(const char* path, bool reading)
    : file_(path != nullptr ? std::fopen(path, reading ? "rb" : "wb") : nullptr), reading_(reading ? 1 : 0) {}

FileStream::~FileStream() {
    if (file_ != nullptr) std::fclose(file_);
}

std::int64_t FileStream::Read(void* destination, std::size_t count) {
    if (file_ == nullptr || reading_ != 1) return 0;
    const std::size_t got = std::fread(destination, 1, count, file_);
    return std::ferror(file_) ? 0 : std::int64_t(got);
}

std::int64_t FileStream::Write(const void* source, std::size_t count) {
    if (file_ == nullptr || reading_ != 0) return 0;
    return std::int64_t(std::fwrite(source, 1, count, file_));
}

}  // namespace formats
