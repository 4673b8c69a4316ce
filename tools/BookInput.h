// One input of `tintora convert` and `tintora sheet`: a library file read by
// its reader, or a plain-text palette (PaletteText.h), into a complete book.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class CompleteBook;

namespace tool {

enum class InputFormat { kColorBook, kSwatchExchange, kXmlSwatchbook, kHeadedPalette, kColorList };

// The names of --format, "auto" first.
inline constexpr const char* kInputFormatNames[] = {"auto", "ocb", "ose", "xml", "palette", "list"};

// "ocb", "ose", "xml", "palette", "list"; "auto" and anything else give nothing.
std::optional<InputFormat> InputFormatFromName(std::string_view name);

// A library file by its extension or magic; else a palette by its first
// line; else XML when the first thing in it is "<"; else a colour list.
InputFormat DetectInputFormat(const std::string& path);

struct InputRead {
    // Empty when the whole input was read; else the reason, naming the file
    // and, for a palette, the line: "colours.txt:12: value 300 is out of range 0..255".
    std::string error;
    // For a palette, the line of each swatch in book order; else empty.
    std::vector<std::size_t> lines;
    // What the read left out without failing: the blocks of a swatch
    // exchange file its reader does not import.
    std::vector<std::string> notes;
};

// Reads `path` into `book` (after BeginFill). Library files go through their
// readers with `readerFlags`; a palette becomes a book named by its "Name:"
// with one 8-bit RGB format and a process swatch per colour.
InputRead ReadBookInput(const std::string& path, std::optional<InputFormat> format, CompleteBook& book,
                        std::uint32_t readerFlags);

}  // namespace tool
