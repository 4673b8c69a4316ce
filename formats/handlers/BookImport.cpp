#include "BookImport.h"

#include "KVError.h"
#include "formats/ReaderResult.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/streams/DataFilterStream.h"
#include "formats/xml/XmlSwatchbookReader.h"

namespace formats {

void ReadFileIntoBook(KVFilePathRef file, OrvikSwatchbook* book, BookReader reader) {
    if (book == nullptr) throw kv::Error(kv::kBadParameterErr, nullptr);
    DataFilterStream stream(file, true);
    if (reader(stream, *book, 0) != kReadOK) throw kv::Error(kv::kCantHappenErr, nullptr);
}

void ImportColorBook(KVFilePathRef file, OrvikSwatchbook* book) { ReadFileIntoBook(file, book, ReadColorBook); }

void ImportXmlSwatchbook(KVFilePathRef file, OrvikSwatchbook* book) {
    ReadFileIntoBook(file, book, ReadXmlSwatchbook);
}

}  // namespace formats
