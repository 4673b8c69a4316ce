// How many allocations a piece of model code makes, counted by the shared
// replacement of operator new (which also makes allocations fail on demand).
#pragma once

#include <cstddef>

#include "tests/support/FailingNew.h"

template <typename Work>
std::size_t AllocationsDuring(Work&& work) {
    const std::size_t before = testsupport::AllocationCount();
    work();
    return testsupport::AllocationCount() - before;
}
