// The suites a module acquires and releases with the others but never
// calls; they share one table.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVHeldSuites.h>

namespace kelvra {

namespace {

const KVHeldSuite table = {&ReservedSlot};

}  // namespace

const void* HeldSuiteTable() { return &table; }

}  // namespace kelvra
