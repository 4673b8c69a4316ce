// The host's folders by folder type, as "KV Folders Suite" answers them:
// each type the host knows is mapped to a directory of the real file
// system; a type not mapped is unknown.
//
//   host.Folders().UseHome("/tmp/home");         // the types below, under one directory
//   host.Folders().Map(33, "/srv/libraries");    // one type, anywhere
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

namespace kelvra {

struct HomeFolder {
    std::int32_t type;
    const char* relativePath;  // under the home directory
};

// The folder types the module asks for and where a home directory keeps
// them: the application library folders 33 and 73, the user library
// folders 88 and 89, and 72 inside 88, which the module must leave out of
// its list although it lies in a folder it lists.
inline constexpr HomeFolder kHomeFolders[] = {
    {33, "application-33"}, {73, "application-73"}, {88, "user-88"}, {89, "user-89"}, {72, "user-88/excluded-72"},
};

class HostFolders {
public:
    // Maps every type of kHomeFolders to its directory under `home`
    // (replacing what those types were mapped to).
    void UseHome(const std::filesystem::path& home);
    void Map(std::int32_t type, std::filesystem::path directory);

    // Null when the type is not mapped.
    const std::filesystem::path* Find(std::int32_t type) const;
    // Every mapped type, in ascending order.
    const std::map<std::int32_t, std::filesystem::path>& All() const { return directories_; }

private:
    std::map<std::int32_t, std::filesystem::path> directories_;
};

}  // namespace kelvra
