// Access handles that keep a plug-in's code loaded while held; the host
// counts the ones not given back.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <ZPPluginSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kZPAccessSuite};

ZPErr AcquirePluginAccess(HostState& host, ZPPluginRef plugin, ZPAccessRef* access) {
    if (access == nullptr) return kZPBadParameterErr;
    *access = nullptr;
    if (host.FindModule(plugin) == nullptr) return kZPBadParameterErr;
    const std::uintptr_t token = host.NewToken();
    host.accesses.insert(token);
    *access = reinterpret_cast<ZPAccessRef>(token);
    return kZPNoErr;
}

ZPErr ReleasePluginAccess(HostState& host, ZPAccessRef access) {
    return host.accesses.erase(reinterpret_cast<std::uintptr_t>(access)) != 0 ? kZPNoErr : kZPBadParameterErr;
}

const ZPAccessSuite table = {
    HostFunction<kSuite, "AcquirePluginAccess", &AcquirePluginAccess>::Call,
    HostFunction<kSuite, "ReleasePluginAccess", &ReleasePluginAccess>::Call,
};

}  // namespace

const void* ZPAccessSuiteTable() { return &table; }

}  // namespace kelvra
