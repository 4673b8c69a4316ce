// What kelvra-host import saw, and its two printed forms.
#pragma once

#include <kelvra/EventLog.h>

#include <ZPTypes.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelvra::cli {

struct FormatMessage {
    std::string format;  // the registered format's name
    ZPErr result = 0;
};

struct FileImport {
    std::filesystem::path file;
    bool missing = false;
    std::vector<FormatMessage> checks;  // "KV Check" to every registered format
    std::optional<FormatMessage> go;    // "KV Go" to the first that accepted
    bool placed = false;                // placed into a document rather than opened as one
    std::string document;               // the document Go read into
    std::vector<Event> events;          // seen while the file was handled

    bool Failed() const { return missing || !go || go->result != 0; }
};

struct ImportReport {
    std::filesystem::path module;
    std::string refusal;  // why the module file was refused; empty when loaded
    ZPErr startup = 0;
    std::vector<Event> startupEvents;
    std::vector<FileImport> files;
    std::optional<ZPErr> shutdown;  // none when start-up failed
    std::vector<Event> shutdownEvents;
    nlohmann::json documents = nlohmann::json::array();  // DocumentJson.h, in the order opened

    std::size_t FailedFiles() const;
    bool Succeeded() const { return refusal.empty() && startup == 0 && FailedFiles() == 0; }
};

std::string ImportText(const ImportReport& report, bool chips);
// One file's part of both forms: its checks, its Go and its events.
std::string FileImportText(const FileImport& file);
nlohmann::json FileImportJson(const FileImport& file);
nlohmann::json ImportJson(const ImportReport& report);

}  // namespace kelvra::cli
