#include "LibraryFormat.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeLayout.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/streams/FileStream.h"
#include "formats/xml/XmlSwatchbookReader.h"

namespace tool {
namespace {

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

bool StartsWithSwatchExchangeMagic(const std::string& path) {
    char magic[sizeof formats::exchange::kMagic] = {};
    std::ifstream file(path, std::ios::binary);
    return file.read(magic, sizeof magic) && std::memcmp(magic, formats::exchange::kMagic, sizeof magic) == 0;
}

}  // namespace

std::optional<LibraryFormat> LibraryFormatFromName(std::string_view name) {
    if (name == "ocb") return LibraryFormat::kColorBook;
    if (name == "ose") return LibraryFormat::kSwatchExchange;
    if (name == "xml") return LibraryFormat::kXmlSwatchbook;
    return std::nullopt;
}

std::optional<LibraryFormat> RecognizeLibraryFormat(const std::string& path) {
    const std::string extension = LowerCase(std::filesystem::path(path).extension().string());
    if (!extension.empty()) {
        if (const auto format = LibraryFormatFromName(std::string_view(extension).substr(1))) return *format;
    }
    formats::FileStream stream(path.c_str(), true);
    if (formats::IsColorBook(stream) != 0) return LibraryFormat::kColorBook;
    if (StartsWithSwatchExchangeMagic(path)) return LibraryFormat::kSwatchExchange;
    return std::nullopt;
}

LibraryFormat DetectLibraryFormat(const std::string& path) {
    return RecognizeLibraryFormat(path).value_or(LibraryFormat::kXmlSwatchbook);
}

std::int32_t ReadLibraryFile(LibraryFormat format, const std::string& path, OrvikSwatchbook& book,
                             std::uint32_t flags) {
    formats::FileStream stream(path.c_str(), true);
    switch (format) {
    case LibraryFormat::kColorBook: return formats::ReadColorBook(stream, book, flags);
    case LibraryFormat::kSwatchExchange: return formats::ReadSwatchExchange(stream, book, flags);
    case LibraryFormat::kXmlSwatchbook: break;
    }
    return formats::ReadXmlSwatchbook(stream, book, flags);
}

}  // namespace tool
