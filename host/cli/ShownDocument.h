// A document as its readable form (DocumentText.h) reads it, from either of
// its forms: the JSON form, or the host's document itself, which a command
// reads in place rather than through a JSON copy of it. Both give the same
// names, kinds and values as the JSON form holds them.
#pragma once

#include "ColorText.h"

#include <kelvra/Document.h>

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kelvra::cli {

struct ShownCustomColor {
    ColorValues values;
    std::uint32_t flags = 0;
    std::int64_t bookId = 0;
};

struct ShownSwatch {
    std::string_view name;
    std::string_view kind;              // "gray", "rgb", "cmyk", "custom", "pattern", ...
    std::optional<ColorValues> values;  // a colour of its own, for the kinds with values
    // A custom swatch's colour: its name, none when the swatch has none,
    // and its definition, null when the document has no colour of that name.
    std::optional<std::string_view> customColorName;
    const ShownCustomColor* customColor = nullptr;
    float tint = 0;
};

class ShownDocument {
public:
    virtual ~ShownDocument() = default;
    virtual std::string_view Name() const = 0;
    virtual std::size_t GroupCount() const = 0;  // the default group too
    virtual std::size_t CustomColorCount() const = 0;
    virtual std::size_t SwatchCount(std::size_t group) const = 0;
    // What these answer holds until the next call.
    virtual std::string_view GroupName(std::size_t group) = 0;
    virtual ShownSwatch Swatch(std::size_t group, std::size_t index) = 0;
};

// The JSON form (DocumentJson.h), which must outlive this.
class JsonShownDocument final : public ShownDocument {
public:
    explicit JsonShownDocument(const nlohmann::json& document);
    std::string_view Name() const override;
    std::size_t GroupCount() const override;
    std::size_t CustomColorCount() const override;
    std::size_t SwatchCount(std::size_t group) const override;
    std::string_view GroupName(std::size_t group) override;
    ShownSwatch Swatch(std::size_t group, std::size_t index) override;

private:
    const nlohmann::json& document_;
    std::unordered_map<std::string, ShownCustomColor> customColors_;
};

// The host's document, which must outlive this and not change meanwhile.
class HostShownDocument final : public ShownDocument {
public:
    explicit HostShownDocument(const Document& document);
    std::string_view Name() const override;
    std::size_t GroupCount() const override;
    std::size_t CustomColorCount() const override;
    std::size_t SwatchCount(std::size_t group) const override;
    std::string_view GroupName(std::size_t group) override;
    ShownSwatch Swatch(std::size_t group, std::size_t index) override;

private:
    // The colour the JSON form finds by the name of `color` (NameText): the
    // first of the document's colours of that name.
    const CustomColor& FirstOfName(const CustomColor& color, const std::string& name);

    const Document& document_;
    // Made only when two colours' names may read as one: names with lone
    // surrogates.
    std::unordered_map<std::string, const CustomColor*> firstByName_;
    ShownCustomColor customColor_;
    std::string name_;
    std::string customColorName_;
};

}  // namespace kelvra::cli
