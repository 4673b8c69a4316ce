// Library files opened as documents. The module acquires this suite at
// start-up, so it is published; every function answers kNotYetAvailableErr
// until the library list needs it.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

const KVPathStyleSuite table = [] {
    KVPathStyleSuite suite{};
    FillReserved(suite.reserved0to4);
    suite.OpenLibraryDocument = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVPathStyleSuiteTable() { return &table; }

}  // namespace kelvra
