#include "Tintora.h"

#include <new>

namespace {
Tintora* gTintora = nullptr;
}  // namespace

Tintora::Tintora(ZPPluginRef self) noexcept : Plugin(self) { SetName("Orvik Tintora Core"); }

Tintora::Tintora(State&& kept) noexcept : Plugin(std::move(kept)) {}

kv::ResultCode Tintora::StartupPlugin(ZPInterfaceMessage* message) {
    // Without memory for the formats the plug-in starts all the same.
    fileFormats_.reset(new (std::nothrow) formats::FileFormatHandler(message->d.self));
    if (fileFormats_ != nullptr) fileFormats_->Register();
    return kv::kNoErr;
}

kv::ResultCode Tintora::ShutdownPlugin(ZPInterfaceMessage*) {
    fileFormats_.reset();
    return kv::kNoErr;
}

kv::ResultCode Tintora::UnloadPlugin(ZPAccessMessage*) {
    // A reload rebuilds this object without the formats, so their memory
    // would be out of reach from then on.
    fileFormats_.reset();
    return kv::kNoErr;
}

kv::ResultCode Tintora::SetGlobal(kv::Plugin* plugin) {
    gTintora = static_cast<Tintora*>(plugin);
    return kv::kNoErr;
}

kv::ResultCode Tintora::GetFileFormatParameters(KVFileFormatMessage*) { return kv::kNoErr; }

kv::ResultCode Tintora::SetFileFormatParameters(KVFileFormatMessage*) { return kv::kNoErr; }

kv::ResultCode Tintora::UpdateFileFormat(KVFileFormatMessage*) { return kv::kNoErr; }

kv::ResultCode Tintora::GoFileFormat(KVFileFormatMessage* message) {
    return fileFormats_ != nullptr ? fileFormats_->Go(*message) : kv::kNoErr;
}

kv::ResultCode Tintora::CheckFileFormat(KVFileFormatMessage* message) {
    return fileFormats_ != nullptr ? fileFormats_->Check(*message) : kv::kNoErr;
}

Tintora* Tintora::Global() noexcept { return gTintora; }
