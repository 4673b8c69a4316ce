// Strings the host keeps until it ends; the caller never disposes of them.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVStringSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVGlobalUnicodeStringSuite};

ZPErr NewGlobalString(HostState& host, const char* text, KVUnicodeStringRef* string) {
    if (string == nullptr) return kZPBadParameterErr;
    *string = nullptr;
    if (text == nullptr) return kZPBadParameterErr;
    *string = host.NewStringFromPlatformText(text, true);
    return kZPNoErr;
}

const KVGlobalUnicodeStringSuite table = {
    HostFunction<kSuite, "NewGlobalString", &NewGlobalString>::Call,
};

}  // namespace

const void* KVGlobalUnicodeStringSuiteTable() { return &table; }

}  // namespace kelvra
