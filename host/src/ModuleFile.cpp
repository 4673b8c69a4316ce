#include <kelvra/ElfFile.h>
#include <kelvra/HostError.h>
#include <kelvra/ModuleFile.h>

#include <ZPPropertyList.h>
#include <ZPStringList.h>

#include <charconv>
#include <cstring>

namespace kelvra {

namespace {

// The list id of a section ".kvres.STRL.<id>"; none for other names.
std::optional<std::int32_t> StringListId(const std::string& section) {
    const std::size_t prefix = std::strlen(kZPStringListSectionPrefix);
    if (section.compare(0, prefix, kZPStringListSectionPrefix) != 0) return std::nullopt;
    std::int32_t id = 0;
    const char* begin = section.data() + prefix;
    const char* end = section.data() + section.size();
    auto [last, error] = std::from_chars(begin, end, id);
    if (error != std::errc() || last != end || begin == end) return std::nullopt;
    return id;
}

}  // namespace

ModuleFile ModuleFile::Read(const std::filesystem::path& path) {
    try {
        const ElfFile elf = ElfFile::Read(path);
        ModuleFile file;
        file.path = path;
        const auto properties = elf.Section(kZPPropertyListSection);
        if (!properties) throw HostError("no property list (section " kZPPropertyListSection ")");
        file.properties = ParsePropertyList(*properties);
        for (const std::string& name : elf.SectionNames()) {
            const auto id = StringListId(name);
            if (!id) continue;
            try {
                file.stringLists[*id] = ParseStringList(*elf.Section(name));
            } catch (const HostError& error) {
                throw HostError("section " + name + ": " + error.what());
            }
        }
        file.exportedSymbols = elf.DefinedDynamicSymbols();
        return file;
    } catch (const HostError& error) {
        throw HostError(path.string() + ": " + error.what());
    }
}

}  // namespace kelvra
