#include "AppContextScope.h"

#include "SuiteImports.h"

namespace kv {

namespace {
constexpr std::int32_t kNotificationContext = 1;
}  // namespace

AppContextScope::AppContextScope(ZPPluginRef plugin) noexcept {
    const KVContextSuite* context = framework::Context();
    if (context == nullptr) return;
    if (context->PrepareAppContext(&context_, plugin, kNotificationContext) != kNoErr) return;
    context->PushAppContext(plugin, &context_);
}

AppContextScope::~AppContextScope() {
    const KVContextSuite* context = framework::Context();
    if (context == nullptr || context_ == nullptr) return;
    context->PopAppContext(context_);
    context_ = nullptr;
}

}  // namespace kv
