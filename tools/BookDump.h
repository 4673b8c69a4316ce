// The state of a reference book after a read, as one JSON object.
#pragma once

#include <cstdint>
#include <string>

class ReferenceBook;

namespace tool {

// {"result": N, "book": {...}}: the book properties, every format's stored
// fields (no defaults) and every swatch record (kind, name, colour space and
// the four stored doubles).
std::string DumpBook(std::int32_t result, const ReferenceBook& book);

}  // namespace tool
