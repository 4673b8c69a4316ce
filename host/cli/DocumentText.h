// The readable form of a document, made from either of its forms
// (ShownDocument.h), one line per swatch: the sRGB hex of the colour it shows, its name and its
// colour in a person's units (ColorText.h), after a chip of that colour when
// chips are wanted; a custom colour's name only when it is not the
// swatch's own.
//
//   document 1 "Colours" (from in/colours.ose):
//     default group:
//       #CCCCCC "Paper": gray 20%
//       #FFD940 "Gold 25%": custom colour "Gold", spot cmyk 0% 20% 100% 0%, tint 25%, book 3000
//       #FFCC00 "Gold": spot cmyk 0% 20% 100% 0%, book 3000
//               "Stripes": pattern
//     group "Greens":
//       (no swatches)
//     3 swatches in 2 groups, 1 custom colour
#pragma once

#include "ShownDocument.h"
#include "TerminalColor.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kelvra::cli {

struct DocumentCounts {
    std::size_t groups = 0;  // the default group too
    std::size_t swatches = 0;
    std::size_t customColors = 0;
};

DocumentCounts CountsOf(const ShownDocument& document);

// A document's custom colours by name, so that each swatch finds its own
// without a walk through all of them.
using CustomColors = std::unordered_map<std::string, const nlohmann::json*>;
CustomColors CustomColorsByName(const nlohmann::json& document);
// The custom colour a custom swatch shows; null for other swatches and for
// a name the document does not have.
const nlohmann::json* CustomColorOf(const CustomColors& colors, const nlohmann::json& swatch);

// "3 swatches in 2 groups, 1 custom colour".
void WriteCounts(std::ostream& out, const DocumentCounts& counts);

// `number` tells documents of the same name apart; `source` is the file the
// document was opened as, empty for none. Gathered in an OutputBuffer, as a
// line per swatch is many small pieces.
void WriteDocument(std::ostream& out, ShownDocument& document, std::size_t number, const std::string& source,
                   ChipDepth chips);
// The same from the JSON form.
void WriteDocument(std::ostream& out, const nlohmann::json& document, std::size_t number, const std::string& source,
                   ChipDepth chips);

// "1 swatch", "2 swatches": a count and its noun, "s" added (or "es" after
// a sibilant) unless the count is 1.
void WriteCount(std::ostream& out, std::size_t count, std::string_view noun);

}  // namespace kelvra::cli
