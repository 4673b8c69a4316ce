#include "ShownDocument.h"

#include <algorithm>

#include <kelvra/DocumentJson.h>

namespace kelvra::cli {

namespace {

using nlohmann::json;

std::string_view Text(const json& value) { return value.get_ref<const std::string&>(); }

// A colour as the JSON form reads back: each value by JsonReadBack.
ColorValues ReadBack(ColorValues color) {
    for (float& value : color.values) value = JsonReadBack(value);
    return color;
}

std::optional<ColorValues> OwnValues(const KVColor& color) {
    const auto& c = color.c;
    switch (color.kind) {
    case kKVGrayColor: return ColorValues{ColorValues::Model::Gray, {c.gray.gray, 0, 0, 0}};
    case kKVThreeColor: return ColorValues{ColorValues::Model::Rgb, {c.three.red, c.three.green, c.three.blue, 0}};
    case kKVFourColor:
        return ColorValues{ColorValues::Model::Cmyk, {c.four.cyan, c.four.magenta, c.four.yellow, c.four.black}};
    default: return std::nullopt;
    }
}

// Such a name reads as UTF-8 with U+FFFD for it, and so can read as
// another's name.
bool HasLoneSurrogate(std::u16string_view name) {
    // Most names hold no surrogate at all: one branch-free pass says so.
    const auto surrogate = [](char16_t unit) { return (unit & 0xF800) == 0xD800; };
    if (std::none_of(name.begin(), name.end(), surrogate)) return false;
    const auto high = [](char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
    const auto low = [](char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (high(name[i]) && i + 1 < name.size() && low(name[i + 1])) ++i;
        else if (high(name[i]) || low(name[i])) return true;
    }
    return false;
}

}  // namespace

JsonShownDocument::JsonShownDocument(const json& document) : document_(document) {
    for (const json& color : document["customColors"]) {
        customColors_.emplace(color["name"].get<std::string>(),
                              ShownCustomColor{*ColorValuesFromJson(color["kind"], color["values"]),
                                               color["flags"].get<std::uint32_t>(), color["bookId"].get<std::int64_t>()});
    }
}

std::string_view JsonShownDocument::Name() const { return Text(document_["name"]); }
std::size_t JsonShownDocument::GroupCount() const { return document_["groups"].size(); }
std::size_t JsonShownDocument::CustomColorCount() const { return document_["customColors"].size(); }
std::size_t JsonShownDocument::SwatchCount(std::size_t group) const {
    return document_["groups"][group]["swatches"].size();
}
std::string_view JsonShownDocument::GroupName(std::size_t group) { return Text(document_["groups"][group]["name"]); }

ShownSwatch JsonShownDocument::Swatch(std::size_t group, std::size_t index) {
    const json& swatch = document_["groups"][group]["swatches"][index];
    ShownSwatch shown;
    shown.name = Text(swatch["name"]);
    shown.kind = Text(swatch["kind"]);
    if (shown.kind == "custom") {
        const json& name = swatch["customColor"];
        if (name.is_string()) {
            shown.customColorName = Text(name);
            const auto found = customColors_.find(name.get_ref<const std::string&>());
            if (found != customColors_.end()) shown.customColor = &found->second;
        }
        shown.tint = JsonNumber(swatch["tint"]);
    } else if (swatch.contains("values")) {
        shown.values = ColorValuesFromJson(swatch["kind"], swatch["values"]);
    }
    return shown;
}

HostShownDocument::HostShownDocument(const Document& document) : document_(document) {}

const CustomColor& HostShownDocument::FirstOfName(const CustomColor& color, const std::string& name) {
    if (!HasLoneSurrogate(color.name)) return color;
    if (firstByName_.empty()) {
        for (const auto& each : document_.CustomColors()) firstByName_.emplace(NameText(each->name), each.get());
    }
    return *firstByName_.at(name);
}

std::string_view HostShownDocument::Name() const { return document_.Name(); }
std::size_t HostShownDocument::GroupCount() const { return document_.Groups().size(); }
std::size_t HostShownDocument::CustomColorCount() const { return document_.CustomColors().size(); }
std::size_t HostShownDocument::SwatchCount(std::size_t group) const {
    return document_.Groups()[group]->swatches.size();
}

std::string_view HostShownDocument::GroupName(std::size_t group) {
    name_ = NameText(document_.Groups()[group]->name);
    return name_;
}

ShownSwatch HostShownDocument::Swatch(std::size_t group, std::size_t index) {
    const kelvra::Swatch& swatch = *document_.Groups()[group]->swatches[index];
    ShownSwatch shown;
    name_ = NameText(swatch.name);
    shown.name = name_;
    shown.kind = SwatchKindName(swatch.color.kind);
    if (swatch.color.kind == kKVCustomColor) {
        if (const CustomColor* color = document_.Find(swatch.color.c.custom.color)) {
            customColorName_ = NameText(color->name);
            shown.customColorName = customColorName_;
            const CustomColor& first = FirstOfName(*color, customColorName_);
            customColor_ = {ReadBack(ColorValuesOf(first.definition)), first.definition.flags, first.bookId};
            shown.customColor = &customColor_;
        }
        shown.tint = JsonReadBack(swatch.color.c.custom.tint);
    } else if (const std::optional<ColorValues> values = OwnValues(swatch.color)) {
        shown.values = ReadBack(*values);
    }
    return shown;
}

}  // namespace kelvra::cli
