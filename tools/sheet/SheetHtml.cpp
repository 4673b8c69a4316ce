// The HTML form: a grid of cells that reflows from a desktop to a phone, and
// prints page by page with the chips' colours kept.
#include <string>

#include "SheetContent.h"
#include "color/ScreenColor.h"
#include "SwatchSheet.h"

namespace sheet {
namespace {

constexpr const char* kStyle = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { margin: 0; padding: 1.5rem; color: #1d1d1f; background: #fff;
  font: 14px/1.35 "DejaVu Sans", Verdana, system-ui, sans-serif; }
h1 { font-size: 1.6rem; margin: 0 0 .25rem; overflow-wrap: anywhere; }
h2 { font-size: 1.15rem; margin: 1.5rem 0 .5rem; overflow-wrap: anywhere; }
h3 { font-size: .85rem; font-weight: normal; color: #555; margin: .75rem 0 .35rem; }
.book + .book { margin-top: 3rem; }
.about { margin: 0 0 1rem; color: #444; overflow-wrap: anywhere; }
.swatches { list-style: none; margin: 0; padding: 0; display: grid; gap: .75rem;
  grid-template-columns: repeat(auto-fill, minmax(11rem, 1fr)); }
.swatch { border: 1px solid #ccc; border-radius: 6px; padding: .5rem; min-width: 0; break-inside: avoid; }
.swatch.key { border: 2px solid #1d1d1f; }
.swatch.empty { border-style: dashed; color: #777; }
.chip { position: relative; height: 4.5rem; border-radius: 4px; border: 1px solid rgba(0, 0, 0, .15); }
.chip.none { background: repeating-linear-gradient(45deg, #e4e4e4 0 6px, #fff 6px 12px); }
.mark { position: absolute; top: 5px; right: 5px; width: 14px; height: 14px; }
.name { display: block; font-weight: bold; margin-top: .4rem; overflow-wrap: anywhere; }
.kind, .detail { display: block; font-size: .8rem; overflow-wrap: anywhere; }
.kind { color: #444; }
.notes { margin-top: 2rem; font-size: .8rem; color: #444; }
.notes p { margin: .25rem 0; }
@media (max-width: 30rem) {
  body { padding: .75rem; }
  .swatches { grid-template-columns: repeat(auto-fill, minmax(9rem, 1fr)); }
}
@media print {
  body { padding: 0; font-size: 10pt; }
  .page, .swatch { break-inside: avoid; }
  * { -webkit-print-color-adjust: exact; print-color-adjust: exact; }
}
)";

// A corner mark per kind: a disc for spot, a triangle for global, a square
// for process colours.
std::string Mark(const std::string& kind, bool lightChip) {
    const std::string ink = lightChip ? "#1d1d1f" : "#fff";
    std::string shape;
    if (kind == "spot") shape = "<circle cx=\"7\" cy=\"7\" r=\"6\" fill=\"" + ink + "\"/>";
    if (kind == "global") shape = "<path d=\"M1 13 L7 1 L13 13 Z\" fill=\"" + ink + "\"/>";
    if (kind == "process") shape = "<rect x=\"1.5\" y=\"1.5\" width=\"11\" height=\"11\" fill=\"none\" stroke=\"" + ink +
                                   "\" stroke-width=\"2\"/>";
    if (shape.empty()) return "";
    return "<svg class=\"mark\" viewBox=\"0 0 14 14\" aria-hidden=\"true\">" + shape + "</svg>";
}

void AppendSwatch(std::string& html, const Swatch& swatch, bool isKey) {
    const SwatchContent content = ContentOf(swatch, isKey);
    std::string classes = "swatch";
    if (swatch.emptyPlace) classes += " empty";
    if (isKey) classes += " key";
    html += "<li class=\"" + classes + "\">";
    if (!swatch.emptyPlace) {
        html += "<div class=\"chip" + std::string(content.chip ? "" : " none") + "\" data-swatch=\"" +
                Escaped(swatch.name) + "\"";
        if (content.chip) html += " style=\"background-color: " + color::HexColour(*content.chip) + "\"";
        html += ">" + Mark(swatch.kind, content.lightChip) + "</div>";
        html += "<span class=\"name\">" + Escaped(swatch.name) + "</span>";
    }
    html += "<span class=\"kind\">" + Escaped(content.kindLine) + "</span>";
    for (const std::string& line : content.detailLines) html += "<span class=\"detail\">" + Escaped(line) + "</span>";
    html += "</li>\n";
}

void AppendGroup(std::string& html, const Book& book, const Group& group) {
    if (!group.name.empty()) html += "<h2>" + Escaped(group.name) + "</h2>\n";
    if (group.swatches.empty()) {
        html += "<p class=\"about\">(no swatches)</p>\n";
        return;
    }
    const auto pages = Pages(book, group);
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const bool paged = book.pageSize > 0;
        if (paged) html += "<div class=\"page\"><h3>Page " + std::to_string(page + 1) + "</h3>\n";
        html += "<ol class=\"swatches\">\n";
        for (std::size_t i = 0; i < pages[page].size(); ++i) {
            AppendSwatch(html, *pages[page][i], paged && i == std::size_t(book.pageKeyOffset));
        }
        html += "</ol>\n";
        if (paged) html += "</div>\n";
    }
}

}  // namespace

std::string SheetHtml(const Sheet& sheet) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
                       Escaped(sheet.title) + "</title>\n<style>" + kStyle + "</style>\n</head>\n<body>\n";
    for (const Book& book : sheet.books) {
        html += "<section class=\"book\">\n<h1>" + Escaped(book.title) + "</h1>\n";
        if (const std::string about = AboutLine(book); !about.empty()) {
            html += "<p class=\"about\">" + Escaped(about) + "</p>\n";
        }
        for (const Group& group : book.groups) {
            // The swatches outside groups need no heading and no placeholder.
            if (group.name.empty() && group.swatches.empty()) continue;
            AppendGroup(html, book, group);
        }
        html += "</section>\n";
    }
    const std::vector<std::string> notes = ConversionNotes(sheet);
    if (!notes.empty()) {
        html += "<footer class=\"notes\">\n";
        for (const std::string& note : notes) html += "<p>" + Escaped(note) + "</p>\n";
        html += "</footer>\n";
    }
    return html + "</body>\n</html>\n";
}

}  // namespace sheet
