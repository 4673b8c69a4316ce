// The plug-in object: the one instance that lives between the host's calls
// of the entry point. The entry runs the start-up, shut-down, unload and
// reload sequences on it and hands every other message to Message, which
// dispatches to the virtual operations a derived plug-in overrides.
#pragma once

#include <cstdint>
#include <memory>

#include "KVError.h"
#include "SuiteImports.h"
#include "ZPMessages.h"

namespace kv {

class Plugin {
public:
    // The base's own fields. They survive an unload with the object's memory
    // and are kept when a reload rebuilds the derived part (PluginHooks.h).
    struct State {
        ZPPluginRef self = nullptr;
        char name[256] = "Plugin";
        std::unique_ptr<SuiteImports> suiteImports;  // null while not started or unloaded
        std::int32_t lockCount = 0;
        ZPAccessRef access = nullptr;
        ResultCode lastReportedError = kNoErr;
        std::int32_t errorRepeatInterval = 5;  // seconds
        std::int64_t lastReportTime = 0;       // seconds since the epoch
        KVNotifierHandle saveUserDataNotifier = nullptr;
        bool suppressRepeatedErrors = true;
    };

    explicit Plugin(ZPPluginRef self) noexcept;
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // The virtual operations, in the order of the dispatch table.
    virtual ~Plugin();
    // Shows `code` to the user unless it is silent or repeats the last one
    // within the repeat interval.
    virtual void ReportError(ResultCode code, const char* caller, const char* selector, void* message);
    // A counted lock that keeps the host from unloading the module's code.
    virtual ResultCode LockPlugin(bool lock);
    virtual ResultCode StartupPlugin(ZPInterfaceMessage* message);
    virtual ResultCode ShutdownPlugin(ZPInterfaceMessage* message);
    virtual ResultCode UnloadPlugin(ZPAccessMessage* message);
    virtual ResultCode ReloadPlugin(ZPAccessMessage* message);
    virtual ResultCode SaveUserData();
    // Non-zero when caches were flushed.
    virtual ResultCode Purge();
    // Answers "!MSG" for a message that no operation handles.
    virtual ResultCode Message(const char* caller, const char* selector, void* message);
    // Makes `plugin` (or none) the object that the plug-in's published
    // functions work on.
    virtual ResultCode SetGlobal(Plugin* plugin);
    virtual ResultCode AllocateSuiteTables();
    virtual ResultCode FillSuiteTables();
    virtual ResultCode EmptySuiteTables();
    virtual ResultCode FreeSuiteTables();
    virtual ResultCode AcquireOptionalSuites();
    virtual ResultCode Notify(KVNotifierMessage* message);
    // A plug-in that registers file formats overrides these; the base does
    // not handle them ("!MSG").
    virtual ResultCode GetFileFormatParameters(KVFileFormatMessage* message);
    virtual ResultCode SetFileFormatParameters(KVFileFormatMessage* message);
    virtual ResultCode GoFileFormat(KVFileFormatMessage* message);
    virtual ResultCode CheckFileFormat(KVFileFormatMessage* message);
    virtual ResultCode UpdateFileFormat(KVFileFormatMessage* message);

    // The sequences of the plug-in's life; the entry point runs them.
    ResultCode Startup(ZPInterfaceMessage* message);
    ResultCode Shutdown(ZPInterfaceMessage* message);
    ResultCode Unload(ZPAccessMessage* message);
    ResultCode Reload(ZPAccessMessage* message);
    // Gives back what a start-up that failed, or a shut-down that threw, may
    // still hold: the global pointer, the imports and the held suites.
    void Abandon();

    ZPPluginRef Self() const noexcept { return state_.self; }
    const char* Name() const noexcept { return state_.name; }
    // False while not started or after an unload.
    bool IsLoaded() const noexcept { return state_.suiteImports != nullptr; }
    KVNotifierHandle SaveUserDataNotifier() const noexcept { return state_.saveUserDataNotifier; }

protected:
    // For a derived class rebuilt in place after a reload.
    explicit Plugin(State&& kept) noexcept : state_(std::move(kept)) {}

    // Copied with truncation to the name buffer.
    void SetName(const char* name) noexcept;

private:
    template <class Derived>
    friend void RebuildAfterReload(Plugin& plugin);

    // Creates the imports unless present; its acquisition error, or "!MEM".
    ResultCode CreateSuiteImports() noexcept;

    State state_;
};

}  // namespace kv
