// Which reader a library file goes to, and running it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class OrvikSwatchbook;

namespace tool {

enum class LibraryFormat { kColorBook, kSwatchExchange, kXmlSwatchbook };

// "ocb", "ose", "xml"; "auto" and anything else give nothing.
std::optional<LibraryFormat> LibraryFormatFromName(std::string_view name);

// By the file's extension ("ocb", "ose", "xml", any case), else by its first
// bytes: the colour book magic or the swatch exchange magic; else nothing.
std::optional<LibraryFormat> RecognizeLibraryFormat(const std::string& path);

// RecognizeLibraryFormat, else XML.
LibraryFormat DetectLibraryFormat(const std::string& path);

// Runs the format's reader on the file through a plain file stream into
// `book`; answers the reader's result.
std::int32_t ReadLibraryFile(LibraryFormat format, const std::string& path, OrvikSwatchbook& book,
                             std::uint32_t flags);

}  // namespace tool
