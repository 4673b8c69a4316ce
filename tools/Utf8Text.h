// Book texts (UTF-16) as the UTF-8 of messages, sheets and file names.
#pragma once

#include <string>
#include <string_view>

namespace tool {

// Characters beyond the Basic Multilingual Plane from their surrogate pairs;
// each lone surrogate becomes U+FFFD.
std::string Utf8(std::u16string_view utf16);

}  // namespace tool
