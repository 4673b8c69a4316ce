// A small stand-in for the host in unit tests of the framework: a basic
// suite that hands out recording fakes of the suites the framework calls,
// and a dummy table for every other suite it knows by name and version.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ZPBasicSuite.h"

namespace fake {

struct Host {
    // What the host answers.
    std::set<std::string> unavailable;              // acquisition refused with "S!Fd"
    std::map<std::string, ZPErr> acquireFailures;   // acquisition refused with this code
    std::set<std::string> acquireWithoutSuite;      // success, but no suite
    std::map<std::string, ZPErr> releaseFailures;
    ZPErr setPluginNameResult = 0;
    ZPErr addNotifierResult = 0;
    ZPErr prepareContextResult = 0;
    bool canShowDialog = true;
    ZPErr newGlobalStringResult = 0;
    bool newGlobalStringGivesNull = false;
    ZPErr unicodeStringResult = 0;         // every function of the unicode string suite
    bool newUnicodeStringGivesNull = false;
    ZPErr allocateBlockResult = 0;
    // Indexed strings by (owner, list, index).
    std::map<std::tuple<const void*, int, int>, std::string> strings;
    bool endlessStrings = false;           // every index answers "x"

    // What the module did.
    std::map<std::string, int> acquisitions;
    std::map<std::string, int> releases;
    std::vector<std::string> calls;        // "acquire <name>", "release <name>", suite calls
    int liveStrings = 0;
    int liveBlocks = 0;

    int Held(const std::string& name) const;
    // The calls whose text begins with `prefix`, in order.
    std::vector<std::string> CallsStartingWith(const std::string& prefix) const;
};

// The one fake host of the test program, reset to its defaults.
Host& ResetHost();
Host& TheHost();
const ZPBasicSuite* BasicSuite();

// Handles the fakes give out.
const ZPPluginRef kPlugin = reinterpret_cast<ZPPluginRef>(0x5E1F);
const KVNotifierHandle kSaveNotifier = reinterpret_cast<KVNotifierHandle>(0x5A7E);
const KVResourceOwner kHostOwner = reinterpret_cast<KVResourceOwner>(0x4057);

// The text of a string made by the fake unicode string suites (localisation
// keys resolved to their default text).
std::string TextOf(KVUnicodeStringRef string);

}  // namespace fake
