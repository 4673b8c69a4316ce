// Host suites the module uses, each through one SuiteNode per use site: the
// suite is acquired on first use (or at start-up for registered nodes) and
// every node that holds one is on the process-wide suite list, from which
// shut-down and unload release them all.
#pragma once

#include <cstdint>

#include "KVError.h"
#include "ZPBasicSuite.h"

namespace kv {

class SuiteNode {
public:
    enum Registration : std::uint8_t {
        kOnDemand = 0,    // put on the list by its first successful acquisition
        kRegistered = 1,  // put on the list when constructed; acquired at start-up
    };

    // Nodes are function-local statics, so construction is a thread-safe
    // one-time initialisation. A registered node goes onto the front of the list.
    SuiteNode(const char* name, std::int32_t version, Registration registration) noexcept;
    SuiteNode(const SuiteNode&) = delete;
    SuiteNode& operator=(const SuiteNode&) = delete;
    // No destructor: nothing runs at exit, so the module can be unloaded at any time.

    const void* Suite() const noexcept { return suite_; }

private:
    friend struct SuiteList;

    SuiteNode* next_;
    const void* suite_;
    const char* name_;
    std::int32_t version_;
    std::uint8_t registered_;
};

// The suite of `node`, acquired now if it is not held. Null while no basic
// suite is known yet; a host refusal throws kv::Error with the host's code.
const void* AcquireSuiteOrThrow(SuiteNode& node);

template <class Suite>
const Suite* AcquireSuiteOrThrow(SuiteNode& node) {
    return static_cast<const Suite*>(AcquireSuiteOrThrow(node));
}

// As AcquireSuiteOrThrow, for callers that cannot go on without the suite:
// while no basic suite is known it throws kv::Error "S!Fd" as well.
template <class Suite>
const Suite& RequireSuite(SuiteNode& node) {
    const Suite* suite = AcquireSuiteOrThrow<Suite>(node);
    if (suite == nullptr) throw Error(kSuiteNotFoundErr, nullptr);
    return *suite;
}

// As AcquireSuiteOrThrow, but null when the host refuses: for callers that
// simply do without a missing suite.
template <class Suite>
const Suite* AcquireSuiteOrNull(SuiteNode& node) noexcept {
    try {
        return AcquireSuiteOrThrow<Suite>(node);
    } catch (const Error&) {
        return nullptr;
    }
}

// Stores `basic` for the list and acquires every registered node on it that
// holds no suite. When one cannot be had, releases the suites of the nodes
// before it on the list and answers "S!Fd".
ResultCode AcquireRegisteredSuites(const ZPBasicSuite* basic) noexcept;

// Releases every held suite and empties the list.
void ReleaseAllSuites() noexcept;

// Puts `node` on the front of the list unless it is on it already.
void ListSuite(SuiteNode& node) noexcept;

// The basic suite the list acquires through; null before the first message.
const ZPBasicSuite* SuiteListBasicSuite() noexcept;
// Gives the list its basic suite unless it already has one.
void OfferSuiteListBasicSuite(const ZPBasicSuite* basic) noexcept;

}  // namespace kv
