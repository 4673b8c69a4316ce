// The checks of kelvra-host validate. Each runs on its own host, in its own
// child process (ValidateCommand), and judges one rule a module must keep.
#pragma once

#include <ZPTypes.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace kelvra::cli {

struct Verdict {
    bool pass = false;
    std::string detail;
};

struct Check {
    std::string id;  // stable, kebab-case
    std::function<Verdict(const std::filesystem::path& module)> run;
};

Verdict Pass(std::string detail = {});
Verdict Fail(std::string detail);
// "<message> answered <code>".
std::string Answered(const char* message, ZPErr result);
// "a, b, c".
std::string Join(const std::vector<std::string>& items);

// Gates everything that loads the module.
Check PropertyListCheck();
// Checks of the file alone.
std::vector<Check> FileChecks();
// Checks that load the module and send it messages.
std::vector<Check> BehaviourChecks();

// The suites a normal start-up acquires (then shuts the module down).
// Throws HostError when there is no normal start-up to observe.
std::vector<std::string> SuitesAcquiredAtStartup(const std::filesystem::path& module);
// Start-up with `suite` unavailable must fail cleanly.
Check StartupWithout(const std::string& suite);
// The id under which a missing-suites observation that failed is reported.
inline constexpr const char* kStartupWithoutRequiredSuiteId = "startup-without-required-suite";

}  // namespace kelvra::cli
