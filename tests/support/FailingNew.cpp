#include "FailingNew.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> allocations{0};
std::atomic<bool> failing{false};
std::atomic<std::size_t> allowedBeforeFailure{0};
std::atomic<bool> failOnlyOne{false};

// Every form allocates with malloc and frees with free, so the sanitizers see
// matching pairs whichever form a caller used.
void* Allocate(std::size_t size) {
    ++allocations;
    if (failing) {
        if (allowedBeforeFailure == 0) {
            if (failOnlyOne) failing = false;
            return nullptr;
        }
        --allowedBeforeFailure;
    }
    return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
    void* p = Allocate(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}

}  // namespace

namespace testsupport {

std::size_t AllocationCount() {
    return allocations;
}

void FailAllocationsAfter(std::size_t allowed, bool onlyOne) {
    allowedBeforeFailure = allowed;
    failOnlyOne = onlyOne;
    failing = true;
}

void AllowAllocations() {
    failing = false;
}

}  // namespace testsupport

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }
