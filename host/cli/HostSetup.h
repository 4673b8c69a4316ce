// The host's folders and preferences as the commands that start a module
// take them: --home DIR (whose subfolders stand for the host folder types,
// HostFolders.h), --folder TYPE=DIR over that, and --prefs FILE.
#pragma once

#include <cstdint>
#include <filesystem>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace kelvra {
class Host;
}

namespace kelvra::cli {

struct HostSetup {
    std::filesystem::path home;  // empty: DefaultHome()
    std::vector<std::pair<std::int32_t, std::filesystem::path>> folders;  // in the order given
    std::filesystem::path preferences;  // empty: kPreferencesFileName in the home
};

inline constexpr const char* kPreferencesFileName = "preferences.json";

// $XDG_DATA_HOME/kelvra-host when that variable holds an absolute path,
// else ~/.local/share/kelvra-host; empty when there is no home directory.
std::filesystem::path DefaultHome();

// The set-up with its defaults filled in and every path absolute.
HostSetup Resolved(HostSetup setup);

// Maps the home's folders, then each --folder over them, and points the
// preferences at their file; `setup` as Resolved() gives it.
void ApplyHostSetup(const HostSetup& setup, Host& host);

// --home, --folder (repeatable) and --prefs on `command`, each checked
// with a message a person can read.
void AddHostSetupOptions(CLI::App& command, HostSetup& setup);

}  // namespace kelvra::cli
