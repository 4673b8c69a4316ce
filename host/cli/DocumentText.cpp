#include "DocumentText.h"

#include "ColorText.h"
#include "JsonOutput.h"

#include <optional>

namespace kelvra::cli {

namespace {

// What a custom swatch shows: its colour's definition at its tint.
void WriteCustom(commandline::OutputBuffer& out, const ShownSwatch& swatch) {
    const ShownCustomColor* color = swatch.customColor;
    if (color == nullptr) {
        out << "custom colour ";
        if (swatch.customColorName) {
            WriteJsonString(out, *swatch.customColorName);
            out << " (not in the document)";
        } else {
            out << "missing";
        }
    } else {
        if (*swatch.customColorName != swatch.name) {
            WriteJsonString(out << "custom colour ", *swatch.customColorName);
            out << ", ";
        }
        out << ((color->flags & kKVCustomSpotColor) != 0 ? "spot " : "global ");
        WriteValues(out, color->values);
        if ((color->flags & kKVCustomRegistrationColor) != 0) out << ", registration";
    }
    if (swatch.tint != 0) WritePercent(out << ", tint ", swatch.tint);
    if (color != nullptr && color->bookId != 0) out << ", book " << color->bookId;
}

// The colour a swatch shows; none for the kinds without a colour and for a
// custom swatch whose colour is missing.
std::optional<Srgb> Shown(const ShownSwatch& swatch) {
    if (swatch.customColor != nullptr) return ShownColor(swatch.customColor->values, swatch.tint);
    if (swatch.values) return ShownColor(*swatch.values);
    return std::nullopt;
}

void WriteSwatch(commandline::OutputBuffer& out, const ShownSwatch& swatch, ChipDepth chips) {
    const std::optional<Srgb> shown = Shown(swatch);
    out << "    ";
    WriteChip(out, shown, chips);
    if (shown) WriteHex(out, *shown);
    else out << "       ";
    WriteJsonString(out << ' ', swatch.name);
    out << ": ";
    if (swatch.kind == "custom") WriteCustom(out, swatch);
    else if (swatch.values) WriteValues(out, *swatch.values);
    else out << swatch.kind;
    out << '\n';
}

bool EndsWithSibilant(std::string_view noun) { return noun.ends_with("s") || noun.ends_with("ch"); }

template <typename Out>
void WriteCountTo(Out& out, std::size_t count, std::string_view noun) {
    out << count << ' ' << noun;
    if (count != 1) out << (EndsWithSibilant(noun) ? "es" : "s");
}

template <typename Out>
void WriteCountsTo(Out& out, const DocumentCounts& counts) {
    WriteCountTo(out, counts.swatches, "swatch");
    WriteCountTo(out << " in ", counts.groups, "group");
    WriteCountTo(out << ", ", counts.customColors, "custom colour");
}

}  // namespace

CustomColors CustomColorsByName(const nlohmann::json& document) {
    CustomColors colors;
    for (const nlohmann::json& color : document["customColors"])
        colors.emplace(color["name"].get<std::string>(), &color);
    return colors;
}

const nlohmann::json* CustomColorOf(const CustomColors& colors, const nlohmann::json& swatch) {
    if (swatch["kind"] != "custom" || !swatch["customColor"].is_string()) return nullptr;
    auto found = colors.find(swatch["customColor"].get<std::string>());
    return found == colors.end() ? nullptr : found->second;
}

DocumentCounts CountsOf(const ShownDocument& document) {
    DocumentCounts counts;
    counts.groups = document.GroupCount();
    for (std::size_t group = 0; group < counts.groups; ++group) counts.swatches += document.SwatchCount(group);
    counts.customColors = document.CustomColorCount();
    return counts;
}

void WriteCount(std::ostream& out, std::size_t count, std::string_view noun) { WriteCountTo(out, count, noun); }

void WriteCounts(std::ostream& out, const DocumentCounts& counts) { WriteCountsTo(out, counts); }

void WriteDocument(std::ostream& stream, ShownDocument& document, std::size_t number, const std::string& source,
                   ChipDepth chips) {
    commandline::OutputBuffer out(stream);
    WriteJsonString(out << "document " << number << ' ', document.Name());
    if (!source.empty()) out << " (from " << source << ')';
    out << ":\n";
    for (std::size_t group = 0; group < document.GroupCount(); ++group) {
        if (group == 0) {
            out << "  default group:\n";
        } else {
            WriteJsonString(out << "  group ", document.GroupName(group));
            out << ":\n";
        }
        const std::size_t swatches = document.SwatchCount(group);
        if (swatches == 0) out << "    (no swatches)\n";
        for (std::size_t index = 0; index < swatches; ++index) WriteSwatch(out, document.Swatch(group, index), chips);
    }
    WriteCountsTo(out << "  ", CountsOf(document));
    out << '\n';
}

void WriteDocument(std::ostream& out, const nlohmann::json& document, std::size_t number, const std::string& source,
                   ChipDepth chips) {
    JsonShownDocument shown(document);
    WriteDocument(out, shown, number, source, chips);
}

}  // namespace kelvra::cli
