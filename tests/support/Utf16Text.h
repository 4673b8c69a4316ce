// Readable UTF-16 in tests: written as UTF-8, compared as UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace testsupport {

// UTF-8 to UTF-16; characters beyond the Basic Multilingual Plane become
// surrogate pairs. The input must be valid UTF-8.
std::u16string U16(std::string_view utf8);

// UTF-16 to UTF-8 for messages; a lone surrogate becomes U+FFFD.
std::string U8(const std::u16string& utf16);

}  // namespace testsupport
