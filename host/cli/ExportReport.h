// What kelvra-host export saw, and its two printed forms.
//
//   file: harbour.ocb                    (or: document file: doc.kv)
//     KV Check ... / KV Go ..., placed into document "Untitled" -> 0
//   document "Untitled":
//     ... its swatches ...
//   export: out.ose
//     ExportSwatches -> 0
//     UnlinkDataFilter -> 0
//   shut-down: ...
//   written: out.ose (212 bytes)
#pragma once

#include "ClientRun.h"
#include "ImportReport.h"
#include "TerminalColor.h"

#include <kelvra/TintoraClient.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kelvra::cli {

struct ExportReport {
    ClientRun run;
    std::filesystem::path output;
    std::optional<std::filesystem::path> documentFile;
    std::string documentError;  // why the document file could not be read
    std::vector<FileImport> files;  // placed into the document
    nlohmann::json document;        // what was exported (DocumentJson.h); null when nothing was
    bool outputExisted = false;     // before the command ran
    std::optional<FileExport> exported;
    std::vector<Event> exportEvents;
    std::optional<std::uintmax_t> bytesWritten;

    std::size_t FailedFiles() const;
    // The document was made or read: the export was tried.
    bool DocumentReady() const { return documentError.empty() && FailedFiles() == 0; }
    bool Written() const { return exported && exported->Written(); }
    bool Succeeded() const { return run.Succeeded() && DocumentReady() && Written(); }
};

void WriteExportText(std::ostream& out, const ExportReport& report, ChipDepth chips);
nlohmann::json ExportJson(const ExportReport& report);

}  // namespace kelvra::cli
