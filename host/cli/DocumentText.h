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

#include <string>

namespace kelvra::cli {

std::string DocumentText(const nlohmann::json& document, bool chips);

// The chip of a colour in the swatch JSON form ({"kind": "cmyk", "values":
// [...]}, also "lab"), with the space after it; a blank of the same width
// for a colour it cannot show.
std::string ColourChip(const nlohmann::json& colour);

// Chips go only to a terminal that shows 24-bit colour (COLORTERM
// "truecolor" or "24bit"), never when NO_COLOR is set and not empty or when
// TERM is "dumb". Null pointers stand for unset variables.
bool WantsColourChips(bool outputIsTerminal, const char* noColor, const char* term, const char* colorTerm);

}  // namespace kelvra::cli
