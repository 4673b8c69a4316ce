// What the numbers in the tool's output mean: the reader's result, a
// swatch's kind, a colour space and an encoding. The pretty dump writes each
// beside its number, and the help lists them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tool {

struct CodeMeaning {
    std::int32_t code;
    std::string_view meaning;
};

std::span<const CodeMeaning> ReaderResults();
std::span<const CodeMeaning> SwatchKinds();
std::span<const CodeMeaning> ColorSpaces();
std::span<const CodeMeaning> Encodings();

// The meaning of `code` among `meanings`; "unknown" for any other.
std::string_view MeaningOf(std::span<const CodeMeaning> meanings, std::int32_t code);

// "0 read completely, 1 ..." for the help.
std::string MeaningsHelp(std::span<const CodeMeaning> meanings);

}  // namespace tool
