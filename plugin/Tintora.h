// The module's plug-in object, created at start-up and kept until shut-down.
#pragma once

#include <memory>

#include "Plugin.h"
#include "formats/handlers/FileFormatHandler.h"

class Tintora final : public kv::Plugin {
public:
    explicit Tintora(ZPPluginRef self) noexcept;
    // Rebuilds the object in place after a reload (kv::RebuildAfterReload).
    explicit Tintora(State&& kept) noexcept;

    // Registers the file formats.
    kv::ResultCode StartupPlugin(ZPInterfaceMessage* message) override;
    kv::ResultCode ShutdownPlugin(ZPInterfaceMessage* message) override;
    kv::ResultCode UnloadPlugin(ZPAccessMessage* message) override;
    // Keeps `plugin` as the object that other plug-ins' calls reach.
    kv::ResultCode SetGlobal(kv::Plugin* plugin) override;
    // The file formats take no parameters: these answer 0.
    kv::ResultCode GetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode SetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode UpdateFileFormat(KVFileFormatMessage* message) override;
    // Handed to the file formats; 0 while there are none. A swatch library
    // request that names no format goes to the host instead: 0, or "PARM"
    // when the host's swatch library suite cannot be had.
    kv::ResultCode GoFileFormat(KVFileFormatMessage* message) override;
    kv::ResultCode CheckFileFormat(KVFileFormatMessage* message) override;

    // The started plug-in object, or null.
    static Tintora* Global() noexcept;

private:
    // Null until start-up, and when there was no memory for it.
    std::unique_ptr<formats::FileFormatHandler> fileFormats_;
};
