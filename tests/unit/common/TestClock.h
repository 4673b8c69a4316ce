// The clock of the framework's unit tests: the program defines time()
// itself, so the module code under test reads this clock.
#pragma once

#include <ctime>

namespace test_clock {

void Set(std::time_t now);

}  // namespace test_clock
