// Host folders by folder type, mapped to directories: not yet available. The module acquires it, so it
// is published; every function answers kNotYetAvailableErr until the
// document model arrives.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFileSuites.h>

namespace kelvra {

namespace {

const KVFoldersSuite table = [] {
    KVFoldersSuite suite{};
    suite.FindFolder = &NotYetAvailable;
    return suite;
}();

}  // namespace

const void* KVFoldersSuiteTable() { return &table; }

}  // namespace kelvra
