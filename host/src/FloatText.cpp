#include <kelvra/FloatText.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace kelvra {

std::string FloatText(float value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
    // Nine significant digits always read back exactly; fewer often do.
    char text[32];
    int digits = 1;
    for (; digits <= 9; ++digits) {
        std::snprintf(text, sizeof text, "%.*g", digits, double(value));
        if (std::strtof(text, nullptr) == value) break;
    }
    // A whole number below a billion is written out: 100 rather than 1e+02.
    if (const char* exponent = std::strchr(text, 'e')) {
        const int power = std::atoi(exponent + 1);
        if (power >= digits && power < 9) std::snprintf(text, sizeof text, "%.*g", power + 1, double(value));
    }
    return text;
}

}  // namespace kelvra
