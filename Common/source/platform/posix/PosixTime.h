// POSIX times as FILETIME values.
#pragma once

#include <ctime>

#include "platform/FileTime.h"

namespace kv::platform::posix {

// Times before 1601 become 0.
FileTime FileTimeOf(const timespec& time) noexcept;

}  // namespace kv::platform::posix
