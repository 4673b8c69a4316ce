#include "LookupCommand.h"

#include "EventsSince.h"
#include "LookupReport.h"

#include <CommandLine.h>

#include <iostream>

namespace kelvra::cli {

namespace {

// Reads the file into a new reference book as its kind asks and looks each
// name up; the book is disposed of through the suite.
void LookUp(TintoraClient& client, const LookupOptions& options, LookupReport& report) {
    std::error_code error;
    if (!std::filesystem::exists(options.file, error)) {
        report.missing = true;
        return;
    }
    report.colorBook = client.IsColorBookFile(options.file);
    if (!report.colorBook->call.Succeeded()) return;
    auto book = client.NewReferenceBook();
    report.newBook = book.call;
    if (!book.call.Succeeded()) return;
    if (report.colorBook->value) {
        report.reader = "ReadColorBook";
        report.read = client.ReadColorBook(options.file, book.value);
    } else {
        report.reader = "ReadLegacyColorBook";
        report.read = client.ReadLegacyColorBook(options.file, book.value);
    }
    if (report.read->Succeeded()) {
        report.bookId = client.GetReferenceBookID(book.value);
        for (const std::string& name : options.names)
            report.names.push_back({name, client.FindReferenceSwatch(book.value, name)});
    }
    report.dispose = book.value.Dispose();
}

}  // namespace

int Lookup(const LookupOptions& options) {
    LookupReport report;
    report.file = options.file;
    report.namesAsked = options.names.size();
    report.run = RunAsClient(options.module, [&](Host& host) { ApplyHostSetup(Resolved(options.setup), host); }, [&](ClientWork& work) {
        LookUp(work.client, options, report);
        report.events = EventsSince(work.host.Events(), work.eventsSeen);
    });
    if (options.json) {
        std::cout << LookupJson(report).dump(2) << "\n";
    } else {
        WriteLookupText(std::cout, report, ChooseChipDepth(options.color, CurrentTerminal()));
    }
    return report.Succeeded() ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace kelvra::cli
