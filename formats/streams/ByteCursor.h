// A reading position in a file held whole in memory. Callers check that
// enough bytes are left before each read; every check is done in 64-bit
// arithmetic, so a declared length can never wrap around.
#pragma once

#include <cstddef>
#include <cstdint>

#include "BigEndian.h"

namespace formats {

class ByteCursor {
public:
    ByteCursor(std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    std::size_t Position() const { return position_; }
    bool Has(std::uint64_t bytes) const { return bytes <= std::uint64_t(size_ - position_); }

    // Moves to an absolute position; false, without moving, past the end.
    bool Seek(std::uint64_t position) {
        if (position > size_) return false;
        position_ = std::size_t(position);
        return true;
    }

    // The next `bytes` bytes, writable (the readers swap text in place).
    std::uint8_t* Take(std::size_t bytes) {
        std::uint8_t* p = data_ + position_;
        position_ += bytes;
        return p;
    }

    std::uint16_t ReadU16() { return LoadU16(Take(2)); }
    std::uint32_t ReadU32() { return LoadU32(Take(4)); }
    float ReadFloat() { return LoadFloat(Take(4)); }

private:
    std::uint8_t* data_;
    std::size_t size_;
    std::size_t position_ = 0;
};

}  // namespace formats
