#include "Utf8ToUtf16.h"

#include <cstddef>

namespace formats::xml {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Decodes the sequence at text[at]; `length` becomes the bytes it used (1
// for an invalid one). Overlong forms, surrogates and values above U+10FFFF
// are invalid.
char32_t DecodeOne(std::string_view text, std::size_t at, std::size_t& length) {
    const auto lead = static_cast<unsigned char>(text[at]);
    length = 1;
    if (lead < 0x80) return lead;

    std::size_t needed;
    char32_t value;
    char32_t smallest;
    if ((lead & 0xE0) == 0xC0) {
        needed = 2, value = lead & 0x1F, smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        needed = 3, value = lead & 0x0F, smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        needed = 4, value = lead & 0x07, smallest = 0x10000;
    } else {
        return kReplacement;
    }
    if (text.size() - at < needed) return kReplacement;
    for (std::size_t i = 1; i < needed; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if (!IsContinuation(byte)) return kReplacement;
        value = (value << 6) | (byte & 0x3F);
    }
    if (value < smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return kReplacement;
    length = needed;
    return value;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    std::size_t at = 0;
    while (at < utf8.size()) {
        std::size_t length;
        const char32_t c = DecodeOne(utf8, at, length);
        at += length;
        if (c < 0x10000) {
            result.push_back(static_cast<char16_t>(c));
        } else {
            result.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            result.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
    return result;
}

}  // namespace formats::xml
