// The host's preferences, kept in a file as one flat JSON object, as
// "KV Preference Suite" answers them. The file is read again on every
// lookup, so a test or a person may edit it between two calls.
//
//   {"KVSwatchLibPersistentPrefix_count": 2,
//    "KVSwatchLibPersistentPrefix0": "/home/me/Brights.ose",
//    "KVSwatchLibPersistentPrefix1": "/home/me/Muted.ocb"}
//
// Lookups answer a result code as the suite does: 0, "NAM?" for a key the
// file does not hold (or no file at all), "TYP?" for a value of another
// type, "RNG?" for an integer outside 32 bits, "PREF" for a file that is
// not a JSON object.
#pragma once

#include <ZPTypes.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace kelvra {

// The remembered library files: a count under prefix + "_count" and each
// file under prefix + its index in decimal (0, 1, … 10, …).
inline constexpr const char* kLibraryListPrefix = "KVSwatchLibPersistentPrefix";
inline constexpr const char* kCountSuffix = "_count";

struct RememberedLibrary {
    std::string key;   // where it was written
    std::string path;  // what was written
};

class HostPreferences {
public:
    // The preferences file; until one is given every key is absent.
    void UseFile(std::filesystem::path file) { file_ = std::move(file); }
    const std::filesystem::path& File() const { return file_; }

    // An integer is a JSON number without a fractional part; `value` is
    // written only when the answer is 0.
    ZPErr GetInteger(const std::string& key, std::int32_t& value) const;
    // A file path is a JSON string, the path's string form.
    ZPErr GetString(const std::string& key, std::string& value) const;

    // Remembers a library file as the host's "open other library" command
    // does: reads the count (absent is 0), writes the file's absolute path
    // under the key of that index, then the count + 1; other keys are kept.
    // The file is replaced at once (written beside it, then renamed), and
    // its folder made when missing. HostError when there is no preferences
    // file to write, it is not a JSON object, its count is not a count, or
    // it cannot be written.
    RememberedLibrary RememberLibrary(const std::filesystem::path& library) const;

private:
    std::filesystem::path file_;
};

}  // namespace kelvra
