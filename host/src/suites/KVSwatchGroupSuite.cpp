// A document's swatch groups: counting, inserting and naming groups, and the
// swatches of each group. Group 0 is the unnamed default group: nothing goes
// before it and it takes no name. A null list is the current document's.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVSwatchGroupSuite};

// -1 or past the end appends; other negative indices are refused.
bool IsInsertionIndex(std::int32_t index) { return index >= -1; }

ZPErr CountGroups(HostState& host, KVSwatchListRef list, std::int32_t* count) {
    if (count == nullptr) return kZPBadParameterErr;
    *count = 0;
    Document* document = nullptr;
    if (const ZPErr error = host.documents.Resolve(list, document)) return error;
    *count = std::int32_t(document->Groups().size());
    return kZPNoErr;
}

ZPErr InsertGroup(HostState& host, KVSwatchListRef list, std::int32_t index, KVSwatchGroupRef* group) {
    if (group == nullptr) return kZPBadParameterErr;
    *group = nullptr;
    Document* document = nullptr;
    if (const ZPErr error = host.documents.Resolve(list, document)) return error;
    if (index == 0 || !IsInsertionIndex(index)) return kZPBadParameterErr;
    *group = HandleOf(document->InsertGroup(index));
    return kZPNoErr;
}

ZPErr GetNthGroup(HostState& host, KVSwatchListRef list, std::int32_t index, KVSwatchGroupRef* group) {
    if (group == nullptr) return kZPBadParameterErr;
    *group = nullptr;
    Document* document = nullptr;
    if (const ZPErr error = host.documents.Resolve(list, document)) return error;
    const auto& groups = document->Groups();
    if (index < 0 || std::size_t(index) >= groups.size()) return kZPBadParameterErr;
    *group = HandleOf(*groups[std::size_t(index)]);
    return kZPNoErr;
}

SwatchGroup* FindGroup(HostState& host, KVSwatchGroupRef group, Document** owner = nullptr) {
    Document* document = host.documents.OwnerOf(group);
    if (owner != nullptr) *owner = document;
    return document == nullptr ? nullptr : document->Find(group);
}

ZPErr GetGroupName(HostState& host, KVSwatchGroupRef group, KVUnicodeStringRef name) {
    const SwatchGroup* found = FindGroup(host, group);
    if (found == nullptr) return kZPBadParameterErr;
    return host.SetText(name, found->name) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr SetGroupName(HostState& host, KVSwatchGroupRef group, KVUnicodeStringRef name) {
    Document* document = nullptr;
    SwatchGroup* found = FindGroup(host, group, &document);
    const HostString* text = host.strings.Find(name);
    if (found == nullptr || text == nullptr || found == document->Groups().front().get()) return kZPBadParameterErr;
    found->name = text->units;
    return kZPNoErr;
}

ZPErr CountSwatches(HostState& host, KVSwatchGroupRef group, std::int32_t* count) {
    if (count == nullptr) return kZPBadParameterErr;
    *count = 0;
    const SwatchGroup* found = FindGroup(host, group);
    if (found == nullptr) return kZPBadParameterErr;
    *count = std::int32_t(found->swatches.size());
    return kZPNoErr;
}

ZPErr InsertSwatch(HostState& host, KVSwatchGroupRef group, std::int32_t index, KVSwatchRef* swatch) {
    if (swatch == nullptr) return kZPBadParameterErr;
    *swatch = nullptr;
    Document* document = nullptr;
    SwatchGroup* found = FindGroup(host, group, &document);
    if (found == nullptr || !IsInsertionIndex(index)) return kZPBadParameterErr;
    *swatch = HandleOf(document->InsertSwatch(*found, index));
    return kZPNoErr;
}

ZPErr GetNthSwatch(HostState& host, KVSwatchGroupRef group, std::int32_t index, KVSwatchRef* swatch) {
    if (swatch == nullptr) return kZPBadParameterErr;
    *swatch = nullptr;
    const SwatchGroup* found = FindGroup(host, group);
    if (found == nullptr || index < 0 || std::size_t(index) >= found->swatches.size()) return kZPBadParameterErr;
    *swatch = HandleOf(*found->swatches[std::size_t(index)]);
    return kZPNoErr;
}

const KVSwatchGroupSuite table = {
    HostFunction<kSuite, "CountGroups", &CountGroups>::Call,
    HostFunction<kSuite, "InsertGroup", &InsertGroup>::Call,
    HostFunction<kSuite, "GetNthGroup", &GetNthGroup>::Call,
    HostFunction<kSuite, "GetGroupName", &GetGroupName>::Call,
    HostFunction<kSuite, "SetGroupName", &SetGroupName>::Call,
    HostFunction<kSuite, "CountSwatches", &CountSwatches>::Call,
    HostFunction<kSuite, "InsertSwatch", &InsertSwatch>::Call,
    HostFunction<kSuite, "GetNthSwatch", &GetNthSwatch>::Call,
};

}  // namespace

const void* KVSwatchGroupSuiteTable() { return &table; }

}  // namespace kelvra
