#include "ImportReport.h"

#include "DocumentText.h"
#include "EventText.h"
#include "JsonOutput.h"
#include "ResultJson.h"
#include "ShownDocument.h"

#include <kelvra/DocumentJson.h>
#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <OutputBuffer.h>

#include <algorithm>
#include <memory>

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

using ShownDocuments = std::vector<std::unique_ptr<ShownDocument>>;

// The host's documents when there are any, else the JSON ones.
ShownDocuments Shown(const std::vector<const Document*>& host, const json& documents) {
    ShownDocuments shown;
    for (const Document* document : host) shown.push_back(std::make_unique<HostShownDocument>(*document));
    if (host.empty()) {
        for (const json& document : documents) shown.push_back(std::make_unique<JsonShownDocument>(document));
    }
    return shown;
}

void WriteTotals(std::ostream& out, const ImportReport& report, const ShownDocuments& documents) {
    const std::size_t failed = report.FailedFiles();
    WriteCount(out, report.files.size(), "file");
    out << ": " << report.files.size() - failed << " imported, " << failed << " not imported; ";
    WriteCount(out, documents.size(), "document");
    if (documents.empty()) {
        out << '\n';
        return;
    }
    DocumentCounts total;
    for (const auto& document : documents) {
        const DocumentCounts counts = CountsOf(*document);
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
    const ShownDocuments documents = Shown(report.hostDocuments, report.documents);
    for (std::size_t i = 0; i < documents.size(); ++i) WriteDocument(out, *documents[i], i + 1, SourceOf(report, i), chips);
    const ShownDocuments libraryDocuments = Shown(report.hostLibraryDocuments, report.libraryDocuments);
    for (std::size_t i = 0; i < libraryDocuments.size(); ++i) {
        out << "library ";
        WriteDocument(out, *libraryDocuments[i], i + 1, "", chips);
    }
    WriteTotals(out, report, documents);
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

void WriteImportJson(std::ostream& stream, const ImportReport& report) {
    commandline::OutputBuffer out(stream);
    PrettyJson json(out);
    const auto writeDocuments = [&json](const std::vector<const Document*>& documents) {
        json.BeginArray();
        for (const Document* document : documents) WriteJsonParts(*document, json);
        json.EndArray();
    };
    // Everything but the host's documents is small, and written from its
    // JSON value.
    const nlohmann::json small = ImportJson(report);
    json.BeginObject();
    for (const auto& [key, value] : small.items()) {
        json.Key(key);
        if (key == "documents" && !report.hostDocuments.empty()) writeDocuments(report.hostDocuments);
        else if (key == "libraryDocuments" && !report.hostLibraryDocuments.empty()) writeDocuments(report.hostLibraryDocuments);
        else json.Value(value);
    }
    json.EndObject();
    out << '\n';
}

}  // namespace kelvra::cli
