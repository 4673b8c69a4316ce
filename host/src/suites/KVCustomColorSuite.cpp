// A document's custom colours: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

const KVCustomColorSuite table = [] {
    KVCustomColorSuite suite{};
    suite.NewCustomColor = &NotYetAvailable;
    suite.GetCustomColor = &NotYetAvailable;
    suite.SetCustomColor = &NotYetAvailable;
    suite.GetCustomColorName = &NotYetAvailable;
    suite.FindCustomColor = &NotYetAvailable;
    suite.SetCustomColorBookID = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVCustomColorSuiteTable() { return &table; }

}  // namespace kelvra
