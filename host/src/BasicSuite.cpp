// The basic suite: suites by exact name and version. Its two functions are
// host calls like any other: counted, and failed on demand, under the suite
// name "ZP Basic Suite".
#include "SuiteCall.h"

namespace kelvra {

namespace {

ZPErr AcquireSuite(const char* name, std::int32_t version, const void** suite) noexcept {
    if (suite != nullptr) *suite = nullptr;
    static const CallSite site = CallSiteOf(kBasicSuiteName, "AcquireSuite");
    return GuardedCall<ZPErr>(
        site,
        [&](HostState& host) {
            if (name == nullptr || suite == nullptr) return kZPBadParameterErr;
            if (host.faults.IsSuiteUnavailable(name, version)) return kZPSuiteNotFoundErr;
            return host.suites.Acquire(name, version, suite);
        },
        [](HostState&) {});
}

ZPErr ReleaseSuite(const char* name, std::int32_t version) noexcept {
    const auto release = [&](HostState& host) {
        return name == nullptr ? kZPBadParameterErr : host.suites.Release(name, version);
    };
    // A failed release still lets go of the suite: a module can do nothing
    // about a refused release, and leak counts stay about the module.
    static const CallSite site = CallSiteOf(kBasicSuiteName, "ReleaseSuite");
    return GuardedCall<ZPErr>(site, release, [&](HostState& host) { release(host); });
}

const ZPBasicSuite basicSuite = {AcquireSuite, ReleaseSuite};

}  // namespace

const ZPBasicSuite* HostBasicSuite() { return &basicSuite; }

}  // namespace kelvra
