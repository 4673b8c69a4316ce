// The checks of kelvra-host validate for a module that publishes a suite
// for other plug-ins (through "ZP Suites Suite"). Each passes as not
// applicable for a module that publishes none.
#pragma once

#include "ValidationChecks.h"

#include <vector>

namespace kelvra::cli {

std::vector<Check> SuiteChecks();

}  // namespace kelvra::cli
