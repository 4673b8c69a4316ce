// What a reader answers. Readers never throw for bad data: they answer one
// of these and leave in the book what they added before the failure.
#pragma once

#include <cstdint>

namespace formats {

inline constexpr std::int32_t kReadOK = 0;
inline constexpr std::int32_t kReadStreamNotOpen = 1;   // not open, or not readable into memory
inline constexpr std::int32_t kReadXmlParseError = 2;
inline constexpr std::int32_t kReadBadMagic = 3;
inline constexpr std::int32_t kReadBadVersion = 4;
inline constexpr std::int32_t kReadTruncated = 5;       // the data ended early
inline constexpr std::int32_t kReadTooManyBlocks = 6;
inline constexpr std::int32_t kReadUnknownColorSpace = 8;

}  // namespace formats
