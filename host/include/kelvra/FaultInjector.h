// Faults the host injects on demand: a suite that cannot be acquired, the
// N-th call of host suite functions failing, the N-th block allocation of
// libZPBasic failing.
#pragma once

#include "NamedKeyLess.h"

#include <ZPTypes.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvra {

// The suite name under which the basic suite's own functions,
// "AcquireSuite" and "ReleaseSuite", are counted and failed.
inline constexpr const char* kBasicSuiteName = "ZP Basic Suite";

struct CallFault {
    // Which calls are counted: every host suite function (both empty), those
    // of one suite (function empty) or one function of one suite.
    std::string suite;
    std::string function;
    std::uint64_t nth = 1;     // the n-th matching call from the moment the fault is set
    bool fromThenOn = false;   // false: that call only
    ZPErr code = kZPCantHappenErr;  // functions that answer no code answer "no" instead
};

// Calls counted per (suite, function). Looked up with views as well.
using CallCounts = std::map<std::pair<std::string, std::string>, std::uint64_t, NamedKeyLess<std::string_view>>;

// A number for one (suite, function), the same in every host of the process,
// so that counting a call needs no look-up by name: the names are only
// compared when a fault is armed.
using CallSite = std::size_t;
CallSite CallSiteOf(std::string_view suite, std::string_view function);

class FaultInjector {
public:
    // Acquiring `name` (in every version, or only in `version`) answers
    // kZPSuiteNotFoundErr.
    void MakeSuiteUnavailable(std::string name, std::optional<std::int32_t> version = {});
    void FailCall(CallFault fault);
    // The n-th block allocation of libZPBasic from now on fails.
    void FailBlockAllocation(std::uint64_t nth, bool fromThenOn = false);
    // Removes every fault and forgets the failed calls (call counts stay).
    void Clear();

    bool IsSuiteUnavailable(std::string_view name, std::int32_t version) const;
    // Counts one call of suite.function; the code to answer when it is to fail.
    std::optional<ZPErr> OnCall(std::string_view suite, std::string_view function);
    // Inline: every host suite call comes here, and without an armed fault
    // it is two increments.
    std::optional<ZPErr> OnCall(CallSite site) {
        ++totalCalls_;
        if (site < callsBySite_.size()) ++callsBySite_[site];
        else CountFirstCallAt(site);
        if (callFaults_.empty()) return std::nullopt;
        return ArmedFaultAt(site);
    }

    // Calls of host suite functions counted so far, in all and per
    // (suite, function); the latter is brought up to date when asked for.
    std::uint64_t TotalCalls() const { return totalCalls_; }
    const CallCounts& Calls() const;
    // The (suite, function) of each call a fault failed, in order, since the
    // last Clear(): which call it was that failed.
    const std::vector<std::pair<std::string, std::string>>& FailedCalls() const { return failedCalls_; }

private:
    struct ArmedCallFault {
        CallFault fault;
        std::uint64_t seen = 0;
    };
    void CountFirstCallAt(CallSite site);
    std::optional<ZPErr> ArmedFaultAt(CallSite site);

    std::vector<std::pair<std::string, std::optional<std::int32_t>>> unavailable_;
    std::vector<ArmedCallFault> callFaults_;
    std::uint64_t totalCalls_ = 0;
    // Calls by call site: counting a call is an increment, and the names
    // are only looked at when the counts are asked for.
    std::vector<std::uint64_t> callsBySite_;
    mutable CallCounts calls_;
    mutable std::uint64_t countedInCalls_ = 0;  // the total when calls_ was brought up to date
    std::vector<std::pair<std::string, std::string>> failedCalls_;
};

}  // namespace kelvra
