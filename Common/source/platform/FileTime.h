// Times of the library list: FILETIME values, 100-ns ticks since
// 1601-01-01 UTC kept as two 32-bit halves, low half first.
#pragma once

#include <cstdint>

namespace kv::platform {

struct FileTime {
    std::uint32_t lowDateTime = 0;
    std::uint32_t highDateTime = 0;
};

constexpr std::uint64_t Ticks(FileTime time) noexcept {
    return (std::uint64_t(time.highDateTime) << 32) | time.lowDateTime;
}

constexpr FileTime FileTimeFromTicks(std::uint64_t ticks) noexcept {
    return {std::uint32_t(ticks), std::uint32_t(ticks >> 32)};
}

// Compared as 64-bit values, high half first.
constexpr bool IsLater(FileTime time, FileTime than) noexcept { return Ticks(time) > Ticks(than); }
constexpr bool operator==(FileTime a, FileTime b) noexcept { return Ticks(a) == Ticks(b); }

// The system clock now, at its full resolution.
FileTime CurrentSystemTime() noexcept;

}  // namespace kv::platform
