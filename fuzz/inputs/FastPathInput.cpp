#include "FastPathInput.h"

#include <algorithm>
#include <cstring>

#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"

namespace fuzzinputs {

namespace {

// The first byte is format + 3 × flags, so that every value picks a reader.
constexpr std::uint8_t kFormats = 3;

std::uint32_t FlagsOf(BookFormat format) {
    switch (format) {
        case BookFormat::kColorBook:
            return formats::kColorBookKeepKeys | formats::kColorBookWithCodes | formats::kColorBookSpotKind |
                   formats::kColorBookGlobalKind | formats::kColorBookKeepGaps;
        case BookFormat::kExchange: return formats::kSwatchExchangeKeepKeys;
        case BookFormat::kXml: return formats::kXmlSwatchbookKeepKeys | formats::kXmlSwatchbookKeepSpacers;
    }
    return 0;
}

}  // namespace

FastPathInput DecodeFastPathInput(const std::uint8_t* data, std::size_t size) {
    FastPathInput input;
    if (size == 0) return input;
    input.format = BookFormat(data[0] % kFormats);
    input.flags = std::uint32_t(data[0] / kFormats) & FlagsOf(input.format);
    const std::size_t values = std::min(size - 1, kColorValueBytes);
    std::memcpy(input.values, data + 1, values);
    input.file.assign(data + 1 + values, data + size);
    return input;
}

testsupport::Bytes EncodeFastPathInput(const FastPathInput& input) {
    const std::uint32_t flags = input.flags & FlagsOf(input.format);
    testsupport::Bytes bytes = {std::uint8_t(std::uint8_t(input.format) + kFormats * flags)};
    bytes.insert(bytes.end(), std::begin(input.values), std::end(input.values));
    bytes.insert(bytes.end(), input.file.begin(), input.file.end());
    return bytes;
}

}  // namespace fuzzinputs
