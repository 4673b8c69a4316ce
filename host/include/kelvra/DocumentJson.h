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
#include <filesystem>
#include <memory>

namespace kelvra {

nlohmann::json ToJson(const Document& document);

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
