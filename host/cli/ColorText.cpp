#include "ColorText.h"

#include <kelvra/FloatText.h>

#include "color/ColorConversion.h"
#include "color/ScreenColor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace kelvra::cli {

namespace {

using nlohmann::json;

// `value` rounded to `decimals` places, half away from zero; -0 is 0.
template <typename Out>
void WriteRounded(Out& out, double value, int decimals) {
    const double scale = decimals == 0 ? 1.0 : std::pow(10.0, decimals);
    const double rounded = std::round(value * scale) / scale + 0.0;
    char text[400];
    // Whole numbers, nearly every value shown, as integers: the same digits
    // without the floating-point formatter.
    const bool whole = decimals == 0 && std::abs(rounded) < 1e15;
    const auto end = whole ? std::to_chars(std::begin(text), std::end(text), std::int64_t(rounded)).ptr
                           : std::to_chars(std::begin(text), std::end(text), rounded, std::chars_format::fixed, decimals).ptr;
    out << std::string_view(text, std::size_t(end - text));
}

// A value scaled for a person, or its name when it is not a number.
template <typename Out>
void WriteScaled(Out& out, float value, double scale, int decimals) {
    if (std::isfinite(value)) WriteRounded(out, double(value) * scale, decimals);
    else out << FloatText(value);
}

constexpr int kCubeLevels[] = {0, 95, 135, 175, 215, 255};

int NearestCubeStep(int channel) {
    int best = 0;
    for (int step = 1; step < 6; ++step) {
        if (std::abs(kCubeLevels[step] - channel) < std::abs(kCubeLevels[best] - channel)) best = step;
    }
    return best;
}

int Distance(Srgb color, int red, int green, int blue) {
    const int r = color.red - red, g = color.green - green, b = color.blue - blue;
    return r * r + g * g + b * b;
}

template <typename Out>
void WritePercentTo(Out& out, float fraction) {
    WriteScaled(out, fraction, 100, 0);
    if (std::isfinite(fraction)) out << '%';
}

template <typename Out>
void WriteValuesTo(Out& out, const ColorValues& color) {
    const auto& v = color.values;
    switch (color.model) {
    case ColorValues::Model::Gray:
        out << "gray ";
        WritePercentTo(out, v[0]);
        return;
    case ColorValues::Model::Rgb:
        out << "rgb";
        for (std::size_t i = 0; i < 3; ++i) WriteScaled(out << ' ', v[i], 255, 0);
        return;
    case ColorValues::Model::Cmyk:
        out << "cmyk";
        for (std::size_t i = 0; i < 4; ++i) WritePercentTo(out << ' ', v[i]);
        return;
    case ColorValues::Model::Lab:
        out << "lab";
        for (std::size_t i = 0; i < 3; ++i) WriteScaled(out << ' ', v[i], 1, 1);
        return;
    }
}

template <typename Out>
void WriteHexTo(Out& out, Srgb color) { out << color::HexColour({color.red, color.green, color.blue}); }

template <typename Out>
void WriteChipTo(Out& out, const std::optional<Srgb>& color, ChipDepth depth) {
    if (depth == ChipDepth::None) return;
    if (!color) {
        out << "   ";
        return;
    }
    if (depth == ChipDepth::TrueColor) {
        out << "\x1b[48;2;" << int(color->red) << ';' << int(color->green) << ';' << int(color->blue) << 'm';
    } else {
        out << "\x1b[48;5;" << int(NearestOf256(*color)) << 'm';
    }
    out << "  \x1b[0m ";
}

}  // namespace

float JsonNumber(const json& value) {
    if (value.is_number()) return float(value.get<double>());
    const std::string name = value.get<std::string>();
    if (name == "NaN") return std::numeric_limits<float>::quiet_NaN();
    return name == "-Infinity" ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
}

std::optional<ColorValues> ColorValuesFromJson(const json& kind, const json& values) {
    static const std::pair<const char*, ColorValues::Model> kModels[] = {{"gray", ColorValues::Model::Gray},
                                                                         {"rgb", ColorValues::Model::Rgb},
                                                                         {"cmyk", ColorValues::Model::Cmyk},
                                                                         {"lab", ColorValues::Model::Lab}};
    for (const auto& [name, model] : kModels) {
        if (kind != name) continue;
        ColorValues color;
        color.model = model;
        for (std::size_t i = 0; i < values.size() && i < color.values.size(); ++i) color.values[i] = JsonNumber(values[i]);
        return color;
    }
    return std::nullopt;
}

ColorValues ColorValuesOf(const KVCustomColor& definition) {
    const auto& c = definition.c;
    switch (definition.kind) {
    case kKVCustomThreeColor: return {ColorValues::Model::Rgb, {c.three.red, c.three.green, c.three.blue, 0}};
    case kKVCustomLabColor: return {ColorValues::Model::Lab, {c.lab.l, c.lab.a, c.lab.b, 0}};
    default: return {ColorValues::Model::Cmyk, {c.four.cyan, c.four.magenta, c.four.yellow, c.four.black}};
    }
}

std::array<float, 3> ShownChannels(const ColorValues& color) {
    const auto& v = color.values;
    switch (color.model) {
    case ColorValues::Model::Gray: return {1 - v[0], 1 - v[0], 1 - v[0]};
    case ColorValues::Model::Rgb: return {v[0], v[1], v[2]};
    case ColorValues::Model::Cmyk: return color::CmykToSrgbApproximation(v[0], v[1], v[2], v[3]);
    case ColorValues::Model::Lab: return color::LabD50ToSrgb(v[0], v[1], v[2]);
    }
    return {};
}

Srgb ShownColor(const ColorValues& color, float tint) {
    const std::array<std::uint8_t, 3> bytes = color::SrgbBytes(color::TintTowardWhite(ShownChannels(color), tint));
    return {bytes[0], bytes[1], bytes[2]};
}

std::uint8_t NearestOf256(Srgb color) {
    const int r = NearestCubeStep(color.red), g = NearestCubeStep(color.green), b = NearestCubeStep(color.blue);
    const int cube = 16 + 36 * r + 6 * g + b;
    const int cubeDistance = Distance(color, kCubeLevels[r], kCubeLevels[g], kCubeLevels[b]);
    // The gray ramp runs from 8 to 238 in steps of 10.
    const int average = (color.red + color.green + color.blue) / 3;
    const int step = std::clamp((average - 3) / 10, 0, 23);
    const int level = 8 + 10 * step;
    return std::uint8_t(Distance(color, level, level, level) < cubeDistance ? 232 + step : cube);
}

void WritePercent(std::ostream& out, float fraction) { WritePercentTo(out, fraction); }
void WritePercent(commandline::OutputBuffer& out, float fraction) { WritePercentTo(out, fraction); }
void WriteValues(std::ostream& out, const ColorValues& color) { WriteValuesTo(out, color); }
void WriteValues(commandline::OutputBuffer& out, const ColorValues& color) { WriteValuesTo(out, color); }
void WriteHex(std::ostream& out, Srgb color) { WriteHexTo(out, color); }
void WriteHex(commandline::OutputBuffer& out, Srgb color) { WriteHexTo(out, color); }
void WriteChip(std::ostream& out, const std::optional<Srgb>& color, ChipDepth depth) { WriteChipTo(out, color, depth); }
void WriteChip(commandline::OutputBuffer& out, const std::optional<Srgb>& color, ChipDepth depth) {
    WriteChipTo(out, color, depth);
}

}  // namespace kelvra::cli
