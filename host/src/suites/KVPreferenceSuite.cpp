// Preferences kept in a file, read on every call (HostPreferences.h). A key
// is the prefix followed by the suffix.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVPreferenceSuite};

// `value` is written only when the answer is 0.
ZPErr GetIntegerPreference(HostState& host, const char* prefix, const char* suffix, std::int32_t* value) {
    if (prefix == nullptr || suffix == nullptr || value == nullptr) return kZPBadParameterErr;
    return host.preferences.GetInteger(std::string(prefix) + suffix, *value);
}

// `path` is changed only when the answer is 0.
ZPErr GetFilePathPreference(HostState& host, const char* prefix, const char* suffix, KVFilePathRef path) {
    HostFilePath* found = host.filePaths.Find(path);
    if (prefix == nullptr || suffix == nullptr || found == nullptr) return kZPBadParameterErr;
    std::string text;
    if (const ZPErr error = host.preferences.GetString(std::string(prefix) + suffix, text)) return error;
    found->path = std::move(text);
    return kZPNoErr;
}

const KVPreferenceSuite table = {
    HostFunction<kSuite, "GetIntegerPreference", &GetIntegerPreference>::Call,
    HostFunction<kSuite, "GetFilePathPreference", &GetFilePathPreference>::Call,
};

}  // namespace

const void* KVPreferenceSuiteTable() { return &table; }

}  // namespace kelvra
