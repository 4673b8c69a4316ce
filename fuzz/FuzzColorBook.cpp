// Any bytes as a binary colour book, read with no flags and with every flag.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "formats/colorbook/ColorBookReader.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/MemoryStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t flags : {0u, 31u}) {
        auto stream = testsupport::MemoryStream::Reading(std::vector<std::uint8_t>(data, data + size));
        ReferenceBook book;
        formats::ReadColorBook(stream, book, flags);
    }
    return 0;
}
