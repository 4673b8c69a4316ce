#include <kelvra/DocumentJson.h>
#include <kelvra/FloatText.h>
#include <kelvra/HostError.h>

#include "UnicodeText.h"
#include "WholeFile.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace kelvra {

namespace {

using nlohmann::json;

struct KindName {
    std::int32_t kind;
    const char* name;
    std::size_t values;  // how many values a colour of this kind has
};

constexpr KindName kSwatchKinds[] = {
    {kKVGrayColor, "gray", 1},    {kKVThreeColor, "rgb", 3},      {kKVFourColor, "cmyk", 4},
    {kKVCustomColor, "custom", 0}, {kKVPatternColor, "pattern", 0}, {kKVGradientColor, "gradient", 0},
    {kKVNoneColor, "none", 0},
};

constexpr KindName kCustomKinds[] = {
    {kKVCustomFourColor, "cmyk", 4},
    {kKVCustomThreeColor, "rgb", 3},
    {kKVCustomLabColor, "lab", 3},
};

const KindName* ByKind(std::span<const KindName> kinds, std::int32_t kind) {
    for (const KindName& k : kinds) {
        if (k.kind == kind) return &k;
    }
    return nullptr;
}

const KindName* ByName(std::span<const KindName> kinds, const std::string& name) {
    for (const KindName& k : kinds) {
        if (name == k.name) return &k;
    }
    return nullptr;
}

json Number(float value) {
    const std::optional<double> number = JsonValue(value);
    return number ? json(*number) : json(FloatText(value));
}

void Number(JsonParts& parts, float value) {
    if (const std::optional<double> number = JsonValue(value)) parts.Float(*number);
    else parts.String(FloatText(value));
}

void Values(JsonParts& parts, std::initializer_list<float> values) {
    parts.Key("values");
    parts.BeginArray();
    for (float value : values) Number(parts, value);
    parts.EndArray();
}

void Name(JsonParts& parts, const std::u16string& name) {
    parts.Key("name");
    parts.String(NameText(name));
}

// The keys of every object in sorted order, as ToJson's objects keep them.
void SwatchParts(JsonParts& parts, const Document& document, const Swatch& swatch) {
    const KVColor& color = swatch.color;
    const auto& c = color.c;
    parts.BeginObject();
    if (color.kind == kKVCustomColor) {
        const CustomColor* custom = document.Find(c.custom.color);
        parts.Key("customColor");
        if (custom != nullptr) parts.String(NameText(custom->name));
        else parts.Null();
    }
    parts.Key("kind");
    parts.String(SwatchKindName(color.kind));
    Name(parts, swatch.name);
    switch (color.kind) {
    case kKVGrayColor: Values(parts, {c.gray.gray}); break;
    case kKVThreeColor: Values(parts, {c.three.red, c.three.green, c.three.blue}); break;
    case kKVFourColor: Values(parts, {c.four.cyan, c.four.magenta, c.four.yellow, c.four.black}); break;
    case kKVCustomColor:
        parts.Key("tint");
        Number(parts, c.custom.tint);
        break;
    default: break;
    }
    parts.EndObject();
}

void CustomColorParts(JsonParts& parts, const CustomColor& color) {
    const DefinitionValues values = ValuesOf(color.definition);
    parts.BeginObject();
    parts.Key("bookId");
    parts.Integer(color.bookId);
    parts.Key("flags");
    parts.Unsigned(color.definition.flags);
    parts.Key("kind");
    parts.String(values.kind);
    Name(parts, color.name);
    parts.Key("values");
    parts.BeginArray();
    for (std::size_t i = 0; i < values.count; ++i) Number(parts, values.values[i]);
    parts.EndArray();
    parts.EndObject();
}

// Builds the JSON value whose parts it is handed.
class JsonTree final : public JsonParts {
public:
    json Take() { return std::move(root_); }

