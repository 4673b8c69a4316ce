#include "JsonText.h"

#include <charconv>
#include <cmath>

namespace tool {

std::string JsonString(std::u16string_view text) {
    std::string json;
    PutJsonString(text, [&](char c) { json += c; });
    return json;
}

char* WriteJsonDouble(char* at, double value) {
    const std::string_view text = std::isnan(value) ? "\"NaN\""
                                  : !std::isinf(value) ? ""
                                  : value > 0           ? "\"Infinity\""
                                                        : "\"-Infinity\"";
    if (!text.empty()) return at + text.copy(at, text.size());
    // As printf's "%.17g" writes it.
    return std::to_chars(at, at + kJsonDoubleSize, value, std::chars_format::general, 17).ptr;
}

std::string JsonDouble(double value) {
    char text[kJsonDoubleSize];
    return std::string(text, WriteJsonDouble(text, value));
}

}  // namespace tool
