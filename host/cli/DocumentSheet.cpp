#include "DocumentSheet.h"

#include "DocumentText.h"

namespace kelvra::cli {
namespace {

using nlohmann::json;

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
        shown.tint = Numbers(json::array({swatch["tint"]}))[0];
        if (color == nullptr) {
            shown.kind = "custom colour";
            shown.values.push_back("custom colour " + swatch["customColor"].dump() + ", missing");
            return shown;
        }
        const std::uint32_t flags = (*color)["flags"].get<std::uint32_t>();
        shown.kind = (flags & 1) != 0 ? "spot" : "global";
        shown.values.push_back("custom colour " + (*color)["name"].dump() + ": " + CustomColorText(*color));
        shown.srgb = ShownColour((*color)["kind"], Numbers((*color)["values"]));
        shown.preview = PreviewOf((*color)["kind"]);
        return shown;
    }
    if (!swatch.contains("values")) {
        shown.kind = kind;  // pattern, gradient, none: nothing to show
        return shown;
    }
    shown.kind = "process";
    shown.values.push_back(kind + Values(swatch["values"]));
    shown.srgb = ShownColour(kind, Numbers(swatch["values"]));
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
