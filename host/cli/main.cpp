// kelvra-host: the emulated host as a command.
#include "ExportCommand.h"
#include "ImportCommand.h"
#include "LibrariesCommand.h"
#include "LookupCommand.h"
#include "RunCommand.h"
#include "SessionCommand.h"
#include "TerminalColor.h"
#include "ValidateCommand.h"

#include <CommandLine.h>

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <iostream>

namespace {

// A check's time limit: more than nothing, and short enough to wait for.
constexpr double kLongestTimeout = 86400;

CLI::Validator TimeoutSeconds() {
    return CLI::Validator(
        [](std::string& text) -> std::string {
            double seconds = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
            const bool number = error == std::errc() && end == text.data() + text.size();
            if (number && seconds > 0 && seconds <= kLongestTimeout) return "";
            return "a number of seconds more than 0 and at most 86400, not \"" + text + "\"";
        },
        "SECONDS");
}

}  // namespace

namespace {

// The command asked for; main makes sure its output was written.
int RunAskedCommand(int argc, char** argv) {
    CLI::App app{"kelvra-host: the emulated Kelvra host. Loads a module file as the host would, "
                 "runs it, validates it and imports files through it; keeps the host's library folders and "
                 "remembered library files.",
                 "kelvra-host"};
    app.require_subcommand(1);
    commandline::AddVersion(app);
    app.footer(
        "Each command's --help tells its exit statuses; 2 always means that the command line was wrong "
        "or that the standard output could not be written.");

    kelvra::cli::RunOptions run;
    CLI::App* runCommand = app.add_subcommand(
        "run",
        "Load MODULE and run its lifecycle (start-up, purge, save notification, unload, reload, shut-down). "
        "Prints each message with its result code (four characters when printable, else decimal; success 0), "
        "the notifiers and file formats it registered, the suites acquired and released, what the user was "
        "shown and what is still live at the end.");
    runCommand->add_option("MODULE", run.module, "the module file")->required();
    kelvra::cli::AddHostSetupOptions(*runCommand, run.setup);
    runCommand->add_flag("--json", run.json, "print the same as one JSON object (see host/README.md)");
    runCommand->footer(commandline::ExitStatusHelp("when the module loaded and its start-up answered 0",
                                                   "when the module file was refused or its start-up failed"));

    kelvra::cli::ValidateOptions validate;
    CLI::App* validateCommand = app.add_subcommand(
        "validate",
        "Check that MODULE keeps the rules of a module, each check in its own child process with a time limit. "
        "One line per check: pass, fail or crash, its id and a detail; then 'N passed, N failed'. "
        "A module that publishes a suite for other plug-ins is also checked for it (published under its name and "
        "version with every entry set and other versions refused, emptied at unload, still published and empty "
        "after reload, withdrawn with every block given back at shut-down, the save notification handled); for "
        "a module that publishes none these checks pass as not applicable.");
    validateCommand->add_option("MODULE", validate.module, "the module file")->required();
    validateCommand->add_flag("--json", validate.json, "print the same as one JSON object (see host/README.md)");
    validateCommand->add_flag("--only-failed", validate.onlyFailed, "hide the checks that passed");
    validateCommand->add_option("--seed", validate.seed, "fix the order the checks run in (random otherwise)");
    validateCommand
        ->add_option("--timeout", validate.timeoutSeconds, "time limit of each check in seconds, at most 86400")
        ->capture_default_str()
        ->check(TimeoutSeconds());
    validateCommand->footer(commandline::ExitStatusHelp("when every check passed", "when a check failed or crashed"));

    kelvra::cli::ImportOptions import;
    std::string module = kelvra::cli::DefaultModule().string();
    std::string answer;
    CLI::App* importCommand = app.add_subcommand(
        "import",
        "Start the module and open each FILE through its registered file formats, as the host's open dialog "
        "would: the file is offered to every format with \"KV Check\" and the first that accepts it reads it "
        "with \"KV Go\" into a new document named after the file (made current first), or with --place into "
        "one document made at the start. Prints each message with its result code (four characters when "
        "printable, else decimal; success 0), what the user was shown and asked, what each document received "
        "and what the host saw happen to it (custom colours redefined or shared, swatches left without a name), "
        "then every document's swatches by group, each with the sRGB hex of its colour and a colour chip when "
        "colour is wanted (--color), and the totals.");
    importCommand->add_option("FILE", import.files, "the files to open or place")->required();
    importCommand->add_option("--module", module, "the module file (default: the module of this build)")
        ->capture_default_str();
    importCommand->add_flag("--place", import.place, "place every file into one new document");
    importCommand
        ->add_option("--answer", answer,
                     "answer every question so (default: ask on the terminal when standard input is one, else yes)")
        ->check(CLI::IsMember({"yes", "no"}));
    importCommand->add_flag("--json", import.json, "print the same as one JSON object (see host/README.md)");
    importCommand->add_option("--sheet", import.sheet,
                              "also write the documents as imported as a swatch sheet: OUT.html (one "
                              "self-contained file) or OUT.svg; a file that cannot be written makes the exit status 1");
    kelvra::cli::AddHostSetupOptions(*importCommand, import.setup);
    kelvra::cli::AddColorOption(*importCommand, import.color);
    importCommand->footer(commandline::ExitStatusHelp(
        "when the module started and every file was imported (and the sheet, if asked for, was written)",
        "when the module file was refused, its start-up failed, the sheet could not be written, or a file was "
        "not imported: not there, a directory, accepted by no format, \"KV Go\" answered an error, or the "
        "document received nothing"));

    kelvra::cli::LibrariesOptions libraries;
    std::string librariesModule = module;
    CLI::App* librariesCommand = app.add_subcommand(
        "libraries",
        "Remember each FILE as the host's \"open other library\" command does (under "
        "\"KVSwatchLibPersistentPrefix\" + the count in the preferences, then the count + 1), before anything "
        "else, and show the directory of each host folder type (and whether it exists) and the remembered "
        "library files as the preferences hold them, each with its result code when it cannot be read. Then start "
        "the module and, acting as another plug-in of its suite \"KV Tintora Suite\", open each library N "
        "(OpenLibrary) and each library FILE (OpenLibraryFile) and show its swatches, and show the numbered list a "
        "swatches panel would show: CountLibraries (the module's own library and the others), then for each "
        "number from 1 its name (GetLibraryName) and whether it is open (IsLibraryOpen).");
    librariesCommand->add_option("--remember", libraries.remember, "a library file to remember (repeatable)")
        ->type_name("FILE")
        ->check(CLI::ExistingFile.description(""))
        ->allow_extra_args(false);
    librariesCommand->add_option("--open", libraries.open, "open library N of the list and show it (repeatable)")
        ->type_name("N")
        ->allow_extra_args(false);
    librariesCommand
        ->add_option("--open-file", libraries.openFiles,
                     "open the library file FILE, remembering it when it is in no library folder (repeatable)")
        ->type_name("FILE")
        ->allow_extra_args(false);
    librariesCommand->add_option("--module", librariesModule, "the module file (default: the module of this build)")
        ->capture_default_str();
    librariesCommand->add_flag("--json", libraries.json, "print the same as one JSON object (see host/README.md)");
    kelvra::cli::AddHostSetupOptions(*librariesCommand, libraries.setup);
    kelvra::cli::AddColorOption(*librariesCommand, libraries.color);
    librariesCommand->footer(commandline::ExitStatusHelp(
        "when every FILE was remembered, the remembered list reads without a failure, the module started, every "
        "library opened and the list was read",
        "when a FILE could not be remembered, an entry of the remembered list cannot be read, the module file was "
        "refused or its start-up failed, a library did not open, or a call of the list failed"));

    kelvra::cli::LookupOptions lookup;
    std::string lookupModule = module;
    CLI::App* lookupCommand = app.add_subcommand(
        "lookup",
        "Start the module and, acting as another plug-in of its suite \"KV Tintora Suite\", read FILE into a new "
        "reference book: IsColorBookFile on a read data filter of FILE chooses ReadColorBook (a colour book) or "
        "ReadLegacyColorBook (an XML swatchbook). Prints each call with its result code (four characters when "
        "printable, else decimal; success 0; 'refused' when the module's entry is null), the book id, and for each "
        "NAME (the full name, prefix and postfix included) its colour — the sRGB hex it shows, its values in a "
        "person's units, spot or process — or NAM?, with a colour chip when colour is wanted (--color); then what "
        "the user was shown (the read error when the file cannot be read).");
    lookupCommand->add_option("FILE", lookup.file, "a colour book or an XML swatchbook")->required();
    lookupCommand->add_option("NAME", lookup.names, "full swatch names to look up");
    lookupCommand->add_option("--module", lookupModule, "the module file (default: the module of this build)")
        ->capture_default_str();
    lookupCommand->add_flag("--json", lookup.json, "print the same as one JSON object (see host/README.md)");
    kelvra::cli::AddHostSetupOptions(*lookupCommand, lookup.setup);
    kelvra::cli::AddColorOption(*lookupCommand, lookup.color);
    lookupCommand->footer(commandline::ExitStatusHelp(
        "when the book was read and every NAME found",
        "when the module file was refused, its start-up failed, the suite could not be acquired, the file is not "
        "there or could not be read, a NAME was not found, or the book could not be disposed of"));

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
        "chips when colour is wanted, --color) and what the user was shown, then 'written: OUT (N bytes)' or "
        "'not written: OUT left as it was' (or 'not made').");
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
    kelvra::cli::AddHostSetupOptions(*exportCommand, exportOptions.setup);
    kelvra::cli::AddColorOption(*exportCommand, exportOptions.color);
    exportCommand->footer(commandline::ExitStatusHelp(
        "when the document was made or read and OUT written",
        "when the module file was refused, its start-up failed, the suite could not be acquired, a FILE was not "
        "imported, DOC.kv could not be read, or the export failed (OUT is then left as it was)"));

