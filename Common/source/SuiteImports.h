// The suites the framework itself calls, and the plug-in's own imports,
// acquired together while a SuiteImports object lives (from start-up or
// reload to unload or shut-down).
#pragma once

#include <cstdint>

#include "KVError.h"
#include "KVFrameworkSuites.h"
#include "ZPPluginSuites.h"

namespace kv {

// One imported suite. An import table lists the required suites and ends
// with an entry whose name is null; when that entry's version is
// kOptionalImports, optional suites follow, ended by another null name.
struct SuiteImportEntry {
    const char* name;
    std::int32_t version;
    const void** suite;  // where the acquired suite is kept; null while not held
};

inline constexpr std::int32_t kOptionalImports = static_cast<std::int32_t>(FourCC("OPTS"));

class SuiteImports {
public:
    // The first living object acquires the framework suites, then the
    // plug-in's required imports, stopping at the first failure.
    SuiteImports() noexcept;
    SuiteImports(const SuiteImports&) = delete;
    SuiteImports& operator=(const SuiteImports&) = delete;
    // The last one releases what was acquired.
    ~SuiteImports();

    // The host's answer to the first acquisition that failed, or 0.
    ResultCode AcquisitionError() const noexcept { return acquisitionError_; }
    // Acquires the optional imports not held yet.
    void AcquireOptionalSuites() noexcept;

    // Start-up and reload take over the process-wide count as the only holder.
    static void MarkSingleReference() noexcept;

private:
    ResultCode acquisitionError_ = kNoErr;
    std::uint16_t optionalCount_ = 0;
    std::uint16_t requiredCount_ = 0;
    std::uint32_t optionalAcquired_ = 0;
};

// The framework's suites while a SuiteImports object holds them; null otherwise.
namespace framework {
const ZPAccessSuite* Access() noexcept;
const ZPPluginsSuite* Plugins() noexcept;
const KVNotifierSuite* Notifier() noexcept;
const KVContextSuite* Context() noexcept;
const UXKBasicSuite* UXKBasic() noexcept;
}  // namespace framework

}  // namespace kv
