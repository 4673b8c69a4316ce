#include "ValidationChecks.h"

#include <kelvra/ElfFile.h>
#include <kelvra/Host.h>
#include <kelvra/ResultText.h>

#include <KVFrameworkSuites.h>

#include <algorithm>
#include <cctype>

namespace kelvra::cli {

Verdict Pass(std::string detail) { return {true, std::move(detail)}; }
Verdict Fail(std::string detail) { return {false, std::move(detail)}; }

std::string Answered(const char* message, ZPErr result) {
    return std::string(message) + " answered " + ResultText(result);
}

std::string Join(const std::vector<std::string>& items) {
    std::string joined;
    for (const std::string& item : items) joined += (joined.empty() ? "" : ", ") + item;
    return joined;
}

namespace {

constexpr int kCycles = 1000;

// A purge answers 0, or that it flushed caches.
bool IsPurgeAnswer(ZPErr result) { return result == kZPNoErr || result == kZPCachesFlushedResponse; }

// Start-up, purge, save notification (when registered), unload, reload and
// shut-down; what went wrong, or empty.
std::string FullCycle(Module& module) {
    if (ZPErr r = module.Startup()) return Answered("start-up", r);
    if (ZPErr r = module.Purge(); !IsPurgeAnswer(r)) return Answered("purge", r);
    if (module.HasSaveUserDataNotifier()) {
        if (ZPErr r = module.SaveUserData()) return Answered("save notification", r);
    }
    if (ZPErr r = module.Unload()) return Answered("unload", r);
    if (ZPErr r = module.Reload()) return Answered("reload", r);
    if (ZPErr r = module.Shutdown()) return Answered("shut-down", r);
    return {};
}

// Suites still held, and suites released more often than acquired.
std::vector<std::string> HeldSuites(Host& host) {
    std::vector<std::string> held;
    for (const SuiteCount& suite : host.SuiteCounts()) {
        const std::string name = suite.name + " " + std::to_string(suite.version);
        if (suite.Held() != 0) held.push_back(name + " (" + std::to_string(suite.Held()) + " held)");
        if (suite.extraReleases != 0)
            held.push_back(name + " (released " + std::to_string(suite.extraReleases) + " more than acquired)");
    }
    return held;
}

// Blocks and host objects still live, and frees of things that were not.
std::vector<std::string> LiveThings(Host& host) {
    const BlockCounts blocks = host.LiveBlocks();
    const ObjectCounts objects = host.LiveObjects();
    const std::pair<const char*, std::size_t> counts[] = {
        {"ZPBasic blocks", blocks.basic},      {"ZP Blocks blocks", blocks.blocks},
        {"strings", objects.strings},          {"file paths", objects.filePaths},
        {"data filters", objects.dataFilters}, {"access handles", objects.accesses},
        {"app contexts", objects.appContexts}, {"bad frees", std::size_t(blocks.badFrees)},
    };
    std::vector<std::string> live;
    for (const auto& [what, count] : counts) {
        if (count != 0) live.push_back(std::to_string(count) + " " + what);
    }
    return live;
}

// Everything a module must have given back when it is not started.
std::vector<std::string> Holdings(Host& host) {
    std::vector<std::string> held = HeldSuites(host);
    for (std::string& live : LiveThings(host)) held.push_back(std::move(live));
    return held;
}

Verdict CheckPropertyList(const std::filesystem::path& path) {
    const ModuleFile file = ModuleFile::Read(path);
    return Pass(file.properties.pluginName + ", entry \"" + file.properties.entryName + "\"");
}

Verdict CheckOnlyMainExported(const std::filesystem::path& path) {
    std::vector<std::string> others;
    bool main = false;
    const ElfFile file = ElfFile::Read(path);
    for (const std::string& symbol : file.DefinedDynamicSymbols()) {
        if (symbol == "main") main = true;
        else others.push_back(symbol);
    }
    if (!main) return Fail("does not export main");
    if (!others.empty()) return Fail("also exports " + Join(others));
    return Pass("exports main only");
}

Verdict CheckStartupShutdown(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Startup()) return Fail(Answered("start-up", r));
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    return Pass();
}

Verdict CheckShutdownBeforeStartup(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    if (!host.Events().All().empty()) return Fail("showed: " + ReadableLine(host.Events().All().front()));
    return Pass();
}

Verdict CheckUnknownMessages(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    // Large enough for any record a module might read.
    union {
        KVNotifierMessage notifier;
        KVFileFormatMessage fileFormat;
    } record{};
    if (ZPErr r = module.Send("Unknown Caller", "Unknown Selector", record.fileFormat.d))
        return Fail(Answered("before start-up, an unknown caller", r));
    if (ZPErr r = module.Startup()) return Fail(Answered("start-up", r));
    const char* callers[] = {"Unknown Caller", kZPInterfaceCaller, kZPAccessCaller, kZPCacheCaller,
                             kKVNotifierCaller, kKVFileFormatCaller};
    for (const char* caller : callers) {
        record = {};
        if (ZPErr r = module.Send(caller, "Unknown Selector", record.fileFormat.d))
            return Fail(Answered((std::string(caller) + " / Unknown Selector").c_str(), r));
    }
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    if (!host.Events().All().empty()) return Fail("showed: " + ReadableLine(host.Events().All().front()));
    return Pass();
}

Verdict CheckUnloadReload(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Startup()) return Fail(Answered("start-up", r));
    if (ZPErr r = module.Unload()) return Fail(Answered("unload", r));
    if (module.IsMapped()) return Fail("the module's code stayed mapped after unload");
    if (ZPErr r = module.Reload()) return Fail(Answered("reload", r));
    if (ZPErr r = module.Purge(); !IsPurgeAnswer(r)) return Fail(Answered("purge after reload", r));
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    return Pass();
}

