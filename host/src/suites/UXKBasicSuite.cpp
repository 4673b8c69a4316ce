// Indexed strings: a module's own string lists (its plug-in reference is
// their owner) and the host's list 257.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

#include <cstring>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kUXKBasicSuite};

std::optional<std::string> LookUp(HostState& host, KVResourceOwner owner, std::int32_t listId, std::int32_t index) {
    if (owner == host.HostResourceOwner())
        return listId == kHostStringListId ? host.hostStrings.Get(index) : std::nullopt;
    const Module* module = host.FindModule(reinterpret_cast<ZPPluginRef>(owner));
    if (module == nullptr) return std::nullopt;
    auto list = module->File().stringLists.find(listId);
    if (list == module->File().stringLists.end() || index < 1 || std::size_t(index) > list->second.size())
        return std::nullopt;
    return list->second[std::size_t(index) - 1];
}

ZPErr GetIndexedString(HostState& host, KVResourceOwner owner, std::int32_t listId, std::int32_t index,
                       char* buffer, std::int32_t bufferSize) {
    if (buffer == nullptr || bufferSize <= 0) return kZPBadParameterErr;
    buffer[0] = 0;
    const std::optional<std::string> text = LookUp(host, owner, listId, index);
    if (!text) return kZPBadParameterErr;
    const std::size_t length = std::min(text->size(), std::size_t(bufferSize) - 1);
    std::memcpy(buffer, text->data(), length);
    buffer[length] = 0;
    return kZPNoErr;
}

const UXKBasicSuite table = {
    HostFunction<kSuite, "GetIndexedString", &GetIndexedString>::Call,
};

}  // namespace

const void* UXKBasicSuiteTable() { return &table; }

}  // namespace kelvra
