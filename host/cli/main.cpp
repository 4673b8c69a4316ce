// kelvra-host: the emulated host as a command.
#include "ExportCommand.h"
#include "ImportCommand.h"
#include "LookupCommand.h"
#include "RunCommand.h"
#include "ValidateCommand.h"

#include <CLI/CLI.hpp>

#include <iostream>

int main(int argc, char** argv) {
    CLI::App app{"kelvra-host: the emulated Kelvra host. Loads a module file as the host would, "
                 "runs it, validates it and imports files through it."};
    app.require_subcommand(1);

    kelvra::cli::RunOptions run;
    CLI::App* runCommand = app.add_subcommand(
        "run",
        "Load MODULE and run its lifecycle (start-up, purge, save notification, unload, reload, shut-down). "
        "Prints each message with its result code (four characters when printable, else decimal; success 0), "
        "the notifiers and file formats it registered, the suites acquired and released, the event log and what "
        "is still live at the end. Exit status 0 when the module loaded and its start-up answered 0.");
    runCommand->add_option("MODULE", run.module, "the module file")->required();
    runCommand->add_flag("--json", run.json, "print the same as one JSON object (see host/README.md)");

    kelvra::cli::ValidateOptions validate;
    CLI::App* validateCommand = app.add_subcommand(
        "validate",
        "Check that MODULE keeps the rules of a module, each check in its own child process with a time limit. "
        "One line per check: pass, fail or crash, its id and a detail; then 'N passed, N failed'. "
        "A module that publishes a suite for other plug-ins is also checked for it (published under its name and "
        "version with every entry set and other versions refused, emptied at unload, still published and empty "
        "after reload, withdrawn with every block given back at shut-down, the save notification handled); for "
        "a module that publishes none these checks pass as not applicable. "
        "Exit status 0 only when every check passed.");
    validateCommand->add_option("MODULE", validate.module, "the module file")->required();
    validateCommand->add_flag("--json", validate.json, "print the same as one JSON object (see host/README.md)");
    validateCommand->add_flag("--only-failed", validate.onlyFailed, "hide the checks that passed");
    validateCommand->add_option("--seed", validate.seed, "fix the order the checks run in (random otherwise)");
    validateCommand->add_option("--timeout", validate.timeoutSeconds, "time limit of each check in seconds")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);

    kelvra::cli::ImportOptions import;
    std::string module = kelvra::cli::DefaultModule().string();
    std::string answer;
    CLI::App* importCommand = app.add_subcommand(
        "import",
        "Start the module and open each FILE through its registered file formats, as the host's open dialog "
        "would: the file is offered to every format with \"KV Check\" and the first that accepts it reads it "
        "with \"KV Go\" into a new document named after the file (made current first), or with --place into "
        "one document made at the start. Prints each message with its result code (four characters when "
        "printable, else decimal; success 0), what the user was shown and asked, and every document's swatches "
        "by group, with a colour chip per swatch on a terminal that shows 24-bit colour (never when NO_COLOR is "
        "set). Exit status 0 when the module started and every file was imported (a format accepted it and "
        "\"KV Go\" answered 0), 1 otherwise.");
    importCommand->add_option("FILE", import.files, "the files to open or place")->required();
    importCommand->add_option("--module", module, "the module file (default: the module of this build)")
        ->capture_default_str();
    importCommand->add_flag("--place", import.place, "place every file into one new document");
    importCommand
        ->add_option("--answer", answer,
                     "answer every question so (default: ask on the terminal when standard input is one, else yes)")
        ->check(CLI::IsMember({"yes", "no"}));
    importCommand->add_flag("--json", import.json, "print the same as one JSON object (see host/README.md)");

    kelvra::cli::LookupOptions lookup;
    std::string lookupModule = module;
    CLI::App* lookupCommand = app.add_subcommand(
        "lookup",
        "Start the module and, acting as another plug-in of its suite \"KV Tintora Suite\", read FILE into a new "
        "reference book: IsColorBookFile on a read data filter of FILE chooses ReadColorBook (a colour book) or "
        "ReadLegacyColorBook (an XML swatchbook). Prints each call with its result code (four characters when "
        "printable, else decimal; success 0; 'refused' when the module's entry is null), the book id, and for each "
        "NAME (the full name, prefix and postfix included) its colour — model, values 0..1 (Lab L 0..100), spot or "
        "process — or NAM?, with a colour chip on a terminal that shows 24-bit colour; then what the user was "
        "shown (the read error when the file cannot be read). Exit status 0 when the book was read and every "
        "NAME found, 1 otherwise.");
    lookupCommand->add_option("FILE", lookup.file, "a colour book or an XML swatchbook")->required();
    lookupCommand->add_option("NAME", lookup.names, "full swatch names to look up");
    lookupCommand->add_option("--module", lookupModule, "the module file (default: the module of this build)")
        ->capture_default_str();
    lookupCommand->add_flag("--json", lookup.json, "print the same as one JSON object (see host/README.md)");

    kelvra::cli::ExportOptions exportOptions;
    std::string exportModule = module;
    std::string exportAnswer;
    std::string exportDocument;
    CLI::App* exportCommand = app.add_subcommand(
        "export",
        "Start the module and, acting as another plug-in of its suite \"KV Tintora Suite\", write the swatches of "
        "a document to OUT as a swatch exchange file with ExportSwatches through a write data filter: the "
        "document is made by placing every FILE into one new document \"Untitled\" through the module's "
        "registered file formats (as import --place does), or read from the host's document file DOC.kv (the "
        "document JSON of host/README.md). The filter writes a temporary file beside OUT that replaces OUT only "
        "when the export answered 0 (UnlinkDataFilter); after a failed export it is discarded "
        "(DiscardDataFilter), so an existing OUT stays as it was. When a FILE cannot be imported nothing is "
        "exported. Prints each message and call with its result code, the document's swatches (with colour "
        "chips on a terminal that shows 24-bit colour) and what the user was shown, then 'written: OUT (N "
        "bytes)' or 'not written: OUT left as it was' (or 'not made'). Exit status 0 when OUT was written, "
        "1 otherwise.");
    exportCommand->add_option("-o,--output", exportOptions.output, "the swatch exchange file to write (OUT.ose)")
        ->required();
    CLI::Option* exportFiles = exportCommand->add_option("FILE", exportOptions.files, "files to place into the document");
    CLI::Option* documentOption =
        exportCommand->add_option("--document", exportDocument, "the host's document file to export (DOC.kv)");
    exportFiles->excludes(documentOption);
    exportCommand->add_option("--module", exportModule, "the module file (default: the module of this build)")
        ->capture_default_str();
    exportCommand
        ->add_option("--answer", exportAnswer,
                     "answer every question so (default: ask on the terminal when standard input is one, else yes)")
        ->check(CLI::IsMember({"yes", "no"}));
    exportCommand->add_flag("--json", exportOptions.json, "print the same as one JSON object (see host/README.md)");

    CLI11_PARSE(app, argc, argv);
    if (exportCommand->parsed()) {
        if (exportFiles->count() == 0 && documentOption->count() == 0) {
            std::cerr << "export: give the FILEs to export or --document DOC.kv\n";
            return 2;
        }
        exportOptions.module = exportModule;
        if (documentOption->count() != 0) exportOptions.document = exportDocument;
        if (!exportAnswer.empty()) exportOptions.answer = exportAnswer == "yes";
        return kelvra::cli::Export(exportOptions);
    }
    if (lookupCommand->parsed()) {
        lookup.module = lookupModule;
        return kelvra::cli::Lookup(lookup);
    }
    if (runCommand->parsed()) return kelvra::cli::Run(run);
    if (importCommand->parsed()) {
        import.module = module;
        if (!answer.empty()) import.answer = answer == "yes";
        return kelvra::cli::Import(import);
    }
    return kelvra::cli::Validate(validate);
}
