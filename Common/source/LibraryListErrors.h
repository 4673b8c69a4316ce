// Failures the library code raises at one fixed place, with the
// error-thrower message naming that place.
#pragma once

#include "KVError.h"

namespace kv {

inline constexpr const char* kLibraryListErrorThrowerMessage =
    "KV exception from ErrorThrower declared in file: CKVLibraryList line: 894 ";

}  // namespace kv

// Throws kv::Error with `code` and the library list's error-thrower message.
[[noreturn]] void ThrowLibraryListError(kv::ResultCode code);
