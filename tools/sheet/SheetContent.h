// What both forms of a sheet show of a swatch and of a book, worked out
// once: the chip's colour, the text lines, and the notes a sheet owes its
// reader about how colours were turned into sRGB.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "SwatchSheet.h"

namespace sheet {

using Rgb8 = std::array<std::uint8_t, 3>;

struct SwatchContent {
    std::optional<Rgb8> chip;  // with the tint applied; none: no preview
    bool lightChip = false;    // marks on the chip are drawn dark
    std::string kindLine;      // "spot", "global · key", ...
    std::vector<std::string> detailLines;  // tint, values, sRGB
};

SwatchContent ContentOf(const Swatch& swatch, bool isKey);

// The swatches of a group in pages of the book's page size; one page of
// all of them when the book has none.
std::vector<std::vector<const Swatch*>> Pages(const Book& book, const Group& group);

// "Book ID 4100 · © ..." and the like; empty when the book has none of it.
std::string AboutLine(const Book& book);

// The notes on colour conversion the sheet's swatches call for.
std::vector<std::string> ConversionNotes(const Sheet& sheet);

// Text for markup: &, <, >, " and ' escaped.
std::string Escaped(std::string_view text);

}  // namespace sheet
