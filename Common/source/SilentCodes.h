// Result codes that are never shown to the user.
#pragma once

#include "KVError.h"

namespace kv {

// True for the silent codes and for 0, which ends their list.
bool IsSilentCode(ResultCode code) noexcept;

}  // namespace kv
