// What kelvra-host lookup saw, and its two printed forms.
//
//   file: harbour.ocb
//     IsColorBookFile -> yes
//     NewReferenceBook -> 0
//     ReadColorBook -> 0
//     GetReferenceBookID -> 0: book id 3000
//     #00669E "HB Harbour Blue": cmyk 100% 50% 0% 20%, spot
//             "Harbour Blue" -> NAM?
//     DisposeReferenceBook -> 0
//   ...
//   2 names: 1 found, 1 not found
#pragma once

#include "ClientRun.h"
#include "TerminalColor.h"

#include <kelvra/EventLog.h>
#include <kelvra/TintoraClient.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kelvra::cli {

struct NameLookup {
    std::string name;
    TintoraAnswer<ReferenceColour> answer;
};

struct LookupReport {
    ClientRun run;
    std::filesystem::path file;
    std::size_t namesAsked = 0;
    bool missing = false;  // no such file: nothing was called
    std::optional<TintoraAnswer<bool>> colorBook;  // IsColorBookFile
    std::optional<TintoraCall> newBook;
    std::string reader;  // "ReadColorBook" or "ReadLegacyColorBook"
    std::optional<TintoraCall> read;
    std::optional<TintoraAnswer<std::int32_t>> bookId;
    std::vector<NameLookup> names;  // looked up only when the book was read
    std::optional<TintoraCall> dispose;
    std::vector<Event> events;  // shown while the file was read and looked up

    bool BookRead() const { return read && read->Succeeded(); }
    std::size_t Found() const;
    bool Succeeded() const;
};

void WriteLookupText(std::ostream& out, const LookupReport& report, ChipDepth chips);
nlohmann::json LookupJson(const LookupReport& report);

}  // namespace kelvra::cli
