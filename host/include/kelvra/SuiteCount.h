// How often one suite (name and version) was acquired and released.
#pragma once

#include <cstdint>
#include <string>

namespace kelvra {

struct SuiteCount {
    std::string name;
    std::int32_t version = 0;
    std::uint64_t acquired = 0;
    std::uint64_t released = 0;
    std::uint64_t extraReleases = 0;  // releases refused because nothing was held

    std::uint64_t Held() const { return acquired - released; }
};

}  // namespace kelvra
