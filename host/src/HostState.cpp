#include "HostState.h"

#include "UnicodeText.h"
#include "suites/HostSuites.h"

#include <ZPBasicControl.h>

#include <cstdlib>

namespace kelvra {

namespace {

HostState* currentHost = nullptr;

}  // namespace

HostState* CurrentHost() { return currentHost; }

HostState::HostState() {
    if (currentHost != nullptr) throw HostError("only one kelvra::Host may exist in a process at a time");
    for (const SuiteDefinition& suite : HostSuites()) suites.Add(suite.name, suite.version, suite.table, nullptr);
    answerQuestion = [](const std::string&) { return true; };
    spareStrings_.reserve(kSpareStrings);
    // Blocks live now belong to whoever made them; only the faults go.
    zpbasic::ClearAllocationFault();
    clock.UseSystemClock();
    currentHost = this;
}

HostState::~HostState() {
    // Modules go first: their code may still call the host while it unloads.
    modules.clear();
    dataFilters.Clear();
    for (auto& [block, info] : blocks) std::free(block);
    blocks.clear();
    // What the unloaded modules leaked can be freed now; the next host
    // counts from zero.
    zpbasic::Reset();
    clock.UseSystemClock();
    currentHost = nullptr;
}

Module& HostState::Load(const std::filesystem::path& path) {
    std::unique_ptr<Module> module(new Module(*this, ModuleFile::Read(path)));
    module->Open();
    modules.push_back(std::move(module));
    return *modules.back();
}

Module* HostState::FindModule(ZPPluginRef plugin) const {
    for (const auto& module : modules) {
        if (module->Ref() == plugin) return module.get();
    }
    return nullptr;
}

void HostState::Withdraw(const Module& module) {
    // A published table is the host's from then on; one the module took
    // from "ZP Blocks Suite" goes with the suite.
    for (const void* table : suites.Withdraw(&module)) {
        const auto block = blocks.find(const_cast<void*>(table));
        if (block == blocks.end()) continue;
        std::free(block->first);
        blocks.erase(block);
    }
    notifiers.RemoveIf([&](const NotifierRecord& n) { return n.owner == &module; });
    fileFormats.RemoveIf([&](const FileFormatRecord& f) { return f.owner == &module; });
}

void HostState::Record(const Module& module, const char* caller, const char* selector, ZPErr result) {
    messages.push_back({module.Name(), caller, selector, result});
}

KVUnicodeStringRef HostState::NewString(std::u16string_view units, std::string key, bool global) {
    std::unique_ptr<HostString> string;
    if (spareStrings_.empty()) {
        string = std::make_unique<HostString>();
    } else {
        string = std::move(spareStrings_.back());
        spareStrings_.pop_back();
    }
    string->units = units;
    string->key = std::move(key);
    string->global = global;
    return strings.Add<KVUnicodeStringRef>(std::move(string));
}

bool HostState::DisposeString(KVUnicodeStringRef string) {
    const HostString* found = strings.Find(string);
    // Global strings belong to the host until it ends.
    if (found == nullptr || found->global) return false;
    std::unique_ptr<HostString> disposed = strings.Take(string);
    // Within the room reserved: keeping it allocates nothing.
    if (spareStrings_.size() < kSpareStrings && disposed->units.capacity() <= kLongestSpareText) {
        spareStrings_.push_back(std::move(disposed));
    }
    return true;
}

KVUnicodeStringRef HostState::NewStringFromPlatformText(std::string_view text, bool global) {
    std::string key = IsLocalisationKey(text) ? std::string(text) : std::string();
    return NewString(Utf8ToUtf16(ResolveLocalisationKey(text)), std::move(key), global);
}

bool HostState::SetText(KVUnicodeStringRef string, std::u16string units) {
    HostString* found = strings.Find(string);
    if (found == nullptr || found->global) return false;
    found->units = std::move(units);
    found->key.clear();
    return true;
}

std::string HostState::Utf8Of(KVUnicodeStringRef string) const {
    const HostString* found = strings.Find(string);
    return found == nullptr ? std::string() : Utf16ToUtf8(found->units);
}

std::string HostState::KeyOf(KVUnicodeStringRef string) const {
    const HostString* found = strings.Find(string);
    return found == nullptr ? std::string() : found->key;
}

}  // namespace kelvra
