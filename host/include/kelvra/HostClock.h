// The host's clock. The module takes "now" from the C library's time(); the
// host library defines time() itself (and every program linking it exports
// that definition), so a module loaded into the host reads this clock. It is
// the system clock until a test sets it.
#pragma once

#include <ctime>

namespace kelvra {

class HostClock {
public:
    // From now on time() answers `now` until changed again.
    void Set(std::time_t now);
    // Moves a set clock on by `seconds` (a system clock is set first).
    void Advance(std::time_t seconds);
    void UseSystemClock();
    bool IsSet() const;
    std::time_t Now() const;
};

}  // namespace kelvra
