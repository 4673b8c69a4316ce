// The property list of a small test module, built at compile time: kind
// "ZPEA", the interface version, the entry "main" and the plug-in name,
// big-endian, the name last and unpadded.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace test_module {

template <std::size_t N>
constexpr std::array<unsigned char, 92 + N - 1> PropertyList(const char (&pluginName)[N],
                                                               std::uint32_t interfaceVersion) {
    std::array<unsigned char, 92 + N - 1> bytes{};
    std::size_t at = 0;
    const auto word = [&](std::uint32_t value) {
        for (int shift = 24; shift >= 0; shift -= 8) bytes[at++] = static_cast<unsigned char>(value >> shift);
    };
    const auto text = [&](const char* chars, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) bytes[at++] = static_cast<unsigned char>(chars[i]);
    };
    const auto property = [&](const char* key, std::uint32_t length) {
        text("ORVK", 4);
        text(key, 4);
        word(0);
        word(length);
    };
    word(1);
    word(0);
    word(4);
    property("kind", 4);
    text("ZPEA", 4);
    property("ivrs", 4);
    word(interfaceVersion);
    property("wx86", 8);
    text("main\0\0\0\0", 8);
    property("pinm", N - 1);
    text(pluginName, N - 1);
    return bytes;
}

}  // namespace test_module
