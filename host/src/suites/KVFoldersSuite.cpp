// Host folders by folder type, mapped to directories (HostFolders.h).
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVFoldersSuite};

// The mapped directory whether or not it exists, made first (with its
// parents) when `create` is set; an unknown type is an empty path. The
// path is left empty whenever the answer is not 0.
ZPErr FindFolder(HostState& host, std::int32_t folderType, ZPBoolean create, KVFilePathRef folder) {
    HostFilePath* path = host.filePaths.Find(folder);
    if (path == nullptr) return kZPBadParameterErr;
    path->path.clear();
    const std::filesystem::path* directory = host.folders.Find(folderType);
    if (directory == nullptr) return kZPNoErr;
    if (create != 0) {
        std::error_code error;
        std::filesystem::create_directories(*directory, error);
        if (error || !std::filesystem::is_directory(*directory, error)) return kFolderNotMadeErr;
    }
    path->path = directory->string();
    return kZPNoErr;
}

const KVFoldersSuite table = {
    HostFunction<kSuite, "FindFolder", &FindFolder>::Call,
};

}  // namespace

const void* KVFoldersSuiteTable() { return &table; }

}  // namespace kelvra
