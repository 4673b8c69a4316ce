// The one list of swatch libraries the plug-in offers the host and other
// plug-ins. It gathers them under three roots: the host's application
// library folders, the user's library folders, and single files opened from
// elsewhere and remembered in the host's preferences. Every file and folder
// met becomes a library made by the owner's factory; a folder's children
// are its contents, so the whole tree under a library folder is listed.
// Files that vanish stay as missing nodes, hidden from counting and
// indexing, so that a file put back is found again under its old node.
//
// Listing is linear: the visible libraries are kept in a flat index, and
// libraries by path in a table per root, both rebuilt on first use after
// the tree changed.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "CKVLibrary.h"
#include "KVError.h"
#include "KVFilePath.h"
#include "ZPTypes.h"
#include "platform/FileTime.h"

// Stores a new library for `path` in `library` (from then on owned by the
// list), or null when the path is not to be listed. A kv::Error it throws
// means the same as null.
using LibraryFactory = void (*)(CKVLibrary*& library, KVFilePathRef path, bool isFolder);

class CKVLibraryList {
public:
    // Which folders an operation means.
    enum Folders : std::int32_t { kApplicationFolders = 0, kUserFolders = 1 };
    // The root of a library found by index.
    enum Root : std::int32_t { kApplicationRoot = 0, kUserRoot = 1, kPersistentRoot = 2 };

    static constexpr const char* kDefaultPreferencePrefix = "KVDefaultPersistentLibraryPrefix";
    // Folders nested deeper below a library folder are not scanned, and a
    // folder is not scanned again inside itself (a link to an ancestor), so
    // that no tree on disk can make a scan endless.
    static constexpr std::size_t kMaxFolderDepth = 64;

    CKVLibraryList();
    ~CKVLibraryList();
    CKVLibraryList(const CKVLibraryList&) = delete;
    CKVLibraryList& operator=(const CKVLibraryList&) = delete;

    // The owner may replace the prefix before Init; the text is not copied.
    void SetPreferencePrefix(const char* prefix) noexcept { preferencePrefix_ = prefix; }
    const char* PreferencePrefix() const noexcept { return preferencePrefix_; }

    // "PARM" when either is null; else stores both, reads the remembered
    // paths from the preferences (whatever that answers) and answers 0.
    kv::ResultCode Init(void* context, LibraryFactory factory);
    // Adds the host folder of `folderType` (created when `which` is the
    // user's) and scans it: the host's code when it has no such folder,
    // 0 for an empty path, "!MEM" when its root cannot be made. A host
    // failure while scanning the folder itself throws kv::Error.
    kv::ResultCode AddLibraryFolder(std::int32_t which, std::int32_t folderType);
    // Lists the remembered files that no library folder holds, in path
    // order: "PARM" at the first that is gone or refused (those before it
    // stay listed), "!MEM" when the root cannot be made, else 0.
    kv::ResultCode OpenPersistentLibraries();
    // Lists an existing file under the persistent root; its library (the
    // one listed already when the path is known), or null.
    CKVLibrary* AddPersistentLibrary(KVFilePathRef path);
    // The library of `path` under the root its place calls for, missing
    // libraries included; null when there is none.
    CKVLibrary* FindLibraryByPath(KVFilePathRef path);
    // The `index`-th visible library file over the three roots, counted from
    // 0; null past the end. `whichRoot`, when given, receives its Root.
    CKVLibrary* GetLibraryByIndex(std::int32_t index, std::int32_t* whichRoot = nullptr);
    // The visible library files, and with `includeFolders` the visible
    // folders too.
    std::int32_t CountListedLibraries(bool includeFolders);
    // Brings the folders' libraries in line with the disk: folders whose
    // time moved since the last refresh are scanned again, the others only
    // looked into for subfolders that moved.
    void RefreshAll();
    // Deletes the three roots with every library, and forgets the folders;
    // keeps no memory.
    void ClearLibraries();
    // Keeps no memory either.
    void ClearPersistentPaths();
    // Reads the remembered paths that exist, up to the first entry that
    // cannot be read: 0 then, the host's code when the count cannot be read,
    // "PARM" without the preference suite, "UNKN" when anything throws.
    // Init calls it.
    kv::ResultCode ReadPersistentList();

