// The module's one UTF-8 codec: texts arrive from XML files and POSIX file
// names as UTF-8, while books and host strings hold UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Characters beyond the Basic Multilingual Plane become surrogate pairs.
// Anything that is not UTF-8 still converts, each byte that starts no valid
// sequence becoming U+FFFD, so no input can read past the text.
std::u16string Utf8ToUtf16(std::string_view utf8);

// The same into `utf16`, whose storage is reused, so that converting every
// name of a document does not allocate once per name.
void Utf8ToUtf16(std::string_view utf8, std::u16string& utf16);

// Surrogate pairs become one character; a lone surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);

}  // namespace kv
