#include "Plugin.h"

#include <cstdio>
#include <initializer_list>

#include "AppContextScope.h"
#include "CurrentTime.h"
#include "ErrorReport.h"
#include "ExceptionToResult.h"
#include "MessageNames.h"
#include "RegisteredSuites.h"
#include "SilentCodes.h"
#include "SuiteNode.h"

namespace kv {

namespace {

// "<plug-in name> Save User Data Notifier", cut to fit the buffer. Copied by
// hand: snprintf would do the same, but the build rejects its truncation.
void SaveUserDataNotifierName(const char* pluginName, char (&name)[256]) noexcept {
    std::size_t length = 0;
    for (const char* part : {pluginName, " Save User Data Notifier"}) {
        for (; *part != '\0' && length + 1 < sizeof name; ++part) name[length++] = *part;
    }
    name[length] = '\0';
}

}  // namespace

Plugin::Plugin(ZPPluginRef self) noexcept { state_.self = self; }

Plugin::~Plugin() = default;

void Plugin::SetName(const char* name) noexcept {
    std::snprintf(state_.name, sizeof state_.name, "%s", name);
}

void Plugin::ReportError(ResultCode code, const char*, const char*, void*) {
    if (IsSilentCode(code)) return;
    const std::int64_t now = CurrentTimeInSeconds();
    if (code == state_.lastReportedError && state_.suppressRepeatedErrors &&
        now < state_.lastReportTime + state_.errorRepeatInterval) {
        return;
    }
    state_.lastReportedError = code;
    state_.lastReportTime = now;
    ReportErrorToUser(state_.self, code, state_.name);
}

ResultCode Plugin::LockPlugin(bool lock) {
    const ZPAccessSuite* access = framework::Access();
    if (lock) {
        if (++state_.lockCount == 1 && access != nullptr) access->AcquirePluginAccess(state_.self, &state_.access);
    } else {
        if (state_.lockCount-- == 1) {
            if (access != nullptr) access->ReleasePluginAccess(state_.access);
            state_.access = nullptr;
        }
        if (state_.lockCount < 0) state_.lockCount = 0;
    }
    return kNoErr;
}

ResultCode Plugin::StartupPlugin(ZPInterfaceMessage*) { return kNoErr; }
ResultCode Plugin::ShutdownPlugin(ZPInterfaceMessage*) { return kNoErr; }
ResultCode Plugin::UnloadPlugin(ZPAccessMessage*) { return kNoErr; }
ResultCode Plugin::ReloadPlugin(ZPAccessMessage*) { return kNoErr; }
ResultCode Plugin::SaveUserData() { return kNoErr; }
ResultCode Plugin::Purge() { return kNoErr; }

ResultCode Plugin::Message(const char* caller, const char* selector, void* message) {
    return ExceptionToResultAtDispatcher([&]() -> ResultCode {
        AcquireOptionalSuites();
        if (Matches(caller, kZPAccessCaller)) {
            if (Matches(selector, kZPUnloadSelector)) return Unload(static_cast<ZPAccessMessage*>(message));
            if (Matches(selector, kZPReloadSelector)) return Reload(static_cast<ZPAccessMessage*>(message));
        } else if (Matches(caller, kZPInterfaceCaller)) {
            if (Matches(selector, kZPStartupSelector)) return kNoErr;
        } else if (Matches(caller, kZPCacheCaller)) {
            if (Matches(selector, kZPPurgeCachesSelector)) return Purge() != kNoErr ? kCachesFlushedResponse : kNoErr;
        } else if (Matches(caller, kKVNotifierCaller)) {
            auto* notification = static_cast<KVNotifierMessage*>(message);
            const AppContextScope context(notification->d.self);
            if (notification->notifier == state_.saveUserDataNotifier) return SaveUserData();
            if (Matches(selector, kKVNotifySelector)) return Notify(notification);
        } else if (Matches(caller, kKVFileFormatCaller)) {
            auto* request = static_cast<KVFileFormatMessage*>(message);
            if (Matches(selector, kKVGetFileFormatParametersSelector)) return GetFileFormatParameters(request);
            if (Matches(selector, kKVSetFileFormatParametersSelector)) return SetFileFormatParameters(request);
            if (Matches(selector, kKVGoFileFormatSelector)) return GoFileFormat(request);
            if (Matches(selector, kKVCheckFileFormatSelector)) return CheckFileFormat(request);
            if (Matches(selector, kKVUpdateFileFormatSelector)) return UpdateFileFormat(request);
        }
        return kUnhandledMsgErr;
    });
}

ResultCode Plugin::SetGlobal(Plugin*) { return kNoErr; }
ResultCode Plugin::AllocateSuiteTables() { return kNoErr; }
ResultCode Plugin::FillSuiteTables() { return kNoErr; }
ResultCode Plugin::EmptySuiteTables() { return kNoErr; }
ResultCode Plugin::FreeSuiteTables() { return kNoErr; }

ResultCode Plugin::AcquireOptionalSuites() {
    if (state_.suiteImports != nullptr) state_.suiteImports->AcquireOptionalSuites();
    return kNoErr;
}

ResultCode Plugin::Notify(KVNotifierMessage*) { return kNoErr; }
ResultCode Plugin::GetFileFormatParameters(KVFileFormatMessage*) { return kUnhandledMsgErr; }
ResultCode Plugin::SetFileFormatParameters(KVFileFormatMessage*) { return kUnhandledMsgErr; }
ResultCode Plugin::GoFileFormat(KVFileFormatMessage*) { return kUnhandledMsgErr; }
ResultCode Plugin::CheckFileFormat(KVFileFormatMessage*) { return kUnhandledMsgErr; }
ResultCode Plugin::UpdateFileFormat(KVFileFormatMessage*) { return kUnhandledMsgErr; }

ResultCode Plugin::CreateSuiteImports() noexcept {
    if (state_.suiteImports == nullptr) {
        state_.suiteImports.reset(new (std::nothrow) SuiteImports());
        if (state_.suiteImports == nullptr) return kOutOfMemoryErr;
    }
    SuiteImports::MarkSingleReference();
    if (ResultCode error = state_.suiteImports->AcquisitionError()) {
        state_.suiteImports.reset();
        return error;
    }
    return kNoErr;
}

ResultCode Plugin::Startup(ZPInterfaceMessage* message) {
    registered::ListRegisteredSuites();
    if (ResultCode result = AcquireRegisteredSuites(message->d.basic)) return result;
    SetGlobal(this);
    if (ResultCode result = CreateSuiteImports()) return result;
    if (ResultCode result = framework::Plugins()->SetPluginName(state_.self, state_.name)) return result;
    char notifierName[256];
    SaveUserDataNotifierName(state_.name, notifierName);
    if (ResultCode result = framework::Notifier()->AddNotifier(state_.self, notifierName, kKVSaveUserDataNotifier,
                                                               &state_.saveUserDataNotifier)) {
        return result;
    }
    if (ResultCode result = AllocateSuiteTables()) return result;
    FillSuiteTables();
    return StartupPlugin(message);
}

ResultCode Plugin::Shutdown(ZPInterfaceMessage* message) {
    ResultCode result = ShutdownPlugin(message);
    if (result == kNoErr) result = FreeSuiteTables();
    state_.suiteImports.reset();
    SetGlobal(nullptr);
    ReleaseAllSuites();
    return result;
}

ResultCode Plugin::Unload(ZPAccessMessage* message) {
    const ResultCode result = UnloadPlugin(message);
    EmptySuiteTables();
    SetGlobal(nullptr);
    state_.suiteImports.reset();
    ReleaseAllSuites();
    return result;
}

ResultCode Plugin::Reload(ZPAccessMessage* message) {
    registered::ListRegisteredSuites();
    if (ResultCode result = AcquireRegisteredSuites(message->d.basic)) return result;
    SetGlobal(this);
    if (ResultCode result = CreateSuiteImports()) return result;
    FillSuiteTables();
    return ReloadPlugin(message);
}

void Plugin::Abandon() {
    SetGlobal(nullptr);
    state_.suiteImports.reset();
    ReleaseAllSuites();
}

}  // namespace kv
