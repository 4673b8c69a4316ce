// Messages about a library file that name it: the localised text of a key
// with the file's name in place of its "%s", shown to the user.
#pragma once

#include <cstddef>

#include "ZPTypes.h"

namespace formats {

// Writes `text` with each "%s" replaced by `name`, and a terminator, into
// `buffer` of `room` bytes; throws kv::Error "US!I" when it does not fit.
void FormatFileMessage(const char* text, const char* name, char* buffer, std::size_t room);

// The text of `key` formatted with the name of `file`, as an alert.
void ShowFileAlert(const char* key, KVFilePathRef file);
// The same as a question; true when the user answers yes.
bool AskFileQuestion(const char* key, KVFilePathRef file);

}  // namespace formats
