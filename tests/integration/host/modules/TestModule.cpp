// A small standalone module for the validator's tests: a well-behaved
// plug-in unless built with one of the MISBEHAVE_... definitions, each of
// which breaks exactly one rule a module must keep. Built with
// PUBLISH_SUITE it also publishes a suite of its own for other plug-ins, as
// the swatch library module does.
#include <KVFrameworkSuites.h>
#include <ZPBasicBlocks.h>
#include <ZPMessages.h>
#include <ZPPluginSuites.h>

#include "TestPropertyList.h"

#include <csignal>
#include <cstring>
#include <unistd.h>

namespace {

#ifndef MISBEHAVE_NO_PROPERTY_LIST
#ifdef MISBEHAVE_BAD_PROPERTY_LIST
constexpr int kInterfaceVersion = 3;
#else
constexpr int kInterfaceVersion = 2;
#endif
[[gnu::section(".kvres.PIPL.PLUGIN"), gnu::used]] constexpr auto kPropertyList =
    test_module::PropertyList("TestModule", kInterfaceVersion);
#endif

// String list 16050: one string, "Test".
[[gnu::section(".kvres.STRL.16050"), gnu::used]] const unsigned char kStrings[] = {0, 1, 0, 4, 'T', 'e', 's', 't'};

constexpr const char* kName = "Test Module";

struct Suites {
    const ZPPluginsSuite* plugins = nullptr;
    const KVNotifierSuite* notifier = nullptr;
    const ZPBlocksSuite* blocks = nullptr;
    const KVContextSuite* context = nullptr;
    const ZPSuitesSuite* suites = nullptr;
};

// The published suite: three functions, in a table the host keeps once it
// is published. It is filled at start-up and emptied at unload; a reload
// leaves it empty.
struct TestSuite {
    int32_t (*Answer)();
    int32_t (*Twice)(int32_t);
    int32_t (*Zero)();
};

#ifdef PUBLISH_SUITE
constexpr const char* kTestSuite = "Test Suite";
constexpr int32_t kTestSuiteVersion = 3;

int32_t Answer() { return 42; }
int32_t Twice(int32_t value) { return 2 * value; }
int32_t Zero() { return 0; }

[[maybe_unused]] void Fill(TestSuite& table) { table = TestSuite{Answer, Twice, Zero}; }
#endif

// The plug-in's state, kept in the globals slot between messages.
struct State {
    Suites suites;
    KVNotifierHandle saveNotifier = nullptr;
    void* buffer = nullptr;    // a host block held while loaded
    TestSuite* table = nullptr;  // the published suite's table (PUBLISH_SUITE)
};

struct SuiteUse {
    const char* name;
    int32_t version;
    const void** slot;
};

void ReleaseSuites(const ZPBasicSuite* basic, Suites& suites) {
    const SuiteUse uses[] = {
        {kZPPluginsSuite, kZPPluginsSuiteVersion, reinterpret_cast<const void**>(&suites.plugins)},
        {kKVNotifierSuite, kKVNotifierSuiteVersion, reinterpret_cast<const void**>(&suites.notifier)},
        {kZPBlocksSuite, kZPBlocksSuiteVersion, reinterpret_cast<const void**>(&suites.blocks)},
        {kKVContextSuite, kKVContextSuiteVersion, reinterpret_cast<const void**>(&suites.context)},
#ifdef PUBLISH_SUITE
        {kZPSuitesSuite, kZPSuitesSuiteVersion, reinterpret_cast<const void**>(&suites.suites)},
#endif
    };
    for (const SuiteUse& use : uses) {
#ifdef MISBEHAVE_KEEP_SUITE
        if (std::strcmp(use.name, kKVContextSuite) == 0) continue;
#endif
        if (*use.slot != nullptr) basic->ReleaseSuite(use.name, use.version);
        *use.slot = nullptr;
    }
}

ZPErr AcquireSuites(const ZPBasicSuite* basic, Suites& suites) {
    const SuiteUse uses[] = {
        {kZPPluginsSuite, kZPPluginsSuiteVersion, reinterpret_cast<const void**>(&suites.plugins)},
        {kKVNotifierSuite, kKVNotifierSuiteVersion, reinterpret_cast<const void**>(&suites.notifier)},
        {kZPBlocksSuite, kZPBlocksSuiteVersion, reinterpret_cast<const void**>(&suites.blocks)},
        {kKVContextSuite, kKVContextSuiteVersion, reinterpret_cast<const void**>(&suites.context)},
#ifdef PUBLISH_SUITE
        {kZPSuitesSuite, kZPSuitesSuiteVersion, reinterpret_cast<const void**>(&suites.suites)},
#endif
    };
    for (const SuiteUse& use : uses) {
        if (const ZPErr error = basic->AcquireSuite(use.name, use.version, use.slot)) {
            ReleaseSuites(basic, suites);
            return error;
        }
    }
    return 0;
}

// Acquires the suites and the held block; on failure nothing stays held.
ZPErr Load(ZPMessageData& message, State& state) {
    if (const ZPErr error = AcquireSuites(message.basic, state.suites)) return error;
    if (const ZPErr error = state.suites.blocks->AllocateBlock(64, "test module buffer", &state.buffer)) {
        ReleaseSuites(message.basic, state.suites);
        return error;
    }
    return 0;
}

void Unload(ZPMessageData& message, State& state) {
#ifndef MISBEHAVE_KEEP_ENTRIES_AT_UNLOAD
    if (state.table != nullptr) *state.table = TestSuite{};
#endif
    state.suites.blocks->FreeBlock(state.buffer);
    state.buffer = nullptr;
    ReleaseSuites(message.basic, state.suites);
}

#ifdef PUBLISH_SUITE
// Publishes the suite; a table the host did not take is freed again.
ZPErr Publish(ZPMessageData& message, State& state) {
#ifdef MISBEHAVE_STATIC_TABLE
    static TestSuite staticTable;
    state.table = &staticTable;
#else
    void* block = nullptr;
    if (const ZPErr error = state.suites.blocks->AllocateBlock(sizeof(TestSuite), kTestSuite, &block)) return error;
    state.table = static_cast<TestSuite*>(block);
#endif
#ifdef MISBEHAVE_UNFILLED_TABLE
    *state.table = TestSuite{};
#else
    Fill(*state.table);
#endif
    ZPSuiteRef suite = nullptr;
    if (const ZPErr error = state.suites.suites->AddSuite(nullptr, message.self, kTestSuite, kTestSuiteVersion, 1,
                                                          state.table, &suite)) {
#ifndef MISBEHAVE_STATIC_TABLE
        state.suites.blocks->FreeBlock(state.table);
#endif
        state.table = nullptr;
        return error;
    }
#ifdef MISBEHAVE_LEAK_AT_SHUTDOWN
    void* cache = nullptr;
    state.suites.blocks->AllocateBlock(16, "test suite cache", &cache);
#endif
    return 0;
}
#endif

ZPErr Startup(ZPMessageData& message) {
#ifdef MISBEHAVE_CRASH_AT_STARTUP
    std::raise(SIGSEGV);
#endif
#ifdef MISBEHAVE_HANG_AT_STARTUP
    for (;;) pause();
#endif
    void* memory = nullptr;
    if (const ZPErr error = kv::ZPBasicAllocateBlock(sizeof(State), &memory)) return error;
    State* state = static_cast<State*>(memory);
    *state = State{};
    ZPErr error = Load(message, *state);
    if (error == 0) error = state->suites.plugins->SetPluginName(message.self, kName);
    if (error == 0)
        error = state->suites.notifier->AddNotifier(message.self, "Test Module Save User Data Notifier",
                                                    kKVSaveUserDataNotifier, &state->saveNotifier);
#ifdef PUBLISH_SUITE
    if (error == 0) error = Publish(message, *state);
#endif
    if (error != 0) {
        if (state->buffer != nullptr) Unload(message, *state);
        kv::ZPBasicFreeBlock(state);
        return error;
    }
#ifdef MISBEHAVE_LEAK_BLOCK
    void* leaked = nullptr;
    kv::ZPBasicAllocateBlock(16, &leaked);
#endif
    message.globals = state;
    return 0;
}

ZPErr Shutdown(ZPMessageData& message) {
    State* state = static_cast<State*>(message.globals);
    if (state == nullptr) return 0;
    if (state->buffer != nullptr) Unload(message, *state);
    kv::ZPBasicFreeBlock(state);
    message.globals = nullptr;
    return 0;
}

// Saving user data happens inside the plug-in's application context.
ZPErr SaveUserData(ZPMessageData& message, State& state) {
#ifdef MISBEHAVE_IGNORE_SAVE
    (void)message;
    (void)state;
    return 0;
#else
    KVAppContextHandle context = nullptr;
    if (state.suites.context->PrepareAppContext(&context, message.self, 1) != 0) return 0;
    if (const ZPErr error = state.suites.context->PushAppContext(message.self, &context)) return error;
    return state.suites.context->PopAppContext(context);
#endif
}

bool Is(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

ZPErr Dispatch(const char* caller, const char* selector, void* record) {
    ZPMessageData& message = *static_cast<ZPMessageData*>(record);
    if (Is(caller, kZPInterfaceCaller) && Is(selector, kZPStartupSelector)) return Startup(message);
    if (Is(caller, kZPInterfaceCaller) && Is(selector, kZPShutdownSelector)) return Shutdown(message);
    State* state = static_cast<State*>(message.globals);
    if (state == nullptr) return 0;
    const bool loaded = state->buffer != nullptr;
    if (Is(caller, kZPAccessCaller) && Is(selector, kZPReloadSelector)) {
        if (loaded) return 0;
#ifdef MISBEHAVE_REFILL_AT_RELOAD
        if (state->table != nullptr) Fill(*state->table);
#endif
        return Load(message, *state);
    }
    if (!loaded) return 0;
    if (Is(caller, kZPAccessCaller) && Is(selector, kZPUnloadSelector)) {
        Unload(message, *state);
        return 0;
    }
    if (Is(caller, kZPCacheCaller) && Is(selector, kZPPurgeCachesSelector)) return kZPCachesFlushedResponse;
    if (Is(caller, kKVNotifierCaller) && static_cast<KVNotifierMessage*>(record)->notifier == state->saveNotifier)
        return SaveUserData(message, *state);
    return 0;
}

}  // namespace

extern "C" [[gnu::visibility("default")]] ZPErr TestModuleMain(const char* caller, const char* selector,
                                                               void* message) __asm__("main");

ZPErr TestModuleMain(const char* caller, const char* selector, void* message) {
    return Dispatch(caller, selector, message);
}

#ifdef MISBEHAVE_EXTRA_SYMBOL
extern "C" [[gnu::visibility("default")]] int TestModuleExtra() { return 1; }
#endif
