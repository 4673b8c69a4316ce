// Writes binary colour book files from readable descriptions. Every field
// can be set to a hostile value; counts default to what the description holds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ByteWriter.h"

namespace testsupport {

struct ColorBookRecord {
    std::u16string name;                              // empty: a gap
    std::string code;                                 // padded with zero bytes, cut to 6
    std::vector<std::uint8_t> components;             // as stored (ink inverted)
    std::optional<std::uint32_t> declaredNameLength;  // default: name.size()
};

struct ColorBookDescription {
    std::string magic = "7KCB";
    std::uint16_t version = 1;
    std::uint16_t bookId = 0;
    std::u16string title, prefix, postfix, copyright;
    std::optional<std::uint16_t> colorCount;  // default: records.size()
    std::uint16_t pageSize = 0;
    std::uint16_t pageKeyOffset = 0;
    std::uint16_t colorSpace = 0;  // 0 RGB, 2 CMYK, 7 Lab
    std::vector<ColorBookRecord> records;
    Bytes trailer;  // raw bytes behind the last record
};

// The file colour space identifiers.
inline constexpr std::uint16_t kColorBookRGB = 0;
inline constexpr std::uint16_t kColorBookCMYK = 2;
inline constexpr std::uint16_t kColorBookLab = 7;

Bytes BuildColorBook(const ColorBookDescription& description);

// "spfl" followed by the four characters of `mark` ("spot" for spot colours).
Bytes ColorBookTrailer(const std::string& mark);

// A small valid book: three named records and a gap, RGB, with a trailer.
ColorBookDescription SampleColorBook();

// A CMYK book (BookID 3100) of `colors` spot colours "Colour 0", "Colour 1"
// … with their numbers as catalogue codes, as the speed benchmarks and the
// work-per-colour guards read.
ColorBookDescription NumberedSpotColorBook(const std::string& title, int colors);

}  // namespace testsupport
