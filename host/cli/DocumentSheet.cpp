#include "DocumentSheet.h"

#include <kelvra/FloatText.h>

#include "ColorText.h"
#include "DocumentText.h"

#include <cstdint>

namespace kelvra::cli {
namespace {

using nlohmann::json;

// The values as the document stores them: "rgb 0.25 0.5 1".
std::string StoredValues(const json& kind, const json& values) {
    std::string text = kind.get<std::string>();
    for (const json& value : values) {
        text += ' ';
        text += value.is_number() ? FloatText(float(value.get<double>())) : value.get<std::string>();
    }
    return text;
}

// "lab 80 5 60, spot, book id 3000".
std::string CustomColorText(const json& color) {
    const std::uint32_t flags = color["flags"].get<std::uint32_t>();
    std::string text = StoredValues(color["kind"], color["values"]);
    text += (flags & kKVCustomSpotColor) != 0 ? ", spot" : ", global";
    if ((flags & kKVCustomRegistrationColor) != 0) text += ", registration";
    return text + ", book id " + std::to_string(color["bookId"].get<std::int32_t>());
}

// The untinted colour of a kind with values, as the host's chips show it.
std::optional<std::array<float, 3>> ShownColour(const json& kind, const json& values) {
    const std::optional<ColorValues> color = ColorValuesFromJson(kind, values);
    if (!color) return std::nullopt;
    return ShownChannels(*color);
}

sheet::Preview PreviewOf(const std::string& kind) {
    if (kind == "lab") return sheet::Preview::kLab;
    if (kind == "cmyk") return sheet::Preview::kCmykApproximation;
    return sheet::Preview::kDirect;
}

sheet::Swatch SwatchOf(const json& swatch, const CustomColors& customColors) {
    sheet::Swatch shown;
    shown.name = swatch["name"].get<std::string>();
    const std::string kind = swatch["kind"];
    if (kind == "custom") {
        const json* color = CustomColorOf(customColors, swatch);
        shown.tint = JsonNumber(swatch["tint"]);
        if (color == nullptr) {
            shown.kind = "custom colour";
            shown.values.push_back("custom colour " + swatch["customColor"].dump() + ", missing");
            return shown;
        }
        const std::uint32_t flags = (*color)["flags"].get<std::uint32_t>();
        shown.kind = (flags & 1) != 0 ? "spot" : "global";
        shown.values.push_back("custom colour " + (*color)["name"].dump() + ": " + CustomColorText(*color));
        shown.srgb = ShownColour((*color)["kind"], (*color)["values"]);
        shown.preview = PreviewOf((*color)["kind"]);
        return shown;
    }
    if (!swatch.contains("values")) {
        shown.kind = kind;  // pattern, gradient, none: nothing to show
        return shown;
    }
    shown.kind = "process";
    shown.values.push_back(StoredValues(swatch["kind"], swatch["values"]));
    shown.srgb = ShownColour(swatch["kind"], swatch["values"]);
    shown.preview = PreviewOf(kind);
    return shown;
}

}  // namespace

sheet::Sheet DocumentsSheet(const json& documents) {
    sheet::Sheet shown;
    for (const json& document : documents) {
        sheet::Book& book = shown.books.emplace_back();
        book.title = document["name"].get<std::string>();
        const CustomColors customColors = CustomColorsByName(document);
        for (const json& group : document["groups"]) {
            sheet::Group& into = book.groups.emplace_back();
            into.name = group["name"].get<std::string>();
            for (const json& swatch : group["swatches"]) into.swatches.push_back(SwatchOf(swatch, customColors));
        }
    }
    shown.title = shown.books.size() == 1 ? shown.books.front().title : "Imported documents";
    return shown;
}

}  // namespace kelvra::cli
