// The basic suite as the entry point first received it. The error report
// acquires its per-report suites through it, also when no plug-in object
// exists.
#pragma once

#include "ZPBasicSuite.h"

namespace kv {

const ZPBasicSuite* EntryBasicSuite() noexcept;
// Keeps `basic` unless a basic suite is already kept; it is never replaced.
void KeepEntryBasicSuite(const ZPBasicSuite* basic) noexcept;

}  // namespace kv
