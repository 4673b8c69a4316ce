#include "SuiteRegistry.h"

#include <algorithm>

namespace kelvra {

ZPErr SuiteRegistry::Add(std::string name, std::int32_t version, const void* table, const Module* publisher) {
    if (table == nullptr) return kZPBadParameterErr;
    if (Entry* existing = Find(name, version)) {
        if (existing->table != nullptr) return kZPBadParameterErr;
        // Published again after a withdrawal (a module started again): the
        // counts go on.
        existing->table = table;
        existing->publisher = publisher;
        return kZPNoErr;
    }
    Entry entry;
    entry.table = table;
    entry.publisher = publisher;
    entry.count.name = name;
    entry.count.version = version;
    entries_.emplace(std::pair{std::move(name), version}, std::move(entry));
    return kZPNoErr;
}

std::vector<const void*> SuiteRegistry::Withdraw(const Module* publisher) {
    std::vector<const void*> tables;
    for (auto& [key, entry] : entries_) {
        if (entry.publisher != publisher || entry.table == nullptr) continue;
        tables.push_back(entry.table);
        entry.table = nullptr;
    }
    return tables;
}

std::vector<SuiteRegistry::Publication> SuiteRegistry::Published() const {
    std::vector<Publication> published;
    for (const auto& [key, entry] : entries_) {
        if (entry.publisher != nullptr && entry.table != nullptr)
            published.push_back({key.first, key.second, entry.publisher, entry.table});
    }
    return published;
}

SuiteRegistry::Entry* SuiteRegistry::Find(std::string_view name, std::int32_t version) {
    auto found = entries_.find(std::pair{name, version});
    return found == entries_.end() ? nullptr : &found->second;
}

ZPErr SuiteRegistry::Acquire(std::string_view name, std::int32_t version, const void** table) {
    Entry* entry = Find(name, version);
    if (entry == nullptr || entry->table == nullptr) {
        *table = nullptr;
        return kZPSuiteNotFoundErr;
    }
    if (entry->firstUse == 0) entry->firstUse = ++uses_;
    ++entry->count.acquired;
    *table = entry->table;
    return kZPNoErr;
}

ZPErr SuiteRegistry::Release(std::string_view name, std::int32_t version) {
    Entry* entry = Find(name, version);
    if (entry == nullptr) return kZPSuiteNotFoundErr;
    if (entry->count.Held() == 0) {
        ++entry->count.extraReleases;
        return kZPBadParameterErr;
    }
    ++entry->count.released;
    return kZPNoErr;
}

std::vector<SuiteCount> SuiteRegistry::Counts() const {
    std::vector<const Entry*> used;
    for (const auto& [key, entry] : entries_) {
        if (entry.firstUse != 0 || entry.count.extraReleases != 0) used.push_back(&entry);
    }
    std::sort(used.begin(), used.end(), [](const Entry* a, const Entry* b) {
        // Never acquired (only refused releases) go last.
        return (a->firstUse - 1) < (b->firstUse - 1);
    });
    std::vector<SuiteCount> counts;
    for (const Entry* entry : used) counts.push_back(entry->count);
    return counts;
}

}  // namespace kelvra
