// What kelvra-host libraries saw, and its two printed forms: the host's side
// (its folders and the library files it remembers) and the module's numbered
// list as another plug-in reads it through "KV Tintora Suite".
//
//   home: /home/me/.local/share/kelvra-host
//   preferences: /home/me/.local/share/kelvra-host/preferences.json
//   folders:
//     88: /home/me/.local/share/kelvra-host/user-88
//   remembered libraries: 1
//     KVSwatchLibPersistentPrefix0: /home/me/Brights.ose
//   module: build/dev/plugin/Tintora.so
//     ZP Interface / Startup -> 0
//   open library 2:
//     OpenLibrary -> 0
//   library document 1 "Harbour.ocb":
//     ... its swatches ...
//   libraries: CountLibraries -> 0: 3 (the own library and 2 more)
//     0  (the module's own library)
//     1  Brights
//     2  Harbour  (open)
//   shut-down:
//     ZP Interface / Shutdown -> 0
#pragma once

#include "ClientRun.h"
#include "HostSetup.h"
#include "TerminalColor.h"

#include <kelvra/HostPreferences.h>
#include <kelvra/TintoraClient.h>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kelvra::cli {

struct FolderLine {
    std::int32_t type = 0;
    std::filesystem::path directory;
    bool exists = false;
};

// One remembered file as the preferences hold it: the read's result code,
// and the path when it is 0.
struct RememberedEntry {
    std::string key;
    ZPErr result = 0;
    std::string path;
    bool exists = false;
};

// What the host keeps, read before the module starts.
struct HostLibraries {
    HostSetup setup;
    std::vector<RememberedLibrary> remembered;  // by --remember, in order
    std::string notRemembered;  // why a file could not be remembered (the later ones were not tried)
    std::vector<FolderLine> folders;
    std::string countKey;
    ZPErr countResult = 0;  // "NAM?" (no list) counts as 0 remembered files
    std::int32_t count = 0;
    std::vector<RememberedEntry> entries;

    bool Succeeded() const;
};

// One library opened by --open N or --open-file FILE.
struct LibraryOpening {
    std::optional<std::int32_t> index;    // OpenLibrary
    std::filesystem::path file;           // else OpenLibraryFile
    TintoraCall call;
    nlohmann::json document;              // the library's document (DocumentJson.h); null when none
    std::vector<Event> events;
};

struct ListedLibrary {
    std::int32_t index = 0;
    TintoraAnswer<std::string> name;
    TintoraAnswer<bool> open;
};

struct LibrariesReport {
    HostLibraries host;
    ClientRun run;
    std::vector<LibraryOpening> openings;
    std::optional<TintoraAnswer<std::int32_t>> count;  // CountLibraries: the own library and the list
    std::optional<TintoraAnswer<bool>> ownOpen;        // IsLibraryOpen(0)
    std::vector<ListedLibrary> libraries;              // 1 .. count - 1
    std::vector<Event> events;                         // shown while the list was read

    bool Succeeded() const;
};

void WriteLibrariesText(std::ostream& out, const LibrariesReport& report, ChipDepth chips);
nlohmann::json LibrariesJson(const LibrariesReport& report);

}  // namespace kelvra::cli
