#include "SheetContent.h"

#include <algorithm>
#include <charconv>

#include "color/ScreenColor.h"

namespace sheet {
namespace {

std::string Number(double value) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string(text, end);
}

bool AnySwatch(const Sheet& sheet, bool (*test)(const Swatch&)) {
    for (const Book& book : sheet.books) {
        for (const Group& group : book.groups) {
            for (const Swatch& swatch : group.swatches) {
                if (test(swatch)) return true;
            }
        }
    }
    return false;
}

}  // namespace

SwatchContent ContentOf(const Swatch& swatch, bool isKey) {
    SwatchContent content;
    content.kindLine = swatch.emptyPlace ? "empty place" : swatch.kind;
    if (isKey) content.kindLine += " · key";
    if (swatch.emptyPlace) return content;
    if (swatch.tint != 0.0) content.detailLines.push_back("tint " + Number(swatch.tint));
    for (const std::string& values : swatch.values) content.detailLines.push_back(values);
    if (!swatch.srgb) {
        content.detailLines.push_back("no sRGB preview");
        return content;
    }
    const std::string approximately = swatch.preview == Preview::kCmykApproximation ? "≈ " : "";
    content.detailLines.push_back("sRGB " + approximately + color::HexColour(color::SrgbBytes(*swatch.srgb)));
    const Rgb8 chip = color::SrgbBytes(color::TintTowardWhite(*swatch.srgb, float(swatch.tint)));
    if (swatch.tint != 0.0) content.detailLines.push_back("at its tint " + approximately + color::HexColour(chip));
    content.chip = chip;
    // Rec. 709 luma: marks stay readable on light and dark chips alike.
    content.lightChip = 0.2126 * chip[0] + 0.7152 * chip[1] + 0.0722 * chip[2] > 140;
    return content;
}

std::vector<std::vector<const Swatch*>> Pages(const Book& book, const Group& group) {
    std::vector<std::vector<const Swatch*>> pages;
    const std::size_t size = book.pageSize > 0 ? std::size_t(book.pageSize) : group.swatches.size();
    for (std::size_t i = 0; i < group.swatches.size(); ++i) {
        if (i % std::max<std::size_t>(size, 1) == 0) pages.emplace_back();
        pages.back().push_back(&group.swatches[i]);
    }
    return pages;
}

std::string AboutLine(const Book& book) {
    std::string line;
    if (book.bookId) line = "Book ID " + std::to_string(*book.bookId);
    if (!book.copyright.empty()) line += (line.empty() ? "" : " · ") + book.copyright;
    return line;
}

std::vector<std::string> ConversionNotes(const Sheet& sheet) {
    std::vector<std::string> notes;
    if (AnySwatch(sheet, [](const Swatch& s) { return s.srgb && s.preview == Preview::kLab; })) {
        notes.push_back("Lab colours are turned into sRGB as the host turns them: CIE Lab under D50, Bradford "
                        "adaptation to D65, the sRGB curve, each channel clamped.");
    }
    if (AnySwatch(sheet, [](const Swatch& s) { return s.srgb && s.preview == Preview::kCmykApproximation; })) {
        notes.push_back("CMYK colours are shown approximately (≈), without colour management: R = (1 − C)(1 − K), "
                        "G = (1 − M)(1 − K), B = (1 − Y)(1 − K).");
    }
    if (AnySwatch(sheet, [](const Swatch& s) { return s.tint != 0.0; })) {
        notes.push_back("A chip shows its swatch at its tint: the colour mixed toward white by the tint.");
    }
    return notes;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (char c : text) {
        switch (c) {
            case '&': escaped += "&amp;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            case '"': escaped += "&quot;"; break;
            case '\'': escaped += "&#39;"; break;
            default: escaped += c;
        }
    }
    return escaped;
}

}  // namespace sheet
