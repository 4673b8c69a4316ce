// Every suite the host publishes. A suite is one source file that defines
// its table; adding one means a line here and one in HostSuites.cpp.
#pragma once

#include <cstdint>
#include <vector>

namespace kelvra {

struct SuiteDefinition {
    const char* name;
    std::int32_t version;
    const void* table;
};

std::vector<SuiteDefinition> HostSuites();

const void* ZPAccessSuiteTable();
const void* ZPPluginsSuiteTable();
const void* ZPSuitesSuiteTable();
const void* ZPBlocksSuiteTable();
const void* KVNotifierSuiteTable();
const void* KVContextSuiteTable();
const void* KVContextPrivateSuiteTable();
const void* UXKBasicSuiteTable();
const void* KVUserSuiteTable();
const void* KVUserPrivateSuiteTable();
const void* KVThreadPoolSuiteTable();
const void* KVOrvikPIPSuiteTable();
const void* LexoHostInitSuiteTable();
const void* KVUnicodeStringSuiteTable();
const void* KVGlobalUnicodeStringSuiteTable();
const void* KVFilePathSuiteTable();
const void* KVDataFilterSuiteTable();
const void* KVColorConversionSuiteTable();
const void* KVFileFormatSuiteTable();
const void* KVSwatchListSuiteTable();
const void* KVSwatchGroupSuiteTable();
const void* KVCustomColorSuiteTable();
const void* KVFoldersSuiteTable();
const void* KVPreferenceSuiteTable();
const void* KVPathStyleSuiteTable();
// Not yet implemented: every slot answers kNotYetAvailableErr.
const void* KVSwatchLibrariesSuiteTable();
// The suites a module only holds (KVHeldSuites.h) share one table.
const void* HeldSuiteTable();

}  // namespace kelvra
