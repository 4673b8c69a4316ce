// File paths on the real file system. A path is kept as its string form;
// a shortcut is a symbolic link.
#include "../SuiteCall.h"
#include "../UnicodeText.h"
#include "HostSuites.h"

#include <KVStringSuites.h>

#include <sys/stat.h>
#include <unistd.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVFilePathSuite};

// The last component, trailing slashes ignored ("/" stays "/").
std::string FileName(const std::string& path) {
    std::size_t end = path.size();
    while (end > 1 && path[end - 1] == '/') --end;
    const std::size_t slash = path.rfind('/', end - 1);
    if (slash == std::string::npos) return path.substr(0, end);
    if (slash == 0 && end == 1) return "/";
    return path.substr(slash + 1, end - slash - 1);
}

// After the name's last dot; none for a name that only starts with one.
std::string Extension(const std::string& path) {
    const std::string name = FileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
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

ZPErr ResolveShortcut(HostState& host, KVFilePathRef path, KVFilePathRef resolved) {
    const HostFilePath* found = host.filePaths.Find(path);
    HostFilePath* target = host.filePaths.Find(resolved);
    if (found == nullptr || target == nullptr) return kZPBadParameterErr;
    std::string link(4096, '\0');
    const ssize_t length = found->path.empty() ? -1 : readlink(found->path.c_str(), link.data(), link.size());
    if (length < 0 || std::size_t(length) >= link.size()) {
        target->path = found->path;
        return kZPNoErr;
    }
    link.resize(std::size_t(length));
    const std::size_t slash = found->path.rfind('/');
    const bool relative = !link.starts_with('/') && slash != std::string::npos;
    target->path = relative ? found->path.substr(0, slash + 1) + link : link;
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
