#include "TestPlugin.h"

#include <new>
#include <stdexcept>

#include "PluginHooks.h"

namespace test_plugin {

namespace {
const void* gRequiredSuite = nullptr;
}  // namespace

const kv::SuiteImportEntry kRequiredImport[] = {
    {"Test Required Suite", 1, &gRequiredSuite},
    {nullptr, 0, nullptr},
};

namespace {
std::vector<std::string> gRan;
std::map<std::string, Behaviour> gBehaviours;
kv::Plugin* gGlobal = nullptr;
bool gNoMemoryForPlugin = false;
const kv::SuiteImportEntry* gImports = kRequiredImport;
}  // namespace

void Reset() {
    gRan.clear();
    gBehaviours.clear();
    gGlobal = nullptr;
    gNoMemoryForPlugin = false;
    gImports = kRequiredImport;
}

std::vector<std::string>& Ran() { return gRan; }
std::map<std::string, Behaviour>& Behaviours() { return gBehaviours; }
kv::Plugin*& Global() { return gGlobal; }
bool& NoMemoryForPlugin() { return gNoMemoryForPlugin; }
const kv::SuiteImportEntry*& Imports() { return gImports; }

}  // namespace test_plugin

namespace {

struct StandardFailure : std::exception {
    const char* what() const noexcept override { return "standard failure"; }
};

template <class Base>
kv::ResultCode React(const char* operation, Base base) {
    test_plugin::Ran().push_back(operation);
    const auto found = test_plugin::Behaviours().find(operation);
    if (found == test_plugin::Behaviours().end()) return base();
    const Behaviour behaviour = found->second;
    switch (behaviour.reaction) {
        case Reaction::kBase:
            return base();
        case Reaction::kAnswer:
            return behaviour.code;
        case Reaction::kThrowError:
            throw kv::Error(behaviour.code, nullptr);
        case Reaction::kThrowBadAlloc:
            throw std::bad_alloc();
        case Reaction::kThrowStandard:
            throw StandardFailure();
        case Reaction::kThrowInteger:
            throw 42;
    }
    return base();
}

}  // namespace

TestPlugin::TestPlugin(ZPPluginRef self) noexcept : Plugin(self) { SetName("Test Plugin"); }
TestPlugin::TestPlugin(State&& kept) noexcept : Plugin(std::move(kept)) {}
TestPlugin::~TestPlugin() { test_plugin::Ran().push_back("~TestPlugin"); }

void TestPlugin::ReportError(kv::ResultCode code, const char* caller, const char* selector, void* message) {
    test_plugin::Ran().push_back("ReportError " + std::to_string(code));
    Plugin::ReportError(code, caller, selector, message);
}
kv::ResultCode TestPlugin::StartupPlugin(ZPInterfaceMessage* m) {
    return React("StartupPlugin", [&] { return Plugin::StartupPlugin(m); });
}
kv::ResultCode TestPlugin::ShutdownPlugin(ZPInterfaceMessage* m) {
    return React("ShutdownPlugin", [&] { return Plugin::ShutdownPlugin(m); });
}
kv::ResultCode TestPlugin::UnloadPlugin(ZPAccessMessage* m) {
    return React("UnloadPlugin", [&] { return Plugin::UnloadPlugin(m); });
}
kv::ResultCode TestPlugin::ReloadPlugin(ZPAccessMessage* m) {
    return React("ReloadPlugin", [&] { return Plugin::ReloadPlugin(m); });
}
kv::ResultCode TestPlugin::SaveUserData() {
    return React("SaveUserData", [&] { return Plugin::SaveUserData(); });
}
kv::ResultCode TestPlugin::Purge() {
    return React("Purge", [&] { return Plugin::Purge(); });
}
kv::ResultCode TestPlugin::SetGlobal(kv::Plugin* plugin) {
    return React(plugin == nullptr ? "SetGlobal null" : "SetGlobal", [&] {
        test_plugin::Global() = plugin;
        return kv::kNoErr;
    });
}
kv::ResultCode TestPlugin::AllocateSuiteTables() {
    return React("AllocateSuiteTables", [&] { return Plugin::AllocateSuiteTables(); });
}
kv::ResultCode TestPlugin::FillSuiteTables() {
    return React("FillSuiteTables", [&] { return Plugin::FillSuiteTables(); });
}
kv::ResultCode TestPlugin::EmptySuiteTables() {
    return React("EmptySuiteTables", [&] { return Plugin::EmptySuiteTables(); });
}
kv::ResultCode TestPlugin::FreeSuiteTables() {
    return React("FreeSuiteTables", [&] { return Plugin::FreeSuiteTables(); });
}
kv::ResultCode TestPlugin::Notify(KVNotifierMessage* m) {
    return React("Notify", [&] { return Plugin::Notify(m); });
}
kv::ResultCode TestPlugin::GetFileFormatParameters(KVFileFormatMessage* m) {
    return React("GetFileFormatParameters", [&] { return Plugin::GetFileFormatParameters(m); });
}
kv::ResultCode TestPlugin::SetFileFormatParameters(KVFileFormatMessage* m) {
    return React("SetFileFormatParameters", [&] { return Plugin::SetFileFormatParameters(m); });
}
kv::ResultCode TestPlugin::GoFileFormat(KVFileFormatMessage* m) {
    return React("GoFileFormat", [&] { return Plugin::GoFileFormat(m); });
}
kv::ResultCode TestPlugin::CheckFileFormat(KVFileFormatMessage* m) {
    return React("CheckFileFormat", [&] { return Plugin::CheckFileFormat(m); });
}
kv::ResultCode TestPlugin::UpdateFileFormat(KVFileFormatMessage* m) {
    return React("UpdateFileFormat", [&] { return Plugin::UpdateFileFormat(m); });
}

namespace kv {

Plugin* NewPlugin(ZPPluginRef self) {
    test_plugin::Ran().push_back("NewPlugin");
    if (test_plugin::NoMemoryForPlugin()) return nullptr;
    return new (std::nothrow) TestPlugin(self);
}

void FixupReload(Plugin& plugin) {
    test_plugin::Ran().push_back("FixupReload");
    RebuildAfterReload<TestPlugin>(plugin);
}

const SuiteImportEntry* PluginImports() noexcept { return test_plugin::Imports(); }

}  // namespace kv
