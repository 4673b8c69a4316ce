// Folder listings on POSIX: readdir, with the entry kind from the listing
// where the file system gives it and from lstat where it does not, and
// times from stat only when asked for.
#include "platform/DirectorySearch.h"

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>

#include "PosixTime.h"
#include "text/Utf8.h"

namespace kv::platform {

namespace {

bool HoldsPattern(std::u16string_view path) { return path.find_first_of(u"*?") != std::u16string_view::npos; }

std::u16string CurrentFolder() {
    std::string buffer(PATH_MAX, '\0');
    if (getcwd(buffer.data(), buffer.size()) == nullptr) return u".";
    buffer.resize(buffer.find('\0'));
    return Utf8ToUtf16(buffer);
}

std::u16string Joined(std::u16string_view folder, std::u16string_view name) {
    std::u16string path(folder);
    if (!path.ends_with(u'/')) path.push_back(u'/');
    path.append(name);
    return path;
}

// The folder a path lists and the pattern its names must match (empty:
// every name).
struct ListedFolder {
    std::string folder;
    std::string pattern;
};

ListedFolder FolderToList(std::u16string_view path) {
    if (!HoldsPattern(path)) return {Utf16ToUtf8(path), {}};
    const std::size_t slash = path.rfind(u'/');
    if (slash == std::u16string_view::npos) return {".", Utf16ToUtf8(path)};
    return {slash == 0 ? "/" : Utf16ToUtf8(path.substr(0, slash)), Utf16ToUtf8(path.substr(slash + 1))};
}

bool IsListed(const char* name, const std::string& pattern) {
    if (name[0] == '.') return false;  // ".", ".." and hidden entries
    return pattern.empty() || fnmatch(pattern.c_str(), name, 0) == 0;
}

bool IsRealDirectory(const std::string& folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat info {};
    return lstat((folder + '/' + entry.d_name).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

struct DirectorySearch::State {
    std::u16string folder;  // the path searched, the current folder for an empty one
    ListedFolder listed;
    SearchMode mode;
    DIR* directory = nullptr;
    std::u16string name;
    std::u16string path;
    bool isDirectory = false;

    ~State() {
        if (directory != nullptr) closedir(directory);
    }
};

DirectorySearch::DirectorySearch(std::u16string_view folder, SearchMode mode) : state_(std::make_unique<State>()) {
    state_->folder = folder.empty() ? CurrentFolder() : std::u16string(folder);
    state_->listed = FolderToList(state_->folder);
    state_->mode = mode;
    state_->directory = opendir(state_->listed.folder.c_str());
}

DirectorySearch::~DirectorySearch() = default;

bool DirectorySearch::Next() {
    if (state_->directory == nullptr) return false;
    while (const dirent* entry = readdir(state_->directory)) {
        if (!IsListed(entry->d_name, state_->listed.pattern)) continue;
        const bool isDirectory = IsRealDirectory(state_->listed.folder, *entry);
        if (state_->mode == SearchMode::kFilesOnly && isDirectory) continue;
        if (state_->mode == SearchMode::kDirectoriesOnly && !isDirectory) continue;
        state_->name = Utf8ToUtf16(entry->d_name);
        state_->path = Joined(state_->folder, state_->name);
        state_->isDirectory = isDirectory;
        return true;
    }
    return false;
}

const std::u16string& DirectorySearch::Name() const { return state_->name; }

const std::u16string& DirectorySearch::Path() const { return state_->path; }

bool DirectorySearch::IsDirectory() const { return state_->isDirectory; }

FileTime DirectorySearch::LastWriteTime() const {
    const std::string path = state_->listed.folder + '/' + Utf16ToUtf8(state_->name);
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 && lstat(path.c_str(), &info) != 0) return {};
    return posix::FileTimeOf(info.st_mtim);
}

bool FindEntryTime(std::u16string_view path, FileTime& lastWriteTime) {
    if (HoldsPattern(path)) {
        DirectorySearch search(path, SearchMode::kAll);
        if (!search.Next()) return false;
        lastWriteTime = search.LastWriteTime();
        return true;
    }
    const std::string name = path.empty() ? std::string(".") : Utf16ToUtf8(path);
    struct stat info {};
    if (stat(name.c_str(), &info) != 0) return false;
    lastWriteTime = posix::FileTimeOf(info.st_mtim);
    return true;
}

}  // namespace kv::platform
