#include <kelvra/HostFolders.h>

namespace kelvra {

void HostFolders::UseHome(const std::filesystem::path& home) {
    for (const HomeFolder& folder : kHomeFolders) Map(folder.type, home / folder.relativePath);
}

void HostFolders::Map(std::int32_t type, std::filesystem::path directory) {
    directories_[type] = std::move(directory);
}

const std::filesystem::path* HostFolders::Find(std::int32_t type) const {
    const auto found = directories_.find(type);
    return found == directories_.end() ? nullptr : &found->second;
}

}  // namespace kelvra
