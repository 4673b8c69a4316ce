// The expected values are computed here from first principles: the sRGB
// primaries and D65 white give the RGB-to-XYZ matrix, the Bradford cone
// matrix gives the D50-to-D65 adaptation, independently of the host's
// multiplied-out matrix.
#include "HostTesting.h"

#include "color/ColorConversion.h"

#include <KVSwatchSuites.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using Matrix = std::array<std::array<double, 3>, 3>;
using Vector = std::array<double, 3>;

Matrix Multiply(const Matrix& a, const Matrix& b) {
    Matrix m{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) m[i][j] += a[i][k] * b[k][j];
    return m;
}

Vector Apply(const Matrix& m, const Vector& v) {
    Vector r{};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k) r[i] += m[i][k] * v[k];
    return r;
}

Matrix Inverse(const Matrix& m) {
    const double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                       m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                       m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    Matrix r{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const int r0 = (j + 1) % 3, r1 = (j + 2) % 3, c0 = (i + 1) % 3, c1 = (i + 2) % 3;
            r[i][j] = (m[r0][c0] * m[r1][c1] - m[r0][c1] * m[r1][c0]) / det;
        }
    return r;
}

Matrix Diagonal(const Vector& v) { return {{{v[0], 0, 0}, {0, v[1], 0}, {0, 0, v[2]}}}; }

const Vector kD50 = {0.96422, 1.0, 0.82521};
const Vector kD65 = {0.95047, 1.0, 1.08883};

Matrix XyzD50ToLinearSrgb() {
    // Columns: the primaries' XYZ at Y = 1, scaled so that RGB 1,1,1 is D65.
    const double xy[3][2] = {{0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};
    Matrix primaries{};
    for (int c = 0; c < 3; ++c) {
        primaries[0][c] = xy[c][0] / xy[c][1];
        primaries[1][c] = 1.0;
        primaries[2][c] = (1.0 - xy[c][0] - xy[c][1]) / xy[c][1];
    }
    const Vector scale = Apply(Inverse(primaries), kD65);
    const Matrix rgbToXyz = Multiply(primaries, Diagonal(scale));
    const Matrix bradford = {{{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};
    const Vector source = Apply(bradford, kD50), target = Apply(bradford, kD65);
    const Matrix adapt =
        Multiply(Inverse(bradford), Multiply(Diagonal({target[0] / source[0], target[1] / source[1],
                                                       target[2] / source[2]}),
                                             bradford));
    return Multiply(Inverse(rgbToXyz), adapt);
}

std::array<double, 3> Expected(double l, double a, double b) {
    const double e = 216.0 / 24389.0, k = 24389.0 / 27.0;
    const double fy = (l + 16) / 116, fx = fy + a / 500, fz = fy - b / 200;
    auto f = [&](double t) { return t * t * t > e ? t * t * t : (116 * t - 16) / k; };
    const Vector xyz = {f(fx) * kD50[0], (l > k * e ? fy * fy * fy : l / k) * kD50[1], f(fz) * kD50[2]};
    const Vector linear = Apply(XyzD50ToLinearSrgb(), xyz);
    std::array<double, 3> rgb{};
    for (int i = 0; i < 3; ++i) {
        const double v = linear[i] <= 0.0031308 ? 12.92 * linear[i] : 1.055 * std::pow(linear[i], 1 / 2.4) - 0.055;
        rgb[i] = std::min(1.0, std::max(0.0, v));
    }
    return rgb;
}

TEST(ColorConversionTest, MatchesAnIndependentComputation) {
    for (double l : {0.0, 5.0, 8.0, 25.0, 50.0, 75.0, 100.0})
        for (double a : {-100.0, -20.0, 0.0, 30.0, 90.0})
            for (double b : {-110.0, -5.0, 0.0, 40.0, 100.0}) {
                const auto got = color::LabD50ToSrgb(float(l), float(a), float(b));
                const auto want = Expected(l, a, b);
                for (int i = 0; i < 3; ++i)
                    EXPECT_NEAR(got[i], want[i], 2e-4) << l << " " << a << " " << b << " channel " << i;
            }
}

TEST(ColorConversionTest, WhiteIsWhiteAndBlackIsBlack) {
    const auto white = color::LabD50ToSrgb(100, 0, 0);
    const auto black = color::LabD50ToSrgb(0, 0, 0);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(white[i], 1.0f, 1e-3);
        EXPECT_EQ(black[i], 0.0f);
    }
}

TEST(ColorConversionTest, ChannelsAreClampedToZeroToOne) {
    const auto out = color::LabD50ToSrgb(50, 127, -128);  // far outside sRGB
    for (float channel : out) {
        EXPECT_GE(channel, 0.0f);
        EXPECT_LE(channel, 1.0f);
    }
    EXPECT_EQ(out[1], 0.0f);
    EXPECT_EQ(color::LabD50ToSrgb(150, 0, 0)[0], 1.0f);
}

TEST(ColorConversionTest, TheSuiteConvertsLabToRgbOnly) {
    kelvra::Host host;
    const auto* suite = kelvra::testing::Acquire<KVColorConversionSuite>(host, kKVColorConversionSuite, 10);
    const float lab[3] = {50, 20, -30};
    float rgb[3] = {};
    ASSERT_EQ(suite->ConvertColor(kKVLabSpace, lab, kKVRGBSpace, rgb), 0u);
    const auto want = Expected(50, 20, -30);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(rgb[i], want[i], 2e-4);
    EXPECT_EQ(suite->ConvertColor(kKVRGBSpace, lab, kKVLabSpace, rgb), kZPBadParameterErr);
    EXPECT_EQ(suite->ConvertColor(kKVLabSpace, nullptr, kKVRGBSpace, rgb), kZPBadParameterErr);
}

}  // namespace
