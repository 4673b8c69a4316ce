// Codes shared by every swatch book: colour spaces, encodings, swatch kinds.
#pragma once

#include <cstdint>

namespace swatchbook {

// Colour spaces; 1..6 are valid.
inline constexpr std::int32_t kCustomSpace = 1;
inline constexpr std::int32_t kGraySpace = 2;
inline constexpr std::int32_t kLabSpace = 3;
inline constexpr std::int32_t kRGBSpace = 4;
inline constexpr std::int32_t kCMYKSpace = 5;
inline constexpr std::int32_t kXYZSpace = 6;

// Encodings of colour values; 1..3 are valid.
inline constexpr std::int32_t kInt8Encoding = 1;   // unsigned bytes 0..255
inline constexpr std::int32_t kInt16Encoding = 2;  // unsigned 16-bit 0..65535, machine byte order
inline constexpr std::int32_t kFloatEncoding = 3;  // doubles, the books' working form

// Swatch kinds; a book accepts 1..3. Readers also pass 4 for an empty place.
inline constexpr std::int32_t kSpotKind = 1;
inline constexpr std::int32_t kGlobalKind = 2;
inline constexpr std::int32_t kProcessKind = 3;
inline constexpr std::int32_t kEmptyPlaceKind = 4;

// The most channels any colour space has.
inline constexpr int kMaxChannels = 4;

// Channels of a colour space; 0 for Custom (counted per format) and for
// anything that is not a colour space.
constexpr std::int32_t DefaultChannelCount(std::int32_t colorSpace) {
    switch (colorSpace) {
        case kGraySpace: return 1;
        case kLabSpace: return 3;
        case kRGBSpace: return 3;
        case kCMYKSpace: return 4;
        case kXYZSpace: return 3;
        default: return 0;
    }
}

// Bytes of one channel value; 0 for anything that is not an encoding.
constexpr std::int32_t BytesPerChannel(std::int32_t encoding) {
    switch (encoding) {
        case kInt8Encoding: return 1;
        case kInt16Encoding: return 2;
        case kFloatEncoding: return 8;
        default: return 0;
    }
}

}  // namespace swatchbook
