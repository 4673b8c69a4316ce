#include <kelvra/ElfFile.h>
#include <kelvra/HostError.h>

#include <gtest/gtest.h>

#include <elf.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes FileBytes(const char* path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Parses or refuses; anything else (a crash, another exception) fails the test.
bool Parses(Bytes bytes) {
    try {
        kelvra::ElfFile::Parse(std::move(bytes));
        return true;
    } catch (const kelvra::HostError&) {
        return false;
    }
}

TEST(ElfFileTest, FindsTheResourceSections) {
    const kelvra::ElfFile file = kelvra::ElfFile::Read(WELL_BEHAVED_MODULE);
    const auto list = file.Section(".kvres.PIPL.PLUGIN");
    ASSERT_TRUE(list.has_value());
    ASSERT_GE(list->size(), 12u);
    EXPECT_EQ((*list)[3], 1);   // header word 1
    EXPECT_EQ((*list)[11], 4);  // four properties
    const auto strings = file.Section(".kvres.STRL.16050");
    ASSERT_TRUE(strings.has_value());
    EXPECT_EQ(Bytes(strings->begin(), strings->end()), (Bytes{0, 1, 0, 4, 'T', 'e', 's', 't'}));
    EXPECT_FALSE(file.Section(".kvres.STRL.1").has_value());
}

TEST(ElfFileTest, ListsTheDefinedDynamicSymbols) {
    EXPECT_EQ(kelvra::ElfFile::Read(WELL_BEHAVED_MODULE).DefinedDynamicSymbols(), std::vector<std::string>{"main"});
    auto extra = kelvra::ElfFile::Read(EXTRA_SYMBOL_MODULE).DefinedDynamicSymbols();
    std::sort(extra.begin(), extra.end());
    EXPECT_EQ(extra, (std::vector<std::string>{"TestModuleExtra", "main"}));
}

TEST(ElfFileTest, RefusesWhatIsNoElfFile) {
    EXPECT_FALSE(Parses({}));
    EXPECT_FALSE(Parses(Bytes(64, 0)));
    EXPECT_THROW(kelvra::ElfFile::Read("/nonexistent/module.so"), kelvra::HostError);
}

TEST(ElfFileTest, RefusesA32BitFile) {
    Bytes bytes = FileBytes(WELL_BEHAVED_MODULE);
    bytes[EI_CLASS] = ELFCLASS32;
    try {
        kelvra::ElfFile::Parse(bytes);
        FAIL() << "accepted";
    } catch (const kelvra::HostError& error) {
        EXPECT_STREQ(error.what(), "not a readable ELF file: only 64-bit little-endian files are supported");
    }
}

TEST(ElfFileTest, EveryTruncationIsRefused) {
    const Bytes whole = FileBytes(WELL_BEHAVED_MODULE);
    ASSERT_GT(whole.size(), 1000u);
    for (std::size_t length = 0; length < whole.size(); length += (length < 256 ? 1 : 61)) {
        // The section headers sit at the end, so every cut short of them is refused.
        EXPECT_FALSE(Parses(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(length)))) << length;
    }
}

TEST(ElfFileTest, DamagedHeadersAreRefused) {
    const Bytes whole = FileBytes(WELL_BEHAVED_MODULE);
    Elf64_Ehdr header;
    std::memcpy(&header, whole.data(), sizeof header);
    auto with = [&](auto change) {
        Elf64_Ehdr damaged = header;
        change(damaged);
        Bytes bytes = whole;
        std::memcpy(bytes.data(), &damaged, sizeof damaged);
        return bytes;
    };
    EXPECT_FALSE(Parses(with([](Elf64_Ehdr& h) { h.e_shoff = ~0ull - 8; })));
    EXPECT_FALSE(Parses(with([](Elf64_Ehdr& h) { h.e_shoff = 0; })));
    EXPECT_FALSE(Parses(with([](Elf64_Ehdr& h) { h.e_shnum = 0xFFFF; })));
    EXPECT_FALSE(Parses(with([](Elf64_Ehdr& h) { h.e_shstrndx = std::uint16_t(h.e_shnum + 1); })));
    EXPECT_FALSE(Parses(with([](Elf64_Ehdr& h) { h.e_shentsize = 8; })));
}

TEST(ElfFileTest, DamagedSectionHeadersAreRefused) {
    const Bytes whole = FileBytes(WELL_BEHAVED_MODULE);
    Elf64_Ehdr header;
    std::memcpy(&header, whole.data(), sizeof header);
    for (std::uint16_t index = 0; index < header.e_shnum; ++index) {
        Bytes bytes = whole;
        Elf64_Shdr section;
        const std::size_t at = header.e_shoff + std::size_t(index) * header.e_shentsize;
        std::memcpy(&section, bytes.data() + at, sizeof section);
        if (section.sh_type == SHT_NOBITS || section.sh_type == SHT_NULL) continue;
        section.sh_size = ~0ull / 2;
        std::memcpy(bytes.data() + at, &section, sizeof section);
        EXPECT_FALSE(Parses(bytes)) << index;
    }
}

}  // namespace
