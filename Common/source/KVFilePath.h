// Questions asked of a host file path the module does not own. Each
// forwards to one function of "KV File Path Suite" and throws kv::Error
// with the host's code when the host fails.
#pragma once

#include "KVUnicodeString.h"
#include "ZPTypes.h"

namespace kv {

// The path's last component, as the host shows it.
UnicodeString FileNameOf(KVFilePathRef path);
// The extension without its dot; empty when the name has none.
UnicodeString FileExtensionOf(KVFilePathRef path);

}  // namespace kv
