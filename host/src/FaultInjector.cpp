#include <kelvra/FaultInjector.h>

#include <ZPBasicControl.h>

#include <algorithm>
#include <deque>
#include <mutex>

namespace kelvra {

namespace {

// Every (suite, function) given a call site so far, by site; a deque keeps
// the names where they are while more are added.
struct CallSites {
    std::mutex mutex;
    std::deque<std::pair<std::string, std::string>> names;
    std::map<std::pair<std::string, std::string>, CallSite, NamedKeyLess<std::string_view>> sites;
};

CallSites& Sites() {
    static CallSites sites;
    return sites;
}

const std::pair<std::string, std::string>& NameOf(CallSite site) {
    CallSites& sites = Sites();
    std::lock_guard lock(sites.mutex);
    return sites.names[site];
}

}  // namespace

CallSite CallSiteOf(std::string_view suite, std::string_view function) {
    CallSites& sites = Sites();
    std::lock_guard lock(sites.mutex);
    const auto found = sites.sites.find(std::pair{suite, function});
    if (found != sites.sites.end()) return found->second;
    const CallSite site = sites.names.size();
    sites.names.emplace_back(std::string(suite), std::string(function));
    sites.sites.emplace(sites.names.back(), site);
    return site;
}

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

const CallCounts& FaultInjector::Calls() const {
    // Brought up to date in place: counts only grow, so no entry goes and
    // what a caller holds of the map stays valid.
    if (countedInCalls_ != totalCalls_) {
        for (CallSite site = 0; site < callsBySite_.size(); ++site) {
            if (callsBySite_[site] != 0) calls_[NameOf(site)] = callsBySite_[site];
        }
        countedInCalls_ = totalCalls_;
    }
    return calls_;
}

std::optional<ZPErr> FaultInjector::OnCall(std::string_view suite, std::string_view function) {
    return OnCall(CallSiteOf(suite, function));
}

void FaultInjector::CountFirstCallAt(CallSite site) {
    callsBySite_.resize(site + 1, 0);
    ++callsBySite_[site];
}

std::optional<ZPErr> FaultInjector::ArmedFaultAt(CallSite site) {
    const auto& [suite, function] = NameOf(site);
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
