#include "SheetCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

#include "BookInput.h"
#include "BookSheet.h"
#include "CommandLine.h"
#include "InputFormatOption.h"
#include "SwatchSheet.h"
#include "swatchbook/CompleteBook.h"

namespace tool {
namespace {

// Keep a colour book's gaps, so that its pages show as printed.
constexpr std::uint32_t kKeepEmptyPlaces = 16;

constexpr const char* kSheetHelp = R"(
Writes IN as a swatch sheet: the book's title, copyright and book ID, each
group under its name, and per swatch a chip of its colour, its full name,
its kind (spot, global and process each with its own corner mark), its tint,
its values as stored and as sRGB hex. A colour book is laid out in its
pages, the key swatch of each page outlined. Lab becomes sRGB as the host
converts it (D50 to D65, Bradford); CMYK by an approximation without colour
management, marked with "≈" and explained on the sheet; a chip shows its
swatch at its tint. OUT ending in .html gives one self-contained HTML file
(no scripts, nothing fetched; fits a phone, prints page by page), .svg a
standalone SVG image.
IN and --format are as for convert (tintora convert --help).

Prints "wrote OUT: N swatches" on success.
Exit status: 0 when OUT was written; 1 when anything failed, with the reason
on standard error ("tintora sheet: FILE:LINE: ..." for a palette), and then
OUT is left as it was.)";

std::size_t SwatchCount(const sheet::Book& book) {
    std::size_t count = 0;
    for (const sheet::Group& group : book.groups) {
        count += std::size_t(std::count_if(group.swatches.begin(), group.swatches.end(),
                                           [](const sheet::Swatch& s) { return !s.emptyPlace; }));
    }
    return count;
}

}  // namespace

CLI::App* AddSheetCommand(CLI::App& app, SheetOptions& options) {
    CLI::App* command = app.add_subcommand("sheet", "Show a library file or palette as an HTML or SVG swatch sheet");
    command->add_option("IN", options.input, "a library file or palette")->required();
    command->add_option("-o,--output", options.output, "the sheet to write, OUT.html or OUT.svg")->required();
    AddInputFormatOption(*command, options.format, "auto, ocb, ose, xml, palette or list");
    command->footer(kSheetHelp);
    return command;
}

int RunSheet(const SheetOptions& options, std::ostream& out, std::ostream& err) {
    if (const std::string problem = sheet::SheetNameProblem(options.output); !problem.empty()) {
        err << "tintora sheet: " << problem << "\n";
        return commandline::kFailed;
    }
    CompleteBook book;
    const InputRead read = ReadBookInput(options.input, InputFormatFromName(options.format), book, kKeepEmptyPlaces);
    for (const std::string& note : read.notes) err << "tintora sheet: note: " << note << "\n";
    if (!read.error.empty()) {
        err << "tintora sheet: " << read.error << "\n";
        return commandline::kFailed;
    }
    sheet::Sheet shown;
    shown.books.push_back(BookSheet(book, std::filesystem::path(options.input).filename().string()));
    shown.title = shown.books.front().title;
    if (const std::string why = sheet::WriteSheet(shown, options.output); !why.empty()) {
        err << "tintora sheet: " << why << "\n";
        return commandline::kFailed;
    }
    out << "wrote " << options.output << ": " << SwatchCount(shown.books.front()) << " swatches\n";
    return 0;
}

}  // namespace tool
