#include "SuiteChecks.h"

#include <kelvra/Host.h>
#include <kelvra/ResultText.h>

#include <KVFrameworkSuites.h>

#include <cstdint>
#include <cstring>

namespace kelvra::cli {

namespace {

constexpr const char* kNotApplicable = "not applicable: the module publishes no suite";

std::string NameOf(const PublishedSuite& suite) { return suite.name + " " + std::to_string(suite.version); }

std::vector<PublishedSuite> PublishedBy(const Host& host, const Module& module) {
    std::vector<PublishedSuite> suites;
    for (PublishedSuite& suite : host.PublishedSuites()) {
        if (suite.publisher == &module) suites.push_back(std::move(suite));
    }
    return suites;
}

// The positions (from 0) of the table's entries that are set, or that are
// null; the table must be one whose size the host knows.
std::vector<std::string> Entries(const PublishedSuite& suite, bool set) {
    std::vector<std::string> positions;
    const std::size_t count = *suite.tableSize / sizeof(void*);
    for (std::size_t i = 0; i < count; ++i) {
        void* entry = nullptr;
        std::memcpy(&entry, static_cast<const unsigned char*>(suite.table) + i * sizeof(void*), sizeof entry);
        if ((entry != nullptr) == set) positions.push_back(std::to_string(i));
    }
    return positions;
}

std::string EntryCount(const PublishedSuite& suite) { return std::to_string(*suite.tableSize / sizeof(void*)); }

std::string NotABlock(const PublishedSuite& suite) {
    return NameOf(suite) + ": its table is not a \"ZP Blocks Suite\" block, so the host cannot tell how long it is "
                           "or read it once the module's code is unloaded";
}

// What acquiring `name` in `version` answers; an acquisition is given back.
ZPErr AcquireAnswer(const Host& host, const std::string& name, std::int32_t version, const void** table = nullptr) {
    const void* acquired = nullptr;
    const ZPErr answer = host.BasicSuite()->AcquireSuite(name.c_str(), version, &acquired);
    if (answer == kZPNoErr) host.BasicSuite()->ReleaseSuite(name.c_str(), version);
    if (table != nullptr) *table = acquired;
    return answer;
}

bool IsPublished(const Host& host, const std::string& name, std::int32_t version) {
    for (const PublishedSuite& suite : host.PublishedSuites()) {
        if (suite.name == name && suite.version == version) return true;
    }
    return false;
}

// The module started, and the suites it published; a verdict when it did
// not start.
struct Started {
    Host host;
    Module* module = nullptr;
    std::vector<PublishedSuite> suites;
    std::optional<Verdict> failure;

