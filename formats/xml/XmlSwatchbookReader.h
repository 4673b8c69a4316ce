// Reads an XML swatchbook (the legacy colour book) into a swatch book.
#pragma once

#include <cstdint>

class OrvikSwatchbook;
class OrvikSwatchbookStream;

namespace formats {

// Read flags.
inline constexpr std::uint32_t kXmlSwatchbookKeepKeys = 1;      // take "$$$" attribute values whole
inline constexpr std::uint32_t kXmlSwatchbookKeepSpacers = 16;  // a spacer becomes an empty place

// Fills `book` from the XML swatchbook in `stream`. Answers kReadOK when the
// parser accepted the whole document, kReadStreamNotOpen when the stream is
// not open or the parser could not be set up, kReadXmlParseError when the
// document is malformed (ReaderResult.h); the book keeps what was added
// before a failure and is told that filling ended. An exception thrown by
// the book passes through once the parser is released.
std::int32_t ReadXmlSwatchbook(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags);

// Bytes handed to the parser per call.
inline constexpr std::int32_t kXmlFeedChunkSize = 256000;

}  // namespace formats
