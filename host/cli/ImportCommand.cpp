#include "ImportCommand.h"

#include "DocumentSheet.h"
#include "DocumentText.h"
#include "ImportReport.h"

#include <kelvra/DocumentJson.h>
#include <kelvra/Host.h>

#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace kelvra::cli {

namespace {

// Asks on the terminal; an empty line or the end of input is the default, yes.
bool AskOnTerminal(const std::string& question) {
    for (;;) {
        std::cerr << question << " [Y/n] " << std::flush;
        std::string line;
        if (!std::getline(std::cin, line) || line.empty() || line == "y" || line == "yes") return true;
        if (line == "n" || line == "no") return false;
    }
}

void AnswerQuestions(Host& host, const ImportOptions& options) {
    if (options.answer) host.AnswerQuestions(*options.answer);
    else if (isatty(STDIN_FILENO)) host.AnswerQuestions(AskOnTerminal);
}

// The events logged since `from`, which then moves past them.
std::vector<Event> EventsSince(Host& host, std::size_t& from) {
    const std::vector<Event>& all = host.Events().All();
    std::vector<Event> events(all.begin() + std::ptrdiff_t(from), all.end());
    from = all.size();
    return events;
}

// Offers the file to every format, then has the first that accepted read
// it: into `placeInto`, or else into a new document named after the file.
FileImport ImportFile(Host& host, const std::filesystem::path& file, Document* placeInto) {
    FileImport result;
    result.file = file;
    result.placed = placeInto != nullptr;
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        result.missing = true;
        return result;
    }
    FormatTarget target;
    target.placeInto = placeInto;
    target.newDocument = [&]() -> Document& { return host.Documents().New(file.filename().string()); };
    FormatOpening opening = host.OpenWithFormats(file, target);
    result.checks = std::move(opening.checks);
    result.go = std::move(opening.go);
    if (opening.document != nullptr) result.document = opening.document->Name();
    return result;
}

ImportReport RunImport(const ImportOptions& options) {
    Host host;
    ApplyHostSetup(Resolved(options.setup), host);
    AnswerQuestions(host, options);
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
    report.startupEvents = EventsSince(host, seen);
    if (report.startup != kZPNoErr) return report;
    Document* placeInto = options.place ? &host.Documents().New("Untitled") : nullptr;
    for (const std::filesystem::path& file : options.files) {
        report.files.push_back(ImportFile(host, file, placeInto));
        report.files.back().events = EventsSince(host, seen);
    }
    report.shutdown = module->Shutdown();
    report.shutdownEvents = EventsSince(host, seen);
    for (const Document* document : host.Documents().All()) {
        (host.Documents().IsHidden(*document) ? report.libraryDocuments : report.documents)
            .push_back(ToJson(*document));
    }
    return report;
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
            return 1;
        }
    }
    const ImportReport report = RunImport(options);
    if (options.json) {
        std::cout << ImportJson(report).dump(2) << "\n";
    } else {
        const bool chips = WantsColourChips(isatty(STDOUT_FILENO) != 0, std::getenv("NO_COLOR"), std::getenv("TERM"),
                                            std::getenv("COLORTERM"));
        std::cout << ImportText(report, chips);
    }
    if (!options.sheet.empty()) {
        if (const std::string why = sheet::WriteSheet(DocumentsSheet(report.documents), options.sheet); !why.empty()) {
            std::cerr << "kelvra-host import: " << why << "\n";
            return 1;
        }
    }
    return report.Succeeded() ? 0 : 1;
}

}  // namespace kelvra::cli
