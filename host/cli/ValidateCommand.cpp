#include "ValidateCommand.h"

#include "ChildProcess.h"
#include "SuiteChecks.h"
#include "ValidationChecks.h"

#include <CommandLine.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iostream>
#include <random>
#include <sstream>

namespace kelvra::cli {

namespace {

struct CheckResult {
    std::string id;
    std::string status;  // "pass", "fail", "crash"
    std::string detail;
};

// A verdict crosses the process boundary as "P" or "F" and the detail.
std::string Encode(const Verdict& verdict) { return (verdict.pass ? "P" : "F") + verdict.detail; }

CheckResult RunCheck(const Check& check, const ValidateOptions& options) {
    const ChildOutcome outcome =
        RunInChild([&] { return Encode(check.run(options.module)); }, options.timeoutSeconds);
    switch (outcome.end) {
    case ChildOutcome::End::Answered:
        return {check.id, outcome.answer[0] == 'P' ? "pass" : "fail", outcome.answer.substr(1)};
    case ChildOutcome::End::TimedOut:
        return {check.id, "fail", outcome.detail};
    case ChildOutcome::End::Crashed:
        break;
    }
    return {check.id, "crash", outcome.detail};
}

// The start-up-without checks, one per suite a normal start-up acquires;
// a failed observation is reported as one failing check.
std::vector<Check> MissingSuiteChecks(const ValidateOptions& options, std::vector<CheckResult>& failures) {
    const ChildOutcome outcome = RunInChild(
        [&] {
            std::string answer = "P";
            for (const std::string& suite : SuitesAcquiredAtStartup(options.module)) answer += suite + "\n";
            return answer;
        },
        options.timeoutSeconds);
    if (outcome.end != ChildOutcome::End::Answered || outcome.answer[0] != 'P') {
        const std::string why = outcome.end == ChildOutcome::End::Answered ? outcome.answer.substr(1) : outcome.detail;
        failures.push_back({kStartupWithoutRequiredSuiteId, "fail", "no normal start-up to observe: " + why});
        return {};
    }
    std::vector<Check> checks;
    std::istringstream suites(outcome.answer.substr(1));
    for (std::string suite; std::getline(suites, suite);) checks.push_back(StartupWithout(suite));
    return checks;
}

class Reporter {
public:
    explicit Reporter(const ValidateOptions& options, std::uint64_t seed) : options_(options), seed_(seed) {
        if (!options_.json) std::cout << "validating " << options_.module.string() << " (seed " << seed_ << ")\n";
    }

    void Add(CheckResult result) {
        (result.status == "pass" ? passed_ : failed_) += 1;
        const bool shown = !options_.onlyFailed || result.status != "pass";
        if (shown && !options_.json) {
            std::cout << result.status << " " << result.id << (result.detail.empty() ? "" : ": " + result.detail)
                      << std::endl;
        }
        if (shown) shown_.push_back(std::move(result));
    }

    int Finish() {
        if (options_.json) {
            nlohmann::json checks = nlohmann::json::array();
            for (const CheckResult& r : shown_)
                checks.push_back({{"id", r.id}, {"status", r.status}, {"detail", r.detail}});
            const nlohmann::json report = {{"module", options_.module.string()},
                                           {"seed", seed_},
                                           {"checks", checks},
                                           {"passed", passed_},
                                           {"failed", failed_}};
            std::cout << report.dump(2) << "\n";
        } else {
            std::cout << passed_ << " passed, " << failed_ << " failed\n";
        }
        return failed_ == 0 ? commandline::kSucceeded : commandline::kFailed;
    }

private:
    const ValidateOptions& options_;
    std::uint64_t seed_;
    std::vector<CheckResult> shown_;
    int passed_ = 0;
    int failed_ = 0;
};

}  // namespace

int Validate(const ValidateOptions& options) {
    const std::uint64_t seed = options.seed ? *options.seed : std::random_device{}();
    Reporter reporter(options, seed);

    const CheckResult propertyList = RunCheck(PropertyListCheck(), options);
    const bool loadable = propertyList.status == "pass";
    reporter.Add(propertyList);

    std::vector<Check> checks = FileChecks();
    std::vector<CheckResult> observationFailures;
    if (loadable) {
        for (Check& check : BehaviourChecks()) checks.push_back(std::move(check));
        for (Check& check : SuiteChecks()) checks.push_back(std::move(check));
        for (Check& check : MissingSuiteChecks(options, observationFailures)) checks.push_back(std::move(check));
    }
    for (CheckResult& failure : observationFailures) reporter.Add(std::move(failure));

    // A check that passes only after another one would show up as an order
    // that fails; the seed makes that order repeatable.
    std::mt19937_64 random(seed);
    std::shuffle(checks.begin(), checks.end(), random);
    for (const Check& check : checks) reporter.Add(RunCheck(check, options));
    return reporter.Finish();
}

}  // namespace kelvra::cli
