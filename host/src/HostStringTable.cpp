#include <kelvra/HostStringTable.h>

namespace kelvra {

std::optional<std::string> HostStringTable::Get(std::int32_t index) const {
    auto found = strings_.find(index);
    if (found == strings_.end()) return std::nullopt;
    return found->second;
}

}  // namespace kelvra
