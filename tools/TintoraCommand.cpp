#include "TintoraCommand.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <exception>
#include <fstream>
#include <string>

#include "BookDump.h"
#include "ConvertCommand.h"
#include "JsonText.h"
#include "LibraryFormat.h"
#include "RecordingSwatchbook.h"
#include "SheetCommand.h"
#include "formats/exchange/SwatchExchangePrescan.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/ReferenceBook.h"

namespace tool {
namespace {

constexpr int kCannotRun = 1;

constexpr const char* kReaderOptionsHelp = R"(
FORMAT is ocb (binary colour book), ose (swatch exchange), xml (XML
swatchbook) or auto (the default): by the file's extension, else by its first
bytes ("7KCB" colour book, "OSEF" swatch exchange, anything else XML).
FLAGS is the reader's 32-bit flag word, 0 by default.

Exit status: 0 whenever the reader ran, whatever its result; non-zero when
the tool could not run (bad command line, unreadable file).)";

constexpr const char* kTraceHelp = R"(
Prints JSON Lines: one object per call the reader made on the book, in order,
  {"op": "SetSwatchName", "args": [0, "Red 032"], "ret": true}
then {"result": N} with the reader's result. The book is a recording book
that forwards every call, getters included, to a new empty reference book.
"ret" is the inner book's result; it is left out for operations that return
nothing and for SetSwatchKind. Argument lists: property setters [value];
format setters [format, value]; AddFormat, AddGroup, BeginFill, EndFill [];
EndGroup [blockType, position, index]; SelectGroup [group]; SetGroupName
[name]; AddSwatch [position]; SetSwatchKind [swatch, kind]; SetSwatchName and
SetSwatchKey [swatch, text]; SetSwatchTint [swatch, tint];
SetSwatchValuesInt8, ...Int16, ...Float, ...Native [swatch, format, values];
SetSwatchValues [swatch, format, encoding, values]; getters their arguments
in order, out-arguments left out. A values array has as many entries as the
inner book's GetFormatChannels(format) at the time of the call: bytes for
Int8, 16-bit numbers for Int16, doubles for Float; for ...Native by the
format's encoding (1 bytes, 2 16-bit numbers, else doubles).
Strings: every UTF-16 code unit outside printable ASCII, and '"' and '\', as
\uXXXX in lower-case hex (lone surrogates survive). Doubles: 17 significant
digits; NaN and the infinities as "NaN", "Infinity", "-Infinity".)";

constexpr const char* kDumpHelp = R"(
Prints one JSON object, the reference book's state after the read (also
after a failed one):
  {"result": N, "book": {"version": 0, "pageSize": 0, "pageKeyOffset": 0,
   "bookId": 0, "title": "", "copyright": "", "prefix": "", "postfix": "",
   "formats": [{"colorSpace": 4, "encoding": 1, "channels": 3,
                "condition": "", "colorSpaceName": "", "id": ""}],
   "swatches": [{"kind": 2, "name": "Red", "colorSpace": 4,
                 "values": [1, 0, 0, 0]}]}}
Format strings are the stored ones (no defaults); swatch values are the
record's four stored doubles. Strings and doubles are written as by trace.)";

constexpr const char* kPrescanHelp = R"(
Counts the blocks of a swatch exchange file that its reader does not import
(type 0 or 3 to 0x7FFF) and tells whether the file is well formed up to its
last declared block:
  unsupported blocks: N
  well formed: yes
With --json: {"unsupported": N, "wellFormed": true}. On a file that is not
well formed the count is what was counted before the fault.
Exit status: 0 whenever the pre-scan ran; non-zero when the tool could not
run (bad command line, unreadable file).)";

struct ReaderOptions {
    std::string format = "auto";
    std::uint32_t flags = 0;
    std::string file;
};

void AddReaderOptions(CLI::App& command, ReaderOptions& options) {
    command.add_option("--format", options.format, "ocb, ose, xml or auto")
        ->check(CLI::IsMember({"ocb", "ose", "xml", "auto"}))
        ->capture_default_str();
    command.add_option("--flags", options.flags, "the reader's flag word")->capture_default_str();
    command.add_option("FILE", options.file, "the library file")->required()->check(CLI::ExistingFile);
}

