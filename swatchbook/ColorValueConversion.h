// Conversion of one swatch's channel values between the Int8, Int16 and
// Float encodings. This is the only place where values are scaled, rounded
// and clamped. The rules are lossy and saturate early on purpose: library
// files round-trip through them, so they must not be "improved".
#pragma once

#include <cstdint>

namespace swatchbook {

// Converts the channels of `colorSpace` (Gray 1, Lab 3, RGB 3, CMYK 4, XYZ 3)
// from `source`, packed in `sourceEncoding`, into `target`, packed in
// `targetEncoding`. Int16 channels are in the machine's byte order; neither
// buffer needs any alignment.
//
// False for a colour space without a fixed channel count (Custom included),
// whatever the encodings. True, writing nothing, when either encoding is not
// 1..3. False, writing nothing, when a buffer it would use is null.
bool ConvertColorValues(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
                        std::int32_t targetEncoding, void* target);

// The same conversion with every value worked out by its rule as written,
// where ConvertColorValues looks Int8 values up in tables made by those
// rules: the reference that tests hold the faster one to.
bool ConvertColorValuesByRule(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
                              std::int32_t targetEncoding, void* target);

// The Lab a/b rule of Float to Int16: 1/256 steps around an offset of 128,
// added after scaling, so 0.0 becomes 128.
std::uint16_t DoubleToLabInt16(double value);

}  // namespace swatchbook