    // Rises whenever the set of visible libraries changes (never reset,
    // though adding the first folder sets it to 1).
    std::uint32_t ChangeCount() const noexcept { return changeCount_; }
    kv::platform::FileTime LastScanTime() const noexcept { return lastScanTime_; }
    const std::vector<kv::FilePath>& ApplicationFolders() const noexcept { return applicationFolders_; }
    const std::vector<kv::FilePath>& UserFolders() const noexcept { return userFolders_; }
    // Unique, in the host's ordering of paths.
    const std::vector<kv::FilePath>& PersistentPaths() const noexcept { return persistentPaths_; }
    const std::vector<CKVLibrary*>& PersistentLibraries() const noexcept { return persistentLibraries_; }
    const CKVLibrary* ApplicationRoot() const noexcept { return applicationRoot_.get(); }
    const CKVLibrary* UserRoot() const noexcept { return userRoot_.get(); }
    const CKVLibrary* PersistentRoot() const noexcept { return persistentRoot_.get(); }

private:
    struct ListedLibrary {
        CKVLibrary* library;
        std::int32_t root;
    };
    // The visible files in index order, and how many visible folders hold them.
    struct Listing {
        std::uint64_t treeVersion = ~std::uint64_t{0};
        std::vector<ListedLibrary> files;
        std::int32_t folders = 0;
    };
    // Each key's library as the depth-first search by path finds it first.
    struct PathIndex {
        std::uint64_t treeVersion = ~std::uint64_t{0};
        std::unordered_map<std::u16string_view, CKVLibrary*> libraries;
    };
    class ScanGuard;

    void InsertPersistentPath(kv::FilePath path);
    bool IsInLibraryFolders(std::int32_t which, KVFilePathRef path);
    const std::vector<std::u16string>& CanonicalFolders(std::int32_t which);
    // Makes a root when there is none; false when there is no memory for it.
    bool EnsureRoot(std::unique_ptr<CKVLibrary>& root, std::int32_t libraryId);

    // The folder scans take the folder's path as text: its key, which is
    // also what the folder listing needs.
    void ScanFolder(CKVLibrary& folder, std::u16string_view path);
    CKVLibrary* AddEntry(CKVLibrary& folder, KVFilePathRef path, bool isFolder);
    // AddEntry for a path whose key the caller has taken already.
    CKVLibrary* AddEntry(CKVLibrary& folder, KVFilePathRef path, std::u16string key, bool isFolder);
    // The factory's library for `path`, or null (also when it threw kv::Error).
    std::unique_ptr<CKVLibrary> MakeLibrary(KVFilePathRef path, bool isFolder);
    CKVLibrary* Place(CKVLibrary& folder, std::unique_ptr<CKVLibrary> library, std::u16string key, bool isFolder);
    void RescanFolder(CKVLibrary& folder, std::u16string_view path);
    void RefreshSubfolders(CKVLibrary& folder, std::u16string_view path);
    void RefreshFolders(const std::vector<kv::FilePath>& folders, CKVLibrary* root, kv::platform::FileTime now);
    // A known subfolder: rescanned when its time moved since the last
    // refresh, else only looked into for subfolders that moved.
    void RefreshFolder(CKVLibrary& folder, KVFilePathRef path, std::u16string_view pathText);
    bool MarkMissing(CKVLibrary& folder);
    void SetMissing(CKVLibrary& library, bool missing);
    void GetModificationTime(kv::platform::FileTime& time, KVFilePathRef path);
    bool MayScan(std::u16string_view key) const;

    const Listing& CurrentListing();
    static void ListVisible(const CKVLibrary& folder, std::int32_t root, Listing& listing);
    CKVLibrary* FindInRoot(std::int32_t root, const std::u16string& key);
    CKVLibrary* RootLibrary(std::int32_t root) const;

    std::vector<kv::FilePath> applicationFolders_;
    std::vector<kv::FilePath> userFolders_;
    std::vector<kv::FilePath> persistentPaths_;
    std::vector<CKVLibrary*> persistentLibraries_;
    kv::platform::FileTime lastScanTime_;
    std::uint32_t changeCount_ = 0;
    LibraryFactory libraryFactory_ = nullptr;
    std::unique_ptr<CKVLibrary> applicationRoot_;
    std::unique_ptr<CKVLibrary> userRoot_;
    std::unique_ptr<CKVLibrary> persistentRoot_;
    void* context_ = nullptr;
    const char* preferencePrefix_ = kDefaultPreferencePrefix;

    // Rises with every change to the tree; the caches are of one version.
    std::uint64_t treeVersion_ = 0;
    Listing listing_;
    PathIndex pathIndexes_[3];
    std::vector<std::u16string> canonicalFolders_[2];
    bool canonicalFoldersKnown_[2] = {false, false};
    // The keys of the folders being scanned, outermost first.
    std::vector<std::u16string_view> scanning_;
};
