#include "ScreenColor.h"

#include <algorithm>
#include <cmath>

namespace color {

Srgb CmykToSrgbApproximation(float c, float m, float y, float k) {
    return {(1 - c) * (1 - k), (1 - m) * (1 - k), (1 - y) * (1 - k)};
}

Srgb TintTowardWhite(const Srgb& colour, float tint) {
    Srgb tinted{};
    for (std::size_t i = 0; i < tinted.size(); ++i) tinted[i] = colour[i] * (1 - tint) + tint;
    return tinted;
}

std::uint8_t SrgbByte(float channel) {
    if (std::isnan(channel)) return 0;
    // In double, as values are written for a person, so that a byte is the
    // 0-255 number shown beside it (0.9 gives 229, not the float product's 230).
    return std::uint8_t(std::lround(double(std::clamp(channel, 0.0f, 1.0f)) * 255.0));
}

std::array<std::uint8_t, 3> SrgbBytes(const Srgb& colour) {
    return {SrgbByte(colour[0]), SrgbByte(colour[1]), SrgbByte(colour[2])};
}

}  // namespace color

namespace color {

std::string HexColour(const std::array<std::uint8_t, 3>& bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex = "#";
    for (std::uint8_t channel : bytes) {
        hex += kDigits[channel >> 4];
        hex += kDigits[channel & 15];
    }
    return hex;
}

}  // namespace color
