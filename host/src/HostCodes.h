// Result codes of the emulated host's own making.
#pragma once

#include <ZPTypes.h>

namespace kelvra {

// A suite function that belongs to later work answers this.
inline constexpr ZPErr kNotYetAvailableErr = ZP_FOURCC('!', 'I', 'M', 'P');
// A data filter could not open, read or write its file.
inline constexpr ZPErr kFileOpenErr = ZP_FOURCC('O', 'P', 'E', 'N');
inline constexpr ZPErr kFileReadErr = ZP_FOURCC('R', 'E', 'A', 'D');
inline constexpr ZPErr kFileWriteErr = ZP_FOURCC('W', 'R', 'I', 'T');

}  // namespace kelvra
