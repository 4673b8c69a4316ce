// A stream over bytes in memory, for reading a built file or collecting what
// a writer writes.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "formats/streams/OrvikSwatchbookStream.h"

namespace testsupport {

class MemoryStream final : public OrvikSwatchbookStream {
public:
    static MemoryStream Reading(std::vector<std::uint8_t> bytes) { return MemoryStream(std::move(bytes), true, true); }
    static MemoryStream Writing() { return MemoryStream({}, false, true); }
    static MemoryStream Closed(bool reading) { return MemoryStream({}, reading, false); }

    std::int32_t IsOpen() const override { return open_ ? 1 : 0; }
    std::int32_t IsReading() const override { return reading_ ? 1 : 0; }
    std::int64_t Read(void* destination, std::size_t count) override;
    std::int64_t Write(const void* source, std::size_t count) override;

    // Reading starts again at the first byte.
    void Rewind() { position_ = 0; }

    // Writes past this many bytes in total come up short.
    void LimitWrites(std::size_t bytes) { writeLimit_ = bytes; }
    // Makes room up front, so that writing up to `bytes` allocates nothing.
    void Reserve(std::size_t bytes) { bytes_.reserve(bytes); }

    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }
    std::size_t ReadCalls() const { return readCalls_; }

private:
    MemoryStream(std::vector<std::uint8_t> bytes, bool reading, bool open)
        : bytes_(std::move(bytes)), reading_(reading), open_(open) {}

    std::vector<std::uint8_t> bytes_;
    bool reading_;
    bool open_;
    std::size_t position_ = 0;
    std::size_t writeLimit_ = std::numeric_limits<std::size_t>::max();
    std::size_t readCalls_ = 0;
};

}  // namespace testsupport
