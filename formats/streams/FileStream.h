// A stream over a real file, for reading and writing library files where no
// host is at hand (the format tool, tests, benchmarks).
#pragma once

#include <cstdio>

#include "OrvikSwatchbookStream.h"

namespace formats {

class FileStream final : public OrvikSwatchbookStream {
public:
    // Opens `path` for reading, or creates or truncates it for writing; a
    // file that cannot be opened leaves the stream closed.
    FileStream(const char* path, bool reading);
    ~FileStream() override;
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    std::int32_t IsOpen() const override { return file_ != nullptr ? 1 : 0; }
    std::int32_t IsReading() const override { return reading_; }
    std::int64_t Read(void* destination, std::size_t count) override;
    std::int64_t Write(const void* source, std::size_t count) override;

private:
    std::FILE* file_;
    std::int32_t reading_;
};

}  // namespace formats
