#include "HostState.h"

#include <ZPBasicControl.h>

#include <numeric>

namespace kelvra {

Host::Host() : state_(std::make_unique<HostState>()) {}

Host::~Host() = default;

Module& Host::Load(const std::filesystem::path& path) { return state_->Load(path); }

EventLog& Host::Events() { return state_->events; }

FaultInjector& Host::Faults() { return state_->faults; }

HostClock& Host::Clock() { return state_->clock; }

HostStringTable& Host::HostStrings() { return state_->hostStrings; }

DocumentList& Host::Documents() { return state_->documents; }

HostFolders& Host::Folders() { return state_->folders; }

HostPreferences& Host::Preferences() { return state_->preferences; }

std::vector<SuiteCount> Host::SuiteCounts() const { return state_->suites.Counts(); }

std::uint64_t Host::SuitesHeld() const {
    const auto counts = SuiteCounts();
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t(0),
                           [](std::uint64_t sum, const SuiteCount& c) { return sum + c.Held(); });
}

BlockCounts Host::LiveBlocks() const {
    const zpbasic::Counts basic = zpbasic::GetCounts();
    BlockCounts counts;
    counts.basic = basic.liveBlocks;
    counts.blocks = state_->blocks.size();
    for (const auto& [block, info] : state_->blocks) counts.blockNames.push_back(info.debugName);
    counts.badFrees = basic.badFrees + state_->badBlockFrees;
    return counts;
}

ObjectCounts Host::LiveObjects() const {
    ObjectCounts counts;
    counts.strings = state_->strings.CountIf([](const HostString& s) { return !s.global; });
    counts.filePaths = state_->filePaths.Count();
    counts.dataFilters = state_->dataFilters.Count();
    counts.accesses = state_->accesses.size();
    counts.appContexts = state_->appContexts.size();
    return counts;
}

const std::vector<MessageRecord>& Host::Messages() const { return state_->messages; }

std::vector<NotifierRecord> Host::Notifiers() const { return state_->notifiers.CopiesInOrder(); }

std::vector<FileFormatRecord> Host::FileFormats() const { return state_->fileFormats.CopiesInOrder(); }

std::vector<PublishedSuite> Host::PublishedSuites() const {
    std::vector<PublishedSuite> published;
    for (const SuiteRegistry::Publication& suite : state_->suites.Published()) {
        PublishedSuite entry{suite.name, suite.version, suite.publisher, suite.table, std::nullopt};
        const auto block = state_->blocks.find(const_cast<void*>(suite.table));
        if (block != state_->blocks.end()) entry.tableSize = block->second.size;
        published.push_back(std::move(entry));
    }
    return published;
}

void Host::AnswerQuestions(std::function<bool(const std::string&)> policy) {
    state_->answerQuestion = std::move(policy);
}

void Host::SetCanShowDialogs(bool can) { state_->canShowDialogs = can; }

FormatOpening Host::OpenWithFormats(const std::filesystem::path& file, const FormatTarget& target) {
    return state_->OpenWithFormats(file, target);
}

const ZPBasicSuite* Host::BasicSuite() const { return HostBasicSuite(); }

ZPErr Host::Notify(KVNotifierHandle notifier, void* notifyData) {
    const NotifierRecord* record = state_->notifiers.Find(notifier);
    if (record == nullptr) throw HostError("no such notifier");
    return const_cast<Module*>(record->owner)->Notify(notifier, notifyData);
}

}  // namespace kelvra