    kelvra::cli::SessionOptions session;
    std::string sessionModule = module;
    CLI::App* sessionCommand = app.add_subcommand(
        "session",
        "Load the module and be its host, and another plug-in of its suite, one command at a time: read one JSON "
        "object per line on standard input and answer each with one JSON object per line on standard output, in "
        "order, flushed after each. Commands: life cycle (startup, shutdown, unload, reload, purge, notify, "
        "message), files (import, document, documents), the 14 functions of \"KV Tintora Suite\" by name, and "
        "the host (events, counts, fault, clock, remember); quit ends it. A line that is no valid command is "
        "answered with {\"ok\": false, \"error\": ...} and the session goes on. At the end of the input or "
        "on quit the session gives back what it holds and shuts the module down if it is started. The commands "
        "and their fields are in host/README.md.");
    sessionCommand->add_option("--module", sessionModule, "the module file (default: the module of this build)")
        ->capture_default_str();
    kelvra::cli::AddHostSetupOptions(*sessionCommand, session.setup);
    sessionCommand->footer(commandline::ExitStatusHelp(
        "when the input ended or quit came, whatever the commands answered",
        "when the module file was refused (every command that needs it was answered with the reason)"));

    if (const auto answered = commandline::Parse(app, argc, argv, std::cout, std::cerr)) return *answered;
    if (sessionCommand->parsed()) {
        session.module = sessionModule;
        return kelvra::cli::RunSession(session, std::cin, std::cout);
    }
    if (exportCommand->parsed()) {
        if (exportFiles->count() == 0 && documentOption->count() == 0) {
            std::cerr << "kelvra-host export: give the FILEs to export or --document DOC.kv\n";
            return commandline::kCannotRun;
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
    if (librariesCommand->parsed()) {
        libraries.module = librariesModule;
        return kelvra::cli::Libraries(libraries);
    }
    if (importCommand->parsed()) {
        import.module = module;
        if (!answer.empty()) import.answer = answer == "yes";
        return kelvra::cli::Import(import);
    }
    return kelvra::cli::Validate(validate);
}

}  // namespace

int main(int argc, char** argv) {
    return commandline::FinishOutput(RunAskedCommand(argc, argv), std::cout, std::cerr, "kelvra-host");
}
