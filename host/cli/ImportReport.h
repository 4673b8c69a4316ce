// What kelvra-host import saw, and its two printed forms.
#pragma once

#include "TerminalColor.h"

#include <kelvra/Document.h>
#include <kelvra/EventLog.h>
#include <kelvra/FormatOpening.h>

#include <ZPTypes.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kelvra::cli {

// What a document received from one file's "KV Go".
struct Received {
    std::size_t groups = 0;
    std::size_t swatches = 0;
    std::size_t customColorsMade = 0;
    std::size_t customColorsRedefined = 0;

    bool Nothing() const { return groups + swatches + customColorsMade + customColorsRedefined == 0; }
};

struct FileImport {
    enum class Status {
        Imported,
        Missing,           // not offered: no such file
        NotAFile,          // not offered: a directory
        NoFormat,          // no format accepted it
        GoFailed,          // "KV Go" answered an error
        NothingReceived,   // "KV Go" answered 0 and the document received nothing
    };
    std::filesystem::path file;
    Status status = Status::Imported;
    std::string why;                    // NothingReceived: what the host sees wrong with the file, if anything
    std::vector<FormatMessage> checks;  // "KV Check" to every registered format
    std::optional<FormatMessage> go;    // "KV Go" to the first that accepted
    bool placed = false;                // placed into a document rather than opened as one
    std::size_t document = 0;           // the document Go read into: its index among the report's documents
    std::string documentName;
    Received received;
    std::vector<Event> events;          // seen while the file was handled

    bool Failed() const { return status != Status::Imported; }
};

// "imported", "missing", "not-a-file", "no-format", "go-failed", "nothing-received".
const char* StatusName(FileImport::Status status);

struct ImportReport {
    std::filesystem::path module;
    std::string refusal;  // why the module file was refused; empty when loaded
    ZPErr startup = 0;
    std::vector<Event> startupEvents;
    std::vector<FileImport> files;
    std::optional<ZPErr> shutdown;  // none when start-up failed
    std::vector<Event> shutdownEvents;
    nlohmann::json documents = nlohmann::json::array();  // the user's (DocumentJson.h), in the order opened
    // The hidden documents of the library files the module had the host open.
    nlohmann::json libraryDocuments = nlohmann::json::array();
    // The same as the host holds them, read in place by the printed forms
    // instead of the JSON ones above when the command fills these; the host
    // must outlive the report.
    std::vector<const Document*> hostDocuments;
    std::vector<const Document*> hostLibraryDocuments;

    std::size_t FailedFiles() const;
    bool Succeeded() const { return refusal.empty() && startup == 0 && FailedFiles() == 0; }
};

void WriteImportText(std::ostream& out, const ImportReport& report, ChipDepth chips);
// One file's part of both forms: its checks, its Go, its events, what the
// document received and why it was not imported.
void WriteFileImport(std::ostream& out, const FileImport& file);
nlohmann::json FileImportJson(const FileImport& file);
nlohmann::json ImportJson(const ImportReport& report);
// ImportJson(report).dump(2) and a line break, written as it goes, with the
// host's documents when the report has them.
void WriteImportJson(std::ostream& out, const ImportReport& report);

}  // namespace kelvra::cli
