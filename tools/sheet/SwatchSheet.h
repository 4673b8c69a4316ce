// A swatch sheet: one or more books of swatches shown as a picture, each
// swatch with a chip of its colour, its name, kind, tint, values as stored
// and as sRGB hex. Made from a library file by `tintora sheet` and from
// the documents of an import by `kelvra-host import --sheet`; written as one
// self-contained HTML file or a standalone SVG.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sheet {

// How a swatch's sRGB colour was had.
enum class Preview {
    kDirect,             // RGB and gray as they are
    kLab,                // the host's Lab conversion
    kCmykApproximation,  // ink taken off white, no colour management
};

struct Swatch {
    bool emptyPlace = false;  // a gap in a colour book's pages: nothing else is set
    std::string name;         // UTF-8, the full name
    std::string kind;         // "spot", "global", "process", or what else the source calls it
    double tint = 0.0;        // 0: none; else the chip mixes toward white by it
    std::vector<std::string> values;     // the values as stored, one line each: "Lab 8-bit 102 128 88"
    std::optional<std::array<float, 3>> srgb;  // the untinted colour 0..1; none: no preview
    Preview preview = Preview::kDirect;
};

struct Group {
    std::string name;  // empty for the swatches outside groups
    std::vector<Swatch> swatches;
};

struct Book {
    std::string title;
    std::string copyright;
    std::optional<std::int32_t> bookId;
    // Swatches per page of a colour book and which of a page's swatches is
    // its key (0-based); a page size of 0 lays the swatches out freely.
    std::int32_t pageSize = 0;
    std::int32_t pageKeyOffset = 0;
    std::vector<Group> groups;
};

struct Sheet {
    std::string title;
    std::vector<Book> books;
};

// One HTML file with its style inside: no scripts, nothing fetched; it
// reflows to a phone's width and prints page by page.
std::string SheetHtml(const Sheet& sheet);

// One SVG image of fixed layout, its texts wrapped to their cells.
std::string SheetSvg(const Sheet& sheet);

// Why `path` cannot name a sheet; empty when it ends in ".svg", ".html" or
// ".htm" (any case).
std::string SheetNameProblem(const std::string& path);

// Writes the sheet as SVG or HTML by the path's extension, through
// ReplaceFile, so a failure leaves the file as it was. Empty on success,
// else why not.
std::string WriteSheet(const Sheet& sheet, const std::string& path);

}  // namespace sheet
