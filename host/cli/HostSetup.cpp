#include "HostSetup.h"

#include <kelvra/Host.h>

#include <CLI/CLI.hpp>

#include <pwd.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>

namespace kelvra::cli {

namespace {

std::filesystem::path UsersHomeDirectory() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') return home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

std::filesystem::path Absolute(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute;
}

// The error text of an option (CLI11 puts the option's name before it)
// when something other than a directory is in the way; empty otherwise.
std::string NotADirectory(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error) || std::filesystem::is_directory(path, error)) return "";
    return path.string() + " is not a directory";
}

// "TYPE=DIR" with TYPE a whole number of 32 bits and DIR not empty; the
// error text when it is not.
std::string ParseFolder(const std::string& text, std::pair<std::int32_t, std::filesystem::path>& folder) {
    const std::size_t equals = text.find('=');
    const std::string expected = "expected TYPE=DIR with TYPE a folder type number, not \"" + text + "\"";
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) return expected;
    const char* end = text.data() + equals;
    const auto [stop, error] = std::from_chars(text.data(), end, folder.first);
    if (error == std::errc::result_out_of_range) return "folder type " + text.substr(0, equals) + " is out of range";
    if (error != std::errc() || stop != end) return expected;
    folder.second = text.substr(equals + 1);
    return NotADirectory(folder.second);
}

}  // namespace

std::filesystem::path DefaultHome() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && std::filesystem::path(data).is_absolute()) return std::filesystem::path(data) / "kelvra-host";
    const std::filesystem::path home = UsersHomeDirectory();
    return home.empty() ? home : home / ".local" / "share" / "kelvra-host";
}

HostSetup Resolved(HostSetup setup) {
    if (setup.home.empty()) setup.home = DefaultHome();
    if (!setup.home.empty()) setup.home = Absolute(setup.home);
    for (auto& folder : setup.folders) folder.second = Absolute(folder.second);
    if (setup.preferences.empty() && !setup.home.empty()) setup.preferences = setup.home / kPreferencesFileName;
    if (!setup.preferences.empty()) setup.preferences = Absolute(setup.preferences);
    return setup;
}

void ApplyHostSetup(const HostSetup& setup, Host& host) {
    if (!setup.home.empty()) host.Folders().UseHome(setup.home);
    for (const auto& [type, directory] : setup.folders) host.Folders().Map(type, directory);
    host.Preferences().UseFile(setup.preferences);
}

void AddHostSetupOptions(CLI::App& command, HostSetup& setup) {
    command
        .add_option_function<std::string>(
            "--home", [&setup](const std::string& home) { setup.home = home; },
            "the host's home: its subfolders application-33, application-73, user-88, user-89 and "
            "user-88/excluded-72 stand for those host folder types, and it holds preferences.json "
            "(default: $XDG_DATA_HOME/kelvra-host, else ~/.local/share/kelvra-host)")
        ->type_name("DIR")
        ->check(CLI::Validator([](std::string& home) { return NotADirectory(home); }, ""));
    command
        .add_option_function<std::vector<std::string>>(
            "--folder",
            [&setup](const std::vector<std::string>& folders) {
                for (const std::string& text : folders) {
                    std::pair<std::int32_t, std::filesystem::path> folder;
                    ParseFolder(text, folder);
                    setup.folders.push_back(std::move(folder));
                }
            },
            "map host folder type TYPE to the directory DIR, over the home's (repeatable)")
        ->type_name("TYPE=DIR")
        ->allow_extra_args(false)
        ->check(CLI::Validator(
            [](std::string& text) {
                std::pair<std::int32_t, std::filesystem::path> folder;
                return ParseFolder(text, folder);
            },
            ""));
    command
        .add_option_function<std::string>(
            "--prefs", [&setup](const std::string& file) { setup.preferences = file; },
            "the preferences file, a JSON object (default: preferences.json in the home)")
        ->type_name("FILE")
        ->check(CLI::Validator(
            [](std::string& file) {
                std::error_code error;
                return std::filesystem::is_directory(file, error) ? file + " is a directory" : std::string();
            },
            ""));
}

}  // namespace kelvra::cli
