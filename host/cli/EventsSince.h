// The events a command shows step by step: those logged since the last step.
#pragma once

#include <kelvra/EventLog.h>

#include <vector>

namespace kelvra::cli {

// The events logged since `from`, which then moves past them.
inline std::vector<Event> EventsSince(const EventLog& log, std::size_t& from) {
    const std::vector<Event>& all = log.All();
    std::vector<Event> events(all.begin() + std::ptrdiff_t(from), all.end());
    from = all.size();
    return events;
}

}  // namespace kelvra::cli
