#include "LibrariesCommand.h"

#include <kelvra/Host.h>
#include <kelvra/ResultText.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>

namespace kelvra::cli {

namespace {

using nlohmann::json;

struct FolderLine {
    std::int32_t type = 0;
    std::filesystem::path directory;
    bool exists = false;
};

// One remembered file as the preferences hold it: the read's result code,
// and the path when it is 0.
struct ListEntry {
    std::string key;
    ZPErr result = 0;
    std::string path;
    bool exists = false;
};

struct LibrariesReport {
    HostSetup setup;
    std::vector<RememberedLibrary> remembered;
    std::string error;  // why a file could not be remembered (the later ones were not tried)
    std::vector<FolderLine> folders;
    std::string countKey;
    ZPErr countResult = 0;  // "NAM?" (no list) counts as 0 remembered files
    std::int32_t count = 0;
    std::vector<ListEntry> entries;

    bool Succeeded() const {
        const bool countRead = countResult == kZPNoErr || countResult == kZPNameNotFoundErr;
        const bool entriesRead =
            std::all_of(entries.begin(), entries.end(), [](const ListEntry& e) { return e.result == kZPNoErr; });
        return error.empty() && countRead && entriesRead;
    }
};

bool Exists(const std::filesystem::path& path) {
    std::error_code error;
    return !path.empty() && std::filesystem::exists(path, error);
}

void RememberAll(Host& host, const LibrariesOptions& options, LibrariesReport& report) {
    for (const std::filesystem::path& file : options.remember) {
        try {
            report.remembered.push_back(host.Preferences().RememberLibrary(file));
        } catch (const HostError& error) {
            report.error = error.what();
            return;
        }
    }
}

void ReadList(const HostPreferences& preferences, LibrariesReport& report) {
    report.countKey = std::string(kLibraryListPrefix) + kCountSuffix;
    report.countResult = preferences.GetInteger(report.countKey, report.count);
    if (report.countResult != kZPNoErr) return;
    for (std::int32_t i = 0; i < report.count; ++i) {
        ListEntry entry;
        entry.key = kLibraryListPrefix + std::to_string(i);
        entry.result = preferences.GetString(entry.key, entry.path);
        entry.exists = entry.result == kZPNoErr && Exists(entry.path);
        report.entries.push_back(std::move(entry));
    }
}

void PrintText(const LibrariesReport& r) {
    std::cout << "home: " << r.setup.home.string() << "\n";
    std::cout << "preferences: " << r.setup.preferences.string() << "\n";
    for (const RememberedLibrary& remembered : r.remembered)
        std::cout << "remembered " << remembered.path << " as " << remembered.key << "\n";
    if (!r.error.empty()) std::cout << "not remembered: " << r.error << "\n";
    std::cout << "folders:\n";
    if (r.folders.empty()) std::cout << "  (none)\n";
    for (const FolderLine& folder : r.folders)
        std::cout << "  " << folder.type << ": " << folder.directory.string() << (folder.exists ? "" : " (missing)")
                  << "\n";
    std::cout << "remembered libraries:";
    if (r.countResult == kZPNameNotFoundErr || (r.countResult == kZPNoErr && r.count <= 0)) {
        std::cout << " (none)\n";
        return;
    }
    if (r.countResult != kZPNoErr) {
        std::cout << " " << r.countKey << " -> " << ResultText(r.countResult) << "\n";
        return;
    }
    std::cout << " " << r.count << "\n";
    for (const ListEntry& entry : r.entries) {
        std::cout << "  " << entry.key << ": ";
        if (entry.result != kZPNoErr) std::cout << "-> " << ResultText(entry.result) << "\n";
        else std::cout << entry.path << (entry.exists ? "" : " (missing)") << "\n";
    }
}

json ToJson(const LibrariesReport& r) {
    json out = {{"home", r.setup.home.string()}, {"preferences", r.setup.preferences.string()}};
    out["remembered"] = json::array();
    for (const RememberedLibrary& remembered : r.remembered)
        out["remembered"].push_back({{"path", remembered.path}, {"key", remembered.key}});
    out["error"] = r.error.empty() ? json(nullptr) : json(r.error);
    out["folders"] = json::array();
    for (const FolderLine& folder : r.folders)
        out["folders"].push_back(
            {{"type", folder.type}, {"directory", folder.directory.string()}, {"exists", folder.exists}});
    json list = {{"countKey", r.countKey},
                 {"result", r.countResult},
                 {"resultText", ResultText(r.countResult)},
                 {"count", r.countResult == kZPNoErr ? json(r.count) : json(nullptr)}};
    list["entries"] = json::array();
    for (const ListEntry& entry : r.entries) {
        list["entries"].push_back({{"key", entry.key},
                                   {"result", entry.result},
                                   {"resultText", ResultText(entry.result)},
                                   {"path", entry.result == kZPNoErr ? json(entry.path) : json(nullptr)},
                                   {"exists", entry.exists}});
    }
    out["libraries"] = std::move(list);
    out["succeeded"] = r.Succeeded();
    return out;
}

}  // namespace

int Libraries(const LibrariesOptions& options) {
    Host host;
    LibrariesReport report;
    report.setup = Resolved(options.setup);
    ApplyHostSetup(report.setup, host);
    RememberAll(host, options, report);
    for (const auto& [type, directory] : host.Folders().All()) report.folders.push_back({type, directory, Exists(directory)});
    ReadList(host.Preferences(), report);
    if (options.json) std::cout << ToJson(report).dump(2) << "\n";
    else PrintText(report);
    return report.Succeeded() ? 0 : 1;
}

}  // namespace kelvra::cli
