#include "XmlAttributeValues.h"

#include <cstddef>
#include <limits>

#include "swatchbook/SwatchbookCodes.h"

namespace formats::xml {
namespace {

// White space as the C library sees it in the "C" locale.
bool IsCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string_view ResolveAttributeValue(std::string_view value, bool keepKeys) {
    if (keepKeys || value.size() < 3 || value[0] != '$' || value[1] != '$' || value[2] != '$') return value;
    const std::size_t equals = value.find('=', 3);
    if (equals == std::string_view::npos) return {};
    return value.substr(equals + 1);
}

std::int32_t ParseDecimalInt(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size() && IsCSpace(text[at])) ++at;
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';

    // The magnitude saturates at the largest one a 64-bit long can take for
    // the sign, 2^63 - 1 or 2^63.
    const std::uint64_t limit =
        std::uint64_t(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
    std::uint64_t magnitude = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        const auto digit = std::uint64_t(text[at] - '0');
        magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
    }
    const std::uint64_t value = negative ? 0 - magnitude : magnitude;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::int32_t ColorSpaceFromName(std::string_view name) {
    if (name == "LAB") return swatchbook::kLabSpace;
    if (name == "RGB") return swatchbook::kRGBSpace;
    if (name == "CMYK") return swatchbook::kCMYKSpace;
    if (name == "XYZ") return swatchbook::kXYZSpace;
    return swatchbook::kCustomSpace;
}

std::int32_t EncodingFromName(std::string_view name) {
    if (name == "Int8") return swatchbook::kInt8Encoding;
    if (name == "Int16") return swatchbook::kInt16Encoding;
    if (name == "Float") return swatchbook::kFloatEncoding;
    return 0;
}

}  // namespace formats::xml
