#include "Utf8.h"

#include <cstddef>

namespace kv {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }
bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

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
    if (value < smallest || value > 0x10FFFF || IsSurrogate(value)) return kReplacement;
    length = needed;
    return value;
}

void AppendUtf8(char32_t c, std::string& out) {
    if (c < 0x80) {
        out.push_back(char(c));
    } else if (c < 0x800) {
        out.push_back(char(0xC0 | (c >> 6)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(char(0xE0 | (c >> 12)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    } else {
        out.push_back(char(0xF0 | (c >> 18)));
        out.push_back(char(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(char(0x80 | (c & 0x3F)));
    }
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string result;
    Utf8ToUtf16(utf8, result);
    return result;
}

// No sequence gives more code units than it has bytes, so the result is
// written into room for one unit per byte and cut to what was written.
void Utf8ToUtf16(std::string_view utf8, std::u16string& result) {
    // A leading run of ASCII, most often the whole text, is widened unit by
    // unit without decoding, and a text that is nothing else is not cut.
    std::size_t at = 0;
    while (at < utf8.size() && static_cast<unsigned char>(utf8[at]) < 0x80) ++at;
    result.resize(utf8.size());
    char16_t* out = result.data();
    for (std::size_t i = 0; i < at; ++i) out[i] = static_cast<unsigned char>(utf8[i]);
    if (at == utf8.size()) return;
    out += at;
    while (at < utf8.size()) {
        const auto lead = static_cast<unsigned char>(utf8[at]);
        if (lead < 0x80) {
            *out++ = lead;
            ++at;
            continue;
        }
        std::size_t length;
        const char32_t c = DecodeOne(utf8, at, length);
        at += length;
        if (c < 0x10000) {
            *out++ = static_cast<char16_t>(c);
        } else {
            *out++ = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            *out++ = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string result;
    result.reserve(utf16.size());
    for (std::size_t at = 0; at < utf16.size(); ++at) {
        char32_t c = utf16[at];
        const bool pair = IsHighSurrogate(c) && at + 1 < utf16.size() && IsSurrogate(utf16[at + 1]) &&
                          !IsHighSurrogate(utf16[at + 1]);
        if (pair) {
            c = 0x10000 + ((c - 0xD800) << 10) + (char32_t(utf16[++at]) - 0xDC00);
        } else if (IsSurrogate(c)) {
            c = kReplacement;
        }
        AppendUtf8(c, result);
    }
    return result;
}

}  // namespace kv
