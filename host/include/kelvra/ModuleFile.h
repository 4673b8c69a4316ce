// A module file as the host sees it before loading: its checked property
// list, its string lists and the symbols it exports.
#pragma once

#include "PropertyList.h"
#include "StringList.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace kelvra {

struct ModuleFile {
    std::filesystem::path path;
    PropertyList properties;
    std::map<std::int32_t, StringList> stringLists;  // by list id
    std::vector<std::string> exportedSymbols;

    // Throws HostError ("<file>: <reason>") when the file is no ELF file,
    // its property list is missing or wrong, or a string list is damaged.
    static ModuleFile Read(const std::filesystem::path& path);
};

}  // namespace kelvra
