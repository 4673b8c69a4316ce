#include "TestClock.h"

namespace {
std::time_t gNow = 1'000'000;
}  // namespace

namespace test_clock {
void Set(std::time_t now) { gNow = now; }
}  // namespace test_clock

extern "C" std::time_t time(std::time_t* now) noexcept {
    if (now != nullptr) *now = gNow;
    return gNow;
}
