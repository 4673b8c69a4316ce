#include "RunCommand.h"

#include "EventText.h"

#include <CommandLine.h>
#include <kelvra/EventJson.h>
#include <kelvra/Host.h>
#include <kelvra/ResultText.h>

#include <cstdio>
#include <iostream>

namespace kelvra::cli {

namespace {

// What the run saw; registrations are taken while the module is started,
// since a shut-down withdraws them.
struct RunReport {
    std::filesystem::path module;
    std::string error;  // the refusal; empty when loaded
    PropertyList properties;
    std::string name;
    std::vector<MessageRecord> messages;
    std::vector<NotifierRecord> notifiers;
    std::vector<FileFormatRecord> fileFormats;
    std::vector<SuiteCount> suites;
    std::vector<Event> events;
    BlockCounts blocks;
    ObjectCounts objects;
};

ZPErr RunLifecycle(Host& host, Module& module, RunReport& report) {
    const ZPErr startup = module.Startup();
    report.notifiers = host.Notifiers();
    report.fileFormats = host.FileFormats();
    if (startup != kZPNoErr) return startup;
    module.Purge();
    if (module.HasSaveUserDataNotifier()) module.SaveUserData();
    module.Unload();
    module.Reload();
    module.Shutdown();
    return startup;
}

std::string TypeText(std::uint32_t type) { return ResultText(type); }

std::string Hex(std::int32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", unsigned(value));
    return text;
}

void PrintText(const RunReport& r) {
    std::cout << "module: " << r.module.string() << "\n";
    if (!r.error.empty()) {
        std::cout << "refused: " << r.error << "\n";
        return;
    }
    std::cout << "plug-in: " << r.properties.pluginName << " (entry " << r.properties.entryName << "), shown as \""
              << r.name << "\"\n";
    std::cout << "messages:\n";
    for (const MessageRecord& m : r.messages)
        std::cout << "  " << m.caller << " / " << m.selector << " -> " << ResultText(m.result) << "\n";
    std::cout << "notifiers:\n";
    if (r.notifiers.empty()) std::cout << "  (none)\n";
    for (const NotifierRecord& n : r.notifiers) std::cout << "  " << n.name << " [" << n.type << "]\n";
    std::cout << "file formats:\n";
    if (r.fileFormats.empty()) std::cout << "  (none)\n";
    for (const FileFormatRecord& f : r.fileFormats)
        std::cout << "  " << f.name << ": \"" << f.title << "\", extension \"" << f.extension << "\", type "
                  << TypeText(f.type) << ", options " << Hex(f.options) << "\n";
    std::cout << "suites (acquired / released):\n";
    for (const SuiteCount& s : r.suites) {
        std::cout << "  " << s.name << " " << s.version << ": " << s.acquired << " / " << s.released;
        if (s.extraReleases != 0) std::cout << " (" << s.extraReleases << " releases refused)";
        std::cout << "\n";
    }
    std::cout << "events:\n";
    if (r.events.empty()) std::cout << "  (none)\n";
    for (const Event& e : r.events) WriteEvent(std::cout, e, "  ");
    std::cout << "live at the end: " << r.blocks.basic << " ZPBasic blocks, " << r.blocks.blocks
              << " ZP Blocks blocks, " << r.blocks.badFrees << " bad frees, " << r.objects.strings << " strings, "
              << r.objects.filePaths << " file paths, " << r.objects.dataFilters << " data filters\n";
}

nlohmann::json ToJson(const RunReport& r) {
    nlohmann::json json = {{"module", r.module.string()}};
    if (!r.error.empty()) {
        json["error"] = r.error;
        return json;
    }
    json["pluginName"] = r.properties.pluginName;
    json["entryName"] = r.properties.entryName;
    json["name"] = r.name;
    json["messages"] = nlohmann::json::array();
    for (const MessageRecord& m : r.messages)
        json["messages"].push_back({{"caller", m.caller}, {"selector", m.selector}, {"result", m.result},
                                    {"resultText", ResultText(m.result)}});
    json["notifiers"] = nlohmann::json::array();
    for (const NotifierRecord& n : r.notifiers) json["notifiers"].push_back({{"name", n.name}, {"type", n.type}});
    json["fileFormats"] = nlohmann::json::array();
    for (const FileFormatRecord& f : r.fileFormats)
        json["fileFormats"].push_back({{"name", f.name}, {"title", f.title}, {"extension", f.extension},
                                       {"type", TypeText(f.type)}, {"titleOrder", f.titleOrder},
                                       {"options", f.options}});
    json["suites"] = nlohmann::json::array();
    for (const SuiteCount& s : r.suites)
        json["suites"].push_back({{"name", s.name}, {"version", s.version}, {"acquired", s.acquired},
                                  {"released", s.released}, {"refusedReleases", s.extraReleases}});
    json["events"] = kelvra::ToJson(r.events);
    json["live"] = {{"zpBasicBlocks", r.blocks.basic},     {"zpBlocks", r.blocks.blocks},
                    {"zpBlockNames", r.blocks.blockNames}, {"badFrees", r.blocks.badFrees},
                    {"strings", r.objects.strings},        {"filePaths", r.objects.filePaths},
                    {"dataFilters", r.objects.dataFilters}};
    return json;
}

}  // namespace

int Run(const RunOptions& options) {
    Host host;
    ApplyHostSetup(Resolved(options.setup), host);
    RunReport report;
    report.module = options.module;
    ZPErr startup = kZPCantHappenErr;
    try {
        Module& module = host.Load(options.module);
        report.properties = module.File().properties;
        startup = RunLifecycle(host, module, report);
        report.name = module.Name();
    } catch (const HostError& error) {
        report.error = error.what();
    }
    report.messages = host.Messages();
    report.suites = host.SuiteCounts();
    report.events = host.Events().All();
    report.blocks = host.LiveBlocks();
    report.objects = host.LiveObjects();
    if (options.json) std::cout << ToJson(report).dump(2) << "\n";
    else PrintText(report);
    return report.error.empty() && startup == kZPNoErr ? commandline::kSucceeded : commandline::kFailed;
}

}  // namespace kelvra::cli
