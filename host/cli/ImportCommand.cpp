#include "ImportCommand.h"

#include "DialogText.h"
#include "DocumentSheet.h"
#include "EventsSince.h"
#include "ImportReport.h"

#include <BufferedStream.h>
#include <CommandLine.h>
#include <kelvra/DocumentJson.h>
#include <kelvra/Host.h>

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace kelvra::cli {

namespace {

// Asks on the terminal; an empty line or the end of input is the default, yes.
bool AskOnTerminal(const std::string& question) {
    for (;;) {
        WriteDialogText(std::cerr, question, "");
        std::cerr << " [Y/n] " << std::flush;
        std::string line;
        if (!std::getline(std::cin, line) || line.empty() || line == "y" || line == "yes") return true;
        if (line == "n" || line == "no") return false;
    }
}

std::size_t IndexOf(Host& host, const Document& document) {
    const std::vector<Document*> all = host.Documents().All();
    return std::size_t(std::find(all.begin(), all.end(), &document) - all.begin());
}

// What the host can see wrong with a file the module took but read nothing
// from; empty when nothing.
std::string WhatIsWrongWith(const std::filesystem::path& file) {
    if (const std::string why = commandline::WhyUnreadable(file.string()); !why.empty())
        return "cannot read the file: " + why;
    std::error_code error;
    return std::filesystem::file_size(file, error) == 0 && !error ? "the file is empty" : "";
}

// What a document holds, to tell what an import gave it.
struct Holdings {
    std::size_t groups = 0;
    std::size_t swatches = 0;
    std::size_t customColors = 0;
};

Holdings HoldingsOf(const Document& document) {
    return {document.Groups().size(), document.SwatchCount(), document.CustomColors().size()};
}

}  // namespace

void AnswerQuestions(Host& host, std::optional<bool> answer) {
    if (answer) host.AnswerQuestions(*answer);
    else if (isatty(STDIN_FILENO)) host.AnswerQuestions(AskOnTerminal);
}

FileImport ImportFile(Host& host, const std::filesystem::path& file, Document* placeInto, std::size_t& seen) {
    FileImport result;
    result.file = file;
    result.placed = placeInto != nullptr;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) {
        result.status = FileImport::Status::Missing;
        return result;
    }
    if (std::filesystem::is_directory(status)) {
        result.status = FileImport::Status::NotAFile;
        return result;
    }
    Holdings before = placeInto != nullptr ? HoldingsOf(*placeInto) : Holdings{};
    FormatTarget target;
    target.placeInto = placeInto;
    target.newDocument = [&]() -> Document& {
        Document& made = host.Documents().New(file.filename().string());
        before = HoldingsOf(made);
        return made;
    };
    FormatOpening opening = host.OpenWithFormats(file, target);
    result.checks = std::move(opening.checks);
    result.events = EventsSince(host.Events(), seen);
    if (!opening.go) {
        result.status = FileImport::Status::NoFormat;
        return result;
    }
    result.go = std::move(opening.go);
    const Document& document = *opening.document;
    result.document = IndexOf(host, document);
    result.documentName = document.Name();
    const Holdings after = HoldingsOf(document);
    result.received.groups = after.groups - before.groups;
    result.received.swatches = after.swatches - before.swatches;
    result.received.customColorsMade = after.customColors - before.customColors;
    result.received.customColorsRedefined = std::size_t(std::count_if(
        result.events.begin(), result.events.end(),
        [](const Event& event) { return event.kind == Event::Kind::CustomColorRedefined; }));
    if (result.go->result != kZPNoErr) {
        result.status = FileImport::Status::GoFailed;
    } else if (result.received.Nothing()) {
        result.status = FileImport::Status::NothingReceived;
        result.why = WhatIsWrongWith(file);
    }
    return result;
}

namespace {

// The report reads the host's documents, so the host outlives it.
ImportReport RunImport(Host& host, const ImportOptions& options) {
    ApplyHostSetup(Resolved(options.setup), host);
    AnswerQuestions(host, options.answer);
    ImportReport report;
    report.module = options.module;
    Module* module = nullptr;
    try {
        module = &host.Load(options.module);
    } catch (const HostError& error) {
        report.refusal = error.what();
        return report;
    }
    std::size_t seen = 0;
    report.startup = module->Startup();
    report.startupEvents = EventsSince(host.Events(), seen);
    if (report.startup != kZPNoErr) return report;
    Document* placeInto = options.place ? &host.Documents().New("Untitled") : nullptr;
    for (const std::filesystem::path& file : options.files) {
        report.files.push_back(ImportFile(host, file, placeInto, seen));
    }
    report.shutdown = module->Shutdown();
    report.shutdownEvents = EventsSince(host.Events(), seen);
    for (const Document* document : host.Documents().All()) {
        (host.Documents().IsHidden(*document) ? report.hostLibraryDocuments : report.hostDocuments)
            .push_back(document);
    }
    return report;
}

nlohmann::json DocumentsJson(const ImportReport& report) {
    nlohmann::json documents = nlohmann::json::array();
    for (const Document* document : report.hostDocuments) documents.push_back(ToJson(*document));
    return documents;
}

}  // namespace

std::filesystem::path DefaultModule() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return self.parent_path().parent_path() / "plugin" / "Tintora.so";
}

int Import(const ImportOptions& options) {
    if (!options.sheet.empty()) {
        if (const std::string problem = sheet::SheetNameProblem(options.sheet); !problem.empty()) {
            std::cerr << "kelvra-host import: " << problem << "\n";
            return commandline::kCannotRun;
        }
    }
    Host host;
    const ImportReport report = RunImport(host, options);
    if (options.json) {
        WriteImportJson(std::cout, report);
    } else {
        commandline::BufferedStream out(std::cout);
        WriteImportText(out, report, ChooseChipDepth(options.color, CurrentTerminal()));
    }
    std::cout.flush();
    if (!options.sheet.empty()) {
        if (const std::string why = sheet::WriteSheet(DocumentsSheet(DocumentsJson(report)), options.sheet); !why.empty()) {
            std::cerr << "kelvra-host import: " << why << "\n";
            return commandline::kFailed;
        }
    }
    return report.Succeeded() ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace kelvra::cli
