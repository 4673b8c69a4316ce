#include "RegisteredSuites.h"

#include "KVFileSuites.h"
#include "KVFrameworkSuites.h"
#include "KVHeldSuites.h"
#include "KVStringSuites.h"
#include "KVSwatchSuites.h"
#include "ZPPluginSuites.h"

#include <initializer_list>

namespace kv::registered {

namespace {
constexpr SuiteNode::Registration kRegistered = SuiteNode::kRegistered;
}  // namespace

SuiteNode& Plugins() {
    static SuiteNode node(kZPPluginsSuite, kZPPluginsSuiteVersion, kRegistered);
    return node;
}
SuiteNode& UXKBasic() {
    static SuiteNode node(kUXKBasicSuite, kUXKBasicSuiteVersion, kRegistered);
    return node;
}
SuiteNode& User() {
    static SuiteNode node(kKVUserSuite, kKVUserSuiteVersion, kRegistered);
    return node;
}
SuiteNode& Folders() {
    static SuiteNode node(kKVFoldersSuite, kKVFoldersSuiteVersion, kRegistered);
    return node;
}
SuiteNode& Preference() {
    static SuiteNode node(kKVPreferenceSuite, kKVPreferenceSuiteVersion, kRegistered);
    return node;
}
SuiteNode& FileFormat() {
    static SuiteNode node(kKVFileFormatSuite, kKVFileFormatSuiteVersion, kRegistered);
    return node;
}
SuiteNode& SwatchList() {
    static SuiteNode node(kKVSwatchListSuite, kKVSwatchListSuiteVersion, kRegistered);
    return node;
}
SuiteNode& SwatchGroup() {
    static SuiteNode node(kKVSwatchGroupSuite, kKVSwatchGroupSuiteVersion, kRegistered);
    return node;
}
SuiteNode& CustomColor() {
    static SuiteNode node(kKVCustomColorSuite, kKVCustomColorSuiteVersion, kRegistered);
    return node;
}
SuiteNode& ColorConversion() {
    static SuiteNode node(kKVColorConversionSuite, kKVColorConversionSuiteVersion, kRegistered);
    return node;
}
SuiteNode& DataFilter() {
    static SuiteNode node(kKVDataFilterSuite, kKVDataFilterSuiteVersion, kRegistered);
    return node;
}
SuiteNode& PathStyle() {
    static SuiteNode node(kKVPathStyleSuite, kKVPathStyleSuiteVersion, kRegistered);
    return node;
}
SuiteNode& FilePath() {
    static SuiteNode node(kKVFilePathSuite, kKVFilePathSuiteVersion, kRegistered);
    return node;
}
SuiteNode& GlobalUnicodeString() {
    static SuiteNode node(kKVGlobalUnicodeStringSuite, kKVGlobalUnicodeStringSuiteVersion, kRegistered);
    return node;
}
SuiteNode& UnicodeString() {
    static SuiteNode node(kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, kRegistered);
    return node;
}
SuiteNode& Blocks() {
    static SuiteNode node(kZPBlocksSuite, kZPBlocksSuiteVersion, kRegistered);
    return node;
}

void ListRegisteredSuites() noexcept {
    static SuiteNode mdMemory(kKVMdMemorySuite, kKVMdMemorySuiteVersion, kRegistered);
    static SuiteNode matchingArt(kKVMatchingArtSuite, kKVMatchingArtSuiteVersion, kRegistered);
    static SuiteNode artSet(kKVArtSetSuite, kKVArtSetSuiteVersion, kRegistered);
    static SuiteNode artSetGenerator(kKVArtSetGeneratorSuite, kKVArtSetGeneratorSuiteVersion, kRegistered);
    static SuiteNode countedObject(kKVCountedObjectSuite, kKVCountedObjectSuiteVersion, kRegistered);
    for (SuiteNode* node : {&Plugins(), &UXKBasic(), &User(), &Folders(), &Preference(), &FileFormat(),
                            &SwatchList(), &SwatchGroup(), &CustomColor(), &ColorConversion(), &DataFilter(),
                            &PathStyle(), &mdMemory, &matchingArt, &artSet, &artSetGenerator, &FilePath(),
                            &GlobalUnicodeString(), &countedObject, &UnicodeString(), &Blocks()}) {
        ListSuite(*node);
    }
}

namespace {
// The nodes are listed as soon as the module is loaded.
[[maybe_unused]] const bool gListedAtLoad = (ListRegisteredSuites(), true);
}  // namespace

}  // namespace kv::registered
