// The boundary of every host suite function: it finds the live host, counts
// the call for fault injection, answers an injected fault instead of doing
// the work, and keeps exceptions from crossing into the module.
//
//   constexpr SuiteName kSuite{"KV Unicode String Suite"};
//   ZPErr New(HostState& host, KVUnicodeStringRef* string) { ... }
//   const KVUnicodeStringSuite table = {HostFunction<kSuite, "New", &New>::Call, ...};
#pragma once

#include "HostCodes.h"
#include "HostState.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <type_traits>

namespace kelvra {

template <std::size_t N>
struct SuiteName {
    char text[N];
    constexpr SuiteName(const char (&name)[N]) { std::copy_n(name, N, text); }
};

// A failed function that answers no code answers "no".
template <typename R>
R FailureAnswer(ZPErr code) {
    if constexpr (std::is_same_v<R, ZPBoolean>) {
        return 0;
    } else {
        return code;
    }
}

// Runs body(host) at the boundary of the function at `site`; onInjected(host)
// runs when an injected fault replaces the call, for functions whose objects
// must know of it.
template <typename R, typename Body, typename OnInjected>
R GuardedCall(CallSite site, Body&& body, OnInjected&& onInjected) noexcept {
    HostState* host = CurrentHost();
    if (host == nullptr) return FailureAnswer<R>(kZPCantHappenErr);
    try {
        if (auto code = host->faults.OnCall(site)) {
            onInjected(*host);
            return FailureAnswer<R>(*code);
        }
        return body(*host);
    } catch (const std::bad_alloc&) {
        return FailureAnswer<R>(kZPOutOfMemoryErr);
    } catch (...) {
        return FailureAnswer<R>(kZPCantHappenErr);
    }
}

template <SuiteName Suite, SuiteName Function, auto Impl>
struct HostFunction;

template <SuiteName Suite, SuiteName Function, typename R, typename... A, R (*Impl)(HostState&, A...)>
struct HostFunction<Suite, Function, Impl> {
    static R Call(A... args) noexcept {
        static const CallSite site = CallSiteOf(Suite.text, Function.text);
        return GuardedCall<R>(
            site, [&](HostState& host) { return Impl(host, args...); }, [](HostState&) {});
    }
};

// The slot of a suite function that belongs to later work.
template <typename... A>
ZPErr NotYetAvailable(A...) {
    return kNotYetAvailableErr;
}

// A slot the module never calls.
inline ZPErr ReservedSlot() { return kZPReservedSlotErr; }

template <std::size_t N>
void FillReserved(ZPReservedFunction (&slots)[N]) {
    std::fill(std::begin(slots), std::end(slots), &ReservedSlot);
}

}  // namespace kelvra
