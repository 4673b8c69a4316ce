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
// A host folder asked for with `create` could not be made.
inline constexpr ZPErr kFolderNotMadeErr = ZP_FOURCC('F', 'O', 'L', 'D');
// The preferences file exists but is no JSON object (or cannot be read).
inline constexpr ZPErr kPreferencesFileErr = ZP_FOURCC('P', 'R', 'E', 'F');
// A preference holds a value of another type than the one asked for.
inline constexpr ZPErr kPreferenceTypeErr = ZP_FOURCC('T', 'Y', 'P', '?');
// An integer preference lies outside 32 bits.
inline constexpr ZPErr kPreferenceRangeErr = ZP_FOURCC('R', 'N', 'G', '?');
// A library file to open as a document does not exist.
inline constexpr ZPErr kFileNotFoundErr = ZP_FOURCC('F', 'N', 'F', '?');
// No registered file format accepted a library file.
inline constexpr ZPErr kNoFormatErr = ZP_FOURCC('F', 'M', 'T', '?');
// A library file of the host's own kind (".kv") is not a document.
inline constexpr ZPErr kNotADocumentErr = ZP_FOURCC('K', 'V', 'D', '?');

}  // namespace kelvra
