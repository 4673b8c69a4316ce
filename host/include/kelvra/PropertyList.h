// The plug-in property list by which the host recognises a module file, and
// its exact check: header, then the properties kind "ZPEA", interface
// version 2, entry point name and plug-in name, in this order.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace kelvra {

struct PropertyList {
    std::string kind;
    std::int32_t interfaceVersion = 0;
    std::string entryName;
    std::string pluginName;
};

// Throws HostError naming the first thing that is wrong.
PropertyList ParsePropertyList(std::span<const std::uint8_t> bytes);

}  // namespace kelvra
