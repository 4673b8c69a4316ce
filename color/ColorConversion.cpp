#include "ColorConversion.h"

#include <algorithm>
#include <cmath>

namespace color {

namespace {

// D50 reference white of the Lab values.
constexpr double kWhiteX = 0.96422, kWhiteY = 1.0, kWhiteZ = 0.82521;
constexpr double kEpsilon = 216.0 / 24389.0;
constexpr double kKappa = 24389.0 / 27.0;

// XYZ (D50) to linear sRGB: the Bradford adaptation to D65 followed by the
// sRGB primaries' inverse matrix, multiplied out.
constexpr double kXyzD50ToLinearSrgb[3][3] = {
    {3.1338561, -1.6168667, -0.4906146},
    {-0.9787684, 1.9161415, 0.0334540},
    {0.0719453, -0.2289914, 1.4052427},
};

double InverseCompand(double f) {
    const double cube = f * f * f;
    return cube > kEpsilon ? cube : (116.0 * f - 16.0) / kKappa;
}

double SrgbTransfer(double linear) {
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

}  // namespace

std::array<float, 3> LabD50ToSrgb(float l, float a, float b) {
    const double fy = (double(l) + 16.0) / 116.0;
    const double fx = fy + double(a) / 500.0;
    const double fz = fy - double(b) / 200.0;
    const double yr = double(l) > kKappa * kEpsilon ? fy * fy * fy : double(l) / kKappa;
    const double xyz[3] = {InverseCompand(fx) * kWhiteX, yr * kWhiteY, InverseCompand(fz) * kWhiteZ};
    std::array<float, 3> rgb{};
    for (int row = 0; row < 3; ++row) {
        double linear = 0.0;
        for (int column = 0; column < 3; ++column) linear += kXyzD50ToLinearSrgb[row][column] * xyz[column];
        // NaN input stays out of the clamp's way: it becomes 0.
        const double encoded = SrgbTransfer(linear);
        rgb[std::size_t(row)] = std::isnan(encoded) ? 0.0f : float(std::clamp(encoded, 0.0, 1.0));
    }
    return rgb;
}

}  // namespace color
