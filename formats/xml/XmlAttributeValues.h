// How attribute values of an XML swatchbook are read: localisation keys,
// decimal integers and the names of colour spaces and encodings.
#pragma once

#include <cstdint>
#include <string_view>

namespace formats::xml {

// Unless keys are kept, a value that begins with "$$$" is a localisation key
// and stands for the text after its first "=" (searched from the fourth
// character on); a key without "=" stands for nothing. Unlike the binary
// formats, which keep such a text whole, the key is dropped here.
std::string_view ResolveAttributeValue(std::string_view value, bool keepKeys);

// A decimal integer read the way the C library's atoi does on 64-bit glibc:
// leading white space, an optional sign, then digits up to the first other
// character; no digits give 0. The value saturates at 64 bits and keeps its
// low 32 bits, so "99999999999" gives 1215752191.
std::int32_t ParseDecimalInt(std::string_view text);

// "LAB", "RGB", "CMYK", "XYZ" to their colour-space codes; any other name,
// "Gray" too, is a custom space.
std::int32_t ColorSpaceFromName(std::string_view name);

// "Int8", "Int16", "Float" to their encoding codes; any other name is 0,
// which no book accepts.
std::int32_t EncodingFromName(std::string_view name);

}  // namespace formats::xml
