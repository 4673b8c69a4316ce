#include "ImportTesting.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tests/support/Utf16Text.h"

namespace import_testing {

std::string FloatText(float value) {
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value);
    return std::string(text, written.ptr);
}

namespace {

std::string Values(std::initializer_list<float> values) {
    std::string text;
    for (float value : values) text += " " + FloatText(value);
    return text;
}

}  // namespace

std::string Describe(const kelvra::Document& document, const kelvra::Swatch& swatch) {
    const KVColor& c = swatch.color;
    std::string colour;
    switch (c.kind) {
        case kKVGrayColor: colour = "gray" + Values({c.c.gray.gray}); break;
        case kKVThreeColor: colour = "rgb" + Values({c.c.three.red, c.c.three.green, c.c.three.blue}); break;
        case kKVFourColor:
            colour = "cmyk" + Values({c.c.four.cyan, c.c.four.magenta, c.c.four.yellow, c.c.four.black});
            break;
        case kKVCustomColor: {
            const kelvra::CustomColor* custom = document.Find(c.c.custom.color);
            colour = "custom \"" + (custom != nullptr ? testsupport::U8(custom->name) : "?") + "\" tint " +
                     FloatText(c.c.custom.tint);
            break;
        }
        case kKVPatternColor: colour = "pattern"; break;
        case kKVGradientColor: colour = "gradient"; break;
        default: colour = "none"; break;
    }
    return testsupport::U8(swatch.name) + ": " + colour;
}

std::string Describe(const kelvra::CustomColor& color) {
    const KVCustomColor& d = color.definition;
    std::string definition;
    switch (d.kind) {
        case kKVCustomFourColor:
            definition = "cmyk" + Values({d.c.four.cyan, d.c.four.magenta, d.c.four.yellow, d.c.four.black});
            break;
        case kKVCustomThreeColor: definition = "rgb" + Values({d.c.three.red, d.c.three.green, d.c.three.blue}); break;
        case kKVCustomLabColor: definition = "lab" + Values({d.c.lab.l, d.c.lab.a, d.c.lab.b}); break;
        default: definition = "?"; break;
    }
    const bool spot = (d.flags & kKVCustomSpotColor) != 0;
    return testsupport::U8(color.name) + ": " + definition + (spot ? " spot" : " global") + " book " +
           std::to_string(color.bookId);
}

std::vector<std::string> DescribeSwatches(const kelvra::Document& document) {
    std::vector<std::string> lines;
    for (const auto& group : document.Groups()) {
        lines.push_back("[" + testsupport::U8(group->name) + "]");
        for (const auto& swatch : group->swatches) lines.push_back(Describe(document, *swatch));
    }
    return lines;
}

std::vector<std::string> DescribeCustomColors(const kelvra::Document& document) {
    std::vector<std::string> lines;
    for (const auto& color : document.CustomColors()) lines.push_back(Describe(*color));
    return lines;
}

std::array<double, 3> LabToSRGB(double l, double a, double b) {
    // Lab to XYZ relative to the D50 white.
    const double fy = (l + 16.0) / 116.0;
    const double fx = fy + a / 500.0;
    const double fz = fy - b / 200.0;
    const double epsilon = 216.0 / 24389.0;
    const double kappa = 24389.0 / 27.0;
    auto inverse = [&](double f) { return f * f * f > epsilon ? f * f * f : (116.0 * f - 16.0) / kappa; };
    const double xr = inverse(fx);
    const double yr = l > kappa * epsilon ? fy * fy * fy : l / kappa;
    const double zr = inverse(fz);
    const double xyz50[3] = {xr * 0.96422, yr * 1.0, zr * 0.82521};

    // The Bradford adaptation from D50 to D65, then the sRGB primaries.
    const double bradford[3][3] = {{0.9555766, -0.0230393, 0.0631636},
                                   {-0.0282895, 1.0099416, 0.0210077},
                                   {0.0122982, -0.0204830, 1.3299098}};
    const double toLinear[3][3] = {{3.2404542, -1.5371385, -0.4985314},
                                   {-0.9692660, 1.8760108, 0.0415560},
                                   {0.0556434, -0.2040259, 1.0572252}};
    double xyz65[3] = {};
    double linear[3] = {};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k) xyz65[i] += bradford[i][k] * xyz50[k];
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k) linear[i] += toLinear[i][k] * xyz65[k];
    std::array<double, 3> srgb{};
    for (int i = 0; i < 3; ++i) {
        const double v = linear[i] <= 0.0031308 ? 12.92 * linear[i] : 1.055 * std::pow(linear[i], 1.0 / 2.4) - 0.055;
        srgb[std::size_t(i)] = std::clamp(v, 0.0, 1.0);
    }
    return srgb;
}

}  // namespace import_testing