Verdict CheckPurge(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Startup()) return Fail(Answered("start-up", r));
    const ZPErr purge = module.Purge();
    if (!IsPurgeAnswer(purge)) return Fail(Answered("purge", purge));
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    return Pass("purge answered " + ResultText(purge));
}

Verdict CheckSaveNotification(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Startup()) return Fail(Answered("start-up", r));
    if (!module.HasSaveUserDataNotifier()) return Fail("registered no \"" kKVSaveUserDataNotifier "\"");
    if (ZPErr r = module.SaveUserData()) return Fail(Answered("the save notification", r));
    if (host.LiveObjects().appContexts != 0) return Fail("left an application context entered");
    if (ZPErr r = module.Shutdown()) return Fail(Answered("shut-down", r));
    return Pass();
}

Verdict CheckSuitesReleased(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (std::string failure = FullCycle(module); !failure.empty()) return Fail(failure);
    if (const auto held = HeldSuites(host); !held.empty()) return Fail("after shut-down: " + Join(held));
    return Pass(std::to_string(host.SuiteCounts().size()) + " suites, all released");
}

Verdict CheckNoLiveBlocks(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (std::string failure = FullCycle(module); !failure.empty()) return Fail(failure);
    if (const auto live = LiveThings(host); !live.empty()) return Fail("after shut-down: " + Join(live));
    return Pass();
}

Verdict CheckThousandCycles(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    for (int cycle = 1; cycle <= kCycles; ++cycle) {
        if (std::string failure = FullCycle(module); !failure.empty())
            return Fail("cycle " + std::to_string(cycle) + ": " + failure);
    }
    if (const auto held = Holdings(host); !held.empty()) return Fail("after the cycles: " + Join(held));
    return Pass(std::to_string(kCycles) + " cycles, balanced");
}

std::string Kebab(const std::string& text) {
    std::string id;
    for (char c : text) {
        if (std::isalnum(static_cast<unsigned char>(c))) id += char(std::tolower(static_cast<unsigned char>(c)));
        else if (!id.empty() && id.back() != '-') id += '-';
    }
    while (!id.empty() && id.back() == '-') id.pop_back();
    return id;
}

}  // namespace

Check PropertyListCheck() { return {"property-list-valid", CheckPropertyList}; }

std::vector<Check> FileChecks() { return {{"only-main-exported", CheckOnlyMainExported}}; }

std::vector<Check> BehaviourChecks() {
    return {
        {"startup-shutdown", CheckStartupShutdown},
        {"shutdown-before-startup", CheckShutdownBeforeStartup},
        {"unknown-messages", CheckUnknownMessages},
        {"unload-reload", CheckUnloadReload},
        {"purge", CheckPurge},
        {"save-notification", CheckSaveNotification},
        {"suites-released", CheckSuitesReleased},
        {"no-live-blocks", CheckNoLiveBlocks},
        {"thousand-cycles", CheckThousandCycles},
    };
}

std::vector<std::string> SuitesAcquiredAtStartup(const std::filesystem::path& path) {
    Host host;
    Module& module = host.Load(path);
    if (ZPErr r = module.Startup()) throw HostError(Answered("a normal start-up", r));
    std::vector<std::string> suites;
    for (const SuiteCount& suite : host.SuiteCounts()) {
        if (std::find(suites.begin(), suites.end(), suite.name) == suites.end()) suites.push_back(suite.name);
    }
    module.Shutdown();
    return suites;
}

Check StartupWithout(const std::string& suite) {
    return {"startup-without-" + Kebab(suite), [suite](const std::filesystem::path& path) {
                Host host;
                host.Faults().MakeSuiteUnavailable(suite);
                Module& module = host.Load(path);
                const ZPErr result = module.Startup();
                if (result == kZPNoErr) return Fail("start-up answered 0 without " + suite);
                if (const auto held = Holdings(host); !held.empty())
                    return Fail("start-up answered " + ResultText(result) + " but left " + Join(held));
                return Pass("start-up answered " + ResultText(result));
            }};
}

}  // namespace kelvra::cli
