#include "SuiteImports.h"

#include "KVHeldSuites.h"
#include "PluginHooks.h"
#include "SuiteNode.h"

namespace kv {

namespace {

enum FrameworkSuite {
    kAccess,
    kPlugins,
    kNotifier,
    kContext,
    kContextPrivate,
    kUXKBasic,
    kMdMemory,
    kMatchingArt,
    kFrameworkSuiteCount
};

const void* gFrameworkSuites[kFrameworkSuiteCount] = {};

const SuiteImportEntry kFrameworkImports[kFrameworkSuiteCount] = {
    {kZPAccessSuite, kZPAccessSuiteVersion, &gFrameworkSuites[kAccess]},
    {kZPPluginsSuite, kZPPluginsSuiteVersion, &gFrameworkSuites[kPlugins]},
    {kKVNotifierSuite, kKVNotifierSuiteVersion, &gFrameworkSuites[kNotifier]},
    {kKVContextSuite, kKVContextSuiteVersion, &gFrameworkSuites[kContext]},
    {kKVContextPrivateSuite, kKVContextPrivateSuiteVersion, &gFrameworkSuites[kContextPrivate]},
    {kUXKBasicSuite, kUXKBasicSuiteVersion, &gFrameworkSuites[kUXKBasic]},
    {kKVMdMemorySuite, kKVMdMemorySuiteVersion, &gFrameworkSuites[kMdMemory]},
    {kKVMatchingArtSuite, kKVMatchingArtSuiteVersion, &gFrameworkSuites[kMatchingArt]},
};

// Guards both tables: only the first SuiteImports acquires, only the last releases.
std::uint16_t gReferenceCount = 0;

// A host that answers success without a suite has not given one.
ResultCode Acquire(const SuiteImportEntry& entry) noexcept {
    const ZPBasicSuite* basic = SuiteListBasicSuite();
    if (basic == nullptr) return kSuiteNotFoundErr;
    const void* suite = nullptr;
    ResultCode result = basic->AcquireSuite(entry.name, entry.version, &suite);
    if (result == kNoErr && suite == nullptr) result = kSuiteNotFoundErr;
    *entry.suite = result == kNoErr ? suite : nullptr;
    return result;
}

// Releases the held entries, stopping at the first release the host refuses.
bool ReleaseHeld(const SuiteImportEntry* entries, std::uint16_t count) noexcept {
    const ZPBasicSuite* basic = SuiteListBasicSuite();
    for (std::uint16_t i = 0; i < count; ++i) {
        if (*entries[i].suite == nullptr) continue;
        if (basic == nullptr || basic->ReleaseSuite(entries[i].name, entries[i].version) != kNoErr) return false;
        *entries[i].suite = nullptr;
    }
    return true;
}

ResultCode AcquireAll(const SuiteImportEntry* entries, std::uint16_t count) noexcept {
    for (std::uint16_t i = 0; i < count; ++i) {
        if (ResultCode result = Acquire(entries[i])) return result;
    }
    return kNoErr;
}

std::uint16_t CountEntries(const SuiteImportEntry* entries) noexcept {
    std::uint16_t count = 0;
    while (entries[count].name != nullptr) ++count;
    return count;
}

// The optional entries follow the required ones and their terminator.
const SuiteImportEntry* OptionalImports(const SuiteImportEntry* imports, std::uint16_t requiredCount) noexcept {
    return imports + requiredCount + 1;
}

template <class Suite>
const Suite* Framework(FrameworkSuite which) noexcept {
    return static_cast<const Suite*>(gFrameworkSuites[which]);
}

}  // namespace

SuiteImports::SuiteImports() noexcept {
    const SuiteImportEntry* imports = PluginImports();
    requiredCount_ = CountEntries(imports);
    if (imports[requiredCount_].version == kOptionalImports) {
        optionalCount_ = CountEntries(OptionalImports(imports, requiredCount_));
    }
    if (gReferenceCount == 0) {
        acquisitionError_ = AcquireAll(kFrameworkImports, kFrameworkSuiteCount);
        if (acquisitionError_ == kNoErr) acquisitionError_ = AcquireAll(imports, requiredCount_);
    }
    ++gReferenceCount;
}

SuiteImports::~SuiteImports() {
    if (gReferenceCount == 0 || --gReferenceCount != 0) return;
    const SuiteImportEntry* imports = PluginImports();
    if (ReleaseHeld(kFrameworkImports, kFrameworkSuiteCount)) ReleaseHeld(imports, requiredCount_);
    const SuiteImportEntry* optional = OptionalImports(imports, requiredCount_);
    const ZPBasicSuite* basic = SuiteListBasicSuite();
    for (std::uint16_t i = 0; i < optionalCount_ && optionalAcquired_ != 0; ++i) {
        if (*optional[i].suite == nullptr) continue;
        if (basic != nullptr) basic->ReleaseSuite(optional[i].name, optional[i].version);
        *optional[i].suite = nullptr;
        --optionalAcquired_;
    }
}

void SuiteImports::AcquireOptionalSuites() noexcept {
    const SuiteImportEntry* optional = OptionalImports(PluginImports(), requiredCount_);
    for (std::uint16_t i = 0; i < optionalCount_; ++i) {
        if (*optional[i].suite == nullptr && Acquire(optional[i]) == kNoErr) ++optionalAcquired_;
    }
}

void SuiteImports::MarkSingleReference() noexcept { gReferenceCount = 1; }

namespace framework {
const ZPAccessSuite* Access() noexcept { return Framework<ZPAccessSuite>(kAccess); }
const ZPPluginsSuite* Plugins() noexcept { return Framework<ZPPluginsSuite>(kPlugins); }
const KVNotifierSuite* Notifier() noexcept { return Framework<KVNotifierSuite>(kNotifier); }
const KVContextSuite* Context() noexcept { return Framework<KVContextSuite>(kContext); }
const UXKBasicSuite* UXKBasic() noexcept { return Framework<UXKBasicSuite>(kUXKBasic); }
}  // namespace framework

}  // namespace kv
