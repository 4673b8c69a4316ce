#include "ZPAlloc.h"

#include "KVError.h"
#include "RegisteredSuites.h"
#include "ZPPluginSuites.h"

namespace kv {

void* ZPAlloc::AllocateBlock(std::size_t size) {
    const auto* blocks = AcquireSuiteOrThrow<ZPBlocksSuite>(registered::Blocks());
    void* block = nullptr;
    if (blocks == nullptr || blocks->AllocateBlock(size, "kv::ZPAlloc::AllocateBlock", &block) != kNoErr ||
        block == nullptr) {
        throw Error(kOutOfMemoryErr, nullptr);
    }
    return block;
}

void ZPAlloc::FreeBlock(void* block) noexcept {
    if (block == nullptr) return;
    if (const auto* blocks = AcquireSuiteOrNull<ZPBlocksSuite>(registered::Blocks())) blocks->FreeBlock(block);
}

}  // namespace kv
