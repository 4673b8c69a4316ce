// The plug-in object of the framework's unit tests. It records which of its
// operations ran and answers, or throws, as the test tells it. Its file
// also defines the framework's hooks for the test program.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "Plugin.h"
#include "SuiteImports.h"

enum class Reaction {
    kBase,           // what Plugin does
    kAnswer,         // answer the given code
    kThrowError,     // throw kv::Error with the given code
    kThrowBadAlloc,
    kThrowStandard,  // another std::exception
    kThrowInteger,
};

struct Behaviour {
    Reaction reaction = Reaction::kBase;
    kv::ResultCode code = kv::kNoErr;
};

class TestPlugin final : public kv::Plugin {
public:
    explicit TestPlugin(ZPPluginRef self) noexcept;
    explicit TestPlugin(State&& kept) noexcept;
    ~TestPlugin() override;

    void ReportError(kv::ResultCode code, const char* caller, const char* selector, void* message) override;
    kv::ResultCode StartupPlugin(ZPInterfaceMessage* message) override;
    kv::ResultCode ShutdownPlugin(ZPInterfaceMessage* message) override;
    kv::ResultCode UnloadPlugin(ZPAccessMessage* message) override;
    kv::ResultCode ReloadPlugin(ZPAccessMessage* message) override;
    kv::ResultCode SaveUserData() override;
    kv::ResultCode Purge() override;
    kv::ResultCode SetGlobal(kv::Plugin* plugin) override;
    kv::ResultCode AllocateSuiteTables() override;
    kv::ResultCode FillSuiteTables() override;
    kv::ResultCode EmptySuiteTables() override;
    kv::ResultCode FreeSuiteTables() override;
    kv::ResultCode Notify(KVNotifierMessage* message) override;
    kv::ResultCode GetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode SetFileFormatParameters(KVFileFormatMessage* message) override;
    kv::ResultCode GoFileFormat(KVFileFormatMessage* message) override;
    kv::ResultCode CheckFileFormat(KVFileFormatMessage* message) override;
    kv::ResultCode UpdateFileFormat(KVFileFormatMessage* message) override;

    // A field of the derived class: 7 after construction.
    int derivedField = 7;

    // Exposed for tests of the base.
    using Plugin::SetName;
};

namespace test_plugin {

// Resets everything below.
void Reset();
// The operations that ran, by name, in order (ReportError with its code).
std::vector<std::string>& Ran();
// How an operation answers; unlisted ones do what Plugin does.
std::map<std::string, Behaviour>& Behaviours();
// The last object given to SetGlobal.
kv::Plugin*& Global();
// NewPlugin answers null, as when there is no memory.
bool& NoMemoryForPlugin();
// The import table PluginImports answers: one required test suite by default.
const kv::SuiteImportEntry*& Imports();
extern const kv::SuiteImportEntry kRequiredImport[];

}  // namespace test_plugin
