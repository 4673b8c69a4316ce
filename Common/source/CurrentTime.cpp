#include "CurrentTime.h"

#include <ctime>

namespace kv {

std::int64_t CurrentTimeInSeconds() noexcept { return static_cast<std::int64_t>(std::time(nullptr)); }

}  // namespace kv
