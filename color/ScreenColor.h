// How a swatch is shown on a screen where no colour management is at hand:
// the same rules for the host's colour chips and for swatch sheets.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace color {

using Srgb = std::array<float, 3>;

// CMYK fractions taken off white, each ink scaled by what black leaves:
// R = (1 - C)(1 - K), G = (1 - M)(1 - K), B = (1 - Y)(1 - K). An
// approximation; no ink profile is involved.
Srgb CmykToSrgbApproximation(float c, float m, float y, float k);

// A tint mixes the colour toward white: 0 is the colour, 1 white.
Srgb TintTowardWhite(const Srgb& colour, float tint);

// A channel 0..1 as 0..255, rounded; out-of-range values are clamped and
// NaN gives 0.
std::uint8_t SrgbByte(float channel);
std::array<std::uint8_t, 3> SrgbBytes(const Srgb& colour);

// "#1A2B3C".
std::string HexColour(const std::array<std::uint8_t, 3>& bytes);

}  // namespace color
