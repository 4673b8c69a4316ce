// The host's block allocator. Every live block is remembered so that a free
// of anything else is refused instead of corrupting the heap, and so that
// leak checks can count what a module still holds.
#include "ZPBasicControl.h"

#include <ZPBasicBlocks.h>

#include <cstdlib>
#include <mutex>
#include <unordered_map>

namespace {

struct AllocatorState {
    std::mutex mutex;
    std::unordered_map<void*, std::size_t> live;  // block -> size
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
    s.live.emplace(memory, size);
    ++s.counts.allocations;
    ++s.counts.liveBlocks;
    s.counts.liveBytes += size;
    *block = memory;
    return kZPNoErr;
}

ZPErr ZPBasicFreeBlock(void* block) {
    AllocatorState& s = State();
    std::lock_guard lock(s.mutex);
    auto found = s.live.find(block);
    if (found == s.live.end()) {
        ++s.counts.badFrees;
        return kZPBadParameterErr;
    }
    s.counts.liveBytes -= found->second;
    --s.counts.liveBlocks;
    ++s.counts.frees;
    s.live.erase(found);
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
    for (auto& [block, size] : s.live) std::free(block);
    s.live.clear();
    s.counts = {};
    s.requestsUntilFault = 0;
    s.faultFromThenOn = false;
    s.faulting = false;
}

}  // namespace zpbasic
