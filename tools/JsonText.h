// The JSON spellings of the tool's output: strings written so that every
// UTF-16 code unit survives (lone surrogates too), doubles with all 17
// significant digits, non-finite doubles as strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// A JSON string; every code unit outside printable ASCII, and '"' and '\',
// is written as \uXXXX in lower-case hex.
std::string JsonString(std::u16string_view text);

// A JSON number of 17 significant digits, or "NaN", "Infinity", "-Infinity".
std::string JsonDouble(double value);

inline std::string JsonBool(bool value) { return value ? "true" : "false"; }
inline std::string JsonInt(std::int64_t value) { return std::to_string(value); }

}  // namespace tool
