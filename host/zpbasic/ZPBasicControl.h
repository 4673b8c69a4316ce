// Control of the block allocator exported by libZPBasic, for the emulated
// host: live-block counting for leak checks and injected allocation faults.
// The allocator is process-wide, so are these counts and faults.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(ZPBASIC_BUILDING)
#define ZPBASIC_CONTROL_EXPORT __attribute__((visibility("default")))
#else
#define ZPBASIC_CONTROL_EXPORT
#endif

namespace zpbasic {

struct Counts {
    std::size_t liveBlocks = 0;
    std::size_t liveBytes = 0;
    std::uint64_t allocations = 0;        // successful ones
    std::uint64_t frees = 0;              // of live blocks
    std::uint64_t failedAllocations = 0;  // injected or out of memory
    std::uint64_t badFrees = 0;           // frees of something that was not a live block
};

ZPBASIC_CONTROL_EXPORT Counts GetCounts();

// The n-th allocation request from now on (1: the next one) fails with
// "!MEM"; with `fromThenOn` every later request fails too. n = 0 clears.
ZPBASIC_CONTROL_EXPORT void FailAllocation(std::uint64_t n, bool fromThenOn);
ZPBASIC_CONTROL_EXPORT void ClearAllocationFault();

// Frees every live block and clears counts and faults. Only for a moment when
// no module can still hold a block (no module loaded).
ZPBASIC_CONTROL_EXPORT void Reset();

}  // namespace zpbasic
