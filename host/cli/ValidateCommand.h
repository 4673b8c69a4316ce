// kelvra-host validate: runs every check on a module, each in its own child
// process with a time limit.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace kelvra::cli {

struct ValidateOptions {
    std::filesystem::path module;
    bool json = false;
    bool onlyFailed = false;
    std::optional<std::uint64_t> seed;  // the order the checks run in; random when none
    double timeoutSeconds = 60;
};

// 0 only when every check passed.
int Validate(const ValidateOptions& options);

}  // namespace kelvra::cli
