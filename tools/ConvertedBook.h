// The book `tintora convert` writes: the swatches of every input in one
// complete book, grouped as asked, with the names the host can hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class CompleteBook;

namespace tool {

// The most UTF-16 units of a swatch name the host keeps.
inline constexpr std::size_t kMaxHostNameUnits = 31;

// The most blocks a swatch exchange file may declare and still be read.
inline constexpr std::int64_t kMaxExchangeBlocks = 10000;

struct ConvertSource {
    std::string path;
    const CompleteBook& book;
    std::vector<std::size_t> lines;  // a palette's line of each swatch; else empty
};

struct ConvertRules {
    std::optional<std::int32_t> kind;  // every swatch's kind; else each keeps its own
    bool groupPerFile = false;         // a group per input, named by its title or file
    std::optional<std::u16string> groupName;  // one group holding everything
    bool cutNames = false;                    // cut names to kMaxHostNameUnits
    bool renameDuplicates = false;            // number the later uses of a name
};

struct ConvertReport {
    std::vector<std::string> errors;  // any error: nothing may be written
    std::vector<std::string> notes;   // what was left out, cut or renamed
};

// Fills `out` (a new book) from the sources in order. Full names (prefix,
// name, postfix) become the names. Empty places are dropped; a swatch whose
// colour the host does not import (XYZ, custom spaces, none) and a tinted
// process colour (which the file cannot carry) are left out with a note.
// With groupPerFile or groupName every swatch goes into the chosen group;
// else the default group's swatches stay in the default group and named
// groups are kept. Gray is handed to the writer as its complement: the
// exchange reader gives a file's gray number as it is and the host shows it
// as lightness, while the writer writes a book's gray inverted, so this
// keeps the number a file had.
ConvertReport BuildConvertedBook(const std::vector<ConvertSource>& sources, const ConvertRules& rules,
                                 CompleteBook& out);

}  // namespace tool
