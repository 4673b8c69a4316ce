// One node of the library tree: a library file, or a folder that holds
// further libraries. It carries the node's path, display name, id and time
// stamp and owns its children. SwatchesCore is the class made for every
// file and folder; the list builds its three roots from this class itself.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "KVError.h"
#include "KVFilePath.h"
#include "KVUnicodeString.h"
#include "ZPTypes.h"
#include "platform/FileTime.h"

class CKVLibraryList;

class CKVLibrary {
public:
    // Children keyed by the string form of their paths, in exact code-unit
    // order (the order of the host's string comparison).
    using Children = std::map<std::u16string, std::unique_ptr<CKVLibrary>>;

    // Copies `path` (null: an empty path, as the roots have) and stamps the
    // node with the current time. A host failure throws kv::Error.
    CKVLibrary(void* context, bool isFolder, KVFilePathRef path, std::int32_t libraryId);
    CKVLibrary(const CKVLibrary&) = delete;
    CKVLibrary& operator=(const CKVLibrary&) = delete;

    // The virtual operations, in slot order.
    // Deletes the children, and so the whole subtree.
    virtual ~CKVLibrary();
    // Marks the library's state saved, then each child's in key order,
    // stopping at the first child that fails; its failure as a code.
    virtual kv::ResultCode SaveState();
    // Open, then Close; the result of Open is dropped.
    virtual void Reload();
    virtual const char* GetBaseName() const;
    // UpdateTimeStamp's result.
    virtual kv::ResultCode Open();
    // A folder refreshes its children; an open file whose last-write time
    // differs from the stamp, in either direction, is reloaded.
    virtual void Refresh();
    virtual void Close();
    // Takes the file's last-write time as the stamp when the file exists; 0.
    virtual kv::ResultCode UpdateTimeStamp();
    // Null: a plain library has no open document.
    virtual KVDocumentHandle GetDocument() const;
    virtual void* GetExtra() const;

    const kv::UnicodeString& Name() const noexcept { return name_; }
    KVFilePathRef Path() const noexcept { return path_.Get(); }
    std::int32_t LibraryId() const noexcept { return libraryId_; }
    void* Context() const noexcept { return context_; }
    bool IsFolder() const noexcept { return isFolder_ != 0; }
    bool IsMissing() const noexcept { return isMissing_ != 0; }
    kv::platform::FileTime TimeStamp() const noexcept { return timeStamp_; }
    const Children& ChildLibraries() const noexcept { return children_; }
    bool StateSaved() const noexcept { return stateSaved_; }

protected:
    kv::UnicodeString& MutableName() noexcept { return name_; }
    // Takes `child` under `key` unless the key is taken, in which case the
    // child listed there stays and `child` is deleted. The place of the key,
    // and whether its child is the new one.
    std::pair<Children::iterator, bool> AdoptChild(std::u16string key, std::unique_ptr<CKVLibrary> child);
    void SetMissing(bool missing) noexcept { isMissing_ = missing ? 1 : 0; }

private:
    // The list builds the tree and marks libraries missing.
    friend class CKVLibraryList;

    kv::UnicodeString name_;
    kv::FilePath path_;
    std::int32_t libraryId_;
    void* context_;
    std::uint8_t isFolder_;
    std::uint8_t isMissing_ = 0;
    kv::platform::FileTime timeStamp_;
    Children children_;
    bool stateSaved_ = false;
};

// The last-write time of the file or folder `path` names, links followed:
// `seed` when it does not exist or cannot be found. A host failure throws
// kv::Error.
kv::platform::FileTime ModificationTimeOf(KVFilePathRef path, kv::platform::FileTime seed);
