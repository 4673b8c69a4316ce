#include "LibraryListErrors.h"

void ThrowLibraryListError(kv::ResultCode code) { throw kv::Error(code, kv::kLibraryListErrorThrowerMessage); }
