#include "HostSuites.h"

#include <KVFileSuites.h>
#include <KVFrameworkSuites.h>
#include <KVHeldSuites.h>
#include <KVStringSuites.h>
#include <KVSwatchSuites.h>
#include <ZPPluginSuites.h>

namespace kelvra {

std::vector<SuiteDefinition> HostSuites() {
    return {
        {kZPAccessSuite, kZPAccessSuiteVersion, ZPAccessSuiteTable()},
        {kZPPluginsSuite, kZPPluginsSuiteVersion, ZPPluginsSuiteTable()},
        {kZPSuitesSuite, kZPSuitesSuiteVersion, ZPSuitesSuiteTable()},
        {kZPBlocksSuite, kZPBlocksSuiteVersion, ZPBlocksSuiteTable()},
        {kKVNotifierSuite, kKVNotifierSuiteVersion, KVNotifierSuiteTable()},
        {kKVContextSuite, kKVContextSuiteVersion, KVContextSuiteTable()},
        {kKVContextPrivateSuite, kKVContextPrivateSuiteVersion, KVContextPrivateSuiteTable()},
        {kUXKBasicSuite, kUXKBasicSuiteVersion, UXKBasicSuiteTable()},
        {kKVUserSuite, kKVUserSuiteVersion, KVUserSuiteTable()},
        {kKVUserPrivateSuite, kKVUserPrivateSuiteVersion, KVUserPrivateSuiteTable()},
        {kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, KVThreadPoolSuiteTable()},
        {kKVOrvikPIPSuite, kKVOrvikPIPSuiteVersion, KVOrvikPIPSuiteTable()},
        {kLexoHostInitSuite, kLexoHostInitSuiteVersion, LexoHostInitSuiteTable()},
        {kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, KVUnicodeStringSuiteTable()},
        {kKVGlobalUnicodeStringSuite, kKVGlobalUnicodeStringSuiteVersion, KVGlobalUnicodeStringSuiteTable()},
        {kKVFilePathSuite, kKVFilePathSuiteVersion, KVFilePathSuiteTable()},
        {kKVDataFilterSuite, kKVDataFilterSuiteVersion, KVDataFilterSuiteTable()},
        {kKVColorConversionSuite, kKVColorConversionSuiteVersion, KVColorConversionSuiteTable()},
        {kKVFileFormatSuite, kKVFileFormatSuiteVersion, KVFileFormatSuiteTable()},
        {kKVFoldersSuite, kKVFoldersSuiteVersion, KVFoldersSuiteTable()},
        {kKVPreferenceSuite, kKVPreferenceSuiteVersion, KVPreferenceSuiteTable()},
        {kKVPathStyleSuite, kKVPathStyleSuiteVersion, KVPathStyleSuiteTable()},
        {kKVSwatchListSuite, kKVSwatchListSuiteVersion, KVSwatchListSuiteTable()},
        {kKVSwatchGroupSuite, kKVSwatchGroupSuiteVersion, KVSwatchGroupSuiteTable()},
        {kKVCustomColorSuite, kKVCustomColorSuiteVersion, KVCustomColorSuiteTable()},
        {kKVSwatchLibrariesSuite, kKVSwatchLibrariesSuiteVersion, KVSwatchLibrariesSuiteTable()},
        {kKVMdMemorySuite, kKVMdMemorySuiteVersion, HeldSuiteTable()},
        {kKVMatchingArtSuite, kKVMatchingArtSuiteVersion, HeldSuiteTable()},
        {kKVArtSetSuite, kKVArtSetSuiteVersion, HeldSuiteTable()},
        {kKVArtSetGeneratorSuite, kKVArtSetGeneratorSuiteVersion, HeldSuiteTable()},
        {kKVCountedObjectSuite, kKVCountedObjectSuiteVersion, HeldSuiteTable()},
        {kKVArtSuite, kKVArtSuiteVersion, HeldSuiteTable()},
        {kKVOrvikBeaconSuite, kKVOrvikBeaconSuiteVersion, HeldSuiteTable()},
    };
}

}  // namespace kelvra