    void BeginObject() override { Open(json::object()); }
    void EndObject() override { open_.pop_back(); }
    void BeginArray() override { Open(json::array()); }
    void EndArray() override { open_.pop_back(); }
    void Key(std::string_view key) override { key_ = key; }
    void String(std::string_view utf8) override { Add(std::string(utf8)); }
    void Integer(std::int64_t number) override { Add(number); }
    void Unsigned(std::uint64_t number) override { Add(number); }
    void Float(double number) override { Add(number); }
    void Null() override { Add(nullptr); }

private:
    json& Add(json value) {
        if (open_.empty()) return root_ = std::move(value);
        json& container = *open_.back();
        if (container.is_array()) {
            container.push_back(std::move(value));
            return container.back();
        }
        return container[key_] = std::move(value);
    }
    void Open(json container) { open_.push_back(&Add(std::move(container))); }

    json root_;
    std::vector<json*> open_;  // the innermost last; a child is added only to the innermost
    std::string key_;
};

// Reading: every failure names where it is.
[[noreturn]] void Refuse(const std::string& where, const std::string& what) {
    throw HostError("document JSON: " + where + ": " + what);
}

std::string At(const std::string& where, const char* key) { return where.empty() ? key : where + "." + key; }

std::string At(const std::string& where, std::size_t index) { return where + "[" + std::to_string(index) + "]"; }

void OnlyKeys(const json& object, const std::string& where, std::initializer_list<const char*> keys) {
    if (!object.is_object()) Refuse(where.empty() ? "document" : where, "not an object");
    for (const auto& [key, value] : object.items()) {
        bool known = false;
        for (const char* k : keys) known = known || key == k;
        if (!known) Refuse(where.empty() ? key : where + "." + key, "unknown key");
    }
}

const json* Optional(const json& object, const char* key) {
    auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

const json& Required(const json& object, const std::string& where, const char* key) {
    const json* value = Optional(object, key);
    if (value == nullptr) Refuse(At(where, key), "missing");
    return *value;
}

std::string Text(const json& value, const std::string& where) {
    if (!value.is_string()) Refuse(where, "not a string");
    return value.get<std::string>();
}

float ReadNumber(const json& value, const std::string& where) {
    if (value.is_number()) return float(value.get<double>());
    if (value == "NaN") return std::numeric_limits<float>::quiet_NaN();
    if (value == "Infinity") return std::numeric_limits<float>::infinity();
    if (value == "-Infinity") return -std::numeric_limits<float>::infinity();
    Refuse(where, "not a number");
}

template <typename Integer>
Integer ReadInteger(const json& value, const std::string& where) {
    using Limits = std::numeric_limits<Integer>;
    bool fits = false;
    if (value.is_number_unsigned()) fits = value.get<std::uint64_t>() <= std::uint64_t(Limits::max());
    else if (value.is_number_integer())
        fits = value.get<std::int64_t>() >= std::int64_t(Limits::min()) &&
               value.get<std::int64_t>() <= std::int64_t(Limits::max());
    if (!fits) Refuse(where, "not a 32-bit integer of this kind");
    return value.get<Integer>();
}

const KindName& ReadKind(const json& object, const std::string& where, std::span<const KindName> kinds) {
    const std::string name = Text(Required(object, where, "kind"), At(where, "kind"));
    const KindName* kind = ByName(kinds, name);
    if (kind == nullptr) Refuse(At(where, "kind"), "unknown kind \"" + name + "\"");
    return *kind;
}

// Exactly as many numbers as the kind has values; none for a kind without.
std::vector<float> ReadValues(const json& object, const std::string& where, const KindName& kind) {
    const json* values = Optional(object, "values");
    const std::string at = At(where, "values");
    if (kind.values == 0) {
        if (values != nullptr) Refuse(at, std::string("a ") + kind.name + " colour has no values");
        return {};
    }
    if (values == nullptr) Refuse(at, "missing");
    if (!values->is_array() || values->size() != kind.values)
        Refuse(at, std::string("a ") + kind.name + " colour has " + std::to_string(kind.values) + " values");
    std::vector<float> numbers;
    for (std::size_t i = 0; i < kind.values; ++i) numbers.push_back(ReadNumber((*values)[i], At(at, i)));
    return numbers;
}

void ReadCustomColor(Document& document, const json& object, const std::string& where) {
    OnlyKeys(object, where, {"name", "kind", "values", "flags", "bookId"});
    const std::string name = Text(Required(object, where, "name"), At(where, "name"));
    const KindName& kind = ReadKind(object, where, kCustomKinds);
    const std::vector<float> v = ReadValues(object, where, kind);
    KVCustomColor definition{};
    definition.kind = kind.kind;
    if (kind.kind == kKVCustomFourColor) definition.c.four = {v[0], v[1], v[2], v[3]};
    else if (kind.kind == kKVCustomThreeColor) definition.c.three = {v[0], v[1], v[2]};
    else definition.c.lab = {v[0], v[1], v[2]};
    if (const json* flags = Optional(object, "flags"))
        definition.flags = ReadInteger<std::uint32_t>(*flags, At(where, "flags"));
    CustomColor* color = document.NewCustomColor(Utf8ToUtf16(name), definition);
    if (color == nullptr) Refuse(At(where, "name"), "a second custom colour named \"" + name + "\"");
    if (const json* bookId = Optional(object, "bookId"))
        color->bookId = ReadInteger<std::int32_t>(*bookId, At(where, "bookId"));
}

KVColor ReadColor(const Document& document, const json& object, const std::string& where) {
    const KindName& kind = ReadKind(object, where, kSwatchKinds);
    KVColor color{};
    color.kind = kind.kind;
    const json* customColor = Optional(object, "customColor");
    const json* tint = Optional(object, "tint");
    if (kind.kind != kKVCustomColor) {
        if (customColor != nullptr || tint != nullptr)
            Refuse(where, std::string("a ") + kind.name + " colour has no custom colour or tint");
        const std::vector<float> v = ReadValues(object, where, kind);
        if (kind.kind == kKVGrayColor) color.c.gray = {v[0]};
        else if (kind.kind == kKVThreeColor) color.c.three = {v[0], v[1], v[2]};
        else if (kind.kind == kKVFourColor) color.c.four = {v[0], v[1], v[2], v[3]};
        return color;
    }
    ReadValues(object, where, kind);  // refuses values: the custom colour has them
    if (customColor == nullptr) Refuse(At(where, "customColor"), "missing");
    const std::string name = Text(*customColor, At(where, "customColor"));
    const CustomColor* custom = document.FindCustomColor(Utf8ToUtf16(name));
    if (custom == nullptr) Refuse(At(where, "customColor"), "no custom colour named \"" + name + "\"");
    color.c.custom.color = HandleOf(*custom);
    color.c.custom.tint = tint != nullptr ? ReadNumber(*tint, At(where, "tint")) : 0.0f;
    return color;
}

void ReadGroup(Document& document, const json& object, const std::string& where, bool isDefault) {
    OnlyKeys(object, where, {"name", "swatches"});
    SwatchGroup& group = isDefault ? *document.Groups().front() : document.InsertGroup(-1);
    if (const json* name = Optional(object, "name")) group.name = Utf8ToUtf16(Text(*name, At(where, "name")));
    if (isDefault && !group.name.empty()) Refuse(At(where, "name"), "the default group has no name");
    const json* swatches = Optional(object, "swatches");
    if (swatches == nullptr) return;
    if (!swatches->is_array()) Refuse(At(where, "swatches"), "not an array");
    for (std::size_t i = 0; i < swatches->size(); ++i) {
        const json& entry = (*swatches)[i];
        const std::string at = At(At(where, "swatches"), i);
        OnlyKeys(entry, at, {"name", "kind", "values", "customColor", "tint"});
        const std::string name = Text(Required(entry, at, "name"), At(at, "name"));
        const KVColor color = ReadColor(document, entry, at);
        Swatch& swatch = document.InsertSwatch(group, -1);
        swatch.name = Utf8ToUtf16(name);
        swatch.color = color;
    }
}

const json& Array(const json& object, const char* key) {
    const json& value = object.at(key);
    if (!value.is_array()) Refuse(key, "not an array");
    return value;
}

}  // namespace

DefinitionValues ValuesOf(const KVCustomColor& definition) {
    const auto& c = definition.c;
    switch (definition.kind) {
    case kKVCustomThreeColor: return {"rgb", {c.three.red, c.three.green, c.three.blue}, 3};
    case kKVCustomLabColor: return {"lab", {c.lab.l, c.lab.a, c.lab.b}, 3};
    default: return {"cmyk", {c.four.cyan, c.four.magenta, c.four.yellow, c.four.black}, 4};
    }
}

json ToJson(const KVCustomColor& definition) {
    const DefinitionValues values = ValuesOf(definition);
    json numbers = json::array();
    for (std::size_t i = 0; i < values.count; ++i) numbers.push_back(Number(values.values[i]));
    return {{"kind", values.kind}, {"values", std::move(numbers)}, {"flags", definition.flags}};
}

void WriteJsonParts(const Document& document, JsonParts& parts) {
    parts.BeginObject();
    parts.Key("customColors");
    parts.BeginArray();
    for (const auto& color : document.CustomColors()) CustomColorParts(parts, *color);
    parts.EndArray();
    parts.Key("groups");
    parts.BeginArray();
    for (const auto& group : document.Groups()) {
        parts.BeginObject();
        Name(parts, group->name);
        parts.Key("swatches");
        parts.BeginArray();
        for (const auto& swatch : group->swatches) SwatchParts(parts, document, *swatch);
        parts.EndArray();
        parts.EndObject();
    }
    parts.EndArray();
    parts.Key("name");
    parts.String(document.Name());
    parts.EndObject();
}

json ToJson(const Document& document) {
    JsonTree tree;
    WriteJsonParts(document, tree);
    return tree.Take();
}

const char* SwatchKindName(std::int32_t kind) {
    const KindName* known = ByKind(kSwatchKinds, kind);
    return known != nullptr ? known->name : "none";
}

std::string NameText(std::u16string_view name) { return Utf16ToUtf8(name); }

std::optional<double> JsonValue(float value) {
    if (!std::isfinite(value)) return std::nullopt;
    // The shortest decimal that reads back as the float, read as a double.
    char text[48];
    const char* end = std::to_chars(std::begin(text), std::end(text), value).ptr;
    double number = 0;
    std::from_chars(text, end, number);
    return number;
}

float JsonReadBack(float value) {
    if (std::isnan(value)) return std::numeric_limits<float>::quiet_NaN();
    // Every float but those of this one magnitude reads back as itself (a
    // sweep of all 2^32 bit patterns found no other): only there does the
    // decimal, read as a double, round to a float halfway point. A report
    // reads back every value it shows, so the rest skip the decimal.
    constexpr std::uint32_t kMagnitudeReadAsNeighbour = 0x15AE43FD;
    if ((std::bit_cast<std::uint32_t>(value) & 0x7FFFFFFF) != kMagnitudeReadAsNeighbour) return value;
    return float(*JsonValue(value));
}

std::unique_ptr<Document> DocumentFromJson(const json& json) {
    OnlyKeys(json, "", {"name", "groups", "customColors"});
    auto document = std::make_unique<Document>(Text(Required(json, "", "name"), "name"));
    if (json.contains("customColors")) {
        const auto& colors = Array(json, "customColors");
        for (std::size_t i = 0; i < colors.size(); ++i) ReadCustomColor(*document, colors[i], At("customColors", i));
    }
    if (json.contains("groups")) {
        const auto& groups = Array(json, "groups");
        for (std::size_t i = 0; i < groups.size(); ++i) ReadGroup(*document, groups[i], At("groups", i), i == 0);
    }
    return document;
}

std::unique_ptr<Document> ReadDocumentFile(const std::filesystem::path& file) {
    const std::optional<std::string> text = ReadWholeFile(file);
    if (!text) throw HostError(file.string() + ": cannot be read");
    const json parsed = json::parse(*text, nullptr, false);
    if (parsed.is_discarded()) throw HostError(file.string() + ": not JSON");
    try {
        return DocumentFromJson(parsed);
    } catch (const HostError& error) {
        throw HostError(file.string() + ": " + error.what());
    }
}

}  // namespace kelvra
