#include "ExportReport.h"

#include "DocumentText.h"
#include "EventText.h"
#include "ResultJson.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

// What became of the output file, as the last line says it.
std::string Outcome(const ExportReport& report) {
    const std::string output = report.output.string();
    if (report.Written()) {
        return "written: " + output +
               (report.bytesWritten ? " (" + std::to_string(*report.bytesWritten) + " bytes)" : std::string());
    }
    return "not written: " + output + (report.outputExisted ? " left as it was" : " not made");
}

void WriteExport(std::ostream& out, const ExportReport& report) {
    out << "export: " << report.output.string() << "\n";
    const FileExport& exported = *report.exported;
    out << "  ExportSwatches -> " << ReadableText(exported.exported) << "\n";
    if (exported.unlinked) out << "  UnlinkDataFilter -> " << ResultText(*exported.unlinked) << "\n";
    if (exported.discarded) out << "  DiscardDataFilter -> " << ResultText(*exported.discarded) << "\n";
    WriteEvents(out, report.exportEvents);
}

json OptionalResult(const std::optional<ZPErr>& result) { return result ? ResultJson(*result) : json(); }

}  // namespace

std::size_t ExportReport::FailedFiles() const {
    return std::size_t(std::count_if(files.begin(), files.end(), [](const FileImport& f) { return f.Failed(); }));
}

void WriteExportText(std::ostream& out, const ExportReport& report, ChipDepth chips) {
    WriteStart(out, report.run);
    if (report.run.Ready()) {
        if (report.documentFile) {
            out << "document file: " << report.documentFile->string() << "\n";
            if (!report.documentError.empty()) out << "  refused: " << report.documentError << "\n";
        }
        for (const FileImport& file : report.files) WriteFileImport(out, file);
        if (report.FailedFiles() != 0)
            out << "not exported: " << report.FailedFiles() << " of " << report.files.size()
                << (report.files.size() == 1 ? " file" : " files") << " not imported\n";
        if (!report.document.is_null()) WriteDocument(out, report.document, 1, "", chips);
        if (report.exported) WriteExport(out, report);
    }
    WriteShutdown(out, report.run);
    out << Outcome(report) << "\n";
}

json ExportJson(const ExportReport& report) {
    json out = ClientRunJson(report.run);
    if (!report.run.refusal.empty()) return out;
    out["output"] = report.output.string();
    out["documentFile"] = report.documentFile ? json(report.documentFile->string()) : json();
    out["documentError"] = report.documentError.empty() ? json() : json(report.documentError);
    out["files"] = json::array();
    for (const FileImport& file : report.files) out["files"].push_back(FileImportJson(file));
    out["document"] = report.document;
    out["export"] = nullptr;
    if (report.exported) {
        out["export"] = {{"call", CallJson(report.exported->exported)},
                         {"unlinked", OptionalResult(report.exported->unlinked)},
                         {"discarded", OptionalResult(report.exported->discarded)},
                         {"events", ToJson(report.exportEvents)}};
    }
    out["outputExisted"] = report.outputExisted;
    out["written"] = report.Written();
    out["bytes"] = report.bytesWritten ? json(*report.bytesWritten) : json();
    out["failed"] = !report.Succeeded();
    return out;
}

}  // namespace kelvra::cli
