#include "PluginEntry.h"

#include "EntryBasicSuite.h"
#include "ErrorReport.h"
#include "ExceptionToResult.h"
#include "MessageNames.h"
#include "Plugin.h"
#include "PluginHooks.h"
#include "SuiteNode.h"
#include "ZPMessages.h"

namespace kv {

namespace {

// Reports `result` when there is no plug-in object to do it: at a start-up
// that failed or after a shut-down. Nothing holds suites between messages
// then, so what the report acquired is given back.
ResultCode ReportWithoutObject(ZPPluginRef self, ResultCode result) noexcept {
    const EntryResult report = ExceptionToResultAtEntry([&] {
        ReportErrorToUser(self, result, nullptr);
        return kNoErr;
    });
    ReleaseAllSuites();
    return report.threw ? report.code : result;
}

// Destroys the object of a start-up that failed or a shut-down that threw,
// after it gave back what it may still hold.
ResultCode Discard(Plugin* plugin, bool abandon) noexcept {
    const EntryResult given = ExceptionToResultAtEntry([&] {
        if (abandon) plugin->Abandon();
        return kNoErr;
    });
    delete plugin;
    return given.code;
}

ResultCode Start(ZPMessageData& header, void* message) noexcept {
    Plugin* plugin = nullptr;
    const EntryResult made = ExceptionToResultAtEntry([&] {
        plugin = NewPlugin(header.self);
        return kNoErr;
    });
    if (made.threw) return made.code;
    if (plugin == nullptr) return ReportWithoutObject(header.self, kOutOfMemoryErr);

    header.globals = plugin;
    const EntryResult started =
        ExceptionToResultAtEntry([&] { return plugin->Startup(static_cast<ZPInterfaceMessage*>(message)); });
    if (started.code == kNoErr) return kNoErr;
    header.globals = nullptr;
    const ResultCode discarded = Discard(plugin, true);
    if (started.threw) return started.code;
    if (discarded != kNoErr) return discarded;
    return ReportWithoutObject(header.self, started.code);
}

ResultCode Stop(ZPMessageData& header, Plugin* plugin, void* message) noexcept {
    const EntryResult stopped =
        ExceptionToResultAtEntry([&] { return plugin->Shutdown(static_cast<ZPInterfaceMessage*>(message)); });
    header.globals = nullptr;
    const ResultCode discarded = Discard(plugin, stopped.threw);
    if (stopped.threw) return stopped.code;
    if (discarded != kNoErr) return discarded;
    return stopped.code == kNoErr ? kNoErr : ReportWithoutObject(header.self, stopped.code);
}

ResultCode Dispatch(Plugin& plugin, const char* caller, const char* selector, void* message) noexcept {
    EntryResult handled{kNoErr, false};
    if (Matches(caller, kZPAccessCaller) && Matches(selector, kZPReloadSelector)) {
        const EntryResult fixed = ExceptionToResultAtEntry([&] {
            FixupReload(plugin);
            return kNoErr;
        });
        if (fixed.threw) return fixed.code;
        handled = ExceptionToResultAtEntry([&] { return plugin.Reload(static_cast<ZPAccessMessage*>(message)); });
    } else {
        if (!plugin.IsLoaded()) return kNoErr;
        handled = ExceptionToResultAtEntry([&] { return plugin.Message(caller, selector, message); });
    }
    if (handled.threw) return handled.code;
    if (handled.code == kUnhandledMsgErr || handled.code == kNoErr) return kNoErr;

    const EntryResult report = ExceptionToResultAtEntry([&] {
        plugin.ReportError(handled.code, caller, selector, message);
        return kNoErr;
    });
    // A reload that failed leaves the object unloaded, and an unloaded object
    // holds nothing until the next reload.
    const EntryResult abandoned = ExceptionToResultAtEntry([&] {
        if (!plugin.IsLoaded()) plugin.Abandon();
        return kNoErr;
    });
    if (report.threw) return report.code;
    return abandoned.threw ? abandoned.code : handled.code;
}

}  // namespace

ResultCode PluginEntry(const char* caller, const char* selector, void* message) noexcept {
    if (message == nullptr) return kBadParameterErr;
    auto& header = *static_cast<ZPMessageData*>(message);
    KeepEntryBasicSuite(header.basic);
    OfferSuiteListBasicSuite(header.basic);
    auto* plugin = static_cast<Plugin*>(header.globals);

    if (Matches(caller, kZPInterfaceCaller) && Matches(selector, kZPStartupSelector)) {
        if (ResultCode result = Start(header, message)) return result;
        plugin = static_cast<Plugin*>(header.globals);
    } else if (Matches(caller, kZPInterfaceCaller) && Matches(selector, kZPShutdownSelector)) {
        return plugin == nullptr ? kNoErr : Stop(header, plugin, message);
    } else if (plugin == nullptr) {
        return kNoErr;
    }
    return Dispatch(*plugin, caller, selector, message);
}

}  // namespace kv
