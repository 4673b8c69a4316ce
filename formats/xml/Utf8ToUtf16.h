// Texts reach the XML handlers as UTF-8; the book keeps UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace formats::xml {

// Converts UTF-8 to UTF-16, characters beyond the Basic Multilingual Plane
// as surrogate pairs. The parser hands over only well-formed UTF-8; anything
// else still converts, each byte that starts no valid sequence becoming
// U+FFFD, so no input can read past the text.
std::u16string Utf8ToUtf16(std::string_view utf8);

}  // namespace formats::xml
