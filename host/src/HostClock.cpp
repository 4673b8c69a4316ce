// The clock behind the host's time(). Its state is process-wide because
// time() has no other way to find it.
#include <kelvra/HostClock.h>

#include <atomic>
#include <cstdint>

namespace {

std::atomic<bool> clockSet{false};
std::atomic<std::int64_t> clockNow{0};

std::time_t SystemNow() {
    // Not time(): that is the function this file replaces.
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec;
}

}  // namespace

namespace kelvra {

void HostClock::Set(std::time_t now) {
    clockNow = now;
    clockSet = true;
}

void HostClock::Advance(std::time_t seconds) { Set(Now() + seconds); }

void HostClock::UseSystemClock() { clockSet = false; }

bool HostClock::IsSet() const { return clockSet; }

std::time_t HostClock::Now() const { return clockSet ? std::time_t(clockNow.load()) : SystemNow(); }

}  // namespace kelvra

// Exported from the executable (see kelvra_host's link options), so that
// modules loaded into the host bind their time() here.
extern "C" __attribute__((visibility("default"))) std::time_t time(std::time_t* out) noexcept {
    const std::time_t now = kelvra::HostClock().Now();
    if (out != nullptr) *out = now;
    return now;
}
