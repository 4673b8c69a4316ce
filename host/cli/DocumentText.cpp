#include "DocumentText.h"

#include <kelvra/ColorConversion.h>
#include <kelvra/FloatText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kelvra::cli {

namespace {

using nlohmann::json;

// A name as a quoted, escaped string on one line.
std::string Quoted(const json& name) { return name.dump(); }

std::string Value(const json& value) {
    return value.is_number() ? FloatText(float(value.get<double>())) : value.get<std::string>();
}

std::string Values(const json& values) {
    std::string text;
    for (const json& value : values) text += " " + Value(value);
    return text;
}

float Number(const json& value) {
    if (value.is_number()) return float(value.get<double>());
    return std::strtof(value.get<std::string>().c_str(), nullptr);  // "NaN", "Infinity", "-Infinity"
}

std::vector<float> Numbers(const json& values) {
    std::vector<float> numbers;
    for (const json& value : values) numbers.push_back(Number(value));
    return numbers;
}

// A document's custom colours by name, so that each swatch finds its own
// without a walk through all of them.
using CustomColors = std::unordered_map<std::string, const json*>;

CustomColors CustomColorsByName(const json& document) {
    CustomColors colors;
    for (const json& color : document["customColors"]) colors.emplace(color["name"].get<std::string>(), &color);
    return colors;
}

// The custom colour a custom swatch shows; null for other swatches and for
// a name the document does not have.
const json* CustomColorOf(const CustomColors& colors, const json& swatch) {
    if (swatch["kind"] != "custom" || !swatch["customColor"].is_string()) return nullptr;
    auto found = colors.find(swatch["customColor"].get<std::string>());
    return found == colors.end() ? nullptr : found->second;
}

std::string CustomColorText(const json& color) {
    const std::uint32_t flags = color["flags"].get<std::uint32_t>();
    std::string text = color["kind"].get<std::string>() + Values(color["values"]);
    text += (flags & 1) != 0 ? ", spot" : ", global";
    if ((flags & 2) != 0) text += ", registration";
    return text + ", book id " + std::to_string(color["bookId"].get<std::int32_t>());
}

std::string SwatchText(const json& swatch, const json* customColor) {
    std::string text = Quoted(swatch["name"]) + ": ";
    const std::string kind = swatch["kind"];
    if (kind != "custom") return text + kind + (swatch.contains("values") ? Values(swatch["values"]) : "");
    text += "custom colour " + Quoted(swatch["customColor"]) + " at tint " + Value(swatch["tint"]);
    return customColor != nullptr ? text + " (" + CustomColorText(*customColor) + ")" : text;
}

std::array<float, 3> InkOffWhite(const std::vector<float>& cmyk) {
    return {(1 - cmyk[0]) * (1 - cmyk[3]), (1 - cmyk[1]) * (1 - cmyk[3]), (1 - cmyk[2]) * (1 - cmyk[3])};
}

std::optional<std::array<float, 3>> Shown(const std::string& kind, const std::vector<float>& v) {
    if (kind == "gray") return std::array<float, 3>{1 - v[0], 1 - v[0], 1 - v[0]};
    if (kind == "rgb") return std::array<float, 3>{v[0], v[1], v[2]};
    if (kind == "cmyk") return InkOffWhite(v);
    if (kind == "lab") return LabD50ToSrgb(v[0], v[1], v[2]);
    return std::nullopt;
}

std::uint8_t Byte(float channel) {
    if (std::isnan(channel)) return 0;
    return std::uint8_t(std::lround(std::clamp(channel, 0.0f, 1.0f) * 255.0f));
}

// The colour a swatch shows, 0..255 per channel; none for the kinds without
// a colour and for a custom swatch whose colour is missing.
std::optional<std::array<std::uint8_t, 3>> ChipColour(const json& swatch, const json* customColor) {
    std::optional<std::array<float, 3>> shown;
    float tint = 0;
    if (swatch["kind"] == "custom") {
        if (customColor == nullptr) return std::nullopt;
        shown = Shown((*customColor)["kind"], Numbers((*customColor)["values"]));
        tint = Number(swatch["tint"]);
    } else if (swatch.contains("values")) {
        shown = Shown(swatch["kind"], Numbers(swatch["values"]));
    }
    if (!shown) return std::nullopt;
    std::array<std::uint8_t, 3> bytes{};
    for (std::size_t i = 0; i < 3; ++i) bytes[i] = Byte((*shown)[i] * (1 - tint) + tint);
    return bytes;
}

std::string Chip(const json& swatch, const json* customColor) {
    const auto colour = ChipColour(swatch, customColor);
    if (!colour) return "   ";
    return "\x1b[48;2;" + std::to_string((*colour)[0]) + ";" + std::to_string((*colour)[1]) + ";" +
           std::to_string((*colour)[2]) + "m  \x1b[0m ";
}

}  // namespace

std::string DocumentText(const json& document, bool chips) {
    const CustomColors customColors = CustomColorsByName(document);
    std::string text = "document " + Quoted(document["name"]) + ":\n";
    bool first = true;
    for (const json& group : document["groups"]) {
        text += first ? "  default group:\n" : "  group " + Quoted(group["name"]) + ":\n";
        first = false;
        if (group["swatches"].empty()) text += "    (no swatches)\n";
        for (const json& swatch : group["swatches"]) {
            const json* customColor = CustomColorOf(customColors, swatch);
            text += "    " + (chips ? Chip(swatch, customColor) : "") + SwatchText(swatch, customColor) + "\n";
        }
    }
    return text;
}

std::string ColourChip(const json& colour) { return Chip(colour, nullptr); }

bool WantsColourChips(bool outputIsTerminal, const char* noColor, const char* term, const char* colorTerm) {
    if (!outputIsTerminal) return false;
    if (noColor != nullptr && *noColor != '\0') return false;
    if (term != nullptr && std::strcmp(term, "dumb") == 0) return false;
    return colorTerm != nullptr && (std::strcmp(colorTerm, "truecolor") == 0 || std::strcmp(colorTerm, "24bit") == 0);
}

}  // namespace kelvra::cli
