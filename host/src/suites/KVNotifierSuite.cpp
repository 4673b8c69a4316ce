// Notifier registration; the host (or a test) can then send a notification
// on a registered notifier to the plug-in that registered it.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVFrameworkSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVNotifierSuite};

ZPErr AddNotifier(HostState& host, ZPPluginRef plugin, const char* name, const char* type,
                  KVNotifierHandle* notifier) {
    if (notifier == nullptr) return kZPBadParameterErr;
    *notifier = nullptr;
    const Module* owner = host.FindModule(plugin);
    if (owner == nullptr || name == nullptr || type == nullptr) return kZPBadParameterErr;
    auto record = std::make_unique<NotifierRecord>();
    NotifierRecord* raw = record.get();
    raw->owner = owner;
    raw->name = name;
    raw->type = type;
    raw->handle = host.notifiers.Add<KVNotifierHandle>(std::move(record));
    *notifier = raw->handle;
    return kZPNoErr;
}

const KVNotifierSuite table = {
    HostFunction<kSuite, "AddNotifier", &AddNotifier>::Call,
};

}  // namespace

const void* KVNotifierSuiteTable() { return &table; }

}  // namespace kelvra
