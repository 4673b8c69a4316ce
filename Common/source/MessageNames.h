// How the entry and the dispatcher tell a message by its caller and selector.
#pragma once

#include <cstring>

namespace kv {

// Byte for byte, case-sensitive, the whole string; a null name matches nothing.
inline bool Matches(const char* name, const char* expected) noexcept {
    return name != nullptr && std::strcmp(name, expected) == 0;
}

}  // namespace kv
