// What the framework asks of this module: its plug-in object and its imports.
#include "KVFileSuites.h"
#include "PluginHooks.h"
#include "Tintora.h"

namespace {

// "KV File Format Suite", held from start-up to shut-down for the file formats.
const void* gFileFormatSuite = nullptr;

constexpr kv::SuiteImportEntry kImports[] = {
    {kKVFileFormatSuite, kKVFileFormatSuiteVersion, &gFileFormatSuite},
    {nullptr, 0, nullptr},
};

}  // namespace

namespace kv {

Plugin* NewPlugin(ZPPluginRef self) { return new (std::nothrow) Tintora(self); }

void FixupReload(Plugin& plugin) { RebuildAfterReload<Tintora>(plugin); }

const SuiteImportEntry* PluginImports() noexcept { return kImports; }

}  // namespace kv
