#include "PaletteText.h"

#include <charconv>
#include <optional>

#include "color/ScreenColor.h"
#include "text/Utf8.h"

namespace tool {
namespace {

constexpr std::string_view kHeadedFirstLine = "GIMP Palette";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";

struct Failure {
    std::string message;
};

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool StartsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Well-formed UTF-8: no stray continuation bytes, no overlong forms, no
// surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = 0;
        char32_t min = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2, min = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3, min = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4, min = 0x10000;
        } else {
            return false;
        }
        if (text.size() - i < length) return false;
        char32_t code = lead & (0x7F >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80) return false;
            code = (code << 6) | (next & 0x3F);
        }
        if (code < min || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
        i += length;
    }
    return true;
}

// The next blank-separated word of `rest`, which moves past it.
std::string_view NextWord(std::string_view& rest) {
    rest = rest.substr(std::min(rest.size(), rest.find_first_not_of(kBlanks)));
    const std::size_t end = std::min(rest.size(), rest.find_first_of(kBlanks));
    const std::string_view word = rest.substr(0, end);
    rest = rest.substr(end);
    return word;
}

bool IsNumberWord(std::string_view word) {
    return !word.empty() && (IsDigit(word[0]) || ((word[0] == '-' || word[0] == '+') && word.size() > 1));
}

// "R G B name".
std::variant<PaletteColor, Failure> NumbersLine(std::string_view line) {
    PaletteColor color{};
    std::string_view rest = line;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const std::string_view word = NextWord(rest);
        if (!IsNumberWord(word)) {
            return Failure{"expected three numbers 0..255 and a name, found " + std::to_string(channel) +
                           (channel == 1 ? " number" : " numbers")};
        }
        long value = 0;
        const char* first = word.data() + (word[0] == '+' ? 1 : 0);
        const auto [end, error] = std::from_chars(first, word.data() + word.size(), value);
        if (end != word.data() + word.size()) return Failure{"\"" + std::string(word) + "\" is not a whole number"};
        if (error != std::errc() || value < 0 || value > 255) {
            return Failure{"value " + std::string(word) + " is out of range 0..255"};
        }
        color.rgb[channel] = std::uint8_t(value);
    }
    color.name = kv::Utf8ToUtf16(Trim(rest));
    return color;
}

// "#RRGGBB name" or "#RGB name"; none when the line is a comment.
std::optional<std::variant<PaletteColor, Failure>> HexLine(std::string_view line) {
    std::string_view rest = line.substr(1);
    // "# a note" is a comment, whatever its words.
    if (rest.empty() || kBlanks.find(rest[0]) != std::string_view::npos) return std::nullopt;
    const std::string_view digits = NextWord(rest);
    for (char c : digits) {
        if (!IsHexDigit(c)) return std::nullopt;
    }
    if (digits.size() != 3 && digits.size() != 6) {
        return Failure{"\"#" + std::string(digits) + "\" is not a colour: expected #RRGGBB or #RGB"};
    }
    PaletteColor color{};
    const std::size_t width = digits.size() / 3;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        unsigned value = 0;
        std::from_chars(digits.data() + channel * width, digits.data() + (channel + 1) * width, value, 16);
        color.rgb[channel] = std::uint8_t(width == 1 ? value * 17 : value);
    }
    color.name = kv::Utf8ToUtf16(Trim(rest));
    return color;
}

std::optional<std::variant<PaletteColor, Failure>> ListLine(std::string_view line) {
    if (line[0] == '!') return std::nullopt;
    if (line[0] == '#') return HexLine(line);
    if (IsNumberWord(line.substr(0, line.find_first_of(kBlanks)))) return NumbersLine(line);
    return Failure{"expected \"R G B name\" or \"#RRGGBB name\""};
}

// A header line of a headed palette; false when the line is not one.
bool HeaderLine(std::string_view line, Palette& palette, std::optional<Failure>& failure) {
    if (StartsWith(line, "Name:")) {
        palette.name = kv::Utf8ToUtf16(Trim(line.substr(5)));
        return true;
    }
    if (StartsWith(line, "Columns:")) {
        const std::string_view columns = Trim(line.substr(8));
        unsigned value = 0;
        const auto [end, error] = std::from_chars(columns.data(), columns.data() + columns.size(), value);
        if (columns.empty() || error != std::errc() || end != columns.data() + columns.size()) {
            failure = Failure{"Columns: needs a whole number, found \"" + std::string(columns) + "\""};
        }
        return true;
    }
    return false;
}

std::optional<std::variant<PaletteColor, Failure>> HeadedLine(std::string_view line, Palette& palette) {
    std::optional<Failure> failure;
    if (line[0] == '#' || HeaderLine(line, palette, failure)) {
        if (failure) return *failure;
        return std::nullopt;
    }
    return NumbersLine(line);
}

}  // namespace

bool StartsAsHeadedPalette(std::string_view text) {
    if (StartsWith(text, kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    return Trim(text.substr(0, text.find('\n'))) == kHeadedFirstLine;
}

std::variant<Palette, PaletteError> ParsePalette(std::string_view text, PaletteLayout layout) {
    if (StartsWith(text, kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    Palette palette;
    std::size_t number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.size(), text.find('\n'));
        const std::string_view line = Trim(text.substr(0, end));
        text.remove_prefix(std::min(text.size(), end + 1));
        ++number;
        if (!IsUtf8(line)) return PaletteError{number, "not UTF-8 text"};
        if (layout == PaletteLayout::kHeaded && number == 1) {
            if (line != kHeadedFirstLine) return PaletteError{number, "the first line is not \"GIMP Palette\""};
            continue;
        }
        if (line.empty()) continue;
        const auto parsed = layout == PaletteLayout::kHeaded ? HeadedLine(line, palette) : ListLine(line);
        if (!parsed) continue;
        if (const auto* failure = std::get_if<Failure>(&*parsed)) return PaletteError{number, failure->message};
        PaletteColor color = std::get<PaletteColor>(*parsed);
        color.line = number;
        if (color.name.empty()) color.name = kv::Utf8ToUtf16(color::HexColour(color.rgb));
        palette.colors.push_back(std::move(color));
    }
    if (layout == PaletteLayout::kHeaded && number == 0) return PaletteError{1, "the file is empty"};
    return palette;
}

}  // namespace tool
