#include "CKVLibraryList.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <utility>

#include "KVFileSuites.h"
#include "KVUnicodeString.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"
#include "platform/DirectorySearch.h"

using kv::platform::DirectorySearch;
using kv::platform::FileTime;
using kv::platform::SearchMode;

namespace {

constexpr std::int32_t kApplicationRootId = -1;
constexpr std::int32_t kUserRootId = -2;
constexpr std::int32_t kPersistentRootId = -3;
constexpr const char* kUserRootName = "$$$/Libraries/Str/UserLib=User Defined";
constexpr const char* kCountSuffix = "_count";
// The host's canonical form for comparing paths: letter case folded.
constexpr std::int32_t kCaseFoldedForm = 1;

std::u16string KeyOf(KVFilePathRef path) { return kv::PathStringOf(path).ToUTF16(); }

}  // namespace

// Keeps a folder's key on the scan stack while it is scanned.
class CKVLibraryList::ScanGuard {
public:
    ScanGuard(std::vector<std::u16string_view>& scanning, std::u16string_view key) : scanning_(scanning) {
        scanning_.push_back(key);
    }
    ~ScanGuard() { scanning_.pop_back(); }
    ScanGuard(const ScanGuard&) = delete;
    ScanGuard& operator=(const ScanGuard&) = delete;

private:
    std::vector<std::u16string_view>& scanning_;
};

CKVLibraryList::CKVLibraryList() : lastScanTime_(kv::platform::CurrentSystemTime()) {}

CKVLibraryList::~CKVLibraryList() = default;

kv::ResultCode CKVLibraryList::Init(void* context, LibraryFactory factory) {
    if (context == nullptr || factory == nullptr) return kv::kBadParameterErr;
    context_ = context;
    libraryFactory_ = factory;
    ReadPersistentList();
    return kv::kNoErr;
}

kv::ResultCode CKVLibraryList::ReadPersistentList() {
    const auto* preferences = kv::AcquireSuiteOrNull<KVPreferenceSuite>(kv::registered::Preference());
    if (preferences == nullptr) return kv::kBadParameterErr;
    try {
        std::int32_t count = 0;
        if (const kv::ResultCode result = preferences->GetIntegerPreference(preferencePrefix_, kCountSuffix, &count)) {
            return result;
        }
        for (std::int32_t i = 0; i < count; ++i) {
            char suffix[12] = {};
            std::to_chars(suffix, suffix + sizeof suffix - 1, i);
            kv::FilePath path;
            // The entries after one that cannot be read are not read either.
            if (preferences->GetFilePathPreference(preferencePrefix_, suffix, path.Get()) != kv::kNoErr) break;
            if (kv::ExistenceOf(path.Get(), false).exists) InsertPersistentPath(std::move(path));
        }
        return kv::kNoErr;
    } catch (...) {
        return kv::kLibraryLoadErr;
    }
}

void CKVLibraryList::InsertPersistentPath(kv::FilePath path) {
    const auto place = std::lower_bound(persistentPaths_.begin(), persistentPaths_.end(), path,
                                        [](const kv::FilePath& a, const kv::FilePath& b) { return a.Compare(b) < 0; });
    if (place != persistentPaths_.end() && place->Compare(path) == 0) return;
    persistentPaths_.insert(place, std::move(path));
}

