// A list of indexed strings as kept in a module file.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kelvra {

using StringList = std::vector<std::string>;  // string 1 is element 0

// Throws HostError when the list is damaged (data ends early, bytes left over).
StringList ParseStringList(std::span<const std::uint8_t> bytes);

}  // namespace kelvra
