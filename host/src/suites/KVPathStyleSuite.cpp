// Library files opened as documents: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
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
