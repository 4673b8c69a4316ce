// The basic suite: suites by exact name and version. Its own calls are not
// counted for call faults; a suite is made unavailable instead.
#include "HostState.h"

namespace kelvra {

namespace {

ZPErr AcquireSuite(const char* name, std::int32_t version, const void** suite) noexcept {
    if (suite != nullptr) *suite = nullptr;
    HostState* host = CurrentHost();
    if (host == nullptr) return kZPCantHappenErr;
    if (name == nullptr || suite == nullptr) return kZPBadParameterErr;
    try {
        if (host->faults.IsSuiteUnavailable(name, version)) return kZPSuiteNotFoundErr;
        return host->suites.Acquire(name, version, suite);
    } catch (...) {
        return kZPOutOfMemoryErr;
    }
}

ZPErr ReleaseSuite(const char* name, std::int32_t version) noexcept {
    HostState* host = CurrentHost();
    if (host == nullptr) return kZPCantHappenErr;
    if (name == nullptr) return kZPBadParameterErr;
    return host->suites.Release(name, version);
}

const ZPBasicSuite basicSuite = {AcquireSuite, ReleaseSuite};

}  // namespace

const ZPBasicSuite* HostBasicSuite() { return &basicSuite; }

}  // namespace kelvra
