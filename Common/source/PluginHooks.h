// What the framework asks of the plug-in linked with it. A module defines
// these once, next to its Plugin class.
#pragma once

#include <new>
#include <utility>

#include "Plugin.h"
#include "SuiteImports.h"

namespace kv {

// The plug-in object for a start-up, made with non-throwing new; null when
// there is no memory for it.
Plugin* NewPlugin(ZPPluginRef self);

// Re-establishes the object's dispatch table for the module code that was
// loaded again under it; usually RebuildAfterReload<the derived class>.
void FixupReload(Plugin& plugin);

// The plug-in's import table (SuiteImportEntry).
const SuiteImportEntry* PluginImports() noexcept;

// Constructs the derived part of `plugin` again in place: its own fields
// start over as in its constructor, while the Plugin fields keep their
// values. Derived needs a constructor from Plugin::State&&. Until then the
// object's dispatch table points into code that is gone, so it is not
// checked here.
template <class Derived>
__attribute__((no_sanitize("vptr"))) void RebuildAfterReload(Plugin& plugin) {
    Plugin::State kept = std::move(plugin.state_);
    new (static_cast<void*>(&plugin)) Derived(std::move(kept));
}

}  // namespace kv
