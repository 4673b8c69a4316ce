// How an exception that reaches a boundary to the host becomes a result code.
// Each boundary has its own fixed rule.
#pragma once

#include <exception>
#include <new>

#include "KVError.h"

namespace kv {

// What a call guarded at the entry gave: its own result, or the code of the
// exception that ended it.
struct EntryResult {
    ResultCode code;
    bool threw;
};

// The entry point, which nothing may leave: a kv::Error gives its code,
// anything else "UNEX".
template <class Call>
EntryResult ExceptionToResultAtEntry(Call&& call) noexcept {
    try {
        return {call(), false};
    } catch (const Error& error) {
        return {error.Code(), true};
    } catch (...) {
        return {kUnknownExceptionErr, true};
    }
}

// The message dispatcher: standard exceptions become codes; anything else
// is left to the entry.
template <class Call>
ResultCode ExceptionToResultAtDispatcher(Call&& call) {
    try {
        return call();
    } catch (const Error& error) {
        return error.Code();
    } catch (const std::bad_alloc&) {
        return kOutOfMemoryErr;
    } catch (const std::exception&) {
        return kCantHappenErr;
    }
}

// Saving the library state, which answers the host with a code whatever a
// library throws: a kv::Error its code, any standard exception "STEX", a
// thrown integer its value, anything else "UNEX".
template <class Call>
ResultCode ExceptionToResultWhileSavingState(Call&& call) noexcept {
    try {
        return call();
    } catch (const Error& error) {
        return error.Code();
    } catch (const std::exception&) {
        return kStdExceptionErr;
    } catch (int value) {
        return ResultCode(value);
    } catch (ResultCode value) {
        return value;
    } catch (...) {
        return kUnknownExceptionErr;
    }
}

}  // namespace kv
