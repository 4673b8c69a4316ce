// A module loaded into the emulated host, and the messages the host sends it.
// Each message fills in the common header (this plug-in, the kept globals
// slot, the basic suite), calls the entry point and keeps the globals slot
// the module left.
#pragma once

#include "ModuleFile.h"

#include <ZPMessages.h>

#include <filesystem>
#include <string>

namespace kelvra {

struct HostState;
struct NotifierRecord;

// A "KV File Format" request about a file.
struct FileFormatRequest {
    KVFileFormatHandle format = nullptr;  // the registered format asked
    std::int32_t option = 0;              // kKVFileFormat...Option bits
    std::filesystem::path file;
    KVDocumentHandle document = nullptr;  // null: the current document
};

class Module {
public:
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    const ModuleFile& File() const { return file_; }
    // The name the module gave itself through "ZP Plug-ins Suite", else the
    // plug-in name of its property list.
    const std::string& Name() const { return name_.empty() ? file_.properties.pluginName : name_; }
    ZPPluginRef Ref() const { return reinterpret_cast<ZPPluginRef>(const_cast<Module*>(this)); }
    void* Globals() const { return globals_; }
    // Loaded by this host: between Load or Reload and Unload.
    bool IsLoaded() const { return library_ != nullptr; }
    // Whether the file is mapped into the process at all; false after Unload
    // proves that the module really went away.
    bool IsMapped() const;

    // "ZP Interface"/"Startup" and "Shutdown".
    ZPErr Startup();
    ZPErr Shutdown();
    // "ZP Access"/"Unload", then the module's code is unloaded for real.
    ZPErr Unload();
    // Loads the code again and sends "ZP Access"/"Reload" with the kept
    // globals slot.
    ZPErr Reload();
    // "ZP Cache"/"Plug-in Purge".
    ZPErr Purge();
    // "KV Notifier"/"KV Notify" on a notifier the module registered.
    ZPErr Notify(KVNotifierHandle notifier, void* notifyData = nullptr);
    // Whether the module registered a notifier of type "KV Save User Data
    // Notifier".
    bool HasSaveUserDataNotifier() const;
    // Notify on that notifier; HostError when it registered none.
    ZPErr SaveUserData();

    // "KV File Format"/"KV Check" and "KV Go". The host makes the file path
    // object of the message and disposes of it afterwards.
    ZPErr CheckFileFormat(const FileFormatRequest& request);
    ZPErr GoFileFormat(const FileFormatRequest& request);

    // Any message. `message` is the header of a record whose
    // message-specific fields the caller filled in.
    ZPErr Send(const char* caller, const char* selector);
    ZPErr Send(const char* caller, const char* selector, ZPMessageData& message);

private:
    friend struct HostState;
    Module(HostState& host, ModuleFile file);
    void Open();
    void Close();
    ZPErr SendFileFormat(const char* selector, const FileFormatRequest& request);
    const NotifierRecord* SaveUserDataNotifier() const;

    HostState& host_;
    ModuleFile file_;
    std::string name_;
    void* library_ = nullptr;
    ZPPluginMainProc entry_ = nullptr;
    void* globals_ = nullptr;
};

}  // namespace kelvra
