// Builds the bytes of a resource at compile time, big-endian as the host
// reads them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace resources {

template <std::size_t Size>
class ResourceImage {
public:
    constexpr void Put32(std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8) Put(static_cast<std::uint8_t>(value >> shift));
    }
    constexpr void Put16(std::uint16_t value) {
        Put(static_cast<std::uint8_t>(value >> 8));
        Put(static_cast<std::uint8_t>(value));
    }
    constexpr void PutBytes(std::string_view bytes) {
        for (char byte : bytes) Put(static_cast<std::uint8_t>(byte));
    }
    // Fails the build when the image is not filled exactly.
    constexpr const std::array<std::uint8_t, Size>& Bytes() const {
        if (used_ != Size) throw "resource image not filled";
        return bytes_;
    }

private:
    constexpr void Put(std::uint8_t byte) {
        if (used_ == Size) throw "resource image overflow";
        bytes_[used_++] = byte;
    }

    std::array<std::uint8_t, Size> bytes_{};
    std::size_t used_ = 0;
};

// Four bytes of a 32-bit value, most significant first.
constexpr std::array<char, 4> BigEndian32(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

}  // namespace resources
