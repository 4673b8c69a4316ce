#include "CKVLibrary.h"

#include "ExceptionToResult.h"
#include "LibraryListErrors.h"
#include "platform/DirectorySearch.h"

namespace {

// The entry search on the path itself, without asking first whether it exists.
kv::platform::FileTime EntryTimeOf(KVFilePathRef path, kv::platform::FileTime seed) {
    kv::platform::FileTime time = seed;
    kv::platform::FindEntryTime(kv::PathStringOf(path).ToUTF16(), time);
    return time;
}

}  // namespace

kv::platform::FileTime ModificationTimeOf(KVFilePathRef path, kv::platform::FileTime seed) {
    if (!kv::ExistenceOf(path, true).exists) return seed;
    return EntryTimeOf(path, seed);
}

CKVLibrary::CKVLibrary(void* context, bool isFolder, KVFilePathRef path, std::int32_t libraryId)
    : path_(path != nullptr ? kv::FilePath::CopyOf(path) : kv::FilePath()),
      libraryId_(libraryId),
      context_(context),
      isFolder_(isFolder ? 1 : 0),
      timeStamp_(kv::platform::CurrentSystemTime()) {}

CKVLibrary::~CKVLibrary() = default;

kv::ResultCode CKVLibrary::SaveState() {
    stateSaved_ = true;
    return kv::ExceptionToResultWhileSavingState([&]() -> kv::ResultCode {
        for (const auto& [key, child] : children_) {
            if (const kv::ResultCode result = child->SaveState()) ThrowLibraryListError(result);
        }
        return kv::kNoErr;
    });
}

std::pair<CKVLibrary::Children::iterator, bool> CKVLibrary::AdoptChild(std::u16string key,
                                                                      std::unique_ptr<CKVLibrary> child) {
    const auto adopted = children_.try_emplace(std::move(key));
    if (adopted.second) adopted.first->second = std::move(child);
    return adopted;
}

void CKVLibrary::Reload() {
    Open();
    Close();
}

const char* CKVLibrary::GetBaseName() const { return "_Base"; }

kv::ResultCode CKVLibrary::Open() { return UpdateTimeStamp(); }

void CKVLibrary::Refresh() {
    if (IsFolder()) {
        for (const auto& [key, child] : children_) child->Refresh();
        return;
    }
    if (GetDocument() == nullptr || !kv::ExistenceOf(Path(), true).exists) return;
    // Seeded with now, a file that cannot be read counts as changed.
    if (!(EntryTimeOf(Path(), kv::platform::CurrentSystemTime()) == timeStamp_)) Reload();
}

void CKVLibrary::Close() {}

kv::ResultCode CKVLibrary::UpdateTimeStamp() {
    timeStamp_ = ModificationTimeOf(Path(), timeStamp_);
    return kv::kNoErr;
}

KVDocumentHandle CKVLibrary::GetDocument() const { return nullptr; }

void* CKVLibrary::GetExtra() const { return nullptr; }
