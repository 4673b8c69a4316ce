// Host blocks with debug names, counted apart from libZPBasic's blocks.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <ZPPluginSuites.h>

#include <cstdlib>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kZPBlocksSuite};

ZPErr AllocateBlock(HostState& host, std::size_t size, const char* debugName, void** block) {
    if (block == nullptr) return kZPBadParameterErr;
    *block = nullptr;
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) return kZPOutOfMemoryErr;
    try {
        host.blocks.emplace(memory, HostBlock{size, debugName != nullptr ? debugName : ""});
    } catch (...) {
        std::free(memory);
        throw;
    }
    *block = memory;
    return kZPNoErr;
}

ZPErr FreeBlock(HostState& host, void* block) {
    auto found = host.blocks.find(block);
    if (found == host.blocks.end()) {
        ++host.badBlockFrees;
        return kZPBadParameterErr;
    }
    std::free(block);
    host.blocks.erase(found);
    return kZPNoErr;
}

const ZPBlocksSuite table = {
    HostFunction<kSuite, "AllocateBlock", &AllocateBlock>::Call,
    HostFunction<kSuite, "FreeBlock", &FreeBlock>::Call,
};

}  // namespace

const void* ZPBlocksSuiteTable() { return &table; }

}  // namespace kelvra
