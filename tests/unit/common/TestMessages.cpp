#include "TestMessages.h"

#include <cstring>

#include "PluginEntry.h"

kv::ResultCode TestMessages::Send(const char* caller, const char* selector) {
    ZPMessageData* header = &interface.d;
    if (std::strcmp(caller, kKVNotifierCaller) == 0) header = &notification.d;
    if (std::strcmp(caller, kKVFileFormatCaller) == 0) header = &fileFormat.d;
    header->globals = globals;
    const kv::ResultCode result = kv::PluginEntry(caller, selector, header);
    globals = header->globals;
    return result;
}

kv::ResultCode TestMessages::Notify(KVNotifierHandle notifier, const char* selector) {
    notification.notifier = notifier;
    return Send(kKVNotifierCaller, selector);
}
