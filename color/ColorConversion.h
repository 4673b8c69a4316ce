// Colour conversion shared by the emulated host and the tools: the host's
// CIE Lab (D50) to sRGB, so that a sheet shows a Lab colour as the host
// converts it.
#pragma once

#include <array>

namespace color {

// Lab under D50 to XYZ, Bradford adaptation to D65, linear sRGB, the sRGB
// transfer curve; each channel clamped to 0..1.
std::array<float, 3> LabD50ToSrgb(float l, float a, float b);

}  // namespace color
