// Held by the framework but never called.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

const KVContextPrivateSuite table = {&ReservedSlot};

}  // namespace

const void* KVContextPrivateSuiteTable() { return &table; }

}  // namespace kelvra
