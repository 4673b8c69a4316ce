// Host folders by folder type, mapped to directories. The module acquires
// this suite at start-up, so it is published; every function answers
// kNotYetAvailableErr until the library list needs it.
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
