#include "Tintora.h"

#include <new>

#include "ExceptionToResult.h"
#include "KVFileSuites.h"
#include "SuiteNode.h"
#include "TintoraSuite.h"
#include "ZPPluginSuites.h"

namespace {

Tintora* gTintora = nullptr;

// The host folders the libraries are gathered from, in this order.
constexpr std::int32_t kApplicationLibraryFolders[] = {33, 73};
constexpr std::int32_t kUserLibraryFolders[] = {88, 89};
// A host folder inside the user's library folders that is never listed.
constexpr std::int32_t kExcludedFolder = 72;
// The kind numbers the factory gives its libraries.
constexpr std::int32_t kFolderKind = 1;
constexpr std::int32_t kFileKind = 7;
constexpr std::int32_t kSuiteInternalVersion = 1;

kv::SuiteNode& SwatchLibrariesSuite() {
    static kv::SuiteNode node(kKVSwatchLibrariesSuite, kKVSwatchLibrariesSuiteVersion, kv::SuiteNode::kOnDemand);
    return node;
}

kv::SuiteNode& SuitesSuite() {
    static kv::SuiteNode node(kZPSuitesSuite, kZPSuitesSuiteVersion, kv::SuiteNode::kOnDemand);
    return node;
}

kv::SuiteNode& BlocksSuite() {
    static kv::SuiteNode node(kZPBlocksSuite, kZPBlocksSuiteVersion, kv::SuiteNode::kOnDemand);
    return node;
}

kv::SuiteNode& FoldersSuite() {
    static kv::SuiteNode node(kKVFoldersSuite, kKVFoldersSuiteVersion, kv::SuiteNode::kOnDemand);
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

// Whether `folder` is the host folder that is never listed.
bool IsExcludedFolder(KVFilePathRef folder) {
    const auto& folders = kv::RequireSuite<KVFoldersSuite>(FoldersSuite());
    const kv::FilePath excluded;
    if (folders.FindFolder(kExcludedFolder, 0, excluded.Get()) != kv::kNoErr) return false;
    return kv::PathStringOf(folder).Compare(kv::PathStringOf(excluded.Get())) == 0;
}

}  // namespace

Tintora::Tintora(ZPPluginRef self) noexcept : Plugin(self) { SetName("Orvik Tintora Core"); }

Tintora::Tintora(State&& kept) noexcept : Plugin(std::move(kept)) {}

kv::ResultCode Tintora::StartupPlugin(ZPInterfaceMessage* message) {
    if (suiteTable_ == nullptr) return kv::kCantHappenErr;
    bool published = false;
    try {
        const auto& suites = kv::RequireSuite<ZPSuitesSuite>(SuitesSuite());
        ZPSuiteRef suite = nullptr;
        if (const kv::ResultCode result = suites.AddSuite(nullptr, Self(), kKVTintoraSuite, kKVTintoraSuiteVersion,
                                                          kSuiteInternalVersion, suiteTable_, &suite)) {
            DiscardUnpublishedTable();
            return result;
        }
        published = true;
        // Without memory for the formats the plug-in starts all the same.
        fileFormats_.reset(new (std::nothrow) formats::FileFormatHandler(message->d.self));
        if (fileFormats_ != nullptr) fileFormats_->Register();
        libraries_.SetPreferencePrefix(kPreferencePrefix);
        Tintora* global = Global();
        if (const kv::ResultCode result = libraries_.Init(global != nullptr ? global->Self() : nullptr, &MakeLibrary)) {
            ReleaseLibrariesAndFormats();
            return result;
        }
        // Without memory for it there is no own library.
        ownLibrary_.reset(new (std::nothrow) SwatchesCore(Self(), kOwnLibraryId));
        return kv::kNoErr;
    } catch (...) {
        // The host withdraws a published suite with its table when the
        // start-up fails; a table it never received is this object's.
        if (!published) DiscardUnpublishedTable();
        ReleaseLibrariesAndFormats();
        throw;
    }
}

kv::ResultCode Tintora::ShutdownPlugin(ZPInterfaceMessage*) {
    EmptySuiteTables();
    ReleaseLibrariesAndFormats();
    return kv::kNoErr;
}

kv::ResultCode Tintora::UnloadPlugin(ZPAccessMessage*) {
    // A reload rebuilds this object with fresh fields, so whatever they
    // hold now would be out of reach from then on.
    ReleaseLibrariesAndFormats();
    return kv::kNoErr;
}

void Tintora::ReleaseLibrariesAndFormats() noexcept {
    fileFormats_.reset();
    libraries_.ClearPersistentPaths();
    libraries_.ClearLibraries();
    librariesReady_ = false;
    ownLibrary_.reset();
}

void Tintora::DiscardUnpublishedTable() noexcept {
    if (const auto* blocks = kv::AcquireSuiteOrNull<ZPBlocksSuite>(BlocksSuite())) blocks->FreeBlock(suiteTable_);
    suiteTable_ = nullptr;
}

kv::ResultCode Tintora::SaveUserData() {
    if (ownLibrary_ == nullptr) return kv::kNoErr;
    return kv::ExceptionToResultWhileSavingState([&] { return ownLibrary_->SaveState(); });
}

kv::ResultCode Tintora::SetGlobal(kv::Plugin* plugin) {
    gTintora = static_cast<Tintora*>(plugin);
    return kv::kNoErr;
}

kv::ResultCode Tintora::AllocateSuiteTables() {
    static_assert(sizeof(KVTintoraSuite) == 14 * sizeof(void*));
    const auto& blocks = kv::RequireSuite<ZPBlocksSuite>(BlocksSuite());
    void* block = nullptr;
    const kv::ResultCode result = blocks.AllocateBlock(sizeof(KVTintoraSuite), kKVTintoraSuite, &block);
    suiteTable_ = static_cast<KVTintoraSuite*>(block);
    return result;
}

kv::ResultCode Tintora::FillSuiteTables() {
    if (suiteTable_ == nullptr) return kv::kCantHappenErr;
    FillTintoraSuite(*suiteTable_);
    return kv::kNoErr;
}

kv::ResultCode Tintora::EmptySuiteTables() {
    if (suiteTable_ != nullptr) *suiteTable_ = KVTintoraSuite{};
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

void Tintora::EnsureLibraries() {
    if (librariesReady_) return;
    try {
        for (const std::int32_t folder : kApplicationLibraryFolders) {
            libraries_.AddLibraryFolder(CKVLibraryList::kApplicationFolders, folder);
        }
        for (const std::int32_t folder : kUserLibraryFolders) {
            libraries_.AddLibraryFolder(CKVLibraryList::kUserFolders, folder);
        }
        libraries_.OpenPersistentLibraries();
    } catch (...) {
        // Nothing half gathered stays: the next call gathers anew.
        libraries_.ClearLibraries();
        throw;
    }
    librariesReady_ = true;
}

void Tintora::MakeLibrary(CKVLibrary*& library, KVFilePathRef path, bool isFolder) {
    library = nullptr;
    Tintora* self = Global();
    if (self == nullptr || (isFolder && IsExcludedFolder(path))) return;
    const auto id = std::int32_t(self->nextLibraryId_++);
    library = new (std::nothrow) SwatchesCore(self->Self(), id, path, isFolder ? kFolderKind : kFileKind, isFolder);
}
