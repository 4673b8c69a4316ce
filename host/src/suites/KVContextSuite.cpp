// The application context a plug-in enters around a notification. The host
// only tracks that every context pushed is popped.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVContextSuite};

ZPErr PushAppContext(HostState& host, ZPPluginRef plugin, KVAppContextHandle* context) {
    if (context == nullptr || host.FindModule(plugin) == nullptr) return kZPBadParameterErr;
    const std::uintptr_t token = host.NewToken();
    host.appContexts.insert(token);
    *context = reinterpret_cast<KVAppContextHandle>(token);
    return kZPNoErr;
}

ZPErr PopAppContext(HostState& host, KVAppContextHandle context) {
    return host.appContexts.erase(reinterpret_cast<std::uintptr_t>(context)) != 0 ? kZPNoErr
                                                                                  : kZPBadParameterErr;
}

ZPErr PrepareAppContext(HostState& host, KVAppContextHandle* context, ZPPluginRef plugin, std::int32_t) {
    if (context == nullptr || host.FindModule(plugin) == nullptr) return kZPBadParameterErr;
    *context = nullptr;
    return kZPNoErr;
}

const KVContextSuite table = [] {
    KVContextSuite suite{};
    suite.reserved0 = &ReservedSlot;
    suite.PushAppContext = HostFunction<kSuite, "PushAppContext", &PushAppContext>::Call;
    suite.PopAppContext = HostFunction<kSuite, "PopAppContext", &PopAppContext>::Call;
    FillReserved(suite.reserved3to11);
    suite.PrepareAppContext = HostFunction<kSuite, "PrepareAppContext", &PrepareAppContext>::Call;
    return suite;
}();

}  // namespace

const void* KVContextSuiteTable() { return &table; }

}  // namespace kelvra
