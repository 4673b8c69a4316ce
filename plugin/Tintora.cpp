#include "Tintora.h"

namespace {
Tintora* gTintora = nullptr;
}  // namespace

Tintora::Tintora(ZPPluginRef self) noexcept : Plugin(self) { SetName("Orvik Tintora Core"); }

Tintora::Tintora(State&& kept) noexcept : Plugin(std::move(kept)) {}

kv::ResultCode Tintora::SetGlobal(kv::Plugin* plugin) {
    gTintora = static_cast<Tintora*>(plugin);
    return kv::kNoErr;
}

Tintora* Tintora::Global() noexcept { return gTintora; }
