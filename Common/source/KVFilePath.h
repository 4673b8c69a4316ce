// Host file paths. The functions ask a path the module may not own; the
// class owns one. Each operation forwards to one function of "KV File Path
// Suite" and throws kv::Error with the host's code when the host fails; a
// host that reports success without giving a path breaks its contract
// (kv::Contract::Violation).
#pragma once

#include <cstdint>
#include <string>

#include "KVUnicodeString.h"
#include "ZPTypes.h"

namespace kv {

// The path's last component, as the host shows it.
UnicodeString FileNameOf(KVFilePathRef path);
// The extension without its dot; empty when the name has none.
UnicodeString FileExtensionOf(KVFilePathRef path);
// The path's string form.
UnicodeString PathStringOf(KVFilePathRef path);
bool IsEmptyPath(KVFilePathRef path);

struct PathExistence {
    bool exists = false;
    bool isFile = false;  // anything but a folder
};
// With resolveLinks a link is followed to what it names (links resolved);
// without, the link itself is asked about (links not resolved).
PathExistence ExistenceOf(KVFilePathRef path, bool resolveLinks);

class FilePath {
public:
    // An empty path.
    FilePath();
    static FilePath FromString(const UnicodeString& string);
    static FilePath FromUTF16(const std::u16string& text);
    static FilePath CopyOf(KVFilePathRef path);

    FilePath(FilePath&& other) noexcept;
    FilePath& operator=(FilePath&& other) noexcept;
    FilePath(const FilePath&) = delete;
    FilePath& operator=(const FilePath&) = delete;
    ~FilePath();

    KVFilePathRef Get() const noexcept { return path_; }

    void Assign(KVFilePathRef source);
    // The target of a shortcut, or a copy of anything else.
    FilePath Resolved() const;
    // The host's ordering of paths by their string forms: < 0, 0 or > 0.
    std::int32_t Compare(const FilePath& other) const;

private:
    explicit FilePath(KVFilePathRef path) noexcept : path_(path) {}

    KVFilePathRef path_;
};

}  // namespace kv
