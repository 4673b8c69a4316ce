// The host's own handling of swatch library files. The module acquires this
// suite at start-up, so it is published; every function answers
// kNotYetAvailableErr until the library list needs it.
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
