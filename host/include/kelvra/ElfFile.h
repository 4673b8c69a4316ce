// The parts of an ELF module file the host reads without loading it: named
// sections and the dynamic symbols the file defines. Only 64-bit
// little-endian files are accepted; every offset is checked, so a damaged
// file is refused with a reason, never read out of bounds.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kelvra {

class ElfFile {
public:
    // Throws HostError with the reason when the file cannot be read or is
    // not a well-formed ELF file.
    static ElfFile Read(const std::filesystem::path& path);
    static ElfFile Parse(std::vector<std::uint8_t> bytes);

    std::vector<std::string> SectionNames() const;
    // The contents of the first section of that name; none when absent.
    std::optional<std::span<const std::uint8_t>> Section(const std::string& name) const;
    // Names of the global and weak symbols the dynamic symbol table defines.
    const std::vector<std::string>& DefinedDynamicSymbols() const { return dynamicSymbols_; }

private:
    struct SectionRef {
        std::string name;
        std::uint64_t offset = 0;
        std::uint64_t size = 0;  // 0 for sections without file contents
    };
    std::vector<std::uint8_t> bytes_;
    std::vector<SectionRef> sections_;
    std::vector<std::string> dynamicSymbols_;

    friend class ElfReader;
};

}  // namespace kelvra
