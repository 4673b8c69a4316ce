#include "ImportCommand.h"

#include "DocumentText.h"
#include "EventsSince.h"
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

}  // namespace

void AnswerQuestions(Host& host, std::optional<bool> answer) {
    if (answer) host.AnswerQuestions(*answer);
    else if (isatty(STDIN_FILENO)) host.AnswerQuestions(AskOnTerminal);
}

namespace {

}  // namespace

FileImport ImportFile(Host& host, Module& module, const std::filesystem::path& file, Document* placeInto) {
    FileImport result;
    result.file = file;
    result.placed = placeInto != nullptr;
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        result.missing = true;
        return result;
    }
    FileFormatRequest request;
    request.option = placeInto != nullptr ? kKVFileFormatImportOption : kKVFileFormatReadOption;
    request.file = file;
    request.document = placeInto != nullptr ? placeInto->Handle() : nullptr;
    const FileFormatRecord* accepted = nullptr;
    const std::vector<FileFormatRecord> formats = host.FileFormats();
    for (const FileFormatRecord& format : formats) {
        request.format = format.handle;
        const ZPErr answer = module.CheckFileFormat(request);
        result.checks.push_back({format.name, answer});
        if (answer == kZPNoErr && accepted == nullptr) accepted = &format;
    }
    if (accepted == nullptr) return result;
    Document& target = placeInto != nullptr ? *placeInto : host.Documents().New(file.filename().string());
    host.Documents().MakeCurrent(target);
    request.format = accepted->handle;
    request.document = target.Handle();
    result.go = FormatMessage{accepted->name, module.GoFileFormat(request)};
    result.document = target.Name();
    return result;
}

namespace {

ImportReport RunImport(const ImportOptions& options) {
    Host host;
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
        report.files.push_back(ImportFile(host, *module, file, placeInto));
        report.files.back().events = EventsSince(host.Events(), seen);
    }
    report.shutdown = module->Shutdown();
    report.shutdownEvents = EventsSince(host.Events(), seen);
    for (const Document* document : host.Documents().All()) report.documents.push_back(ToJson(*document));
    return report;
}

}  // namespace

std::filesystem::path DefaultModule() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return self.parent_path().parent_path() / "plugin" / "Tintora.so";
}

int Import(const ImportOptions& options) {
    const ImportReport report = RunImport(options);
    if (options.json) {
        std::cout << ImportJson(report).dump(2) << "\n";
    } else {
        const bool chips = WantsColourChips(isatty(STDOUT_FILENO) != 0, std::getenv("NO_COLOR"), std::getenv("TERM"),
                                            std::getenv("COLORTERM"));
        std::cout << ImportText(report, chips);
    }
    return report.Succeeded() ? 0 : 1;
}

}  // namespace kelvra::cli
