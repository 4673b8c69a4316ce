// Any bytes as a swatch exchange file, pre-scanned.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "formats/exchange/SwatchExchangePrescan.h"
#include "tests/support/MemoryStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto stream = testsupport::MemoryStream::Reading(std::vector<std::uint8_t>(data, data + size));
    std::int32_t count = -1;
    formats::CountUnsupportedSwatchExchangeEntries(stream, count);
    // Each counted block takes at least its six header bytes.
    if (count < 0 || std::size_t(count) > size / 6) std::abort();
    return 0;
}
