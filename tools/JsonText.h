// The JSON spellings of the tool's output: strings written so that every
// UTF-16 code unit survives (lone surrogates too), doubles with all 17
// significant digits, non-finite doubles as strings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// Hands the JSON string of `text` to `put` character by character; every
// code unit outside printable ASCII, and '"' and '\', is written as \uXXXX
// in lower-case hex.
template <typename Put>
void PutJsonString(std::u16string_view text, Put&& put) {
    static constexpr char kHex[] = "0123456789abcdef";
    put('"');
    for (const char16_t unit : text) {
        if (unit >= 0x20 && unit <= 0x7E && unit != u'"' && unit != u'\\') {
            put(static_cast<char>(unit));
        } else {
            put('\\');
            put('u');
            for (int shift = 12; shift >= 0; shift -= 4) put(kHex[(unit >> shift) & 0xF]);
        }
    }
    put('"');
}

// The most characters PutJsonString writes per code unit (\uXXXX).
inline constexpr std::size_t kJsonStringMostPerUnit = 6;

std::string JsonString(std::u16string_view text);

// Room enough for any JsonDouble text.
inline constexpr std::size_t kJsonDoubleSize = 32;
// Writes a JSON number of 17 significant digits, or "NaN", "Infinity",
// "-Infinity" (quoted), at `at`; answers its end.
char* WriteJsonDouble(char* at, double value);
std::string JsonDouble(double value);

inline std::string JsonBool(bool value) { return value ? "true" : "false"; }
inline std::string JsonInt(std::int64_t value) { return std::to_string(value); }

}  // namespace tool
