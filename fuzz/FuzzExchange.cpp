// Any bytes as a swatch exchange file, read into a book with groups, which
// is then written out again.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t flags : {0u, 1u}) {
        auto in = testsupport::MemoryStream::Reading(std::vector<std::uint8_t>(data, data + size));
        CompleteBook book;
        formats::ReadSwatchExchange(in, book, flags);
        auto out = testsupport::MemoryStream::Writing();
        formats::WriteSwatchExchange(out, book);
    }
    return 0;
}
