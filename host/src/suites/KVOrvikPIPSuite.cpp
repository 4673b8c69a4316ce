// Usage events go to the event log.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVOrvikPIPSuite};

ZPErr LogUsageEvent(HostState& host, const char* category, const char* eventName, const char* detail) {
    if (category == nullptr || eventName == nullptr) return kZPBadParameterErr;
    Event event;
    event.kind = Event::Kind::Usage;
    event.category = category;
    event.event = eventName;
    event.hasDetail = detail != nullptr;
    event.detail = detail != nullptr ? detail : "";
    host.events.Add(std::move(event));
    return kZPNoErr;
}

const KVOrvikPIPSuite table = {
    HostFunction<kSuite, "LogUsageEvent", &LogUsageEvent>::Call,
};

}  // namespace

const void* KVOrvikPIPSuiteTable() { return &table; }

}  // namespace kelvra
