// Plain-text palettes as people keep them, read into named 8-bit RGB
// colours:
//
// - a headed palette: the first line "GIMP Palette", then optional
//   "Name: ..." and "Columns: N" lines, "#" comment lines, and one colour a
//   line as "R G B name";
// - a colour list: one colour a line, either three numbers and a name
//   ("255 250 250 snow") or a hex colour and an optional name ("#FFFAFA
//   snow", "#FFF"); lines starting with "!", "#" and a blank, or a "#" word
//   that is not all hex digits ("#about"), are comments.
//
// Numbers are whole numbers 0..255; the name is the rest of the line, blanks
// around it removed, and a colour without one is named by its hex form
// ("#FFFAFA"). Blank lines are skipped, a first-line byte order mark and line
// ends of "\r\n" are allowed, text must be UTF-8.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tool {

enum class PaletteLayout { kHeaded, kColorList };

struct PaletteColor {
    std::size_t line;  // 1-based
    std::u16string name;
    std::array<std::uint8_t, 3> rgb;
};

struct Palette {
    std::u16string name;  // a headed palette's "Name:", else empty
    std::vector<PaletteColor> colors;
};

struct PaletteError {
    std::size_t line;  // 1-based
    std::string message;
};

// Whether the text starts with the headed palette's first line.
bool StartsAsHeadedPalette(std::string_view text);

// The palette, or the first thing wrong with the text and its line.
std::variant<Palette, PaletteError> ParsePalette(std::string_view text, PaletteLayout layout);

}  // namespace tool
