#include "KVFilePath.h"

#include <utility>

#include "KVError.h"
#include "KVStringSuites.h"
#include "RegisteredSuites.h"

namespace kv {

namespace {

const KVFilePathSuite& Suite() { return RequireSuite<KVFilePathSuite>(registered::FilePath()); }

// Makes a path with `make`, which fills in the new path and answers the
// host's code.
template <class Make>
KVFilePathRef Made(Make make) {
    KVFilePathRef path = nullptr;
    ThrowIfError(make(&path));
    if (path == nullptr) throw Contract::Violation("Failed Postcondition");
    return path;
}

}  // namespace

UnicodeString FileNameOf(KVFilePathRef path) {
    UnicodeString name;
    ThrowIfError(Suite().GetFileName(path, name.Get()));
    return name;
}

UnicodeString FileExtensionOf(KVFilePathRef path) {
    UnicodeString extension;
    ThrowIfError(Suite().GetFileExtension(path, extension.Get()));
    return extension;
}

UnicodeString PathStringOf(KVFilePathRef path) {
    UnicodeString string;
    ThrowIfError(Suite().GetAsString(path, string.Get()));
    return string;
}

bool IsEmptyPath(KVFilePathRef path) {
    ZPBoolean empty = 0;
    ThrowIfError(Suite().IsEmpty(path, &empty));
    return empty != 0;
}

PathExistence ExistenceOf(KVFilePathRef path, bool resolveLinks) {
    ZPBoolean exists = 0;
    ZPBoolean isFile = 0;
    ThrowIfError(Suite().Exists(path, resolveLinks ? 1 : 0, &exists, &isFile));
    return {exists != 0, isFile != 0};
}

FilePath::FilePath() : path_(Made([](KVFilePathRef* path) { return Suite().New(path); })) {}

FilePath FilePath::FromString(const UnicodeString& string) {
    return FilePath(Made([&](KVFilePathRef* path) { return Suite().NewFromString(string.Get(), path); }));
}

FilePath FilePath::FromUTF16(const std::u16string& text) { return FromString(UnicodeString::FromUTF16(text)); }

FilePath FilePath::CopyOf(KVFilePathRef path) {
    FilePath copy;
    copy.Assign(path);
    return copy;
}

FilePath::FilePath(FilePath&& other) noexcept : path_(std::exchange(other.path_, nullptr)) {}

FilePath& FilePath::operator=(FilePath&& other) noexcept {
    std::swap(path_, other.path_);
    return *this;
}

FilePath::~FilePath() {
    if (path_ == nullptr) return;
    // A path exists only if the suite was acquired for it; it is still held.
    try {
        Suite().Dispose(path_);
    } catch (const Error&) {
    }
}

void FilePath::Assign(KVFilePathRef source) { ThrowIfError(Suite().Assign(path_, source)); }

FilePath FilePath::Resolved() const {
    FilePath resolved;
    ThrowIfError(Suite().ResolveShortcut(path_, resolved.Get()));
    return resolved;
}

std::int32_t FilePath::Compare(const FilePath& other) const {
    std::int32_t order = 0;
    ThrowIfError(Suite().Compare(path_, other.path_, &order));
    return order;
}

}  // namespace kv
