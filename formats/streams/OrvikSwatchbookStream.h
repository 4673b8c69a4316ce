// The byte stream every reader and the writer work on. The order of the
// virtual operations is part of the interface; keep it.
#pragma once

#include <cstddef>
#include <cstdint>

class OrvikSwatchbookStream {
public:
    virtual ~OrvikSwatchbookStream() = default;
    // Non-zero when the stream was opened.
    virtual std::int32_t IsOpen() const = 0;
    // 1 for a stream opened for reading, 0 for writing.
    virtual std::int32_t IsReading() const = 0;
    // Bytes read, 0 on error; a short count marks the end of the data.
    virtual std::int64_t Read(void* destination, std::size_t count) = 0;
    // Bytes written, 0 on error.
    virtual std::int64_t Write(const void* source, std::size_t count) = 0;
};
