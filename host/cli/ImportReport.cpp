#include "ImportReport.h"

#include "DocumentText.h"
#include "EventText.h"
#include "ResultJson.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

void WriteQuoted(std::ostream& out, const std::string& text) { out << json(text).dump(); }

// Why a file was not imported, for the text and the JSON alike.
std::string Reason(const FileImport& file) {
    switch (file.status) {
    case FileImport::Status::Imported: break;
    case FileImport::Status::Missing: return "no such file";
    case FileImport::Status::NotAFile: return "a directory, not a file";
    case FileImport::Status::NoFormat: return "no format accepts this file";
    case FileImport::Status::GoFailed: return "\"KV Go\" answered " + ResultText(file.go->result);
    case FileImport::Status::NothingReceived:
        return "\"KV Go\" answered 0 but the document received nothing" + (file.why.empty() ? "" : " (" + file.why + ")");
    }
    return "";
}

void WriteGo(std::ostream& out, const FileImport& file) {
    WriteQuoted(out << "  KV Go ", file.go->format);
    out << (file.placed ? ", placed into document " : ", open as document ") << file.document + 1 << ' ';
    WriteQuoted(out, file.documentName);
    out << " -> " << ResultText(file.go->result) << '\n';
}

void WriteReceived(std::ostream& out, const Received& received) {
    out << "  received: ";
    WriteCount(out, received.groups, "group");
    WriteCount(out << ", ", received.swatches, "swatch");
    WriteCount(out << ", ", received.customColorsMade, "custom colour");
    out << " made, " << received.customColorsRedefined << " redefined\n";
}

// The file a document was opened as; empty for a document files were placed into.
std::string SourceOf(const ImportReport& report, std::size_t document) {
    for (const FileImport& file : report.files) {
        if (file.go && !file.placed && file.document == document) return file.file.string();
    }
    return "";
}

void WriteTotals(std::ostream& out, const ImportReport& report) {
    const std::size_t failed = report.FailedFiles();
    WriteCount(out, report.files.size(), "file");
    out << ": " << report.files.size() - failed << " imported, " << failed << " not imported; ";
    WriteCount(out, report.documents.size(), "document");
    if (report.documents.empty()) {
        out << '\n';
        return;
    }
    DocumentCounts total;
    for (const json& document : report.documents) {
        const DocumentCounts counts = CountsOf(document);
        total.groups += counts.groups;
        total.swatches += counts.swatches;
        total.customColors += counts.customColors;
    }
    WriteCounts(out << ": ", total);
    out << '\n';
}

}  // namespace

void WriteFileImport(std::ostream& out, const FileImport& file) {
    out << "file: " << file.file.string() << '\n';
    for (const FormatMessage& check : file.checks) {
        WriteQuoted(out << "  KV Check ", check.format);
        out << " -> " << ResultText(check.result) << '\n';
    }
    if (file.go) WriteGo(out, file);
    WriteEvents(out, file.events);
    if (file.go) WriteReceived(out, file.received);
    if (file.Failed()) out << "  not imported: " << Reason(file) << '\n';
}

json FileImportJson(const FileImport& file) {
    json checks = json::array();
    for (const FormatMessage& check : file.checks) {
        json entry = ResultJson(check.result);
        entry["format"] = check.format;
        checks.push_back(std::move(entry));
    }
    json go = nullptr;
    json received = nullptr;
    if (file.go) {
        go = ResultJson(file.go->result);
        go["format"] = file.go->format;
        go["placed"] = file.placed;
        go["document"] = file.documentName;
        go["documentIndex"] = file.document;
        received = {{"groups", file.received.groups},
                    {"swatches", file.received.swatches},
                    {"customColorsMade", file.received.customColorsMade},
                    {"customColorsRedefined", file.received.customColorsRedefined}};
    }
    return {{"file", file.file.string()},
            {"found", file.status != FileImport::Status::Missing},
            {"status", StatusName(file.status)},
            {"reason", file.Failed() ? json(Reason(file)) : json(nullptr)},
            {"checks", std::move(checks)},
            {"go", std::move(go)},
            {"received", std::move(received)},
            {"events", ToJson(file.events)},
            {"failed", file.Failed()}};
}

const char* StatusName(FileImport::Status status) {
    switch (status) {
    case FileImport::Status::Imported: return "imported";
    case FileImport::Status::Missing: return "missing";
    case FileImport::Status::NotAFile: return "not-a-file";
    case FileImport::Status::NoFormat: return "no-format";
    case FileImport::Status::GoFailed: return "go-failed";
    case FileImport::Status::NothingReceived: return "nothing-received";
    }
    return "?";
}

std::size_t ImportReport::FailedFiles() const {
    return std::size_t(std::count_if(files.begin(), files.end(), [](const FileImport& f) { return f.Failed(); }));
}

void WriteImportText(std::ostream& out, const ImportReport& report, ChipDepth chips) {
    out << "module: " << report.module.string() << '\n';
    if (!report.refusal.empty()) {
        out << "refused: " << report.refusal << '\n';
        return;
    }
    out << "  ZP Interface / Startup -> " << ResultText(report.startup) << '\n';
    WriteEvents(out, report.startupEvents);
    if (report.startup != 0) {
        out << "start-up failed: no file was offered\n";
        return;
    }
    for (const FileImport& file : report.files) WriteFileImport(out, file);
    if (report.shutdown) {
        out << "shut-down:\n  ZP Interface / Shutdown -> " << ResultText(*report.shutdown) << '\n';
        WriteEvents(out, report.shutdownEvents);
    }
    for (std::size_t i = 0; i < report.documents.size(); ++i)
        WriteDocument(out, report.documents[i], i + 1, SourceOf(report, i), chips);
    for (std::size_t i = 0; i < report.libraryDocuments.size(); ++i) {
        out << "library ";
        WriteDocument(out, report.libraryDocuments[i], i + 1, "", chips);
    }
    WriteTotals(out, report);
}

json ImportJson(const ImportReport& report) {
    json out = {{"module", report.module.string()}};
    if (!report.refusal.empty()) {
        out["error"] = report.refusal;
        return out;
    }
    out["startup"] = ResultJson(report.startup);
    out["startup"]["events"] = ToJson(report.startupEvents);
    out["files"] = json::array();
    for (const FileImport& file : report.files) out["files"].push_back(FileImportJson(file));
    out["shutdown"] = nullptr;
    if (report.shutdown) {
        out["shutdown"] = ResultJson(*report.shutdown);
        out["shutdown"]["events"] = ToJson(report.shutdownEvents);
    }
    out["documents"] = report.documents;
    out["libraryDocuments"] = report.libraryDocuments;
    out["failedFiles"] = report.FailedFiles();
    out["importedFiles"] = report.files.size() - report.FailedFiles();
    return out;
}

}  // namespace kelvra::cli
