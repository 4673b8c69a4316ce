#include "LibrariesCommand.h"

#include "EventsSince.h"
#include "LibrariesReport.h"

#include <CommandLine.h>
#include <kelvra/DocumentJson.h>
#include <kelvra/Host.h>

#include <iostream>

namespace kelvra::cli {

namespace {

bool Exists(const std::filesystem::path& path) {
    std::error_code error;
    return !path.empty() && std::filesystem::exists(path, error);
}

void RememberAll(Host& host, const LibrariesOptions& options, HostLibraries& report) {
    for (const std::filesystem::path& file : options.remember) {
        try {
            report.remembered.push_back(host.Preferences().RememberLibrary(file));
        } catch (const HostError& error) {
            report.notRemembered = error.what();
            return;
        }
    }
}

void ReadRememberedList(const HostPreferences& preferences, HostLibraries& report) {
    report.countKey = std::string(kLibraryListPrefix) + kCountSuffix;
    report.countResult = preferences.GetInteger(report.countKey, report.count);
    if (report.countResult != kZPNoErr) return;
    for (std::int32_t i = 0; i < report.count; ++i) {
        RememberedEntry entry;
        entry.key = kLibraryListPrefix + std::to_string(i);
        entry.result = preferences.GetString(entry.key, entry.path);
        entry.exists = entry.result == kZPNoErr && Exists(entry.path);
        report.entries.push_back(std::move(entry));
    }
}

// The host's side, before the module starts: what it remembers is what the
// module reads at its first listing.
void PrepareHost(Host& host, const LibrariesOptions& options, HostLibraries& report) {
    report.setup = Resolved(options.setup);
    ApplyHostSetup(report.setup, host);
    RememberAll(host, options, report);
    for (const auto& [type, directory] : host.Folders().All()) report.folders.push_back({type, directory, Exists(directory)});
    ReadRememberedList(host.Preferences(), report);
}

// The library document a swatch list belongs to, as the user would see it.
void ShowDocument(ClientWork& work, KVSwatchListRef list, LibraryOpening& opening) {
    const Document* document = list != nullptr ? work.host.Documents().OwnerOf(list) : nullptr;
    if (document == nullptr) return;
    opening.document = ToJson(*document);
}

void OpenLibraries(ClientWork& work, const LibrariesOptions& options, LibrariesReport& report) {
    for (const std::int32_t index : options.open) {
        LibraryOpening opening;
        opening.index = index;
        const TintoraAnswer<KVSwatchListRef> answer = work.client.OpenLibrary(index);
        opening.call = answer.call;
        opening.events = EventsSince(work.host.Events(), work.eventsSeen);
        if (answer.call.Succeeded()) ShowDocument(work, answer.value, opening);
        report.openings.push_back(std::move(opening));
    }
    for (const std::filesystem::path& file : options.openFiles) {
        LibraryOpening opening;
        opening.file = file;
        const TintoraAnswer<KVSwatchListRef> answer = work.client.OpenLibraryFile(std::filesystem::absolute(file));
        opening.call = answer.call;
        opening.events = EventsSince(work.host.Events(), work.eventsSeen);
        if (answer.call.Succeeded()) ShowDocument(work, answer.value, opening);
        report.openings.push_back(std::move(opening));
    }
}

// The numbered list: 0 is the module's own library, which has no name;
// the libraries found on disk and remembered are 1 to the count less one.
void ReadList(ClientWork& work, LibrariesReport& report) {
    report.count = work.client.CountLibraries();
    if (report.count->call.Succeeded()) {
        report.ownOpen = work.client.IsLibraryOpen(0);
        for (std::int32_t index = 1; index < report.count->value; ++index)
            report.libraries.push_back({index, work.client.GetLibraryName(index), work.client.IsLibraryOpen(index)});
    }
    report.events = EventsSince(work.host.Events(), work.eventsSeen);
}

}  // namespace

int Libraries(const LibrariesOptions& options) {
    LibrariesReport report;
    report.run = RunAsClient(
        options.module, [&](Host& host) { PrepareHost(host, options, report.host); },
        [&](ClientWork& work) {
            OpenLibraries(work, options, report);
            ReadList(work, report);
        });
    if (options.json) std::cout << LibrariesJson(report).dump(2) << "\n";
    else WriteLibrariesText(std::cout, report, ChooseChipDepth(options.color, CurrentTerminal()));
    return report.Succeeded() ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace kelvra::cli
