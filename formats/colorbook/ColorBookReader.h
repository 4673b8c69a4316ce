// The binary colour book: a read-only catalogue of named colours in one
// colour space, one byte per channel, each with a short catalogue code.
#pragma once

#include <cstdint>

class OrvikSwatchbook;
class OrvikSwatchbookStream;

namespace formats {

// Read flags.
inline constexpr std::uint32_t kColorBookKeepKeys = 1;    // take "$$$" texts whole
inline constexpr std::uint32_t kColorBookWithCodes = 2;   // give each swatch its catalogue code
inline constexpr std::uint32_t kColorBookSpotKind = 4;    // every swatch is spot
inline constexpr std::uint32_t kColorBookGlobalKind = 8;  // unless spot, every swatch is global
inline constexpr std::uint32_t kColorBookKeepGaps = 16;   // an unnamed record becomes an empty place

// 1 when the stream is open and its first four bytes are the colour book
// magic, else 0. Reads those four bytes from the stream.
std::int32_t IsColorBook(OrvikSwatchbookStream& stream);

// Fills `book` from the colour book in `stream`; answers a reader result
// (ReaderResult.h). On failure the book keeps what was already set.
std::int32_t ReadColorBook(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags);

}  // namespace formats
