// The host's validator passes the real module and the probe module.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include "ModuleTesting.h"

namespace {

struct Run {
    int status = -1;
    std::string output;
};

Run Validate(const char* module) {
    const std::string command = std::string(KELVRA_HOST) + " validate --json '" + module + "'";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    Run run;
    if (!pipe) return run;
    std::array<char, 4096> buffer{};
    while (std::size_t read = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) run.output.append(buffer.data(), read);
    run.status = pclose(pipe.release());
    return run;
}

void ExpectEveryCheckPasses(const char* module) {
    const Run run = Validate(module);
    EXPECT_EQ(run.status, 0) << run.output;
    const auto report = nlohmann::json::parse(run.output, nullptr, false);
    ASSERT_TRUE(report.contains("checks")) << run.output;
    EXPECT_GT(report["checks"].size(), 10u);
    for (const auto& check : report["checks"]) {
        EXPECT_EQ(check["status"], "pass") << check.dump();
    }
}

TEST(ValidatorTest, TheRealModulePassesEveryCheck) { ExpectEveryCheckPasses(module_testing::kTintora); }

TEST(ValidatorTest, TheProbeModulePassesEveryCheck) { ExpectEveryCheckPasses(module_testing::kProbe); }

}  // namespace
