#include "DocumentText.h"

#include "ColorText.h"

#include <cstdint>
#include <optional>

namespace kelvra::cli {

namespace {

using nlohmann::json;

// A name as a quoted, escaped string on one line.
void WriteQuoted(std::ostream& out, const json& name) { out << name.dump(); }

float Tint(const json& swatch) { return JsonNumber(swatch["tint"]); }

// What a custom swatch shows: its colour's definition at its tint.
void WriteCustom(std::ostream& out, const json& swatch, const json* customColor) {
    const json& name = swatch["customColor"];
    if (customColor == nullptr) {
        out << "custom colour ";
        if (name.is_string()) {
            WriteQuoted(out, name);
            out << " (not in the document)";
        } else {
            out << "missing";
        }
    } else {
        if (name != swatch["name"]) {
            WriteQuoted(out << "custom colour ", name);
            out << ", ";
        }
        const std::uint32_t flags = (*customColor)["flags"].get<std::uint32_t>();
        out << ((flags & kKVCustomSpotColor) != 0 ? "spot " : "global ");
        WriteValues(out, *ColorValuesFromJson((*customColor)["kind"], (*customColor)["values"]));
        if ((flags & kKVCustomRegistrationColor) != 0) out << ", registration";
    }
    const float tint = Tint(swatch);
    if (tint != 0) WritePercent(out << ", tint ", tint);
    if (customColor != nullptr && (*customColor)["bookId"] != 0) out << ", book " << (*customColor)["bookId"];
}

// The colour a swatch shows; none for the kinds without a colour and for a
// custom swatch whose colour is missing.
std::optional<Srgb> Shown(const json& swatch, const json* customColor) {
    if (customColor != nullptr) {
        return ShownColor(*ColorValuesFromJson((*customColor)["kind"], (*customColor)["values"]), Tint(swatch));
    }
    if (!swatch.contains("values")) return std::nullopt;
    const std::optional<ColorValues> color = ColorValuesFromJson(swatch["kind"], swatch["values"]);
    return color ? std::optional<Srgb>(ShownColor(*color)) : std::nullopt;
}

void WriteSwatch(std::ostream& out, const json& swatch, const CustomColors& customColors, ChipDepth chips) {
    const json* customColor = CustomColorOf(customColors, swatch);
    const std::optional<Srgb> shown = Shown(swatch, customColor);
    out << "    ";
    WriteChip(out, shown, chips);
    if (shown) WriteHex(out, *shown);
    else out << "       ";
    WriteQuoted(out << ' ', swatch["name"]);
    out << ": ";
    const std::string kind = swatch["kind"];
    if (kind == "custom") WriteCustom(out, swatch, customColor);
    else if (swatch.contains("values")) WriteValues(out, *ColorValuesFromJson(kind, swatch["values"]));
    else out << kind;
    out << '\n';
}

bool EndsWithSibilant(std::string_view noun) { return noun.ends_with("s") || noun.ends_with("ch"); }

}  // namespace

CustomColors CustomColorsByName(const json& document) {
    CustomColors colors;
    for (const json& color : document["customColors"]) colors.emplace(color["name"].get<std::string>(), &color);
    return colors;
}

const json* CustomColorOf(const CustomColors& colors, const json& swatch) {
    if (swatch["kind"] != "custom" || !swatch["customColor"].is_string()) return nullptr;
    auto found = colors.find(swatch["customColor"].get<std::string>());
    return found == colors.end() ? nullptr : found->second;
}

DocumentCounts CountsOf(const json& document) {
    DocumentCounts counts;
    counts.groups = document["groups"].size();
    for (const json& group : document["groups"]) counts.swatches += group["swatches"].size();
    counts.customColors = document["customColors"].size();
    return counts;
}

void WriteCount(std::ostream& out, std::size_t count, std::string_view noun) {
    out << count << ' ' << noun;
    if (count != 1) out << (EndsWithSibilant(noun) ? "es" : "s");
}

void WriteCounts(std::ostream& out, const DocumentCounts& counts) {
    WriteCount(out, counts.swatches, "swatch");
    WriteCount(out << " in ", counts.groups, "group");
    WriteCount(out << ", ", counts.customColors, "custom colour");
}

void WriteDocument(std::ostream& out, const json& document, std::size_t number, const std::string& source,
                   ChipDepth chips) {
    const CustomColors customColors = CustomColorsByName(document);
    WriteQuoted(out << "document " << number << ' ', document["name"]);
    if (!source.empty()) out << " (from " << source << ')';
    out << ":\n";
    bool first = true;
    for (const json& group : document["groups"]) {
        if (first) {
            out << "  default group:\n";
        } else {
            WriteQuoted(out << "  group ", group["name"]);
            out << ":\n";
        }
        first = false;
        if (group["swatches"].empty()) out << "    (no swatches)\n";
        for (const json& swatch : group["swatches"]) WriteSwatch(out, swatch, customColors, chips);
    }
    WriteCounts(out << "  ", CountsOf(document));
    out << '\n';
}

}  // namespace kelvra::cli
