#include <kelvra/ElfFile.h>
#include <kelvra/HostError.h>

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace kelvra {

namespace {

// Module files are a few megabytes; anything far larger is not one.
constexpr std::uint64_t kMaxFileSize = 512ull << 20;

[[noreturn]] void Refuse(const std::string& reason) { throw HostError("not a readable ELF file: " + reason); }

}  // namespace

// Reads the headers of an ElfFile's bytes with every range checked.
class ElfReader {
public:
    explicit ElfReader(ElfFile& file) : file_(file), bytes_(file.bytes_) {}

    void Run() {
        if (bytes_.size() < sizeof(Elf64_Ehdr) || std::memcmp(bytes_.data(), ELFMAG, SELFMAG) != 0)
            Refuse("no ELF header");
        if (bytes_[EI_CLASS] != ELFCLASS64 || bytes_[EI_DATA] != ELFDATA2LSB)
            Refuse("only 64-bit little-endian files are supported");
        const auto header = Load<Elf64_Ehdr>(0);
        ReadSections(header);
        ReadDynamicSymbols();
    }

private:
    template <typename T>
    T Load(std::uint64_t offset) const {
        if (!Fits(offset, sizeof(T))) Refuse("a header lies outside the file");
        T value;
        std::memcpy(&value, bytes_.data() + offset, sizeof(T));
        return value;
    }

    bool Fits(std::uint64_t offset, std::uint64_t size) const {
        return offset <= bytes_.size() && size <= bytes_.size() - offset;
    }

    Elf64_Shdr SectionHeader(const Elf64_Ehdr& header, std::uint64_t index) const {
        return Load<Elf64_Shdr>(header.e_shoff + index * header.e_shentsize);
    }

    // The zero-terminated string at `offset` inside the string table `table`.
    std::string StringAt(const Elf64_Shdr& table, std::uint64_t offset) const {
        if (table.sh_type == SHT_NOBITS || !Fits(table.sh_offset, table.sh_size) || offset >= table.sh_size)
            Refuse("a name lies outside its string table");
        const char* begin = reinterpret_cast<const char*>(bytes_.data() + table.sh_offset + offset);
        const void* end = std::memchr(begin, 0, table.sh_size - offset);
        if (end == nullptr) Refuse("a name has no terminator");
        return std::string(begin, static_cast<const char*>(end));
    }

    void ReadSections(const Elf64_Ehdr& header) {
        if (header.e_shoff == 0) Refuse("no section headers");
        if (header.e_shentsize < sizeof(Elf64_Shdr)) Refuse("section headers too small");
        // Extended numbering keeps the real counts in section 0.
        const Elf64_Shdr first = SectionHeader(header, 0);
        const std::uint64_t count = header.e_shnum != 0 ? header.e_shnum : first.sh_size;
        const std::uint64_t namesIndex = header.e_shstrndx != SHN_XINDEX ? header.e_shstrndx : first.sh_link;
        if (count > (bytes_.size() - std::min<std::uint64_t>(header.e_shoff, bytes_.size())) / header.e_shentsize)
            Refuse("section headers lie outside the file");
        if (namesIndex >= count) Refuse("no section name table");
        const Elf64_Shdr names = SectionHeader(header, namesIndex);
        for (std::uint64_t i = 0; i < count; ++i) {
            const Elf64_Shdr section = SectionHeader(header, i);
            headers_.push_back(section);
            ElfFile::SectionRef ref;
            ref.name = StringAt(names, section.sh_name);
            if (section.sh_type != SHT_NOBITS) {
                if (!Fits(section.sh_offset, section.sh_size))
                    Refuse("section " + ref.name + " lies outside the file");
                ref.offset = section.sh_offset;
                ref.size = section.sh_size;
            }
            file_.sections_.push_back(std::move(ref));
        }
    }

    void ReadDynamicSymbols() {
        for (const Elf64_Shdr& table : headers_) {
            if (table.sh_type != SHT_DYNSYM) continue;
            if (table.sh_link >= headers_.size()) Refuse("dynamic symbols without a string table");
            const Elf64_Shdr& names = headers_[table.sh_link];
            if (!Fits(table.sh_offset, table.sh_size)) Refuse("dynamic symbols lie outside the file");
            // Entry 0 is the null symbol.
            for (std::uint64_t at = sizeof(Elf64_Sym); at + sizeof(Elf64_Sym) <= table.sh_size;
                 at += sizeof(Elf64_Sym)) {
                const auto symbol = Load<Elf64_Sym>(table.sh_offset + at);
                const unsigned bind = ELF64_ST_BIND(symbol.st_info);
                const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
                const bool exported = bind == STB_GLOBAL || bind == STB_WEAK || bind == STB_GNU_UNIQUE;
                const bool visible = visibility == STV_DEFAULT || visibility == STV_PROTECTED;
                if (symbol.st_shndx != SHN_UNDEF && exported && visible)
                    file_.dynamicSymbols_.push_back(StringAt(names, symbol.st_name));
            }
        }
    }

    ElfFile& file_;
    const std::vector<std::uint8_t>& bytes_;
    std::vector<Elf64_Shdr> headers_;
};

ElfFile ElfFile::Read(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw HostError("cannot open " + path.string());
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0 || std::uint64_t(size) > kMaxFileSize) Refuse("file too large");
    in.seekg(0);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    if (!in.read(reinterpret_cast<char*>(bytes.data()), size)) throw HostError("cannot read " + path.string());
    return Parse(std::move(bytes));
}

ElfFile ElfFile::Parse(std::vector<std::uint8_t> bytes) {
    ElfFile file;
    file.bytes_ = std::move(bytes);
    ElfReader(file).Run();
    return file;
}

std::vector<std::string> ElfFile::SectionNames() const {
    std::vector<std::string> names;
    for (const SectionRef& section : sections_) names.push_back(section.name);
    return names;
}

std::optional<std::span<const std::uint8_t>> ElfFile::Section(const std::string& name) const {
    for (const SectionRef& section : sections_) {
        if (section.name == name)
            return std::span<const std::uint8_t>(bytes_.data() + section.offset, section.size);
    }
    return std::nullopt;
}

}  // namespace kelvra
