// The functions of "KV Tintora Suite", which other plug-ins call without an
// object: they reach the plug-in through Tintora::Global().
#pragma once

#include "KVTintoraSuite.h"

// Writes the 14 functions into `table`.
void FillTintoraSuite(KVTintoraSuite& table) noexcept;
