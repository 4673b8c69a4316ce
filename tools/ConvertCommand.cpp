#include "ConvertCommand.h"

#include <CLI/CLI.hpp>

#include <deque>

#include "BookInput.h"
#include "CommandLine.h"
#include "ConvertedBook.h"
#include "InputFormatOption.h"
#include "ReplaceFile.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "text/Utf8.h"

namespace tool {
namespace {

constexpr const char* kConvertHelp = R"(
Reads every IN into one swatch exchange file OUT, which the host opens
through the module. IN may be any library file (binary colour book, swatch
exchange file, XML swatchbook) or a plain palette:
  a headed palette:  first line "GIMP Palette", then "Name: ...",
                     "Columns: N", "#" comments and "R G B name" lines;
  a colour list:     "R G B name" lines (numbers 0..255) or "#RRGGBB name"
                     and "#RGB name" lines; "!" lines, and "#" lines that
                     are no colour, are comments.
A palette colour without a name is named by its hex form ("#FFFAFA").
--format auto tells them apart by extension (ocb, ose, xml), the magic of
the binary formats, the headed palette's first line, a first "<" (XML);
anything else is a colour list.

Names are the full names (prefix, name, postfix). The host holds at most 31
UTF-16 units of a name and tells swatches apart by name: a longer name and
a name used twice are errors, each reported by name and place, unless
--cut-names or --rename-duplicates (which numbers the later uses: "Red 2")
says what to do. Empty places are dropped; a colour the host does not
import (XYZ, custom colour spaces, none) and a tinted process colour are
left out, each with a note. Without --group-per-file or --name, swatches
outside groups stay outside and each input's groups are kept; with either,
every swatch goes into the group it names. The exchange file keeps no book
title, so --name is where a book's name survives.

Prints "wrote OUT: N swatches, G groups" on success; notes and errors go to
standard error, as "tintora convert: FILE:LINE: ..." for palettes and
"tintora convert: FILE: ..." for library files.
Exit status: 0 when OUT was written; 1 when anything failed, and then OUT is
left as it was (the file is written beside it and renamed into place).)";

std::int32_t KindCode(const std::string& kind) {
    if (kind == "spot") return swatchbook::kSpotKind;
    if (kind == "global") return swatchbook::kGlobalKind;
    return swatchbook::kProcessKind;
}

// Collects what the writer writes.
class ByteSink final : public OrvikSwatchbookStream {
public:
    std::int32_t IsOpen() const override { return 1; }
    std::int32_t IsReading() const override { return 0; }
    std::int64_t Read(void*, std::size_t) override { return 0; }
    std::int64_t Write(const void* source, std::size_t count) override {
        const auto* bytes = static_cast<const char*>(source);
        bytes_.append(bytes, count);
        return std::int64_t(count);
    }
    const std::string& Bytes() const { return bytes_; }

private:
    std::string bytes_;
};

}  // namespace

CLI::App* AddConvertCommand(CLI::App& app, ConvertOptions& options) {
    CLI::App* command = app.add_subcommand("convert", "Convert library files and palettes into a swatch exchange file");
    command->add_option("IN", options.inputs, "library files and palettes")->required();
    command->add_option("-o,--output", options.output, "the swatch exchange file to write")->required();
    AddInputFormatOption(*command, options.format, "auto, ocb, ose, xml, palette or list, for every IN");
    command->add_option("--kind", options.kind, "every swatch's kind (default: its own; palettes process)")
        ->check(CLI::IsMember({"process", "global", "spot"}));
    CLI::Option* perFile =
        command->add_flag("--group-per-file", options.groupPerFile, "a group per IN, named by its title or file name");
    command->add_option("--name", options.name, "one group of this name holding every swatch")->excludes(perFile);
    command->add_flag("--cut-names", options.cutNames, "cut names longer than 31 UTF-16 units");
    command->add_flag("--rename-duplicates", options.renameDuplicates, "number the later uses of a name");
    command->footer(kConvertHelp);
    return command;
}

int RunConvert(const ConvertOptions& options, std::ostream& out, std::ostream& err) {
    std::deque<CompleteBook> books;  // stable addresses for the sources
    std::vector<ConvertSource> sources;
    bool failed = false;
    for (const std::string& input : options.inputs) {
        CompleteBook& book = books.emplace_back();
        InputRead read = ReadBookInput(input, InputFormatFromName(options.format), book, 0);
        for (const std::string& note : read.notes) err << "tintora convert: note: " << note << "\n";
        if (!read.error.empty()) {
            err << "tintora convert: " << read.error << "\n";
            failed = true;
            continue;
        }
        sources.push_back({input, book, std::move(read.lines)});
    }
    if (failed) return commandline::kFailed;

    ConvertRules rules;
    if (!options.kind.empty()) rules.kind = KindCode(options.kind);
    rules.groupPerFile = options.groupPerFile;
    if (!options.name.empty()) rules.groupName = kv::Utf8ToUtf16(options.name);
    rules.cutNames = options.cutNames;
    rules.renameDuplicates = options.renameDuplicates;
    CompleteBook converted;
    const ConvertReport report = BuildConvertedBook(sources, rules, converted);
    for (const std::string& note : report.notes) err << "tintora convert: note: " << note << "\n";
    for (const std::string& error : report.errors) err << "tintora convert: " << error << "\n";
    if (!report.errors.empty()) return commandline::kFailed;

    ByteSink file;
    if (formats::WriteSwatchExchange(file, converted) != 1) {
        err << "tintora convert: " << options.output << ": the swatch exchange writer failed\n";
        return commandline::kFailed;
    }
    if (const std::string why = sheet::ReplaceFile(options.output, file.Bytes()); !why.empty()) {
        err << "tintora convert: " << why << "\n";
        return commandline::kFailed;
    }
    std::int32_t defaultGroups = 0;
    const std::int32_t groups = converted.CountGroups(&defaultGroups) - defaultGroups;
    out << "wrote " << options.output << ": " << converted.CountSwatches() << " swatches, " << groups
        << (groups == 1 ? " group\n" : " groups\n");
    return 0;
}

}  // namespace tool
