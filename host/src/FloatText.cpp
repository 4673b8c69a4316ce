#include <kelvra/FloatText.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace kelvra {

std::string FloatText(float value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
    // Nine significant digits always read back exactly; fewer often do.
    char text[32];
    for (int digits = 1; digits <= 9; ++digits) {
        std::snprintf(text, sizeof text, "%.*g", digits, double(value));
        if (std::strtof(text, nullptr) == value) break;
    }
    return text;
}

}  // namespace kelvra
