// Tells, before a swatch exchange file is read, how many of its blocks the
// reader will not import.
#pragma once

#include <cstdint>

class OrvikSwatchbookStream;

namespace formats {

// Sets `count` to the number of blocks of type 0 or 3..0x7FFF. Answers 1 when
// the file is well formed up to its last declared block, else 0; `count`
// then holds what was counted before the failure.
std::int32_t CountUnsupportedSwatchExchangeEntries(OrvikSwatchbookStream& stream, std::int32_t& count);

}  // namespace formats
