#include "Tintora.h"

#include <new>

#include "KVFileSuites.h"
#include "SuiteNode.h"

namespace {

Tintora* gTintora = nullptr;

kv::SuiteNode& SwatchLibrariesSuite() {
    static kv::SuiteNode node(kKVSwatchLibrariesSuite, kKVSwatchLibrariesSuiteVersion, kv::SuiteNode::kOnDemand);
    return node;
}

// Passes a swatch library request on to the host, which handles such files
// itself; what it answers is its own affair.
kv::ResultCode HandOverSwatchLibraryFile(KVFileFormatMessage& message) {
    const auto* libraries = kv::AcquireSuiteOrNull<KVSwatchLibrariesSuite>(SwatchLibrariesSuite());
    if (libraries == nullptr) return kv::kBadParameterErr;
    libraries->HandleSwatchLibraryFile(&message.data);
    return kv::kNoErr;
}

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
    if (message->fileFormat == nullptr && (message->option & kKVFileFormatSwatchLibraryOption) != 0) {
        return HandOverSwatchLibraryFile(*message);
    }
    return fileFormats_ != nullptr ? fileFormats_->Go(*message) : kv::kNoErr;
}

kv::ResultCode Tintora::CheckFileFormat(KVFileFormatMessage* message) {
    return fileFormats_ != nullptr ? fileFormats_->Check(*message) : kv::kNoErr;
}

Tintora* Tintora::Global() noexcept { return gTintora; }
