// The host's application context around a notification: entered when the
// scope opens (if the host agrees), left when it closes.
#pragma once

#include "ZPTypes.h"

namespace kv {

class AppContextScope {
public:
    explicit AppContextScope(ZPPluginRef plugin) noexcept;
    AppContextScope(const AppContextScope&) = delete;
    AppContextScope& operator=(const AppContextScope&) = delete;
    ~AppContextScope();

private:
    KVAppContextHandle context_ = nullptr;
};

}  // namespace kv
