// The suites the host hands out, by exact name and version, with how often
// each was acquired and released.
#pragma once

#include <kelvra/NamedKeyLess.h>
#include <kelvra/SuiteCount.h>

#include <ZPTypes.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvra {

class Module;

class SuiteRegistry {
public:
    // kZPBadParameterErr when that name and version is already published.
    ZPErr Add(std::string name, std::int32_t version, const void* table, const Module* publisher);
    // Suites published by `publisher` can no longer be acquired. Answers
    // their tables, which are the host's to free.
    std::vector<const void*> Withdraw(const Module* publisher);

    // kZPSuiteNotFoundErr and *table null for an unknown name or version.
    ZPErr Acquire(std::string_view name, std::int32_t version, const void** table);
    // kZPSuiteNotFoundErr for an unknown suite, kZPBadParameterErr when none is held.
    ZPErr Release(std::string_view name, std::int32_t version);

    struct Publication {
        std::string name;
        std::int32_t version = 0;
        const Module* publisher = nullptr;
        const void* table = nullptr;
    };
    // The suites modules published that are not withdrawn, by name and version.
    std::vector<Publication> Published() const;

    // Every suite acquired at least once, in the order of first acquisition.
    std::vector<SuiteCount> Counts() const;

private:
    struct Entry {
        const void* table = nullptr;  // null once withdrawn
        const Module* publisher = nullptr;
        SuiteCount count;
        std::uint64_t firstUse = 0;  // 0: never acquired
    };
    Entry* Find(std::string_view name, std::int32_t version);

    std::map<std::pair<std::string, std::int32_t>, Entry, NamedKeyLess<std::int32_t>> entries_;
    std::uint64_t uses_ = 0;
};

}  // namespace kelvra
