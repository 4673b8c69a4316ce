#include "SwatchesCore.h"

#include <cstring>

#include "KVFileSuites.h"
#include "KVSwatchSuites.h"
#include "RegisteredSuites.h"
#include "SuiteNode.h"

namespace {

// The extensions of library files, which their display names leave out;
// compared byte for byte, so "OSE" keeps its extension.
bool IsLibraryExtension(const char* extension) {
    for (const char* known : {"kv", "ocb", "ose"}) {
        if (std::strcmp(extension, known) == 0) return true;
    }
    return false;
}

kv::UnicodeString DisplayNameOf(KVFilePathRef path) {
    const kv::UnicodeString extension = kv::FileExtensionOf(path);
    // No library extension is longer than this.
    char narrow[8] = {};
    const std::size_t length = extension.GetPlatformText(narrow, sizeof narrow);
    kv::UnicodeString name = kv::FileNameOf(path);
    if (length >= sizeof narrow || !IsLibraryExtension(narrow)) return name;
    std::u16string units = name.ToUTF16();
    const std::size_t dotted = extension.Length() + 1;
    if (units.size() < dotted) return name;
    units.resize(units.size() - dotted);
    return kv::UnicodeString::FromUTF16(units);
}

}  // namespace

SwatchesCore::SwatchesCore(void* context, std::int32_t libraryId) : CKVLibrary(context, false, nullptr, libraryId) {}

SwatchesCore::SwatchesCore(void* context, std::int32_t libraryId, KVFilePathRef path, std::int32_t, bool isFolder)
    : CKVLibrary(context, isFolder, path, libraryId) {
    MutableName() = DisplayNameOf(path);
}

SwatchesCore::~SwatchesCore() = default;

kv::ResultCode SwatchesCore::UpdateTimeStamp() {
    const auto& pathStyle = kv::RequireSuite<KVPathStyleSuite>(kv::registered::PathStyle());
    return pathStyle.OpenLibraryDocument(Path(), &document_);
}

KVDocumentHandle SwatchesCore::GetDocument() const { return document_; }

KVSwatchListRef SwatchesCore::GetSwatchList() const {
    if (document_ == nullptr) return nullptr;
    const auto* swatchLists = kv::AcquireSuiteOrNull<KVSwatchListSuite>(kv::registered::SwatchList());
    KVSwatchListRef list = nullptr;
    if (swatchLists == nullptr || swatchLists->GetSwatchList(document_, &list) != kv::kNoErr) return nullptr;
    return list;
}
