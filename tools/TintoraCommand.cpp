#include "TintoraCommand.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <exception>
#include <string>

#include "BookDump.h"
#include "CodeMeanings.h"
#include "CommandLine.h"
#include "ConvertCommand.h"
#include "JsonText.h"
#include "JsonWriter.h"
#include "LibraryFormat.h"
#include "RecordingSwatchbook.h"
#include "SheetCommand.h"
#include "formats/ReaderResult.h"
#include "formats/exchange/SwatchExchangePrescan.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/ReferenceBook.h"

namespace tool {
namespace {

constexpr const char* kReaderOptionsHelp = R"(
FORMAT is ocb (binary colour book), ose (swatch exchange), xml (XML
swatchbook) or auto (the default): by the file's extension, else by its first
bytes ("7KCB" colour book, "OSEF" swatch exchange, anything else XML).
FLAGS is the reader's 32-bit flag word, 0 by default.)";

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
record's four stored doubles. Strings and doubles are written as by trace.
--pretty indents it and writes beside each code what it means, as
"resultMeaning", "kindMeaning", "colorSpaceMeaning" and "encodingMeaning".)";

constexpr const char* kPrescanHelp = R"(
Counts the blocks of a swatch exchange file that its reader does not import
(type 0 or 3 to 0x7FFF) and tells whether the file is well formed up to its
last declared block:
  unsupported blocks: N
  well formed: yes
With --json: {"unsupported": N, "wellFormed": true}; --pretty indents it.
On a file that is not well formed the count is what was counted before the
fault.)";

struct ReaderOptions {
    std::string format = "auto";
    std::uint32_t flags = 0;
    std::string file;
};

void AddReaderOptions(CLI::App& command, ReaderOptions& options) {
    command.add_option("--format", options.format, "ocb, ose, xml or auto")
        ->check(CLI::IsMember({"ocb", "ose", "xml", "auto"}))
        ->capture_default_str();
    command.add_option("--flags", options.flags, "the reader's flag word, 0 to 4294967295")->capture_default_str();
    command.add_option("FILE", options.file, "the library file")->required();
}

// The reader's result as the exit status.
int ReaderStatus(std::int32_t result) { return result == formats::kReadOK ? commandline::kSucceeded : commandline::kFailed; }

LibraryFormat ChosenFormat(const ReaderOptions& options) {
    const auto named = LibraryFormatFromName(options.format);
    return named ? *named : DetectLibraryFormat(options.file);
}

int Trace(const ReaderOptions& options, std::ostream& out) {
    ReferenceBook inner;
    RecordingSwatchbook book(inner, out);
    const std::int32_t result = ReadLibraryFile(ChosenFormat(options), options.file, book, options.flags);
    out << "{\"result\": " << JsonInt(result) << "}\n";
    return ReaderStatus(result);
}

int Dump(const ReaderOptions& options, bool pretty, std::ostream& out) {
    ReferenceBook book;
    const std::int32_t result = ReadLibraryFile(ChosenFormat(options), options.file, book, options.flags);
    DumpBook(out, result, book, pretty);
    out << "\n";
    return ReaderStatus(result);
}

int Prescan(const std::string& file, bool json, bool pretty, std::ostream& out) {
    formats::FileStream stream(file.c_str(), true);
    std::int32_t count = 0;
    const bool wellFormed = formats::CountUnsupportedSwatchExchangeEntries(stream, count) != 0;
    if (json || pretty) {
        JsonWriter writer(out, pretty);
        writer.BeginObject();
        writer.Member("unsupported", JsonInt(count));
        writer.Member("wellFormed", JsonBool(wellFormed));
        writer.EndObject();
        out << "\n";
    } else {
        out << "unsupported blocks: " << count << "\nwell formed: " << (wellFormed ? "yes" : "no") << "\n";
    }
    return wellFormed ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace

int RunTintora(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    CLI::App app("Runs the library-file readers of Tintora on plain files, converts library files and palettes "
                 "into a swatch exchange file, and draws swatch sheets.",
                 "tintora");
    app.require_subcommand(1);
    commandline::AddVersion(app);
    const std::string readerExit = "\n" + commandline::ExitStatusHelp(
        "when the reader read the file completely (result 0)",
        "when it did not (the output is printed in full all the same)");

    ReaderOptions traceOptions;
    CLI::App* trace = app.add_subcommand("trace", "Log every call a reader makes on the book, as JSON Lines");
    AddReaderOptions(*trace, traceOptions);
    trace->footer(std::string(kTraceHelp) + "\n" + kReaderOptionsHelp + "\n" + readerExit);

    ReaderOptions dumpOptions;
    bool dumpJson = false;
    bool dumpPretty = false;
    CLI::App* dump = app.add_subcommand("dump", "Print the book a reader filled, as one JSON object");
    AddReaderOptions(*dump, dumpOptions);
    dump->add_flag("--json", dumpJson, "compact JSON on one line (the default form)");
    dump->add_flag("--pretty", dumpPretty, "indented JSON, each code's meaning beside it");
    dump->footer(std::string(kDumpHelp) + "\n" + kReaderOptionsHelp + "\n\nThe codes: result " +
                 MeaningsHelp(ReaderResults()) + "; kind " + MeaningsHelp(SwatchKinds()) + "; colorSpace " +
                 MeaningsHelp(ColorSpaces()) + "; encoding " + MeaningsHelp(Encodings()) + ".\n" + readerExit);

    std::string prescanFile;
    bool prescanJson = false;
    bool prescanPretty = false;
    CLI::App* prescan = app.add_subcommand("prescan", "Count the blocks of a swatch exchange file not imported");
    prescan->add_option("FILE", prescanFile, "the swatch exchange file")->required();
    prescan->add_flag("--json", prescanJson, "print one JSON object");
    prescan->add_flag("--pretty", prescanPretty, "print one indented JSON object");
    prescan->footer(std::string(kPrescanHelp) + "\n\n" +
                    commandline::ExitStatusHelp("when the file is well formed", "when it is not"));

    ConvertOptions convertOptions;
    CLI::App* convert = AddConvertCommand(app, convertOptions);
    SheetOptions sheetOptions;
    CLI::App* sheet = AddSheetCommand(app, sheetOptions);

    if (const auto answered = commandline::Parse(app, argc, argv, out, err)) return *answered;

    if (*convert || *sheet) {
        try {
            return *convert ? RunConvert(convertOptions, out, err) : RunSheet(sheetOptions, out, err);
        } catch (const std::exception& error) {
            err << "tintora: " << error.what() << "\n";
            return commandline::kCannotRun;
        }
    }

    const std::string& file = *prescan ? prescanFile : *trace ? traceOptions.file : dumpOptions.file;
    if (const std::string why = commandline::WhyUnreadable(file); !why.empty()) {
        err << "tintora: cannot read " << file << ": " << why << "\n";
        return commandline::kCannotRun;
    }
    try {
        int status = commandline::kSucceeded;
        if (*trace) status = Trace(traceOptions, out);
        if (*dump) status = Dump(dumpOptions, dumpPretty, out);
        if (*prescan) status = Prescan(prescanFile, prescanJson, prescanPretty, out);
        out.flush();
        return status;
    } catch (const std::exception& error) {
        out.flush();
        err << "tintora: " << error.what() << "\n";
        return commandline::kCannotRun;
    }
}

}  // namespace tool
