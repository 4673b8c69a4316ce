#include <kelvra/FloatText.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kelvra {

std::string FloatText(float value) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "Infinity" : "-Infinity";
    // The shortest digits that read back as the same float, in scientific
    // form, tell how many digits there are and where the point goes.
    char text[48];
    char* end = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::scientific).ptr;
    char* exponent = std::find(text, end, 'e');
    const auto digits = int(std::count_if(text, exponent, [](char c) { return c >= '0' && c <= '9'; }));
    int power = 0;
    std::from_chars(exponent + (exponent[1] == '+' ? 2 : 1), end, power);
    // Written out from 1e-4 on, as printf's %g would, and also every whole
    // number below a billion: 100 rather than 1e+02.
    if (power >= -4 && power < 9) {
        end = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed,
                            std::max(0, digits - 1 - power))
                  .ptr;
    }
    return std::string(text, end);
}

}  // namespace kelvra