kv::ResultCode CKVLibraryList::AddLibraryFolder(std::int32_t which, std::int32_t folderType) {
    if (applicationFolders_.empty() && userFolders_.empty()) {
        lastScanTime_ = kv::platform::CurrentSystemTime();
        changeCount_ = 1;
    }
    const bool user = which != kApplicationFolders;
    const auto& hostFolders = kv::RequireSuite<KVFoldersSuite>(kv::registered::Folders());
    kv::FilePath folder;
    if (const kv::ResultCode result = hostFolders.FindFolder(folderType, user ? 1 : 0, folder.Get())) return result;
    if (kv::IsEmptyPath(folder.Get())) return kv::kNoErr;

    std::unique_ptr<CKVLibrary>& root = user ? userRoot_ : applicationRoot_;
    if (!EnsureRoot(root, user ? kUserRootId : kApplicationRootId)) return kv::kOutOfMemoryErr;

    std::vector<kv::FilePath>& folders = user ? userFolders_ : applicationFolders_;
    folders.push_back(std::move(folder));
    canonicalFoldersKnown_[user ? 1 : 0] = false;
    ScanFolder(*root, KeyOf(folders.back().Get()));
    return kv::kNoErr;
}

bool CKVLibraryList::EnsureRoot(std::unique_ptr<CKVLibrary>& root, std::int32_t libraryId) {
    if (root != nullptr) return true;
    std::unique_ptr<CKVLibrary> made(new (std::nothrow) CKVLibrary(context_, true, nullptr, libraryId));
    if (made == nullptr) return false;
    if (libraryId == kUserRootId) made->name_ = kv::UnicodeString::FromPlatformText(kUserRootName);
    root = std::move(made);
    ++treeVersion_;
    return true;
}

kv::ResultCode CKVLibraryList::OpenPersistentLibraries() {
    for (const kv::FilePath& path : persistentPaths_) {
        // Listed under its folder already.
        if (IsInLibraryFolders(kApplicationFolders, path.Get()) || IsInLibraryFolders(kUserFolders, path.Get())) {
            continue;
        }
        if (!kv::ExistenceOf(path.Get(), true).exists) return kv::kBadParameterErr;
        if (!EnsureRoot(persistentRoot_, kPersistentRootId)) return kv::kOutOfMemoryErr;
        CKVLibrary* library = AddEntry(*persistentRoot_, path.Get(), false);
        ++changeCount_;
        if (library == nullptr) return kv::kBadParameterErr;
        persistentLibraries_.push_back(library);
    }
    return kv::kNoErr;
}

CKVLibrary* CKVLibraryList::AddPersistentLibrary(KVFilePathRef path) {
    if (!kv::ExistenceOf(path, true).exists) return nullptr;
    if (!EnsureRoot(persistentRoot_, kPersistentRootId)) return nullptr;
    CKVLibrary* library = AddEntry(*persistentRoot_, path, false);
    ++changeCount_;
    return library;
}

bool CKVLibraryList::IsInLibraryFolders(std::int32_t which, KVFilePathRef path) {
    kv::UnicodeString string = kv::PathStringOf(path);
    string.Canonicalize(kCaseFoldedForm);
    const std::u16string text = string.ToUTF16();
    for (const std::u16string& folder : CanonicalFolders(which)) {
        // The folder's last character is left out on purpose, so a folder
        // ending with a separator also takes a sibling that begins with its name.
        const std::size_t compared = folder.empty() ? 0 : folder.size() - 1;
        if (text.size() >= folder.size() && text.compare(0, compared, folder, 0, compared) == 0) return true;
    }
    return false;
}

const std::vector<std::u16string>& CKVLibraryList::CanonicalFolders(std::int32_t which) {
    const int kind = which == kApplicationFolders ? 0 : 1;
    if (!canonicalFoldersKnown_[kind]) {
        std::vector<std::u16string> canonical;
        for (const kv::FilePath& folder : kind == 0 ? applicationFolders_ : userFolders_) {
            kv::UnicodeString string = kv::PathStringOf(folder.Get());
            string.Canonicalize(kCaseFoldedForm);
            canonical.push_back(string.ToUTF16());
        }
        canonicalFolders_[kind] = std::move(canonical);
        canonicalFoldersKnown_[kind] = true;
    }
    return canonicalFolders_[kind];
}

bool CKVLibraryList::MayScan(std::u16string_view key) const {
    return scanning_.size() < kMaxFolderDepth && std::find(scanning_.begin(), scanning_.end(), key) == scanning_.end();
}

