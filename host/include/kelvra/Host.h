// The emulated host: loads module files, answers every suite they acquire,
// records what a user would see and counts what they hold.
//
//   kelvra::Host host;
//   kelvra::Module& m = host.Load("Tintora.so");
//   m.Startup(); ... m.Shutdown();
//   host.Events(), host.SuiteCounts(), host.LiveBlocks(), host.Documents()
//
// One host per process at a time: the suites are plain C tables, the block
// allocator and the clock are process-wide. A second Host throws HostError.
#pragma once

#include "DocumentList.h"
#include "EventLog.h"
#include "FaultInjector.h"
#include "FormatOpening.h"
#include "HostClock.h"
#include "HostError.h"
#include "HostFolders.h"
#include "HostPreferences.h"
#include "HostStringTable.h"
#include "Module.h"
#include "SuiteCount.h"

#include <ZPBasicSuite.h>

#include <concepts>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelvra {

struct BlockCounts {
    std::size_t basic = 0;   // live libZPBasic blocks (a module's operator new)
    std::size_t blocks = 0;  // live "ZP Blocks Suite" blocks
    std::vector<std::string> blockNames;  // debug names of the live "ZP Blocks Suite" blocks
    std::uint64_t badFrees = 0;  // frees of something that was no live block, both allocators
};

// Host objects a module made and has not given back.
struct ObjectCounts {
    std::size_t strings = 0;      // unicode strings not disposed of (global strings excluded)
    std::size_t filePaths = 0;
    std::size_t dataFilters = 0;  // made or linked and not unlinked
    std::size_t accesses = 0;     // "ZP Access Suite" handles not released
    std::size_t appContexts = 0;  // contexts pushed and not popped
};

struct MessageRecord {
    std::string module;  // the module's name
    std::string caller;
    std::string selector;
    ZPErr result = 0;
};

struct NotifierRecord {
    KVNotifierHandle handle = nullptr;
    const Module* owner = nullptr;
    std::string name;
    std::string type;
};

struct FileFormatRecord {
    KVFileFormatHandle handle = nullptr;
    const Module* owner = nullptr;
    std::string name;
    std::uint32_t type = 0;
    std::string title;
    std::int32_t titleOrder = 0;
    std::string extension;
    std::int32_t options = 0;
};

// A suite a module published (through "ZP Suites Suite") and that is still
// published.
struct PublishedSuite {
    std::string name;
    std::int32_t version = 0;
    const Module* publisher = nullptr;
    const void* table = nullptr;
    // The table's size in bytes when it is a "ZP Blocks Suite" block; the
    // host cannot tell how long a table in any other memory is.
    std::optional<std::size_t> tableSize;
};

class Host {
public:
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // Checks the file (property list, string lists), loads it and finds the
    // entry point the property list names. HostError with the reason when
    // the file is refused.
    Module& Load(const std::filesystem::path& path);

    EventLog& Events();
    FaultInjector& Faults();
    HostClock& Clock();
    HostStringTable& HostStrings();
    // The open documents and the current one (DocumentList.h).
    DocumentList& Documents();
    // The directories of the host folder types ("KV Folders Suite").
    HostFolders& Folders();
    // The preferences file ("KV Preference Suite") and the remembered
    // library files.
    HostPreferences& Preferences();

    std::vector<SuiteCount> SuiteCounts() const;
    // Acquisitions not yet released, over all suites.
    std::uint64_t SuitesHeld() const;
    BlockCounts LiveBlocks() const;
    ObjectCounts LiveObjects() const;
    // Every message sent, in order, with its result.
    const std::vector<MessageRecord>& Messages() const;
    std::vector<NotifierRecord> Notifiers() const;
    std::vector<FileFormatRecord> FileFormats() const;
    // By name, then version.
    std::vector<PublishedSuite> PublishedSuites() const;

    // How "KV User Suite" questions are answered: always the same (yes until
    // set), or by asking `policy` with the question's text. Only a bool
    // itself picks the first form: a function would convert to true.
    void AnswerQuestions(std::same_as<bool> auto yes) {
        AnswerQuestions([yes](const std::string&) { return yes; });
    }
    void AnswerQuestions(std::function<bool(const std::string& question)> policy);
    // What "KV ThreadPool Suite" answers when asked whether a dialog may be
    // shown (yes until set).
    void SetCanShowDialogs(bool can);

    // Offers `file` to every registered file format with "KV Check", each
    // sent to the module that registered it, and has the first that
    // accepted read it with "KV Go" into `target`'s document, made current
    // first (FormatOpening.h). The file is offered whether or not it exists.
    FormatOpening OpenWithFormats(const std::filesystem::path& file, const FormatTarget& target);

    // The basic suite, for tests that act as another plug-in.
    const ZPBasicSuite* BasicSuite() const;
    // Sends "KV Notifier"/"KV Notify" on a registered notifier to its owner.
    ZPErr Notify(KVNotifierHandle notifier, void* notifyData = nullptr);

private:
    std::unique_ptr<HostState> state_;
};

}  // namespace kelvra