bool IsReadable(const std::string& path) { return std::ifstream(path, std::ios::binary).is_open(); }

LibraryFormat ChosenFormat(const ReaderOptions& options) {
    const auto named = LibraryFormatFromName(options.format);
    return named ? *named : DetectLibraryFormat(options.file);
}

void Trace(const ReaderOptions& options, std::ostream& out) {
    ReferenceBook inner;
    RecordingSwatchbook book(inner, out);
    const std::int32_t result = ReadLibraryFile(ChosenFormat(options), options.file, book, options.flags);
    out << "{\"result\": " << JsonInt(result) << "}\n";
}

void Dump(const ReaderOptions& options, std::ostream& out) {
    ReferenceBook book;
    const std::int32_t result = ReadLibraryFile(ChosenFormat(options), options.file, book, options.flags);
    out << DumpBook(result, book) << "\n";
}

void Prescan(const std::string& file, bool json, std::ostream& out) {
    formats::FileStream stream(file.c_str(), true);
    std::int32_t count = 0;
    const bool wellFormed = formats::CountUnsupportedSwatchExchangeEntries(stream, count) != 0;
    if (json) {
        out << "{\"unsupported\": " << JsonInt(count) << ", \"wellFormed\": " << JsonBool(wellFormed) << "}\n";
    } else {
        out << "unsupported blocks: " << count << "\nwell formed: " << (wellFormed ? "yes" : "no") << "\n";
    }
}

}  // namespace

int RunTintora(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    CLI::App app("Runs the library-file readers of Tintora on plain files, converts library files and palettes "
                 "into a swatch exchange file, and draws swatch sheets.",
                 "tintora");
    app.require_subcommand(1);

    ReaderOptions traceOptions;
    CLI::App* trace = app.add_subcommand("trace", "Log every call a reader makes on the book, as JSON Lines");
    AddReaderOptions(*trace, traceOptions);
    trace->footer(std::string(kTraceHelp) + "\n" + kReaderOptionsHelp);

    ReaderOptions dumpOptions;
    CLI::App* dump = app.add_subcommand("dump", "Print the book a reader filled, as one JSON object");
    AddReaderOptions(*dump, dumpOptions);
    dump->footer(std::string(kDumpHelp) + "\n" + kReaderOptionsHelp);

    std::string prescanFile;
    bool prescanJson = false;
    CLI::App* prescan = app.add_subcommand("prescan", "Count the blocks of a swatch exchange file not imported");
    prescan->add_option("FILE", prescanFile, "the swatch exchange file")->required()->check(CLI::ExistingFile);
    prescan->add_flag("--json", prescanJson, "print one JSON object");
    prescan->footer(kPrescanHelp);

    ConvertOptions convertOptions;
    CLI::App* convert = AddConvertCommand(app, convertOptions);
    SheetOptions sheetOptions;
    CLI::App* sheet = AddSheetCommand(app, sheetOptions);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, out, err);
    }

    if (*convert || *sheet) {
        try {
            return *convert ? RunConvert(convertOptions, out, err) : RunSheet(sheetOptions, out, err);
        } catch (const std::exception& error) {
            err << "tintora: " << error.what() << "\n";
            return kCannotRun;
        }
    }

    const std::string& file = *prescan ? prescanFile : *trace ? traceOptions.file : dumpOptions.file;
    if (!IsReadable(file)) {
        err << "tintora: cannot read " << file << "\n";
        return kCannotRun;
    }
    try {
        if (*trace) Trace(traceOptions, out);
        if (*dump) Dump(dumpOptions, out);
        if (*prescan) Prescan(prescanFile, prescanJson, out);
    } catch (const std::exception& error) {
        out.flush();
        err << "tintora: " << error.what() << "\n";
        return kCannotRun;
    }
    out.flush();
    return 0;
}

}  // namespace tool
