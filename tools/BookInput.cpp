#include "BookInput.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <variant>

#include "LibraryFormat.h"
#include "PaletteText.h"
#include "formats/ReaderResult.h"
#include "formats/exchange/SwatchExchangePrescan.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"

namespace tool {
namespace {

// Far beyond any palette, and a bound on what a hostile file costs.
constexpr std::uintmax_t kMaxPaletteBytes = 64 << 20;
constexpr std::size_t kSniffBytes = 4096;

std::string ReaderFailure(std::int32_t result) {
    switch (result) {
        case formats::kReadStreamNotOpen: return "cannot be read";
        case formats::kReadXmlParseError: return "is not a well-formed XML swatchbook";
        case formats::kReadBadMagic: return "does not begin as its format must";
        case formats::kReadBadVersion: return "has a version the reader does not know";
        case formats::kReadTruncated: return "ends early: the file is truncated or damaged";
        case formats::kReadTooManyBlocks: return "declares more than 10000 blocks";
        case formats::kReadUnknownColorSpace: return "names a colour space the reader does not know";
        default: return "could not be read (reader result " + std::to_string(result) + ")";
    }
}

// Why the path cannot be read as a file; empty when it can.
std::string Unreadable(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) return "no such file";
    if (error) return error.message();
    if (status.type() == std::filesystem::file_type::directory) return "is a directory, not a file";
    if (status.type() != std::filesystem::file_type::regular) return "is not a regular file";
    if (!std::ifstream(path, std::ios::binary).is_open()) return std::string("cannot be read: ") + std::strerror(errno);
    return {};
}

std::string FileStart(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string start(kSniffBytes, '\0');
    file.read(start.data(), std::streamsize(start.size()));
    start.resize(std::size_t(file.gcount()));
    return start;
}

InputRead ReadPalette(const std::string& path, PaletteLayout layout, CompleteBook& book) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMaxPaletteBytes) return {path + ": larger than 64 MiB, too large for a palette", {}, {}};
    std::ifstream file(path, std::ios::binary);
    std::string text(std::size_t(size), '\0');
    file.read(text.data(), std::streamsize(text.size()));
    text.resize(std::size_t(file.gcount()));
    const auto parsed = ParsePalette(text, layout);
    if (const auto* failure = std::get_if<PaletteError>(&parsed)) {
        return {path + ":" + std::to_string(failure->line) + ": " + failure->message, {}, {}};
    }
    const Palette& palette = std::get<Palette>(parsed);
    book.BeginFill();
    book.SetTitle(palette.name);
    const std::int32_t format = book.AddFormat();
    book.SetFormatEncoding(format, swatchbook::kInt8Encoding);
    book.SetFormatColorSpace(format, swatchbook::kRGBSpace);
    InputRead read;
    for (const PaletteColor& color : palette.colors) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchKind(swatch, swatchbook::kProcessKind);
        book.SetSwatchName(swatch, color.name);
        book.SetSwatchValuesInt8(swatch, format, color.rgb.data());
        read.lines.push_back(color.line);
    }
    book.EndFill();
    return read;
}

std::optional<LibraryFormat> AsLibraryFormat(InputFormat format) {
    switch (format) {
        case InputFormat::kColorBook: return LibraryFormat::kColorBook;
        case InputFormat::kSwatchExchange: return LibraryFormat::kSwatchExchange;
        case InputFormat::kXmlSwatchbook: return LibraryFormat::kXmlSwatchbook;
        default: return std::nullopt;
    }
}

}  // namespace

std::optional<InputFormat> InputFormatFromName(std::string_view name) {
    if (name == "ocb") return InputFormat::kColorBook;
    if (name == "ose") return InputFormat::kSwatchExchange;
    if (name == "xml") return InputFormat::kXmlSwatchbook;
    if (name == "palette") return InputFormat::kHeadedPalette;
    if (name == "list") return InputFormat::kColorList;
    return std::nullopt;
}

InputFormat DetectInputFormat(const std::string& path) {
    if (const auto library = RecognizeLibraryFormat(path)) {
        switch (*library) {
            case LibraryFormat::kColorBook: return InputFormat::kColorBook;
            case LibraryFormat::kSwatchExchange: return InputFormat::kSwatchExchange;
            case LibraryFormat::kXmlSwatchbook: return InputFormat::kXmlSwatchbook;
        }
    }
    const std::string start = FileStart(path);
    if (StartsAsHeadedPalette(start)) return InputFormat::kHeadedPalette;
    const std::size_t first = start.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
    return first != std::string::npos && start[first] == '<' ? InputFormat::kXmlSwatchbook : InputFormat::kColorList;
}

InputRead ReadBookInput(const std::string& path, std::optional<InputFormat> format, CompleteBook& book,
                        std::uint32_t readerFlags) {
    if (const std::string why = Unreadable(path); !why.empty()) return {path + ": " + why, {}, {}};
    const InputFormat chosen = format.value_or(DetectInputFormat(path));
    if (const auto library = AsLibraryFormat(chosen)) {
        const std::int32_t result = ReadLibraryFile(*library, path, book, readerFlags);
        if (result != formats::kReadOK) return {path + ": " + ReaderFailure(result), {}, {}};
        InputRead read;
        if (*library == LibraryFormat::kSwatchExchange) {
            formats::FileStream stream(path.c_str(), true);
            std::int32_t unsupported = 0;
            formats::CountUnsupportedSwatchExchangeEntries(stream, unsupported);
            if (unsupported > 0) {
                read.notes.push_back(path + ": left out " + std::to_string(unsupported) +
                                     (unsupported == 1 ? " block" : " blocks") +
                                     " of a kind the swatch exchange reader does not import");
            }
        }
        return read;
    }
    return ReadPalette(path, chosen == InputFormat::kHeadedPalette ? PaletteLayout::kHeaded : PaletteLayout::kColorList,
                       book);
}

}  // namespace tool
