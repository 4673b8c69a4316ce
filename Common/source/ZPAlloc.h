// Blocks from the host's "ZP Blocks Suite", for memory the host itself may
// hold on to, such as a published suite's function table.
#pragma once

#include <cstddef>

namespace kv {

class ZPAlloc {
public:
    // Throws kv::Error "!MEM" when the host gives no block.
    static void* AllocateBlock(std::size_t size);
    // Ignores null.
    static void FreeBlock(void* block) noexcept;
};

}  // namespace kv
