// What the user is told when a library file cannot be read, with the
// file's name in place of "%s".
#pragma once

namespace formats {

inline constexpr char kColorBookReadError[] =
    "$$$/Tintor/Str/OCBReadError=An error occurred when reading the color book '%s'.";
inline constexpr char kSwatchExchangeReadError[] =
    "$$$/Tintor/Str/OSEReadError=An error occurred when reading the swatch exchange file '%s'.";
inline constexpr char kLegacyColorBookReadError[] =
    "$$$/Tintor/Str/LegacyReadError=An error occurred when reading the legacy color book '%s'.";

}  // namespace formats
