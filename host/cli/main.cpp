// kelvra-host: the emulated host as a command.
#include "ImportCommand.h"
#include "LibrariesCommand.h"
#include "RunCommand.h"
#include "ValidateCommand.h"

#include <CLI/CLI.hpp>

int main(int argc, char** argv) {
    CLI::App app{"kelvra-host: the emulated Kelvra host. Loads a module file as the host would, "
                 "runs it, validates it and imports files through it; keeps the host's library folders and "
                 "remembered library files."};
    app.require_subcommand(1);
    app.footer("Every command exits with status 2 when an option or argument is wrong, after saying why.");

    kelvra::cli::RunOptions run;
    CLI::App* runCommand = app.add_subcommand(
        "run",
        "Load MODULE and run its lifecycle (start-up, purge, save notification, unload, reload, shut-down). "
        "Prints each message with its result code (four characters when printable, else decimal; success 0), "
        "the notifiers and file formats it registered, the suites acquired and released, the event log and what "
        "is still live at the end. Exit status 0 when the module loaded and its start-up answered 0, 1 otherwise.");
    runCommand->add_option("MODULE", run.module, "the module file")->required();
    kelvra::cli::AddHostSetupOptions(*runCommand, run.setup);
    runCommand->add_flag("--json", run.json, "print the same as one JSON object (see host/README.md)");

    kelvra::cli::ValidateOptions validate;
    CLI::App* validateCommand = app.add_subcommand(
        "validate",
        "Check that MODULE keeps the rules of a module, each check in its own child process with a time limit. "
        "One line per check: pass, fail or crash, its id and a detail; then 'N passed, N failed'. "
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
    importCommand->add_option("--sheet", import.sheet,
                              "also write the documents as imported as a swatch sheet: OUT.html (one "
                              "self-contained file) or OUT.svg; a file that cannot be written makes the exit status 1");
    kelvra::cli::AddHostSetupOptions(*importCommand, import.setup);

    kelvra::cli::LibrariesOptions libraries;
    CLI::App* librariesCommand = app.add_subcommand(
        "libraries",
        "Remember each FILE as the host's \"open other library\" command does (under "
        "\"KVSwatchLibPersistentPrefix\" + the count in the preferences, then the count + 1), before anything "
        "else; then show the directory of each host folder type (and whether it exists) and the remembered "
        "library files as the preferences hold them, each with its result code when it cannot be read. "
        "Exit status 0 when every FILE was remembered and the remembered list reads without a failure, 1 "
        "otherwise.");
    librariesCommand->add_option("--remember", libraries.remember, "a library file to remember (repeatable)")
        ->type_name("FILE")
        ->check(CLI::ExistingFile.description(""))
        ->allow_extra_args(false);
    librariesCommand->add_flag("--json", libraries.json, "print the same as one JSON object (see host/README.md)");
    kelvra::cli::AddHostSetupOptions(*librariesCommand, libraries.setup);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // --help and --version come this way too, and succeed.
        return app.exit(error) == 0 ? 0 : 2;
    }
    if (runCommand->parsed()) return kelvra::cli::Run(run);
    if (librariesCommand->parsed()) return kelvra::cli::Libraries(libraries);
    if (importCommand->parsed()) {
        import.module = module;
        if (!answer.empty()) import.answer = answer == "yes";
        return kelvra::cli::Import(import);
    }
    return kelvra::cli::Validate(validate);
}
