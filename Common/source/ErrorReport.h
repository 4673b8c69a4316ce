// Shows a result code to the user: an alert with the code's message, or for
// "!MEM" and "CANT" a dialog with a More Info button.
#pragma once

#include "KVError.h"
#include "ZPTypes.h"

namespace kv {

// Shows nothing for a silent code, when a suite it needs is missing or when
// the host says no dialog may be shown now. `pluginName` may be null. Throws
// only when the host fails to make a dialog's global string.
void ReportErrorToUser(ZPPluginRef self, ResultCode code, const char* pluginName);

}  // namespace kv
