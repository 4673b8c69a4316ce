// File paths on the real file system. A path is kept as its string form;
// a shortcut is a symbolic link, resolved to the end of its chain.
#include "../SuiteCall.h"
#include "../PathText.h"
#include "../UnicodeText.h"
#include "HostSuites.h"

#include <KVStringSuites.h>

#include <sys/stat.h>

#include <filesystem>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVFilePathSuite};

// A symbolic link is followed at most this many times, the limit the
// system itself applies, so that a resolved path and stat() agree on
// whether a chain of links ends.
constexpr int kMaxLinkHops = 40;

// The final target of a chain of symbolic links; a relative target is
// taken against the folder of the link that holds it (joined, not
// normalised, since ".." after a linked folder is not the folder's parent).
// A loop, or a chain longer than kMaxLinkHops, ends in the empty path: like
// a dangling link's target it does not exist, so nobody lists it.
std::string FinalTarget(std::string path) {
    for (int hop = 0; hop <= kMaxLinkHops; ++hop) {
        std::error_code notALink;
        const std::filesystem::path target = std::filesystem::read_symlink(path, notALink);
        if (notALink) return path;
        const std::size_t slash = path.rfind('/');
        path = target.is_absolute() || slash == std::string::npos ? target.string()
                                                                  : path.substr(0, slash + 1) + target.string();
    }
    return std::string();
}

ZPErr New(HostState& host, KVFilePathRef* path) {
    if (path == nullptr) return kZPBadParameterErr;
    *path = host.filePaths.Add<KVFilePathRef>(std::make_unique<HostFilePath>());
    return kZPNoErr;
}

ZPErr NewFromString(HostState& host, KVUnicodeStringRef string, KVFilePathRef* path) {
    if (path == nullptr) return kZPBadParameterErr;
    *path = nullptr;
    if (host.strings.Find(string) == nullptr) return kZPBadParameterErr;
    *path = host.filePaths.Add<KVFilePathRef>(std::make_unique<HostFilePath>(HostFilePath{host.Utf8Of(string)}));
    return kZPNoErr;
}

ZPErr Dispose(HostState& host, KVFilePathRef path) {
    return host.filePaths.Remove(path) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr Assign(HostState& host, KVFilePathRef target, KVFilePathRef source) {
    HostFilePath* to = host.filePaths.Find(target);
    const HostFilePath* from = host.filePaths.Find(source);
    if (to == nullptr || from == nullptr) return kZPBadParameterErr;
    to->path = from->path;
    return kZPNoErr;
}

ZPErr IsEmpty(HostState& host, KVFilePathRef path, ZPBoolean* empty) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr || empty == nullptr) return kZPBadParameterErr;
    *empty = found->path.empty() ? 1 : 0;
    return kZPNoErr;
}

ZPErr Exists(HostState& host, KVFilePathRef path, ZPBoolean resolveLinks, ZPBoolean* exists, ZPBoolean* isFile) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr || exists == nullptr) return kZPBadParameterErr;
    struct stat info {};
    const int status = found->path.empty() ? -1
                       : resolveLinks      ? stat(found->path.c_str(), &info)
                                           : lstat(found->path.c_str(), &info);
    *exists = status == 0 ? 1 : 0;
    if (isFile != nullptr) *isFile = status == 0 && !S_ISDIR(info.st_mode) ? 1 : 0;
    return kZPNoErr;
}

ZPErr GetAsString(HostState& host, KVFilePathRef path, KVUnicodeStringRef string) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr) return kZPBadParameterErr;
    return host.SetText(string, Utf8ToUtf16(found->path)) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr GetFileExtension(HostState& host, KVFilePathRef path, KVUnicodeStringRef extension) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr) return kZPBadParameterErr;
    return host.SetText(extension, Utf8ToUtf16(Extension(found->path))) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr GetFileName(HostState& host, KVFilePathRef path, KVUnicodeStringRef name) {
    const HostFilePath* found = host.filePaths.Find(path);
    if (found == nullptr) return kZPBadParameterErr;
    const std::string fileName = found->path.empty() ? std::string() : FileName(found->path);
    return host.SetText(name, Utf8ToUtf16(fileName)) ? kZPNoErr : kZPBadParameterErr;
}

// Anything that is not a symbolic link is copied as it is.
ZPErr ResolveShortcut(HostState& host, KVFilePathRef path, KVFilePathRef resolved) {
    const HostFilePath* found = host.filePaths.Find(path);
    HostFilePath* target = host.filePaths.Find(resolved);
    if (found == nullptr || target == nullptr) return kZPBadParameterErr;
    target->path = found->path.empty() ? std::string() : FinalTarget(found->path);
    return kZPNoErr;
}

ZPErr Compare(HostState& host, KVFilePathRef a, KVFilePathRef b, std::int32_t* order) {
    const HostFilePath* first = host.filePaths.Find(a);
    const HostFilePath* second = host.filePaths.Find(b);
    if (first == nullptr || second == nullptr || order == nullptr) return kZPBadParameterErr;
    const int compared = Utf8ToUtf16(first->path).compare(Utf8ToUtf16(second->path));
    *order = compared < 0 ? -1 : compared > 0 ? 1 : 0;
    return kZPNoErr;
}

const KVFilePathSuite table = {
    HostFunction<kSuite, "New", &New>::Call,
    HostFunction<kSuite, "NewFromString", &NewFromString>::Call,
    HostFunction<kSuite, "Dispose", &Dispose>::Call,
    HostFunction<kSuite, "Assign", &Assign>::Call,
    HostFunction<kSuite, "IsEmpty", &IsEmpty>::Call,
    HostFunction<kSuite, "Exists", &Exists>::Call,
    HostFunction<kSuite, "GetAsString", &GetAsString>::Call,
    HostFunction<kSuite, "GetFileExtension", &GetFileExtension>::Call,
    HostFunction<kSuite, "GetFileName", &GetFileName>::Call,
    HostFunction<kSuite, "ResolveShortcut", &ResolveShortcut>::Call,
    HostFunction<kSuite, "Compare", &Compare>::Call,
};

}  // namespace

const void* KVFilePathSuiteTable() { return &table; }

}  // namespace kelvra
