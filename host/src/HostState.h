// Everything the host keeps while it runs. Suite functions are plain C
// functions without a context argument, so they reach the one live host
// through CurrentHost().
#pragma once

#include <kelvra/DocumentList.h>
#include <kelvra/Host.h>

#include "FileDataFilter.h"
#include "HandleTable.h"
#include "ImportWatch.h"
#include "SuiteRegistry.h"

#include <map>
#include <set>

namespace kelvra {

struct HostString {
    std::u16string units;
    std::string key;      // the localisation key it was made from, if any
    bool global = false;  // kept until the host ends; never disposed of
};

struct HostFilePath {
    std::string path;  // UTF-8
};

struct HostDataFilter {
    FileDataFilter file;
    KVDataFilterRef previous = nullptr;
    bool linked = false;
};

struct HostBlock {
    std::size_t size = 0;
    std::string debugName;
};

struct HostState {
    HostState();
    ~HostState();

    EventLog events;
    FaultInjector faults;
    HostClock clock;
    HostStringTable hostStrings;
    SuiteRegistry suites;

    std::vector<std::unique_ptr<Module>> modules;
    std::vector<MessageRecord> messages;
    DocumentList documents;
    HostFolders folders;
    HostPreferences preferences;
    ImportWatch imports;  // during a "KV Go" message

    HandleTable<HostString> strings;
    HandleTable<HostFilePath> filePaths;
    HandleTable<HostDataFilter> dataFilters;
    HandleTable<NotifierRecord> notifiers;
    HandleTable<FileFormatRecord> fileFormats;
    std::map<void*, HostBlock> blocks;
    std::uint64_t badBlockFrees = 0;
    std::set<std::uintptr_t> accesses;
    std::set<std::uintptr_t> appContexts;
    std::uintptr_t lastToken = 0;

    std::function<bool(const std::string&)> answerQuestion;
    bool canShowDialogs = true;

    Module& Load(const std::filesystem::path& path);
    Module* FindModule(ZPPluginRef plugin) const;
    // A new handle value for accesses and contexts; never 0.
    std::uintptr_t NewToken() { return ++lastToken; }
    // After a shut-down or a failed start-up a module's notifiers, file
    // formats and published suites are gone with its plug-in object.
    void Withdraw(const Module& module);
    void Record(const Module& module, const char* caller, const char* selector, ZPErr result);
    // Host::OpenWithFormats (FormatOpening.h).
    FormatOpening OpenWithFormats(const std::filesystem::path& file, const FormatTarget& target);

    // Helpers for suite functions.
    static void Rename(Module& module, std::string name) { module.name_ = std::move(name); }
    // The owner of the host's own string lists.
    KVResourceOwner HostResourceOwner() { return reinterpret_cast<KVResourceOwner>(&hostStrings); }
    KVUnicodeStringRef NewString(std::u16string_view units, std::string key, bool global);
    // Disposes of a string the caller made; false for a bad or global one.
    bool DisposeString(KVUnicodeStringRef string);
    // A string from platform text, a localisation key resolved.
    KVUnicodeStringRef NewStringFromPlatformText(std::string_view text, bool global);
    // Replaces the contents of a string the caller made; false for a bad or
    // global one.
    bool SetText(KVUnicodeStringRef string, std::u16string units);
    // The text of a string as UTF-8 (empty for a bad handle).
    std::string Utf8Of(KVUnicodeStringRef string) const;
    std::string KeyOf(KVUnicodeStringRef string) const;

private:
    // Strings disposed of, kept with the room their text had for the next
    // ones: a module makes and disposes of a string for nearly every name it
    // hands over, and each was two allocations and two frees.
    static constexpr std::size_t kSpareStrings = 8;
    static constexpr std::size_t kLongestSpareText = 64;  // code units of room
    std::vector<std::unique_ptr<HostString>> spareStrings_;
};

// The live host; null when none exists.
HostState* CurrentHost();

// The basic suite handed to modules in every message.
const ZPBasicSuite* HostBasicSuite();

}  // namespace kelvra
