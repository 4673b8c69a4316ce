// The SVG form: four columns of fixed cells. SVG text does not wrap, so every
// line is wrapped here by a deliberately generous estimate of its width; a
// line is never wider than its cell in any common sans-serif face.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "SheetContent.h"
#include "color/ScreenColor.h"
#include "SwatchSheet.h"

namespace sheet {
namespace {

constexpr int kMargin = 24;
constexpr int kColumns = 4;
constexpr int kCellWidth = 224;
constexpr int kGap = 12;
constexpr int kPadding = 10;
constexpr int kChipHeight = 64;
constexpr int kWidth = 2 * kMargin + kColumns * kCellWidth + (kColumns - 1) * kGap;
constexpr int kTextWidth = kCellWidth - 2 * kPadding;

struct Font {
    int size;
    int lineHeight;
    bool bold;
};
constexpr Font kTitleFont{24, 30, true};
constexpr Font kGroupFont{17, 24, true};
constexpr Font kNameFont{13, 17, true};
constexpr Font kSmallFont{11, 14, false};

// The bytes of the UTF-8 character starting at `text[at]`.
std::size_t CharacterLength(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    return std::min(length, text.size() - at);
}

// Width in ems, on the wide side of the faces a viewer is likely to have.
double CharacterEms(std::string_view character) {
    if (character.size() > 1) return 1.05;  // accented letters to ideographs
    const char c = character[0];
    if (std::string_view("MWmw@%").find(c) != std::string_view::npos) return 1.05;
    if (std::string_view(" .,:;'|!ilIjft()[]").find(c) != std::string_view::npos) return 0.42;
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '#' || c == '&') return 0.82;
    return 0.68;
}

double TextWidth(std::string_view text, const Font& font) {
    double ems = 0;
    for (std::size_t at = 0; at < text.size(); at += CharacterLength(text, at)) {
        ems += CharacterEms(text.substr(at, CharacterLength(text, at)));
    }
    return ems * font.size * (font.bold ? 1.1 : 1.0);
}

// Greedy by words; a word wider than the line is broken between characters.
std::vector<std::string> Wrap(std::string_view text, const Font& font, double width) {
    std::vector<std::string> lines(1);
    auto fits = [&](const std::string& line) { return TextWidth(line, font) <= width; };
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.size(), text.find(' ', at));
        const std::string word(text.substr(at, end - at));
        at = end + 1;
        const std::string joined = lines.back().empty() ? word : lines.back() + " " + word;
        if (fits(joined)) {
            lines.back() = joined;
            continue;
        }
        if (!lines.back().empty()) lines.emplace_back();
        for (std::size_t c = 0; c < word.size(); c += CharacterLength(word, c)) {
            const std::string character = word.substr(c, CharacterLength(word, c));
            if (!lines.back().empty() && !fits(lines.back() + character)) lines.emplace_back();
            lines.back() += character;
        }
    }
    return lines;
}

class Canvas {
public:
    void Text(int x, int y, const std::string& line, const Font& font, const std::string& attributes = "") {
        body_ += "<text x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" font-size=\"" +
                 std::to_string(font.size) + "\"" + (font.bold ? " font-weight=\"bold\"" : "") + attributes + ">" +
                 Escaped(line) + "</text>\n";
    }

    // Wrapped lines from the top edge `y`; answers the height they took.
    int Lines(int x, int y, std::string_view text, const Font& font, int width, const std::string& attributes = "") {
        const std::vector<std::string> lines = Wrap(text, font, width);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            Text(x, y + font.size + int(i) * font.lineHeight, lines[i], font, attributes);
        }
        return int(lines.size()) * font.lineHeight;
    }

    void Raw(const std::string& markup) { body_ += markup; }
    const std::string& Body() const { return body_; }

private:
    std::string body_;
};

std::string Mark(const std::string& kind, int x, int y, bool lightChip) {
    const std::string ink = lightChip ? "#1d1d1f" : "#fff";
    const std::string at = std::to_string(x) + " " + std::to_string(y);
    if (kind == "spot") {
        return "<circle cx=\"" + std::to_string(x + 7) + "\" cy=\"" + std::to_string(y + 7) + "\" r=\"6\" fill=\"" +
               ink + "\"/>\n";
    }
    if (kind == "global") {
        return "<path transform=\"translate(" + at + ")\" d=\"M1 13 L7 1 L13 13 Z\" fill=\"" + ink + "\"/>\n";
    }
    if (kind == "process") {
        return "<rect x=\"" + std::to_string(x + 2) + "\" y=\"" + std::to_string(y + 2) +
               "\" width=\"10\" height=\"10\" fill=\"none\" stroke=\"" + ink + "\" stroke-width=\"2\"/>\n";
    }
    return "";
}

int NameLines(const Swatch& swatch) {
    return swatch.emptyPlace ? 0 : int(Wrap(swatch.name, kNameFont, kTextWidth).size());
}

int CellHeight(const Swatch& swatch, const SwatchContent& content) {
    int height = kPadding + kChipHeight + 6 + NameLines(swatch) * kNameFont.lineHeight;
    for (const std::string& line : content.detailLines) {
        height += int(Wrap(line, kSmallFont, kTextWidth).size()) * kSmallFont.lineHeight;
    }
    return height + int(Wrap(content.kindLine, kSmallFont, kTextWidth).size()) * kSmallFont.lineHeight + kPadding;
}

