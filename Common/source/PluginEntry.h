// The body of the module's entry point: every message the host sends.
#pragma once

#include "KVError.h"

namespace kv {

// Never lets an exception out. `message` begins with the message header.
ResultCode PluginEntry(const char* caller, const char* selector, void* message) noexcept;

}  // namespace kv
