// The folder scan's view of the file system: the entries of a folder and
// their last-write times. Paths and names are UTF-16, as the host's strings
// are; each platform converts to its own file names.
//
// What is listed follows one pattern rule: a folder path lists every entry
// of that folder, and a path holding "*" or "?" lists the entries of its
// parent folder whose names match its last component. An empty path is the
// process's current folder. "." and "..", and hidden entries, are never
// listed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "FileTime.h"

namespace kv::platform {

enum class SearchMode {
    kFilesOnly,        // every entry that is not a real folder, links included
    kDirectoriesOnly,  // real folders only, never a link
    kAll,
};

class DirectorySearch {
public:
    DirectorySearch(std::u16string_view folder, SearchMode mode);
    ~DirectorySearch();
    DirectorySearch(const DirectorySearch&) = delete;
    DirectorySearch& operator=(const DirectorySearch&) = delete;

    // Moves to the next entry; false when there is none (also when the folder
    // cannot be read at all). Entries come in the file system's order.
    bool Next();

    // The current entry.
    const std::u16string& Name() const;
    // The path searched (the current folder for an empty one) and the name
    // joined by one separator, none added when the path ends with one. A
    // pattern is joined as it stands.
    const std::u16string& Path() const;
    bool IsDirectory() const;
    // Links followed; a link that leads nowhere gives its own time.
    FileTime LastWriteTime() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// The last-write time of the entry that `path` itself names (links
// followed), or of the first entry its pattern matches; false when there is
// none. A plain path finds its entry even when it is hidden; a pattern finds
// its first listed match.
bool FindEntryTime(std::u16string_view path, FileTime& lastWriteTime);

}  // namespace kv::platform
