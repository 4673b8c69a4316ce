#include "LibrariesReport.h"

#include "DocumentText.h"
#include "EventText.h"
#include "ResultJson.h"

#include <kelvra/EventJson.h>
#include <kelvra/ResultText.h>

#include <algorithm>

namespace kelvra::cli {

namespace {

using nlohmann::json;

template <typename T>
bool AllSucceeded(const std::vector<T>& items, bool (*succeeded)(const T&)) {
    return std::all_of(items.begin(), items.end(), succeeded);
}

void WriteHostSide(std::ostream& out, const HostLibraries& host) {
    out << "home: " << host.setup.home.string() << "\n";
    out << "preferences: " << host.setup.preferences.string() << "\n";
    for (const RememberedLibrary& remembered : host.remembered)
        out << "remembered " << remembered.path << " as " << remembered.key << "\n";
    if (!host.notRemembered.empty()) out << "not remembered: " << host.notRemembered << "\n";
    out << "folders:\n";
    if (host.folders.empty()) out << "  (none)\n";
    for (const FolderLine& folder : host.folders)
        out << "  " << folder.type << ": " << folder.directory.string() << (folder.exists ? "" : " (missing)") << "\n";
    out << "remembered libraries:";
    if (host.countResult == kZPNameNotFoundErr || (host.countResult == kZPNoErr && host.count <= 0)) {
        out << " (none)\n";
        return;
    }
    if (host.countResult != kZPNoErr) {
        out << " " << host.countKey << " -> " << ResultText(host.countResult) << "\n";
        return;
    }
    out << " " << host.count << "\n";
    for (const RememberedEntry& entry : host.entries) {
        out << "  " << entry.key << ": ";
        if (entry.result != kZPNoErr) out << "-> " << ResultText(entry.result) << "\n";
        else out << entry.path << (entry.exists ? "" : " (missing)") << "\n";
    }
}

void WriteOpening(std::ostream& out, const LibraryOpening& opening, std::size_t number, ChipDepth chips) {
    if (opening.index) {
        out << "open library " << *opening.index << ":\n  OpenLibrary -> " << ReadableText(opening.call) << "\n";
    } else {
        out << "open library file " << opening.file.string() << ":\n  OpenLibraryFile -> "
            << ReadableText(opening.call) << "\n";
    }
    WriteEvents(out, opening.events);
    if (opening.document.is_null()) {
        if (opening.call.Succeeded()) out << "  (no document)\n";
        return;
    }
    out << "library ";
    WriteDocument(out, opening.document, number, "", chips);
}

void WriteList(std::ostream& out, const LibrariesReport& report) {
    const TintoraAnswer<std::int32_t>& count = *report.count;
    out << "libraries: CountLibraries -> " << ReadableText(count.call);
    if (!count.call.Succeeded()) {
        out << "\n";
        return;
    }
    const std::int32_t others = std::max(count.value - 1, 0);
    out << ": " << count.value << " (the own library and " << others << " more)\n";
    if (report.ownOpen) {
        out << "  0  (the module's own library)";
        if (!report.ownOpen->call.Succeeded()) out << "  IsLibraryOpen -> " << ReadableText(report.ownOpen->call);
        else if (report.ownOpen->value) out << "  (open)";
        out << "\n";
    }
    for (const ListedLibrary& library : report.libraries) {
        out << "  " << library.index << "  ";
        if (library.name.call.Succeeded()) out << library.name.value;
        else out << "GetLibraryName -> " << ReadableText(library.name.call);
        if (!library.open.call.Succeeded()) out << "  IsLibraryOpen -> " << ReadableText(library.open.call);
        else if (library.open.value) out << "  (open)";
        out << "\n";
    }
    WriteEvents(out, report.events);
}

json HostSideJson(const HostLibraries& host) {
    json out = {{"home", host.setup.home.string()}, {"preferences", host.setup.preferences.string()}};
    out["remembered"] = json::array();
    for (const RememberedLibrary& remembered : host.remembered)
        out["remembered"].push_back({{"path", remembered.path}, {"key", remembered.key}});
    out["notRemembered"] = host.notRemembered.empty() ? json(nullptr) : json(host.notRemembered);
    out["folders"] = json::array();
    for (const FolderLine& folder : host.folders)
        out["folders"].push_back(
            {{"type", folder.type}, {"directory", folder.directory.string()}, {"exists", folder.exists}});
    json list = ResultJson(host.countResult);
    list["countKey"] = host.countKey;
    list["count"] = host.countResult == kZPNoErr ? json(host.count) : json(nullptr);
    list["entries"] = json::array();
    for (const RememberedEntry& entry : host.entries) {
        json item = ResultJson(entry.result);
        item["key"] = entry.key;
        item["path"] = entry.result == kZPNoErr ? json(entry.path) : json(nullptr);
        item["exists"] = entry.exists;
        list["entries"].push_back(std::move(item));
    }
    out["rememberedList"] = std::move(list);
    return out;
}

json OpeningJson(const LibraryOpening& opening) {
    return {{"index", opening.index ? json(*opening.index) : json(nullptr)},
            {"file", opening.index ? json(nullptr) : json(opening.file.string())},
            {"function", opening.index ? "OpenLibrary" : "OpenLibraryFile"},
            {"call", CallJson(opening.call)},
            {"document", opening.document},
            {"events", ToJson(opening.events)}};
}

}  // namespace

bool HostLibraries::Succeeded() const {
    const bool countRead = countResult == kZPNoErr || countResult == kZPNameNotFoundErr;
    return notRemembered.empty() && countRead &&
           AllSucceeded<RememberedEntry>(entries, [](const RememberedEntry& e) { return e.result == kZPNoErr; });
}

bool LibrariesReport::Succeeded() const {
    const bool listed =
        count && count->call.Succeeded() && ownOpen && ownOpen->call.Succeeded() &&
        AllSucceeded<ListedLibrary>(libraries, [](const ListedLibrary& l) {
            return l.name.call.Succeeded() && l.open.call.Succeeded();
        });
    const bool opened =
        AllSucceeded<LibraryOpening>(openings, [](const LibraryOpening& o) { return o.call.Succeeded(); });
    return host.Succeeded() && run.Succeeded() && listed && opened;
}

void WriteLibrariesText(std::ostream& out, const LibrariesReport& report, ChipDepth chips) {
    WriteHostSide(out, report.host);
    WriteStart(out, report.run);
    if (report.run.Ready()) {
        for (std::size_t i = 0; i < report.openings.size(); ++i) WriteOpening(out, report.openings[i], i + 1, chips);
        if (report.count) WriteList(out, report);
    }
    WriteShutdown(out, report.run);
}

json LibrariesJson(const LibrariesReport& report) {
    json out = HostSideJson(report.host);
    out.update(ClientRunJson(report.run));
    out["opened"] = json::array();
    for (const LibraryOpening& opening : report.openings) out["opened"].push_back(OpeningJson(opening));
    out["countCall"] = report.count ? CallJson(report.count->call) : json(nullptr);
    out["count"] = report.count && report.count->call.Succeeded() ? json(report.count->value) : json(nullptr);
    out["ownLibraryOpen"] =
        report.ownOpen && report.ownOpen->call.Succeeded() ? json(report.ownOpen->value) : json(nullptr);
    out["libraries"] = json::array();
    for (const ListedLibrary& library : report.libraries) {
        out["libraries"].push_back(
            {{"index", library.index},
             {"name", library.name.call.Succeeded() ? json(library.name.value) : json(nullptr)},
             {"open", library.open.call.Succeeded() ? json(library.open.value) : json(nullptr)},
             {"nameCall", CallJson(library.name.call)},
             {"openCall", CallJson(library.open.call)}});
    }
    out["events"] = ToJson(report.events);
    out["succeeded"] = report.Succeeded();
    return out;
}

}  // namespace kelvra::cli
