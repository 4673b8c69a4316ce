// What a test asks of the probe module. The test sends a "KV Notifier"
// message whose data points to a command; the probe carries it out when the
// message reaches its Notify.
#pragma once

#include <cstddef>
#include <cstdint>

struct ProbeCommand {
    enum Action : std::int32_t {
        kAnswer,                  // Notify answers `code`
        kThrowError,              // throws kv::Error with `code`
        kThrowContractViolation,  // throws kv::Contract::Violation
        kThrowBadAlloc,
        kThrowStandard,           // throws another std::exception
        kThrowInteger,
        kReportError,             // calls the object's ReportError with `code`, answers 0
        kSetPurgeAnswer,          // Purge answers `code` from now on
        kSetSaveAnswer,           // SaveUserData answers `code` from now on
        kCountSaves,              // `count` receives the calls of SaveUserData so far
        kAllocate,                // `memory` receives an allocation of form `form`
        kFree,                    // frees `memory` with the delete of form `form`
    };

    // The operator new and delete pairs of kAllocate and kFree.
    enum Form : std::int32_t {
        kNew,                      // new / delete
        kNewSizedDelete,           // new / sized delete
        kNewArray,                 // new[] / delete[]
        kNewArraySizedDelete,      // new[] / sized delete[]
        kNewNothrow,               // nothrow new / nothrow delete
        kNewArrayNothrow,          // nothrow new[] / nothrow delete[]
        kNewAligned,               // aligned new / aligned delete
        kNewAlignedSizedDelete,    // aligned new / sized aligned delete
        kNewArrayAligned,          // aligned new[] / aligned delete[]
        kNewArrayAlignedSizedDelete,  // aligned new[] / sized aligned delete[]
        kNewAlignedNothrow,        // aligned nothrow new / aligned nothrow delete
        kNewArrayAlignedNothrow,   // aligned nothrow new[] / aligned nothrow delete[]
        kFormCount,
    };

    static constexpr std::size_t kAllocationSize = 100;
    static constexpr std::size_t kAlignment = 64;

    Action action = kAnswer;
    std::uint32_t code = 0;
    Form form = kNew;
    void* memory = nullptr;
    std::int32_t count = 0;
};
