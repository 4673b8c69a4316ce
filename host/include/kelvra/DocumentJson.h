// The JSON form of a document, for setting documents up and inspecting
// them (schema in host/README.md):
//
//   {"name": "Colours",
//    "groups": [{"name": "", "swatches": [
//                  {"name": "Paper", "kind": "gray", "values": [0.2]},
//                  {"name": "Red", "kind": "rgb", "values": [1, 0, 0]},
//                  {"name": "Ink", "kind": "cmyk", "values": [1, 0.5, 0, 0]},
//                  {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0.25},
//                  {"name": "Stripes", "kind": "pattern"}]},
//               {"name": "Greens", "swatches": []}],
//    "customColors": [{"name": "Gold", "kind": "lab", "values": [80, 5, 60],
//                      "flags": 1, "bookId": 3000}]}
//
// The first group is the default group (no name). Values are numbers or
// "NaN", "Infinity", "-Infinity"; they are written as the shortest decimal
// that reads back as the same float (FloatText.h).
#pragma once

#include "Document.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelvra {

nlohmann::json ToJson(const Document& document);

// The parts of a JSON value in the order they are written, for writers
// that stream the JSON form of a document instead of building it.
class JsonParts {
public:
    virtual ~JsonParts() = default;
    virtual void BeginObject() = 0;
    virtual void EndObject() = 0;
    virtual void BeginArray() = 0;
    virtual void EndArray() = 0;
    virtual void Key(std::string_view key) = 0;
    virtual void String(std::string_view utf8) = 0;
    virtual void Integer(std::int64_t number) = 0;
    virtual void Unsigned(std::uint64_t number) = 0;
    virtual void Float(double number) = 0;
    virtual void Null() = 0;
};

// Hands the parts of ToJson(document) to `parts`: the same values, each
// object's keys in the sorted order the JSON library keeps them in.
void WriteJsonParts(const Document& document, JsonParts& parts);

// A swatch kind's name in the JSON form ("gray", "custom", ...; "none" for
// a kind it does not know).
const char* SwatchKindName(std::int32_t kind);
// A swatch, group or custom colour name as the JSON form writes it: UTF-8,
// each lone surrogate U+FFFD.
std::string NameText(std::u16string_view name);
// A colour value as the JSON form holds it: the double that the shortest
// decimal of the float reads as; none for NaN and the infinities, which
// the JSON form writes as the strings "NaN", "Infinity", "-Infinity".
std::optional<double> JsonValue(float value);
// The float a reader of the JSON form gets back: float(JsonValue(value)),
// which for one magnitude is a neighbour (the decimal, read as a double,
// falls halfway between two floats); a quiet NaN for any NaN, the
// infinities as they are.
float JsonReadBack(float value);

// A custom colour's definition: the name of its kind in the JSON form
// ("cmyk", "rgb", "lab"; an unknown kind reads as "cmyk") and its values in
// the order written there.
struct DefinitionValues {
    const char* kind = "cmyk";
    std::array<float, 4> values{};
    std::size_t count = 0;
};
DefinitionValues ValuesOf(const KVCustomColor& definition);

// {"kind", "values", "flags"}: a custom colour of the JSON form without its
// name and book id.
nlohmann::json ToJson(const KVCustomColor& definition);

// A new document from its JSON form, not yet open (DocumentList::Add).
// HostError naming the place of the first thing wrong, for example
// `groups[1].swatches[0].kind: unknown kind "grey"`. "groups",
// "customColors", "tint", "flags" and "bookId" may be left out; "values"
// belongs to exactly the kinds that have values.
std::unique_ptr<Document> DocumentFromJson(const nlohmann::json& json);

// A document file (".kv": the JSON form), not yet open. HostError beginning
// with the file's path when it cannot be read, is not JSON or is not a
// document: "doc.kv: not JSON: …", "doc.kv: document JSON: name: …".
std::unique_ptr<Document> ReadDocumentFile(const std::filesystem::path& file);

}  // namespace kelvra
