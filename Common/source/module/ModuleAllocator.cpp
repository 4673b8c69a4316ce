// The module's global operator new and delete: every object of the module
// lives in a block of the host's allocator, which the host counts. The
// module's version script keeps these definitions local, so the module's
// code binds to them while the host and other libraries keep their own.
#include <cstddef>
#include <cstdint>
#include <new>

#include "ZPBasicBlocks.h"

namespace {

void* AllocateOrNull(std::size_t size) noexcept {
    void* block = nullptr;
    // A request of 0 bytes still gives a block of its own.
    if (kv::ZPBasicAllocateBlock(size == 0 ? 1 : size, &block) != kZPNoErr) return nullptr;
    return block;
}

void* AllocateOrThrow(std::size_t size) {
    void* block = AllocateOrNull(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void Free(void* block) noexcept {
    if (block != nullptr) kv::ZPBasicFreeBlock(block);
}

// Host blocks promise no alignment beyond their size, so an over-aligned
// request takes a larger block and keeps the block's address just before
// the aligned memory it hands out.
void* AllocateAlignedOrNull(std::size_t size, std::align_val_t alignment) noexcept {
    const auto align = static_cast<std::size_t>(alignment);
    const std::size_t extra = align + sizeof(void*);
    if (size > SIZE_MAX - extra) return nullptr;
    void* block = AllocateOrNull(size + extra);
    if (block == nullptr) return nullptr;
    const auto first = reinterpret_cast<std::uintptr_t>(block) + sizeof(void*);
    auto* aligned = reinterpret_cast<void**>((first + align - 1) & ~(std::uintptr_t{align} - 1));
    aligned[-1] = block;
    return aligned;
}

void* AllocateAlignedOrThrow(std::size_t size, std::align_val_t alignment) {
    void* memory = AllocateAlignedOrNull(size, alignment);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void FreeAligned(void* memory) noexcept {
    if (memory != nullptr) Free(static_cast<void**>(memory)[-1]);
}

}  // namespace

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return AllocateAlignedOrThrow(size, alignment); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return AllocateAlignedOrThrow(size, alignment); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return AllocateAlignedOrNull(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return AllocateAlignedOrNull(size, alignment);
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept { FreeAligned(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { FreeAligned(memory); }