void CKVLibraryList::ScanFolder(CKVLibrary& folder, std::u16string_view path) {
    const ScanGuard guard(scanning_, path);
    {
        DirectorySearch files(path, SearchMode::kFilesOnly);
        while (files.Next()) {
            const kv::FilePath entry = kv::FilePath::FromUTF16(files.Path()).Resolved();
            const kv::PathExistence existence = kv::ExistenceOf(entry.Get(), false);
            // A shortcut to a folder becomes a folder library.
            if (existence.exists) AddEntry(folder, entry.Get(), !existence.isFile);
        }
    }
    DirectorySearch directories(path, SearchMode::kDirectoriesOnly);
    while (directories.Next()) {
        const kv::FilePath entry = kv::FilePath::FromUTF16(directories.Path());
        AddEntry(folder, entry.Get(), true);
    }
}

std::unique_ptr<CKVLibrary> CKVLibraryList::MakeLibrary(KVFilePathRef path, bool isFolder) {
    CKVLibrary* made = nullptr;
    try {
        libraryFactory_(made, path, isFolder);
    } catch (const kv::Error&) {
        return nullptr;
    }
    return std::unique_ptr<CKVLibrary>(made);
}

CKVLibrary* CKVLibraryList::AddEntry(CKVLibrary& folder, KVFilePathRef path, bool isFolder) {
    std::unique_ptr<CKVLibrary> library = MakeLibrary(path, isFolder);
    if (library == nullptr) return nullptr;
    return Place(folder, std::move(library), KeyOf(path), isFolder);
}

CKVLibrary* CKVLibraryList::AddEntry(CKVLibrary& folder, KVFilePathRef path, std::u16string key, bool isFolder) {
    std::unique_ptr<CKVLibrary> library = MakeLibrary(path, isFolder);
    if (library == nullptr) return nullptr;
    return Place(folder, std::move(library), std::move(key), isFolder);
}

CKVLibrary* CKVLibraryList::Place(CKVLibrary& folder, std::unique_ptr<CKVLibrary> library, std::u16string key,
                                  bool isFolder) {
    // A key listed before keeps its library; the new one goes.
    const auto [place, adopted] = folder.AdoptChild(std::move(key), std::move(library));
    if (adopted) ++treeVersion_;
    CKVLibrary* child = place->second.get();
    if (isFolder && MayScan(place->first)) {
        try {
            ScanFolder(*child, place->first);
        } catch (const kv::Error&) {
            // The folder stays listed with what was found before the failure.
            return nullptr;
        }
    }
    return child;
}

void CKVLibraryList::RefreshAll() {
    const FileTime now = kv::platform::CurrentSystemTime();
    RefreshFolders(applicationFolders_, applicationRoot_.get(), now);
    RefreshFolders(userFolders_, userRoot_.get(), now);
    lastScanTime_ = now;
}

void CKVLibraryList::RefreshFolders(const std::vector<kv::FilePath>& folders, CKVLibrary* root, FileTime now) {
    if (root == nullptr) return;
    for (const kv::FilePath& folder : folders) {
        // Seeded with now, a folder that cannot be read counts as changed.
        FileTime time = now;
        GetModificationTime(time, folder.Get());
        const std::u16string text = KeyOf(folder.Get());
        if (kv::platform::IsLater(time, lastScanTime_)) {
            RescanFolder(*root, text);
        } else {
            RefreshSubfolders(*root, text);
        }
    }
}

void CKVLibraryList::RefreshFolder(CKVLibrary& folder, KVFilePathRef path, std::u16string_view pathText) {
    FileTime time = kv::platform::CurrentSystemTime();
    GetModificationTime(time, path);
    if (kv::platform::IsLater(time, lastScanTime_)) {
        RescanFolder(folder, pathText);
    } else {
        RefreshSubfolders(folder, pathText);
    }
}

void CKVLibraryList::RescanFolder(CKVLibrary& folder, std::u16string_view path) {
    const ScanGuard guard(scanning_, path);
    {
        DirectorySearch files(path, SearchMode::kFilesOnly);
        while (files.Next()) {
            const kv::FilePath entry = kv::FilePath::FromUTF16(files.Path()).Resolved();
            const kv::PathExistence existence = kv::ExistenceOf(entry.Get(), false);
            std::u16string key = KeyOf(entry.Get());
            const auto known = folder.children_.find(key);
            if (known == folder.children_.end()) {
                if (existence.exists && AddEntry(folder, entry.Get(), std::move(key), !existence.isFile)) ++changeCount_;
            } else if (!existence.exists) {
                SetMissing(*known->second, true);
            } else if (known->second->IsMissing()) {
                SetMissing(*known->second, false);
                ++changeCount_;
            }
        }
    }
    {
        DirectorySearch directories(path, SearchMode::kDirectoriesOnly);
        while (directories.Next()) {
            const kv::FilePath entry = kv::FilePath::FromUTF16(directories.Path());
            std::u16string key = KeyOf(entry.Get());
            const auto known = folder.children_.find(key);
            if (known == folder.children_.end()) {
                if (AddEntry(folder, entry.Get(), std::move(key), true)) ++changeCount_;
            } else if (known->second->IsFolder() && MayScan(known->first)) {
                RefreshFolder(*known->second, entry.Get(), known->first);
            }
        }
    }
    if (MarkMissing(folder)) ++changeCount_;
}

void CKVLibraryList::RefreshSubfolders(CKVLibrary& folder, std::u16string_view path) {
    const ScanGuard guard(scanning_, path);
    DirectorySearch directories(path, SearchMode::kDirectoriesOnly);
    while (directories.Next()) {
        const kv::FilePath entry = kv::FilePath::FromUTF16(directories.Path());
        const auto known = folder.children_.find(KeyOf(entry.Get()));
        // Folders the last scan did not list wait for their parent's time to move.
        if (known == folder.children_.end() || !known->second->IsFolder() || !MayScan(known->first)) continue;
        RefreshFolder(*known->second, entry.Get(), known->first);
    }
}

bool CKVLibraryList::MarkMissing(CKVLibrary& folder) {
    bool marked = false;
    for (const auto& [key, child] : folder.children_) {
        if (child->IsMissing() || kv::ExistenceOf(child->Path(), true).exists) continue;
        if (child->IsFolder()) MarkMissing(*child);
        SetMissing(*child, true);
        marked = true;
    }
    return marked;
}

void CKVLibraryList::SetMissing(CKVLibrary& library, bool missing) {
    if (library.IsMissing() == missing) return;
    library.SetMissing(missing);
    ++treeVersion_;
}

void CKVLibraryList::GetModificationTime(FileTime& time, KVFilePathRef path) { time = ModificationTimeOf(path, time); }

CKVLibrary* CKVLibraryList::FindLibraryByPath(KVFilePathRef path) {
    if (kv::IsEmptyPath(path)) return nullptr;
    // A path in an application folder whose root is missing is looked for
    // among the user's, then the remembered files.
    std::int32_t root = kPersistentRoot;
    if (IsInLibraryFolders(kApplicationFolders, path) && applicationRoot_ != nullptr) {
        root = kApplicationRoot;
    } else if (IsInLibraryFolders(kUserFolders, path) && userRoot_ != nullptr) {
        root = kUserRoot;
    }
    if (RootLibrary(root) == nullptr) return nullptr;
    return FindInRoot(root, KeyOf(path));
}

CKVLibrary* CKVLibraryList::RootLibrary(std::int32_t root) const {
    switch (root) {
        case kApplicationRoot: return applicationRoot_.get();
        case kUserRoot: return userRoot_.get();
        default: return persistentRoot_.get();
    }
}

