// The numbers of a colour's text, such as "0.5 0.25 -1".
#pragma once

#include <cstdint>
#include <string_view>

namespace formats::xml {

// Reads `count` numbers from `text` into `values`, packed in the given
// encoding: unsigned bytes for Int8, unsigned 16-bit numbers for Int16 (both
// wrapping), doubles for every other encoding. Only spaces are skipped before
// a number, and the character that ends a number is not consumed, so after a
// tab, comma or other stray character every later number reads as 0; so does
// every number past the end of the text. `values` must hold `count` entries
// of the encoding.
void ParseColorText(std::string_view text, std::int32_t encoding, std::int32_t count, void* values);

}  // namespace formats::xml
