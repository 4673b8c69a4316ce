// Preferences kept in a file: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

const KVPreferenceSuite table = [] {
    KVPreferenceSuite suite{};
    suite.GetIntegerPreference = &NotYetAvailable;
    suite.GetFilePathPreference = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVPreferenceSuiteTable() { return &table; }

}  // namespace kelvra