namespace {

// Records each key's library in the order of the search by path: a folder's
// children are looked at before anything inside them, then its folders are
// searched in key order, depth first; the first library met keeps the key.
void IndexByPath(const CKVLibrary& folder, std::unordered_map<std::u16string_view, CKVLibrary*>& libraries) {
    for (const auto& [key, child] : folder.ChildLibraries()) libraries.try_emplace(key, child.get());
    for (const auto& [key, child] : folder.ChildLibraries()) {
        if (child->IsFolder()) IndexByPath(*child, libraries);
    }
}

}  // namespace

CKVLibrary* CKVLibraryList::FindInRoot(std::int32_t root, const std::u16string& key) {
    PathIndex& index = pathIndexes_[root];
    if (index.treeVersion != treeVersion_) {
        index.libraries.clear();
        index.treeVersion = ~std::uint64_t{0};
        IndexByPath(*RootLibrary(root), index.libraries);
        index.treeVersion = treeVersion_;
    }
    const auto found = index.libraries.find(key);
    return found != index.libraries.end() ? found->second : nullptr;
}

// Appends the visible files below `folder` in index order; missing files
// and folders, and everything in a missing folder, are left out.
void CKVLibraryList::ListVisible(const CKVLibrary& folder, std::int32_t root, Listing& listing) {
    for (const auto& [key, child] : folder.ChildLibraries()) {
        if (child->IsMissing()) continue;
        if (child->IsFolder()) {
            ++listing.folders;
            ListVisible(*child, root, listing);
        } else {
            listing.files.push_back({child.get(), root});
        }
    }
}

const CKVLibraryList::Listing& CKVLibraryList::CurrentListing() {
    if (listing_.treeVersion == treeVersion_) return listing_;
    listing_.treeVersion = ~std::uint64_t{0};
    listing_.files.clear();
    listing_.folders = 0;
    for (const std::int32_t root : {kApplicationRoot, kUserRoot, kPersistentRoot}) {
        if (const CKVLibrary* library = RootLibrary(root)) ListVisible(*library, root, listing_);
    }
    listing_.treeVersion = treeVersion_;
    return listing_;
}

CKVLibrary* CKVLibraryList::GetLibraryByIndex(std::int32_t index, std::int32_t* whichRoot) {
    if (index < 0) return nullptr;
    const Listing& listing = CurrentListing();
    if (std::size_t(index) >= listing.files.size()) return nullptr;
    const ListedLibrary& listed = listing.files[std::size_t(index)];
    if (whichRoot != nullptr) *whichRoot = listed.root;
    return listed.library;
}

std::int32_t CKVLibraryList::CountListedLibraries(bool includeFolders) {
    const Listing& listing = CurrentListing();
    return std::int32_t(listing.files.size()) + (includeFolders ? listing.folders : 0);
}

namespace {

// Empties a container and gives its memory back: a reload rebuilds the list
// in place, so storage kept after clearing would be out of reach.
template <class Container>
void Release(Container& container) {
    Container().swap(container);
}

}  // namespace

void CKVLibraryList::ClearLibraries() {
    for (std::unique_ptr<CKVLibrary>* root : {&applicationRoot_, &userRoot_, &persistentRoot_}) {
        // The pointer is cleared before its library goes.
        delete root->release();
    }
    ++treeVersion_;
    Release(applicationFolders_);
    Release(userFolders_);
    // They pointed into the persistent root.
    Release(persistentLibraries_);
    Release(listing_.files);
    for (PathIndex& index : pathIndexes_) Release(index.libraries);
    for (std::int32_t kind = 0; kind < 2; ++kind) {
        Release(canonicalFolders_[kind]);
        canonicalFoldersKnown_[kind] = false;
    }
    Release(scanning_);
}

void CKVLibraryList::ClearPersistentPaths() { Release(persistentPaths_); }
