// The host's own string list 257, which a module's error report consults
// for codes 10 to 899. Empty unless a test fills it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace kelvra {

inline constexpr std::int32_t kHostStringListId = 257;

class HostStringTable {
public:
    void Set(std::int32_t index, std::string text) { strings_[index] = std::move(text); }
    void Remove(std::int32_t index) { strings_.erase(index); }
    void Clear() { strings_.clear(); }
    std::optional<std::string> Get(std::int32_t index) const;

private:
    std::map<std::int32_t, std::string> strings_;
};

}  // namespace kelvra
