// What a module left in the emulated host, and what the user saw there.
#pragma once

#include <kelvra/Host.h>

#include <string>
#include <utility>
#include <vector>

namespace import_testing {

// Suites a module still holds and host blocks still live; empty when none.
std::vector<std::string> SuitesAndBlocks(kelvra::Host& host);
// The same and the host objects it made and did not give back.
std::vector<std::string> Leftovers(kelvra::Host& host);

// What the host refused to take back in a run (a suite release, a block,
// a string, a path, a data filter): that stays the host's.
struct Refused {
    bool release = false;
    bool freeing = false;
    bool stringDisposal = false;
    bool pathDisposal = false;
    bool unlinking = false;
};
// What injected faults refused since the last FaultInjector::Clear().
Refused RefusedInRun(kelvra::Host& host);
// Leftovers, less the kinds of thing the host refused to take back: a run
// cut short may leave nothing else behind.
std::vector<std::string> LeftoversBeyond(kelvra::Host& host, Refused refused);
// SuitesAndBlocks, less what the host refused to take back.
std::vector<std::string> SuitesAndBlocksBeyond(kelvra::Host& host, Refused refused);

// What the user saw, one line per event: "alert: <text>", "question: <text>
// -> yes|no", "more-info <number>: <text>", "usage: <category> / <event>".
std::vector<std::string> Shown(kelvra::Host& host);

// The alert of the swatch exchange reader's failure for the file `name`.
std::string SwatchExchangeReadError(const std::string& name);
std::string ColorBookReadError(const std::string& name);
// What the user sees when a file-format request answers "CANT": the usage
// event and the unknown-error dialog of the error report.
std::vector<std::string> CantHappenReport();

}  // namespace import_testing
