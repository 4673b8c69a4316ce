#include "HostState.h"

#include <KVFrameworkSuites.h>

#include <dlfcn.h>

#include <cstring>

namespace kelvra {

Module::Module(HostState& host, ModuleFile file) : host_(host), file_(std::move(file)) {
    // dlopen searches the library path for a name without a slash.
    file_.path = std::filesystem::absolute(file_.path);
}

Module::~Module() { Close(); }

void Module::Open() {
    library_ = dlopen(file_.path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library_ == nullptr) throw HostError(file_.path.string() + ": cannot load: " + dlerror());
    void* entry = dlsym(library_, file_.properties.entryName.c_str());
    if (entry == nullptr) {
        Close();
        throw HostError(file_.path.string() + ": no entry point \"" + file_.properties.entryName + "\"");
    }
    entry_ = reinterpret_cast<ZPPluginMainProc>(entry);
}

void Module::Close() {
    if (library_ != nullptr) dlclose(library_);
    library_ = nullptr;
    entry_ = nullptr;
}

bool Module::IsMapped() const {
    void* library = dlopen(file_.path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library == nullptr) return false;
    dlclose(library);
    return true;
}

ZPErr Module::Send(const char* caller, const char* selector, ZPMessageData& message) {
    if (entry_ == nullptr) throw HostError(Name() + " is not loaded");
    message.checkWord = &host_;
    message.self = Ref();
    message.globals = globals_;
    message.basic = HostBasicSuite();
    const bool import = std::strcmp(caller, kKVFileFormatCaller) == 0 && std::strcmp(selector, kKVGoFileFormatSelector) == 0;
    if (import) host_.imports.Begin();
    const ZPErr result = entry_(caller, selector, &message);
    if (import) {
        for (Event& event : host_.imports.End(host_.documents)) host_.events.Add(std::move(event));
    }
    globals_ = message.globals;
    host_.Record(*this, caller, selector, result);
    const bool ended = std::strcmp(caller, kZPInterfaceCaller) == 0 &&
                       (std::strcmp(selector, kZPShutdownSelector) == 0 ||
                        (std::strcmp(selector, kZPStartupSelector) == 0 && result != kZPNoErr));
    if (ended) host_.Withdraw(*this);
    return result;
}

ZPErr Module::Send(const char* caller, const char* selector) {
    ZPInterfaceMessage message{};
    return Send(caller, selector, message.d);
}

ZPErr Module::Startup() { return Send(kZPInterfaceCaller, kZPStartupSelector); }

ZPErr Module::Shutdown() { return Send(kZPInterfaceCaller, kZPShutdownSelector); }

ZPErr Module::Unload() {
    const ZPErr result = Send(kZPAccessCaller, kZPUnloadSelector);
    Close();
    return result;
}

ZPErr Module::Reload() {
    if (IsLoaded()) throw HostError(Name() + " is loaded already");
    Open();
    return Send(kZPAccessCaller, kZPReloadSelector);
}

ZPErr Module::Purge() { return Send(kZPCacheCaller, kZPPurgeCachesSelector); }

ZPErr Module::Notify(KVNotifierHandle notifier, void* notifyData) {
    KVNotifierMessage message{};
    message.notifier = notifier;
    const NotifierRecord* record = host_.notifiers.Find(notifier);
    message.type = record != nullptr ? record->type.c_str() : nullptr;
    message.notifyData = notifyData;
    return Send(kKVNotifierCaller, kKVNotifySelector, message.d);
}

ZPErr Module::SendFileFormat(const char* selector, const FileFormatRequest& request) {
    // The message's file path lives as long as the message.
    struct MessagePath {
        HostState& host;
        KVFilePathRef path;
        ~MessagePath() { host.filePaths.Remove(path); }
    } file{host_,
           host_.filePaths.Add<KVFilePathRef>(std::make_unique<HostFilePath>(HostFilePath{request.file.string()}))};
    KVFileFormatMessage message{};
    message.fileFormat = request.format;
    message.option = request.option;
    message.data.file = file.path;
    message.data.document = request.document;
    return Send(kKVFileFormatCaller, selector, message.d);
}

ZPErr Module::CheckFileFormat(const FileFormatRequest& request) {
    return SendFileFormat(kKVCheckFileFormatSelector, request);
}

ZPErr Module::GoFileFormat(const FileFormatRequest& request) {
    return SendFileFormat(kKVGoFileFormatSelector, request);
}

const NotifierRecord* Module::SaveUserDataNotifier() const {
    for (const NotifierRecord* record : host_.notifiers.InOrder()) {
        if (record->owner == this && record->type == kKVSaveUserDataNotifier) return record;
    }
    return nullptr;
}

bool Module::HasSaveUserDataNotifier() const { return SaveUserDataNotifier() != nullptr; }

ZPErr Module::SaveUserData() {
    const NotifierRecord* notifier = SaveUserDataNotifier();
    if (notifier == nullptr) throw HostError(Name() + " registered no \"" kKVSaveUserDataNotifier "\"");
    return Notify(notifier->handle);
}

}  // namespace kelvra
