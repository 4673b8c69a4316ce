// Any bytes as an XML swatchbook, read with no flags and with every flag.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/MemoryStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t flags : {0u, 17u}) {
        auto stream = testsupport::MemoryStream::Reading(std::vector<std::uint8_t>(data, data + size));
        ReferenceBook book;
        formats::ReadXmlSwatchbook(stream, book, flags);
    }
    return 0;
}
