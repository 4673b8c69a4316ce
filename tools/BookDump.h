// The state of a reference book after a read, as one JSON object.
#pragma once

#include <cstdint>
#include <ostream>

class ReferenceBook;

namespace tool {

// {"result": N, "book": {...}}: the book properties, every format's stored
// fields (no defaults) and every swatch record (kind, name, colour space and
// the four stored doubles). Compact on one line; pretty indented, with the
// meaning of each result, kind, colour space and encoding beside its number
// ("resultMeaning", "kindMeaning", "colorSpaceMeaning", "encodingMeaning").
void DumpBook(std::ostream& out, std::int32_t result, const ReferenceBook& book, bool pretty);

}  // namespace tool
