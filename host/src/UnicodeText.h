// Text conversions of the host's unicode strings: platform text is UTF-8,
// strings hold UTF-16 code units.
#pragma once

#include <string>
#include <string_view>

namespace kelvra {

// Each byte that starts no valid UTF-8 sequence becomes U+FFFD.
std::u16string Utf8ToUtf16(std::string_view utf8);
// Each lone surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);

// A text beginning with "$$$/" is a localisation key: it stands for the text
// after its first "=", or for itself when it has none. Other texts stand for
// themselves.
bool IsLocalisationKey(std::string_view text);
std::string_view ResolveLocalisationKey(std::string_view text);

}  // namespace kelvra
