// The readable form of a document, made from its JSON form (DocumentJson.h):
//
//   document "Colours":
//     default group:
//       "Paper": gray 0.2
//       "Gold 50%": custom colour "Gold" at tint 0.5 (lab 80 5 60, spot, book id 3000)
//     group "Greens":
//       (no swatches)
//
// With chips, each swatch line starts with a 24-bit colour chip of the
// colour the swatch shows (blank for pattern, gradient and none): ink is
// taken off white (gray and CMYK simply), Lab is converted as the host
// converts it, and a tint mixes towards white.
#pragma once

#include <nlohmann/json.hpp>

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace kelvra::cli {

std::string DocumentText(const nlohmann::json& document, bool chips);

// The parts of a swatch's line, for other views of a document (DocumentSheet.h).

// " 0.25 0.5 1": the values, each after a blank.
std::string Values(const nlohmann::json& values);
std::vector<float> Numbers(const nlohmann::json& values);

// A document's custom colours by name, so that each swatch finds its own
// without a walk through all of them.
using CustomColors = std::unordered_map<std::string, const nlohmann::json*>;
CustomColors CustomColorsByName(const nlohmann::json& document);
// The custom colour a custom swatch shows; null for other swatches and for
// a name the document does not have.
const nlohmann::json* CustomColorOf(const CustomColors& colors, const nlohmann::json& swatch);
// "lab 80 5 60, spot, book id 3000".
std::string CustomColorText(const nlohmann::json& color);

// The colour of a colour kind ("gray", "rgb", "cmyk", "lab") and its values
// as shown, untinted; none for the kinds without a colour.
std::optional<std::array<float, 3>> ShownColour(const std::string& kind, const std::vector<float>& values);

// Chips go only to a terminal that shows 24-bit colour (COLORTERM
// "truecolor" or "24bit"), never when NO_COLOR is set and not empty or when
// TERM is "dumb". Null pointers stand for unset variables.
bool WantsColourChips(bool outputIsTerminal, const char* noColor, const char* term, const char* colorTerm);

}  // namespace kelvra::cli
