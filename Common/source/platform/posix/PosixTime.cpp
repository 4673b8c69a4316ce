#include "PosixTime.h"

#include <cstdint>

namespace kv::platform::posix {

namespace {

constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
constexpr std::int64_t kTicksPerSecond = 10'000'000;

}  // namespace

FileTime FileTimeOf(const timespec& time) noexcept {
    const std::int64_t seconds = std::int64_t(time.tv_sec) + kSecondsFrom1601To1970;
    if (seconds < 0) return {};
    return FileTimeFromTicks(std::uint64_t(seconds) * kTicksPerSecond + std::uint64_t(time.tv_nsec) / 100);
}

}  // namespace kv::platform::posix

namespace kv::platform {

FileTime CurrentSystemTime() noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return posix::FileTimeOf(now);
}

}  // namespace kv::platform
