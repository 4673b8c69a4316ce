// Whether a modal dialog may be shown now: as the host was told.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVThreadPoolSuite};

ZPBoolean CanShowModalDialog(HostState& host) { return host.canShowDialogs ? 1 : 0; }

const KVThreadPoolSuite table = [] {
    KVThreadPoolSuite suite{};
    FillReserved(suite.reserved0to4);
    suite.CanShowModalDialog = HostFunction<kSuite, "CanShowModalDialog", &CanShowModalDialog>::Call;
    return suite;
}();

}  // namespace

const void* KVThreadPoolSuiteTable() { return &table; }

}  // namespace kelvra
