#include "Utf8Text.h"

namespace tool {
namespace {

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void Append(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += char(code);
        return;
    }
    const int tail = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    static constexpr unsigned char kLead[] = {0, 0xC0, 0xE0, 0xF0};
    out += char(kLead[tail] | (code >> (6 * tail)));
    for (int k = tail - 1; k >= 0; --k) out += char(0x80 | ((code >> (6 * k)) & 0x3F));
}

}  // namespace

std::string Utf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (IsHighSurrogate(unit) && i + 1 < utf16.size() && IsLowSurrogate(utf16[i + 1])) {
            Append(out, 0x10000 + ((char32_t(unit) - 0xD800) << 10) + (char32_t(utf16[i + 1]) - 0xDC00));
            ++i;
        } else {
            Append(out, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? char32_t(0xFFFD) : char32_t(unit));
        }
    }
    return out;
}

}  // namespace tool
