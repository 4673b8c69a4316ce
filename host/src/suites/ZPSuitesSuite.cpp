// Publishing a suite: afterwards any plug-in (or a test acting as one) can
// acquire it through the basic suite.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <ZPPluginSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kZPSuitesSuite};

ZPErr AddSuite(HostState& host, ZPSuiteListRef suiteList, ZPPluginRef plugin, const char* name,
               std::int32_t apiVersion, std::int32_t /*internalVersion*/, const void* suiteProcs,
               ZPSuiteRef* suite) {
    if (suite != nullptr) *suite = nullptr;
    // Only the host's own list exists. A null plug-in is a test publishing.
    if (suiteList != nullptr || name == nullptr || suiteProcs == nullptr) return kZPBadParameterErr;
    const Module* publisher = host.FindModule(plugin);
    if (plugin != nullptr && publisher == nullptr) return kZPBadParameterErr;
    const ZPErr result = host.suites.Add(name, apiVersion, suiteProcs, publisher);
    if (result == kZPNoErr && suite != nullptr) *suite = reinterpret_cast<ZPSuiteRef>(host.NewToken());
    return result;
}

const ZPSuitesSuite table = [] {
    ZPSuitesSuite suite{};
    FillReserved(suite.reserved0to1);
    suite.AddSuite = HostFunction<kSuite, "AddSuite", &AddSuite>::Call;
    return suite;
}();

}  // namespace

const void* ZPSuitesSuiteTable() { return &table; }

}  // namespace kelvra
