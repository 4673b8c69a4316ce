#include "DialogText.h"

#include <string>

namespace kelvra::cli {

namespace {

constexpr std::string_view kOpeningQuote = "\u201C";
constexpr std::string_view kClosingQuote = "\u201D";
constexpr std::size_t kTabStop = 8;

// One line of the dialog: quotation marks and tabs laid out, trailing blanks
// dropped. `opening` tells which quotation mark comes next, across lines.
std::string LaidOut(std::string_view line, bool& opening) {
    std::string laidOut;
    std::size_t column = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '^' && i + 1 < line.size() && line[i + 1] == 'Q') {
            laidOut += opening ? kOpeningQuote : kClosingQuote;
            opening = !opening;
            ++column;
            ++i;
        } else if (c == '\t') {
            const std::size_t next = (column / kTabStop + 1) * kTabStop;
            laidOut.append(next - column, ' ');
            column = next;
        } else {
            laidOut += c;
            // A column per character: UTF-8 continuation bytes take none.
            if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++column;
        }
    }
    laidOut.erase(laidOut.find_last_not_of(' ') + 1);
    return laidOut;
}

}  // namespace

void WriteDialogText(std::ostream& out, std::string_view text, std::string_view indent) {
    // Blank lines at the end are not seen either.
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    bool opening = true;
    bool first = true;
    while (true) {
        const std::size_t end = text.find_first_of("\r\n");
        const std::string line = LaidOut(text.substr(0, end), opening);
        if (!first) out << '\n' << (line.empty() ? "" : indent);
        first = false;
        out << line;
        if (end == std::string_view::npos) return;
        // "\r\n" is one line break.
        const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        text.remove_prefix(end + (pair ? 2 : 1));
    }
}

}  // namespace kelvra::cli
