// Message records as the host sends them, for the framework's unit tests.
#pragma once

#include "FakeHost.h"
#include "KVError.h"
#include "ZPMessages.h"

struct TestMessages {
    ZPInterfaceMessage interface{{nullptr, fake::kPlugin, nullptr, fake::BasicSuite()}};
    KVNotifierMessage notification{{nullptr, fake::kPlugin, nullptr, fake::BasicSuite()}, nullptr, "test", nullptr};
    KVFileFormatMessage fileFormat{{nullptr, fake::kPlugin, nullptr, fake::BasicSuite()}, nullptr, 0, {}};

    // The globals slot the host keeps between messages.
    void* globals = nullptr;

    // Sends through the entry body, carrying the globals slot as the host does.
    kv::ResultCode Send(const char* caller, const char* selector);
    kv::ResultCode Startup() { return Send(kZPInterfaceCaller, kZPStartupSelector); }
    kv::ResultCode Shutdown() { return Send(kZPInterfaceCaller, kZPShutdownSelector); }
    kv::ResultCode Unload() { return Send(kZPAccessCaller, kZPUnloadSelector); }
    kv::ResultCode Reload() { return Send(kZPAccessCaller, kZPReloadSelector); }
    kv::ResultCode Notify(KVNotifierHandle notifier, const char* selector = kKVNotifySelector);
};
