// Big-endian numbers and UTF-16 text as the binary library files hold them.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace formats {

inline std::uint16_t LoadU16(const std::uint8_t* p) {
    return std::uint16_t((p[0] << 8) | p[1]);
}

inline std::uint32_t LoadU32(const std::uint8_t* p) {
    return (std::uint32_t(p[0]) << 24) | (std::uint32_t(p[1]) << 16) | (std::uint32_t(p[2]) << 8) |
           std::uint32_t(p[3]);
}

inline float LoadFloat(const std::uint8_t* p) {
    return std::bit_cast<float>(LoadU32(p));
}

inline void StoreU16(std::uint8_t* p, std::uint16_t value) {
    p[0] = std::uint8_t(value >> 8);
    p[1] = std::uint8_t(value);
}

inline void StoreU32(std::uint8_t* p, std::uint32_t value) {
    p[0] = std::uint8_t(value >> 24);
    p[1] = std::uint8_t(value >> 16);
    p[2] = std::uint8_t(value >> 8);
    p[3] = std::uint8_t(value);
}

// Turns `units` big-endian UTF-16 code units into host order where they lie.
inline void SwapUtf16InPlace(std::uint8_t* p, std::size_t units) {
    for (std::size_t i = 0; i < units; ++i, p += 2) {
        const std::uint8_t high = p[0];
        p[0] = p[1];
        p[1] = high;
    }
}

// Copies `units` code units already in host order into `text`, reusing its
// storage; `p` need not be aligned.
inline void CopyUtf16(const std::uint8_t* p, std::size_t units, std::u16string& text) {
    text.resize(units);
    if (units != 0) std::memcpy(text.data(), p, units * 2);
}

inline std::u16string CopyUtf16(const std::uint8_t* p, std::size_t units) {
    std::u16string text;
    CopyUtf16(p, units, text);
    return text;
}

}  // namespace formats
