#include "Utf16Text.h"

#include <stdexcept>

namespace testsupport {

std::u16string U16(std::string_view utf8) {
    std::u16string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (i + length > utf8.size()) throw std::invalid_argument("truncated UTF-8");
        char32_t code = length == 1 ? lead : lead & (0xFF >> (length + 1));
        for (int k = 1; k < length; ++k) code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        if (code >= 0x10000) {
            code -= 0x10000;
            out.push_back(char16_t(0xD800 + (code >> 10)));
            out.push_back(char16_t(0xDC00 + (code & 0x3FF)));
        } else {
            out.push_back(char16_t(code));
        }
        i += length;
    }
    return out;
}

std::string U8(const std::u16string& utf16) {
    std::string out;
    auto put = [&out](char32_t code) {
        if (code < 0x80) {
            out.push_back(char(code));
        } else if (code < 0x800) {
            out.push_back(char(0xC0 | (code >> 6)));
            out.push_back(char(0x80 | (code & 0x3F)));
        } else if (code < 0x10000) {
            out.push_back(char(0xE0 | (code >> 12)));
            out.push_back(char(0x80 | ((code >> 6) & 0x3F)));
            out.push_back(char(0x80 | (code & 0x3F)));
        } else {
            out.push_back(char(0xF0 | (code >> 18)));
            out.push_back(char(0x80 | ((code >> 12) & 0x3F)));
            out.push_back(char(0x80 | ((code >> 6) & 0x3F)));
            out.push_back(char(0x80 | (code & 0x3F)));
        }
    };
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] < 0xE000) {
            put(0x10000 + ((char32_t(unit) - 0xD800) << 10) + (char32_t(utf16[i + 1]) - 0xDC00));
            ++i;
        } else if (unit >= 0xD800 && unit < 0xE000) {
            put(0xFFFD);
        } else {
            put(unit);
        }
    }
    return out;
}

}  // namespace testsupport
