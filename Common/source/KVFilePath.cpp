#include "KVFilePath.h"

#include "KVError.h"
#include "KVStringSuites.h"
#include "RegisteredSuites.h"

namespace kv {

namespace {

const KVFilePathSuite& Suite() { return RequireSuite<KVFilePathSuite>(registered::FilePath()); }

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

}  // namespace kv
