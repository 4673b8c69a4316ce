#include <kelvra/FaultInjector.h>

#include <ZPBasicControl.h>

#include <algorithm>

namespace kelvra {

void FaultInjector::MakeSuiteUnavailable(std::string name, std::optional<std::int32_t> version) {
    unavailable_.emplace_back(std::move(name), version);
}

void FaultInjector::FailCall(CallFault fault) { callFaults_.push_back({std::move(fault), 0}); }

void FaultInjector::FailBlockAllocation(std::uint64_t nth, bool fromThenOn) {
    zpbasic::FailAllocation(nth, fromThenOn);
}

void FaultInjector::Clear() {
    unavailable_.clear();
    callFaults_.clear();
    failedCalls_.clear();
    zpbasic::ClearAllocationFault();
}

bool FaultInjector::IsSuiteUnavailable(std::string_view name, std::int32_t version) const {
    return std::any_of(unavailable_.begin(), unavailable_.end(), [&](const auto& entry) {
        return entry.first == name && (!entry.second || *entry.second == version);
    });
}

std::optional<ZPErr> FaultInjector::OnCall(std::string_view suite, std::string_view function) {
    ++totalCalls_;
    auto counted = calls_.find(std::pair{suite, function});
    if (counted == calls_.end()) counted = calls_.emplace(std::pair{std::string(suite), std::string(function)}, 0).first;
    ++counted->second;
    std::optional<ZPErr> failure;
    for (ArmedCallFault& armed : callFaults_) {
        const CallFault& f = armed.fault;
        if (!f.suite.empty() && f.suite != suite) continue;
        if (!f.function.empty() && f.function != function) continue;
        ++armed.seen;
        const bool strikes = f.fromThenOn ? armed.seen >= f.nth : armed.seen == f.nth;
        if (strikes && !failure) failure = f.code;
    }
    if (failure) failedCalls_.emplace_back(suite, function);
    return failure;
}

}  // namespace kelvra
