// The clock of the error-report repeat limit.
#pragma once

#include <cstdint>

namespace kv {

// Seconds since the epoch, from the C library's time(): the one place the
// module reads the clock, so a host can answer with its own.
std::int64_t CurrentTimeInSeconds() noexcept;

}  // namespace kv
