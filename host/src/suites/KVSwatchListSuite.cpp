// A document's swatch list: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

const KVSwatchListSuite table = [] {
    KVSwatchListSuite suite{};
    FillReserved(suite.reserved6to10);
    suite.CountSwatches = &NotYetAvailable;
    suite.GetNthSwatch = &NotYetAvailable;
    suite.GetSwatchName = &NotYetAvailable;
    suite.SetSwatchName = &NotYetAvailable;
    suite.GetSwatchColor = &NotYetAvailable;
    suite.SetSwatchColor = &NotYetAvailable;
    suite.GetSwatchList = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVSwatchListSuiteTable() { return &table; }

}  // namespace kelvra
