#include "JsonText.h"

#include <cmath>
#include <cstdio>

namespace tool {

std::string JsonString(std::u16string_view text) {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string json = "\"";
    for (const char16_t unit : text) {
        if (unit >= 0x20 && unit <= 0x7E && unit != u'"' && unit != u'\\') {
            json += static_cast<char>(unit);
        } else {
            json += "\\u";
            for (int shift = 12; shift >= 0; shift -= 4) json += kHex[(unit >> shift) & 0xF];
        }
    }
    return json += '"';
}

std::string JsonDouble(double value) {
    if (std::isnan(value)) return "\"NaN\"";
    if (std::isinf(value)) return value > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.17g", value);
    return digits;
}

}  // namespace tool
