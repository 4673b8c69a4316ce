// Writes the groups and swatches of a swatch book as a swatch exchange file.
#pragma once

#include <cstdint>

class OrvikSwatchbook;
class OrvikSwatchbookStream;

namespace formats {

// Answers 1 on success and 0 on any failure (a closed or reading stream, a
// short write, memory); what was written before a failure stays written.
std::int32_t WriteSwatchExchange(OrvikSwatchbookStream& stream, OrvikSwatchbook& book);

}  // namespace formats
