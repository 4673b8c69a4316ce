// Reading a library file the host names into a swatch book, through a host
// data filter.
#pragma once

#include <cstdint>

#include "ZPTypes.h"

class OrvikSwatchbook;
class OrvikSwatchbookStream;

namespace formats {

// A reader of one library format (ReadColorBook, ReadSwatchExchange,
// ReadXmlSwatchbook): stream, book, flags → reader result.
using BookReader = std::int32_t (*)(OrvikSwatchbookStream&, OrvikSwatchbook&, std::uint32_t);

// Reads `file` into `book` with `reader` and flags 0, the stream closed
// again on return. kv::Error "PARM" for a null book, "CANT" when the
// reader fails; what it added before failing stays in the book.
void ReadFileIntoBook(KVFilePathRef file, OrvikSwatchbook* book, BookReader reader);

// The colour book and the XML swatchbook (legacy colour book) files that
// other plug-ins ask the module to read.
void ImportColorBook(KVFilePathRef file, OrvikSwatchbook* book);
void ImportXmlSwatchbook(KVFilePathRef file, OrvikSwatchbook* book);

}  // namespace formats
