#include "ImportReport.h"

#include "DocumentText.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

std::string Quoted(const std::string& text) { return json(text).dump(); }

void AddEvents(std::string& text, const std::vector<Event>& events) {
    for (const Event& event : events) text += "  " + ReadableLine(event) + "\n";
}

std::string GoText(const FileImport& file) {
    return "  KV Go " + Quoted(file.go->format) + (file.placed ? ", placed into document " : ", open as document ") +
           Quoted(file.document) + " -> " + ResultText(file.go->result) + "\n";
}

}  // namespace

std::string FileImportText(const FileImport& file) {
    std::string text = "file: " + file.file.string() + "\n";
    if (file.missing) return text + "  no such file\n";
    for (const FormatMessage& check : file.checks)
        text += "  KV Check " + Quoted(check.format) + " -> " + ResultText(check.result) + "\n";
    if (file.go) text += GoText(file);
    AddEvents(text, file.events);
    if (!file.go) text += "  no format accepts this file\n";
    return text;
}

namespace {

std::string Plural(std::size_t count, const char* word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

json Result(ZPErr result) { return {{"result", result}, {"resultText", ResultText(result)}}; }

}  // namespace

json FileImportJson(const FileImport& file) {
    json checks = json::array();
    for (const FormatMessage& check : file.checks) {
        json entry = Result(check.result);
        entry["format"] = check.format;
        checks.push_back(std::move(entry));
    }
    json go = nullptr;
    if (file.go) {
        go = Result(file.go->result);
        go["format"] = file.go->format;
        go["placed"] = file.placed;
        go["document"] = file.document;
    }
    return {{"file", file.file.string()}, {"found", !file.missing}, {"checks", std::move(checks)},
            {"go", std::move(go)},        {"events", ToJson(file.events)}, {"failed", file.Failed()}};
}

std::size_t ImportReport::FailedFiles() const {
    return std::size_t(std::count_if(files.begin(), files.end(), [](const FileImport& f) { return f.Failed(); }));
}

std::string ImportText(const ImportReport& report, bool chips) {
    std::string text = "module: " + report.module.string() + "\n";
    if (!report.refusal.empty()) return text + "refused: " + report.refusal + "\n";
    text += "  ZP Interface / Startup -> " + ResultText(report.startup) + "\n";
    AddEvents(text, report.startupEvents);
    if (report.startup != 0) return text + "start-up failed: no file was offered\n";
    for (const FileImport& file : report.files) text += FileImportText(file);
    if (report.shutdown) {
        text += "shut-down:\n  ZP Interface / Shutdown -> " + ResultText(*report.shutdown) + "\n";
        AddEvents(text, report.shutdownEvents);
    }
    for (const json& document : report.documents) text += DocumentText(document, chips);
    const std::size_t failed = report.FailedFiles();
    return text + Plural(report.files.size(), "file") + ": " + std::to_string(report.files.size() - failed) +
           " imported, " + std::to_string(failed) + " failed\n";
}

json ImportJson(const ImportReport& report) {
    json out = {{"module", report.module.string()}};
    if (!report.refusal.empty()) {
        out["error"] = report.refusal;
        return out;
    }
    out["startup"] = Result(report.startup);
    out["startup"]["events"] = ToJson(report.startupEvents);
    out["files"] = json::array();
    for (const FileImport& file : report.files) out["files"].push_back(FileImportJson(file));
    out["shutdown"] = nullptr;
    if (report.shutdown) {
        out["shutdown"] = Result(*report.shutdown);
        out["shutdown"]["events"] = ToJson(report.shutdownEvents);
    }
    out["documents"] = report.documents;
    out["failedFiles"] = report.FailedFiles();
    return out;
}

}  // namespace kelvra::cli
