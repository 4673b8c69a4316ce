// The host's block allocator. Every live block is remembered so that a free
// of anything else is refused instead of corrupting the heap, and so that
// leak checks can count what a module still holds.
#include "ZPBasicControl.h"

#include <ZPBasicBlocks.h>
#include <kelvra/FlatPointerMap.h>

#include <cstdlib>
#include <mutex>
#include <new>

namespace {

struct AllocatorState {
    std::mutex mutex;
    // Block -> size, in one flat table: a module allocates and frees blocks
    // for much of what it reads, and a node per block doubled the cost.
    kelvra::FlatPointerMap<void*, std::size_t> live;
    zpbasic::Counts counts;
    std::uint64_t requestsUntilFault = 0;  // 0: no fault armed
    bool faultFromThenOn = false;
    bool faulting = false;  // a "from then on" fault has struck
};

AllocatorState& State() {
    // Never destroyed: modules may free blocks from their own static
    // destructors after this library's would have run.
    static AllocatorState* state = new AllocatorState;
    return *state;
}

// Whether the current request is the one chosen to fail. Mutex held.
bool InjectedFailure(AllocatorState& s) {
    if (s.faulting) return true;
    if (s.requestsUntilFault == 0) return false;
    if (--s.requestsUntilFault != 0) return false;
    s.faulting = s.faultFromThenOn;
    return true;
}

}  // namespace

namespace kv {

ZPErr ZPBasicAllocateBlock(size_t size, void** block) {
    if (block == nullptr) return kZPBadParameterErr;
    *block = nullptr;
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    if (InjectedFailure(s)) {
        ++s.counts.failedAllocations;
        return kZPOutOfMemoryErr;
    }
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        ++s.counts.failedAllocations;
        return kZPOutOfMemoryErr;
    }
    try {
        s.live.Emplace(memory, size);
    } catch (const std::bad_alloc&) {
        std::free(memory);
        ++s.counts.failedAllocations;
        return kZPOutOfMemoryErr;
    }
    ++s.counts.allocations;
    ++s.counts.liveBlocks;
    s.counts.liveBytes += size;
    *block = memory;
    return kZPNoErr;
}

ZPErr ZPBasicFreeBlock(void* block) {
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    const std::size_t* size = s.live.Find(block);
    if (size == nullptr) {
        ++s.counts.badFrees;
        return kZPBadParameterErr;
    }
    s.counts.liveBytes -= *size;
    --s.counts.liveBlocks;
    ++s.counts.frees;
    s.live.Erase(block);
    std::free(block);
    return kZPNoErr;
}

}  // namespace kv

namespace zpbasic {

Counts GetCounts() {
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    return s.counts;
}

void FailAllocation(std::uint64_t n, bool fromThenOn) {
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    s.requestsUntilFault = n;
    s.faultFromThenOn = fromThenOn;
    s.faulting = false;
}

void ClearAllocationFault() { FailAllocation(0, false); }

void Reset() {
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    s.live.ForEach([](void* block, std::size_t) { std::free(block); });
    s.live.Clear();
    s.counts = {};
    s.requestsUntilFault = 0;
    s.faultFromThenOn = false;
    s.faulting = false;
}

}  // namespace zpbasic
