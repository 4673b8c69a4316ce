// Preferences kept in a file. The module acquires this suite at start-up,
// so it is published; every function answers kNotYetAvailableErr until the
// library list needs it.
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
