// The module's plug-in object, created at start-up and kept until shut-down.
#pragma once

#include "Plugin.h"

class Tintora final : public kv::Plugin {
public:
    explicit Tintora(ZPPluginRef self) noexcept;
    // Rebuilds the object in place after a reload (kv::RebuildAfterReload).
    explicit Tintora(State&& kept) noexcept;

    // Keeps `plugin` as the object that other plug-ins' calls reach.
    kv::ResultCode SetGlobal(kv::Plugin* plugin) override;

    // The started plug-in object, or null.
    static Tintora* Global() noexcept;
};
