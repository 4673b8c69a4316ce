// The host's own handling of swatch library files: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

const KVSwatchLibrariesSuite table = [] {
    KVSwatchLibrariesSuite suite{};
    FillReserved(suite.reserved0to29);
    suite.HandleSwatchLibraryFile = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVSwatchLibrariesSuiteTable() { return &table; }

}  // namespace kelvra
