#include "ExportCommand.h"

#include "EventsSince.h"
#include "ExportReport.h"
#include "ImportCommand.h"

#include <CommandLine.h>
#include <kelvra/DocumentJson.h>

#include <iostream>

namespace kelvra::cli {

namespace {

// The document to export: read from the document file, or made by placing
// every file into one new document; null when that failed.
Document* MakeDocument(ClientWork& work, const ExportOptions& options, ExportReport& report) {
    if (options.document) {
        try {
            return &work.host.Documents().Add(ReadDocumentFile(*options.document));
        } catch (const HostError& error) {
            report.documentError = error.what();
            return nullptr;
        }
    }
    Document& document = work.host.Documents().New("Untitled");
    for (const std::filesystem::path& file : options.files) {
        report.files.push_back(ImportFile(work.host, file, &document, work.eventsSeen));
    }
    return report.FailedFiles() == 0 ? &document : nullptr;
}

void ExportDocument(ClientWork& work, const ExportOptions& options, ExportReport& report) {
    Document* document = MakeDocument(work, options, report);
    if (document == nullptr) return;
    report.document = ToJson(*document);
    report.exported = work.client.ExportSwatchesToFile(document->Handle(), options.output);
    report.exportEvents = EventsSince(work.host.Events(), work.eventsSeen);
    if (report.exported->Written()) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(options.output, error);
        if (!error) report.bytesWritten = size;
    }
}

}  // namespace

int Export(const ExportOptions& options) {
    ExportReport report;
    report.output = options.output;
    report.documentFile = options.document;
    std::error_code error;
    report.outputExisted = std::filesystem::exists(options.output, error);
    report.run = RunAsClient(
        options.module,
        [&](Host& host) {
            ApplyHostSetup(Resolved(options.setup), host);
            AnswerQuestions(host, options.answer);
        },
        [&](ClientWork& work) { ExportDocument(work, options, report); });
    if (options.json) {
        std::cout << ExportJson(report).dump(2) << "\n";
    } else {
        WriteExportText(std::cout, report, ChooseChipDepth(options.color, CurrentTerminal()));
    }
    return report.Succeeded() ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace kelvra::cli
