#include "UnicodeText.h"

#include <cstddef>

namespace kelvra {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf16(std::u16string& out, char32_t c) {
    if (c < 0x10000) {
        out += char16_t(c);
    } else {
        c -= 0x10000;
        out += char16_t(0xD800 + (c >> 10));
        out += char16_t(0xDC00 + (c & 0x3FF));
    }
}

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += char(c);
    } else if (c < 0x800) {
        out += char(0xC0 | (c >> 6));
        out += char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += char(0xE0 | (c >> 12));
        out += char(0x80 | ((c >> 6) & 0x3F));
        out += char(0x80 | (c & 0x3F));
    } else {
        out += char(0xF0 | (c >> 18));
        out += char(0x80 | ((c >> 12) & 0x3F));
        out += char(0x80 | ((c >> 6) & 0x3F));
        out += char(0x80 | (c & 0x3F));
    }
}

// The character of the well-formed sequence at utf8[at], and its length;
// length 0 when the bytes there form none.
std::pair<char32_t, std::size_t> DecodeUtf8(std::string_view utf8, std::size_t at) {
    const unsigned char lead = static_cast<unsigned char>(utf8[at]);
    if (lead < 0x80) return {lead, 1};
    std::size_t length = 0;
    char32_t c = 0;
    char32_t minimum = 0;
    if ((lead & 0xE0) == 0xC0) { length = 2; c = lead & 0x1F; minimum = 0x80; }
    else if ((lead & 0xF0) == 0xE0) { length = 3; c = lead & 0x0F; minimum = 0x800; }
    else if ((lead & 0xF8) == 0xF0) { length = 4; c = lead & 0x07; minimum = 0x10000; }
    else return {0, 0};
    if (utf8.size() - at < length) return {0, 0};
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned char next = static_cast<unsigned char>(utf8[at + i]);
        if ((next & 0xC0) != 0x80) return {0, 0};
        c = (c << 6) | (next & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return {0, 0};
    return {c, length};
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    for (std::size_t at = 0; at < utf8.size();) {
        auto [c, length] = DecodeUtf8(utf8, at);
        if (length == 0) {
            out += char16_t(kReplacement);
            ++at;
        } else {
            AppendUtf16(out, c);
            at += length;
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    // Names are nearly always ASCII: their ASCII start is copied unit by
    // unit into room made once, without a check of the room per character.
    std::string out(utf16.size(), '\0');
    char* const text = out.data();
    std::size_t ascii = 0;
    for (; ascii < utf16.size() && utf16[ascii] < 0x80; ++ascii) text[ascii] = char(utf16[ascii]);
    out.resize(ascii);
    for (std::size_t at = ascii; at < utf16.size(); ++at) {
        const char32_t unit = utf16[at];
        if (unit >= 0xD800 && unit <= 0xDBFF && at + 1 < utf16.size() && utf16[at + 1] >= 0xDC00 &&
            utf16[at + 1] <= 0xDFFF) {
            AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (utf16[at + 1] - 0xDC00));
            ++at;
        } else if (unit >= 0xD800 && unit <= 0xDFFF) {
            AppendUtf8(out, kReplacement);
        } else {
            AppendUtf8(out, unit);
        }
    }
    return out;
}

bool IsLocalisationKey(std::string_view text) { return text.starts_with("$$$/"); }

std::string_view ResolveLocalisationKey(std::string_view text) {
    if (!IsLocalisationKey(text)) return text;
    const std::size_t equals = text.find('=');
    return equals == std::string_view::npos ? text : text.substr(equals + 1);
}

}  // namespace kelvra
