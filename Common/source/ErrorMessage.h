// The text shown for a result code: from the module's own error string list,
// or from the host's list for the codes the host describes itself.
#pragma once

#include <cstddef>
#include <cstdint>

#include "KVError.h"
#include "KVFrameworkSuites.h"
#include "ZPBasicSuite.h"

namespace kv {

// The module's list of error messages: pairs of a code entry (a decimal
// number or four characters) and its message, the last pair being the
// fallback whose "%s" receives the code.
inline constexpr std::int32_t kErrorStringListId = 16050;
// The host's own messages, indexed by code for the codes 10 to 899.
inline constexpr std::int32_t kHostErrorStringListId = 257;

inline constexpr std::size_t kErrorMessageSize = 256;

// Writes the message for `code` into `message`; false when there is none.
// `owner` owns the module's list; `basic` gives the host's list.
bool ChooseErrorMessage(const ZPBasicSuite& basic, const UXKBasicSuite& strings, KVResourceOwner owner,
                        ResultCode code, char (&message)[kErrorMessageSize]);

}  // namespace kv
