// Replaces the global operator new and delete of a test program (link the
// object library tintora_failing_new) so that a test can count allocations
// and make the next ones fail, as a host out of blocks would.
#pragma once

#include <cstddef>

namespace testsupport {

// Allocations made so far by operator new of any form.
std::size_t AllocationCount();

// The allocation after the next `allowed` ones fails, and every one after it
// until AllowAllocations (or, with `onlyOne`, that one alone). Throwing forms
// throw std::bad_alloc, non-throwing forms answer null.
void FailAllocationsAfter(std::size_t allowed, bool onlyOne = false);
void AllowAllocations();

// Fails allocations for the lifetime of the object.
class AllocationFailureScope {
public:
    explicit AllocationFailureScope(std::size_t allowed) { FailAllocationsAfter(allowed); }
    ~AllocationFailureScope() { AllowAllocations(); }
    AllocationFailureScope(const AllocationFailureScope&) = delete;
    AllocationFailureScope& operator=(const AllocationFailureScope&) = delete;
};

}  // namespace testsupport