void DrawCell(Canvas& canvas, int x, int y, int height, const Swatch& swatch, const SwatchContent& content,
              bool isKey) {
    const std::string border = isKey ? "#1d1d1f\" stroke-width=\"2" : "#ccc";
    canvas.Raw("<g class=\"swatch\"><rect class=\"cell\" x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
               "\" width=\"" + std::to_string(kCellWidth) + "\" height=\"" + std::to_string(height) +
               "\" rx=\"6\" fill=\"none\" stroke=\"" + border + "\"" +
               (swatch.emptyPlace ? " stroke-dasharray=\"6 4\"" : "") + "/>\n");
    const int left = x + kPadding;
    int top = y + kPadding;
    if (!swatch.emptyPlace) {
        const std::string fill = content.chip ? color::HexColour(*content.chip) : "url(#none)";
        canvas.Raw("<rect class=\"chip\" data-swatch=\"" + Escaped(swatch.name) + "\" x=\"" + std::to_string(left) +
                   "\" y=\"" + std::to_string(top) + "\" width=\"" + std::to_string(kTextWidth) + "\" height=\"" +
                   std::to_string(kChipHeight) + "\" rx=\"4\" fill=\"" + fill +
                   "\" stroke=\"#000\" stroke-opacity=\"0.15\"/>\n");
        canvas.Raw(Mark(swatch.kind, left + kTextWidth - 19, top + 5, content.lightChip));
    }
    top += kChipHeight + 6;
    if (!swatch.emptyPlace) top += canvas.Lines(left, top, swatch.name, kNameFont, kTextWidth, " class=\"name\"");
    top += canvas.Lines(left, top, content.kindLine, kSmallFont, kTextWidth, " fill=\"#444\"");
    for (const std::string& line : content.detailLines) top += canvas.Lines(left, top, line, kSmallFont, kTextWidth);
    canvas.Raw("</g>\n");
}

// Draws the swatches in rows of kColumns from `y`; answers the new y.
int DrawSwatches(Canvas& canvas, int y, const std::vector<const Swatch*>& swatches, std::int32_t keyIndex) {
    for (std::size_t row = 0; row < swatches.size(); row += kColumns) {
        const std::size_t end = std::min(swatches.size(), row + kColumns);
        std::vector<SwatchContent> contents;
        int height = 0;
        for (std::size_t i = row; i < end; ++i) {
            contents.push_back(ContentOf(*swatches[i], std::int32_t(i) == keyIndex));
            height = std::max(height, CellHeight(*swatches[i], contents.back()));
        }
        for (std::size_t i = row; i < end; ++i) {
            const int x = kMargin + int(i - row) * (kCellWidth + kGap);
            DrawCell(canvas, x, y, height, *swatches[i], contents[i - row], std::int32_t(i) == keyIndex);
        }
        y += height + kGap;
    }
    return y;
}

int DrawBook(Canvas& canvas, int y, const Book& book) {
    y += canvas.Lines(kMargin, y, book.title, kTitleFont, kWidth - 2 * kMargin);
    if (const std::string about = AboutLine(book); !about.empty()) {
        y += canvas.Lines(kMargin, y, about, kSmallFont, kWidth - 2 * kMargin, " fill=\"#444\"");
    }
    y += kGap;
    for (const Group& group : book.groups) {
        if (group.name.empty() && group.swatches.empty()) continue;
        if (!group.name.empty()) y += canvas.Lines(kMargin, y + 8, group.name, kGroupFont, kWidth - 2 * kMargin) + 12;
        if (group.swatches.empty()) y += canvas.Lines(kMargin, y, "(no swatches)", kSmallFont, kWidth) + kGap;
        const auto pages = Pages(book, group);
        for (std::size_t page = 0; page < pages.size(); ++page) {
            const bool paged = book.pageSize > 0;
            if (paged) y += canvas.Lines(kMargin, y, "Page " + std::to_string(page + 1), kSmallFont, kWidth) + 4;
            y = DrawSwatches(canvas, y, pages[page], paged ? book.pageKeyOffset : -1);
        }
    }
    return y + 2 * kGap;
}

}  // namespace

std::string SheetSvg(const Sheet& sheet) {
    Canvas canvas;
    int y = kMargin;
    for (const Book& book : sheet.books) y = DrawBook(canvas, y, book);
    for (const std::string& note : ConversionNotes(sheet)) {
        y += canvas.Lines(kMargin, y, note, kSmallFont, kWidth - 2 * kMargin, " fill=\"#444\"");
    }
    const int height = y + kMargin;
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           std::to_string(kWidth) + "\" height=\"" + std::to_string(height) + "\" viewBox=\"0 0 " +
           std::to_string(kWidth) + " " + std::to_string(height) +
           "\" font-family=\"DejaVu Sans, Verdana, sans-serif\" fill=\"#1d1d1f\">\n<title>" + Escaped(sheet.title) +
           "</title>\n<defs><pattern id=\"none\" width=\"12\" height=\"12\" patternUnits=\"userSpaceOnUse\" "
           "patternTransform=\"rotate(45)\"><rect width=\"6\" height=\"12\" fill=\"#e4e4e4\"/></pattern></defs>\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n" +
           canvas.Body() + "</svg>\n";
}

}  // namespace sheet
