// A document's swatch groups: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

const KVSwatchGroupSuite table = [] {
    KVSwatchGroupSuite suite{};
    suite.CountGroups = &NotYetAvailable;
    suite.InsertGroup = &NotYetAvailable;
    suite.GetNthGroup = &NotYetAvailable;
    suite.GetGroupName = &NotYetAvailable;
    suite.SetGroupName = &NotYetAvailable;
    suite.CountSwatches = &NotYetAvailable;
    suite.InsertSwatch = &NotYetAvailable;
    suite.GetNthSwatch = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVSwatchGroupSuiteTable() { return &table; }

}  // namespace kelvra
