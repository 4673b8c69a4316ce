// Runs a piece of work in a forked child with a time limit, so that a crash
// or a hang in the work ends the child, not the caller.
#pragma once

#include <functional>
#include <string>

namespace kelvra::cli {

struct ChildOutcome {
    enum class End { Answered, Crashed, TimedOut };
    End end = End::Crashed;
    std::string answer;  // Answered: what the work returned
    std::string detail;  // Crashed, TimedOut: what happened, with the child's last line of output
};

ChildOutcome RunInChild(const std::function<std::string()>& work, double timeoutSeconds);

}  // namespace kelvra::cli
