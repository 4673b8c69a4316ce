// Builds binary test files field by field, big-endian.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

using Bytes = std::vector<std::uint8_t>;

class ByteWriter {
public:
    ByteWriter& U8(std::uint8_t value);
    ByteWriter& U16(std::uint16_t value);
    ByteWriter& U32(std::uint32_t value);
    ByteWriter& Float(float value);                   // its bit pattern as U32
    ByteWriter& Ascii(std::string_view text);         // one byte per character
    ByteWriter& Units(const std::u16string& text);    // big-endian code units, no count
    ByteWriter& Raw(const Bytes& bytes);

    const Bytes& Data() const { return bytes_; }
    std::size_t Size() const { return bytes_.size(); }

private:
    Bytes bytes_;
};

// Overwrites four bytes at `offset` with `value`, big-endian.
void PatchU32(Bytes& bytes, std::size_t offset, std::uint32_t value);

}  // namespace testsupport