    explicit Started(const std::filesystem::path& path) : module(&host.Load(path)) {
        if (const ZPErr r = module->Startup()) failure = Fail(Answered("start-up", r));
        else suites = PublishedBy(host, *module);
    }
};

// Under its name and version it hands out the table it published, with
// every entry set; the versions beside it are refused.
Verdict CheckPublished(const std::filesystem::path& path) {
    Started started(path);
    if (started.failure) return *started.failure;
    if (started.suites.empty()) return Pass(kNotApplicable);
    std::vector<std::string> details;
    for (const PublishedSuite& suite : started.suites) {
        const void* table = nullptr;
        if (const ZPErr r = AcquireAnswer(started.host, suite.name, suite.version, &table))
            return Fail(NameOf(suite) + ": acquiring it answered " + ResultText(r));
        if (table != suite.table) return Fail(NameOf(suite) + ": acquiring it gave another table than the one published");
        for (const std::int32_t wrong : {suite.version - 1, suite.version + 1}) {
            if (IsPublished(started.host, suite.name, wrong)) continue;
            if (const ZPErr r = AcquireAnswer(started.host, suite.name, wrong); r != kZPSuiteNotFoundErr)
                return Fail(NameOf(suite) + ": acquiring version " + std::to_string(wrong) + " answered " +
                            ResultText(r) + ", not " + ResultText(kZPSuiteNotFoundErr));
        }
        if (!suite.tableSize) return Fail(NotABlock(suite));
        if (const auto empty = Entries(suite, false); !empty.empty())
            return Fail(NameOf(suite) + ": at start-up entries " + Join(empty) + " of " + EntryCount(suite) +
                        " are null");
        details.push_back(NameOf(suite) + " with " + EntryCount(suite) + " entries set, other versions refused");
    }
    started.module->Shutdown();
    return Pass(Join(details));
}

// After "Unload" a caller that acquired the suite finds every entry null.
Verdict CheckEmptiedAtUnload(const std::filesystem::path& path) {
    Started started(path);
    if (started.failure) return *started.failure;
    if (started.suites.empty()) return Pass(kNotApplicable);
    for (const PublishedSuite& suite : started.suites) {
        if (!suite.tableSize) return Fail(NotABlock(suite));
    }
    if (const ZPErr r = started.module->Unload()) return Fail(Answered("unload", r));
    for (const PublishedSuite& suite : started.suites) {
        if (const auto set = Entries(suite, true); !set.empty())
            return Fail(NameOf(suite) + ": after unload entries " + Join(set) + " of " + EntryCount(suite) +
                        " are still set");
    }
    started.module->Reload();
    started.module->Shutdown();
    return Pass("every entry null after unload");
}

// After "Reload" the suite is still published, with its entries as they
// were emptied at unload.
Verdict CheckKeptAtReload(const std::filesystem::path& path) {
    Started started(path);
    if (started.failure) return *started.failure;
    if (started.suites.empty()) return Pass(kNotApplicable);
    if (const ZPErr r = started.module->Unload()) return Fail(Answered("unload", r));
    if (const ZPErr r = started.module->Reload()) return Fail(Answered("reload", r));
    for (const PublishedSuite& suite : started.suites) {
        const void* table = nullptr;
        if (const ZPErr r = AcquireAnswer(started.host, suite.name, suite.version, &table))
            return Fail(NameOf(suite) + ": after reload acquiring it answered " + ResultText(r));
        if (table != suite.table) return Fail(NameOf(suite) + ": after reload it has another table");
        if (!suite.tableSize) return Fail(NotABlock(suite));
        if (const auto set = Entries(suite, true); !set.empty())
            return Fail(NameOf(suite) + ": after reload entries " + Join(set) + " of " + EntryCount(suite) +
                        " are set again; they stay as emptied at unload");
    }
    started.module->Shutdown();
    return Pass("still published after reload, entries empty as left at unload");
}

// After "Shutdown" the suite is gone and the module holds no block.
Verdict CheckWithdrawnAtShutdown(const std::filesystem::path& path) {
    Started started(path);
    if (started.failure) return *started.failure;
    if (started.suites.empty()) return Pass(kNotApplicable);
    if (const ZPErr r = started.module->Shutdown()) return Fail(Answered("shut-down", r));
    for (const PublishedSuite& suite : started.suites) {
        if (const ZPErr r = AcquireAnswer(started.host, suite.name, suite.version); r != kZPSuiteNotFoundErr)
            return Fail(NameOf(suite) + ": after shut-down acquiring it answered " + ResultText(r) + ", not " +
                        ResultText(kZPSuiteNotFoundErr));
    }
    const BlockCounts live = started.host.LiveBlocks();
    if (live.blocks != 0)
        return Fail("after shut-down " + std::to_string(live.blocks) + " ZP Blocks blocks live: " +
                    Join(live.blockNames));
    if (live.basic != 0) return Fail("after shut-down " + std::to_string(live.basic) + " ZPBasic blocks live");
    return Pass("withdrawn at shut-down, every block given back");
}

std::uint64_t ContextCalls(Host& host, const char* function) {
    const auto& calls = host.Faults().Calls();
    const auto found = calls.find(std::pair<std::string, std::string>{kKVContextSuite, function});
    return found == calls.end() ? 0 : found->second;
}

// A notification on the save notifier reaches a save handler: it is
// answered inside the module's application context, which it enters and
// leaves; a module that lets it pass unhandled enters none.
Verdict CheckSaveReachesHandler(const std::filesystem::path& path) {
    Started started(path);
    if (started.failure) return *started.failure;
    if (started.suites.empty()) return Pass(kNotApplicable);
    if (!started.module->HasSaveUserDataNotifier()) return Fail("registered no \"" kKVSaveUserDataNotifier "\"");
    const std::uint64_t pushed = ContextCalls(started.host, "PushAppContext");
    const std::uint64_t popped = ContextCalls(started.host, "PopAppContext");
    if (const ZPErr r = started.module->SaveUserData()) return Fail(Answered("the save notification", r));
    const std::uint64_t entered = ContextCalls(started.host, "PushAppContext") - pushed;
    const std::uint64_t left = ContextCalls(started.host, "PopAppContext") - popped;
    if (entered == 0)
        return Fail("the save notification answered 0 without entering the module's application context: "
                    "it reached no save handler");
    if (left != entered)
        return Fail("the save notification entered " + std::to_string(entered) + " application contexts and left " +
                    std::to_string(left));
    started.module->Shutdown();
    return Pass("handled inside the module's application context");
}

}  // namespace

std::vector<Check> SuiteChecks() {
    return {
        {"suite-published", CheckPublished},
        {"suite-emptied-at-unload", CheckEmptiedAtUnload},
        {"suite-kept-at-reload", CheckKeptAtReload},
        {"suite-withdrawn-at-shutdown", CheckWithdrawnAtShutdown},
        {"save-reaches-handler", CheckSaveReachesHandler},
    };
}

}  // namespace kelvra::cli
