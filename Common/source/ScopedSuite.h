// A suite acquired straight through the basic suite for the length of a
// scope, outside the suite list: the error report's suites, which it must
// not keep between reports.
#pragma once

#include <cstdint>

#include "KVError.h"
#include "ZPBasicSuite.h"

namespace kv {

class ScopedSuite {
public:
    // Released again at the end of the scope when the host answered success,
    // even if it gave no suite.
    ScopedSuite(const ZPBasicSuite& basic, const char* name, std::int32_t version) noexcept
        : basic_(basic), name_(name), version_(version) {
        acquired_ = basic_.AcquireSuite(name_, version_, &suite_) == kNoErr;
        if (!acquired_) suite_ = nullptr;
    }
    ScopedSuite(const ScopedSuite&) = delete;
    ScopedSuite& operator=(const ScopedSuite&) = delete;
    ~ScopedSuite() {
        if (acquired_) basic_.ReleaseSuite(name_, version_);
    }

    // Null when the host refused it or gave none.
    template <class Suite>
    const Suite* As() const noexcept {
        return static_cast<const Suite*>(suite_);
    }

private:
    const ZPBasicSuite& basic_;
    const char* name_;
    std::int32_t version_;
    const void* suite_ = nullptr;
    bool acquired_ = false;
};

}  // namespace kv
