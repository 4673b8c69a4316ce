// The host's colour conversion: CIE Lab (D50) to sRGB.
#pragma once

#include <array>

namespace kelvra {

// Lab under D50 to XYZ, Bradford adaptation to D65, linear sRGB, the sRGB
// transfer curve; each channel clamped to 0..1.
std::array<float, 3> LabD50ToSrgb(float l, float a, float b);

}  // namespace kelvra
