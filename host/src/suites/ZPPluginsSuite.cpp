// The plug-in registry: the name under which the host shows a plug-in.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <ZPPluginSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kZPPluginsSuite};

ZPErr SetPluginName(HostState& host, ZPPluginRef plugin, const char* name) {
    Module* module = host.FindModule(plugin);
    if (module == nullptr || name == nullptr) return kZPBadParameterErr;
    HostState::Rename(*module, name);
    return kZPNoErr;
}

const ZPPluginsSuite table = [] {
    ZPPluginsSuite suite{};
    FillReserved(suite.reserved0to22);
    suite.SetPluginName = HostFunction<kSuite, "SetPluginName", &SetPluginName>::Call;
    return suite;
}();

}  // namespace

const void* ZPPluginsSuiteTable() { return &table; }

}  // namespace kelvra
