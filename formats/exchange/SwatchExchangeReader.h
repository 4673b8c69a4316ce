// Reads a swatch exchange file into a swatch book.
#pragma once

#include <cstdint>

class OrvikSwatchbook;
class OrvikSwatchbookStream;

namespace formats {

// Read flag: keep names that are localisation keys whole.
inline constexpr std::uint32_t kSwatchExchangeKeepKeys = 1;

// Fills `book` with the groups and colours of the file in `stream`; answers
// a reader result (ReaderResult.h). On failure the book keeps what was added.
std::int32_t ReadSwatchExchange(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags);

}  // namespace formats
