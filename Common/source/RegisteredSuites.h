// The suites the module cannot run without: their nodes are registered when
// the module is loaded and listed again before every start-up and reload,
// which acquire them all (a missing one fails start-up with "S!Fd"). Users
// acquire them through these nodes with AcquireSuiteOrThrow.
#pragma once

#include "SuiteNode.h"

namespace kv::registered {

SuiteNode& Plugins();                 // "ZP Plug-ins Suite" 6
SuiteNode& UXKBasic();                // "UXK Basic Suite" 13
SuiteNode& User();                    // "KV User Suite" 21
SuiteNode& Folders();                 // "KV Folders Suite" 5
SuiteNode& Preference();              // "KV Preference Suite" 7
SuiteNode& FileFormat();              // "KV File Format Suite" 16
SuiteNode& SwatchList();              // "KV Swatch List Suite" 7
SuiteNode& SwatchGroup();             // "KV Swatch Group Suite" 4
SuiteNode& CustomColor();             // "KV Custom Color Suite" 8
SuiteNode& ColorConversion();         // "KV Color Conversion Suite" 10
SuiteNode& DataFilter();              // "KV Data Filter Suite" 10
SuiteNode& PathStyle();               // "KV Path Style Suite" 14
SuiteNode& FilePath();                // "KV File Path Suite" 8
SuiteNode& GlobalUnicodeString();     // "KV Global UnicodeString Suite" 1
SuiteNode& UnicodeString();           // "KV Unicode String Suite" 9
SuiteNode& Blocks();                  // "ZP Blocks Suite" 2

// Puts every registered node back on the suite list, from which the last
// shut-down or unload took them: a host may start the module again without
// loading its code anew.
void ListRegisteredSuites() noexcept;

}  // namespace kv::registered
