#include "FakeHost.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <tuple>

#include "KVFileSuites.h"
#include "KVFrameworkSuites.h"
#include "KVHeldSuites.h"
#include "KVStringSuites.h"
#include "KVSwatchSuites.h"
#include "ZPPluginSuites.h"

namespace fake {

namespace {

Host gHost;

void Record(std::string call) { gHost.calls.push_back(std::move(call)); }

struct FakeString {
    std::string text;
};

KVUnicodeStringRef MakeString(std::string text) {
    ++gHost.liveStrings;
    return reinterpret_cast<KVUnicodeStringRef>(new FakeString{std::move(text)});
}

// Global strings live as long as the program, like the host's.
KVUnicodeStringRef MakeGlobalString(std::string text) {
    static std::vector<std::unique_ptr<FakeString>> globalStrings;
    globalStrings.push_back(std::make_unique<FakeString>(FakeString{std::move(text)}));
    return reinterpret_cast<KVUnicodeStringRef>(globalStrings.back().get());
}

FakeString& StringOf(KVUnicodeStringRef string) { return *reinterpret_cast<FakeString*>(string); }

std::string Resolved(const char* text) {
    std::string resolved = text;
    if (resolved.rfind("$$$/", 0) == 0) {
        const auto equals = resolved.find('=');
        if (equals != std::string::npos) resolved.erase(0, equals + 1);
    }
    return resolved;
}

ZPErr ReservedSlot() { return ZP_FOURCC('R', 'S', 'V', 'D'); }

// ZP Access Suite
ZPErr AcquirePluginAccess(ZPPluginRef, ZPAccessRef* access) {
    Record("AcquirePluginAccess");
    *access = reinterpret_cast<ZPAccessRef>(0xACCE55);
    return 0;
}
ZPErr ReleasePluginAccess(ZPAccessRef access) {
    Record(access == reinterpret_cast<ZPAccessRef>(0xACCE55) ? "ReleasePluginAccess" : "ReleasePluginAccess ?");
    return 0;
}
const ZPAccessSuite kAccess = {AcquirePluginAccess, ReleasePluginAccess};

// ZP Plug-ins Suite
ZPErr SetPluginName(ZPPluginRef, const char* name) {
    Record(std::string("SetPluginName ") + name);
    return gHost.setPluginNameResult;
}
ZPPluginsSuite MakePlugins() {
    ZPPluginsSuite suite{};
    for (auto& slot : suite.reserved0to22) slot = ReservedSlot;
    suite.SetPluginName = SetPluginName;
    return suite;
}
const ZPPluginsSuite kPlugins = MakePlugins();

// KV Notifier Suite
ZPErr AddNotifier(ZPPluginRef, const char* name, const char* type, KVNotifierHandle* notifier) {
    Record(std::string("AddNotifier ") + name + " / " + type);
    if (gHost.addNotifierResult == 0) *notifier = kSaveNotifier;
    return gHost.addNotifierResult;
}
const KVNotifierSuite kNotifier = {AddNotifier};

// KV Context Suite
ZPErr PushAppContext(ZPPluginRef, KVAppContextHandle* context) {
    Record("PushAppContext");
    *context = reinterpret_cast<KVAppContextHandle>(0xC0);
    return 0;
}
ZPErr PopAppContext(KVAppContextHandle context) {
    Record(context == reinterpret_cast<KVAppContextHandle>(0xC0) ? "PopAppContext" : "PopAppContext ?");
    return 0;
}
ZPErr PrepareAppContext(KVAppContextHandle*, ZPPluginRef, int32_t mode) {
    Record("PrepareAppContext " + std::to_string(mode));
    return gHost.prepareContextResult;
}
KVContextSuite MakeContext() {
    KVContextSuite suite{};
    suite.reserved0 = ReservedSlot;
    suite.PushAppContext = PushAppContext;
    suite.PopAppContext = PopAppContext;
    for (auto& slot : suite.reserved3to11) slot = ReservedSlot;
    suite.PrepareAppContext = PrepareAppContext;
    return suite;
}
const KVContextSuite kContext = MakeContext();

// UXK Basic Suite
ZPErr GetIndexedString(KVResourceOwner owner, int32_t listId, int32_t index, char* buffer, int32_t size) {
    Record("GetIndexedString " + std::to_string(listId) + " " + std::to_string(index));
    if (size > 0) buffer[0] = '\0';
    std::string text;
    if (gHost.endlessStrings) {
        text = "x";
    } else {
        const auto found = gHost.strings.find({owner, listId, index});
        if (found == gHost.strings.end()) return kZPBadParameterErr;
        text = found->second;
    }
    if (size > 0) {
        const auto length = std::min<std::size_t>(text.size(), static_cast<std::size_t>(size) - 1);
        std::memcpy(buffer, text.data(), length);
        buffer[length] = '\0';
    }
    return 0;
}
const UXKBasicSuite kUXKBasic = {GetIndexedString};

// KV User Suite
ZPErr QuestionAlert(KVUnicodeStringRef, ZPBoolean*) { return ReservedSlot(); }
ZPErr ErrorAlert(KVUnicodeStringRef message) {
    Record("ErrorAlert " + TextOf(message));
    return 0;
}
KVUserSuite MakeUser() {
    KVUserSuite suite{};
    for (auto& slot : suite.reserved0to44) slot = ReservedSlot;
    suite.QuestionAlert = QuestionAlert;
    suite.ErrorAlert = ErrorAlert;
    return suite;
}
const KVUserSuite kUser = MakeUser();

// KV User Private Suite
ZPErr ErrorDialogWithMoreInfo(KVUnicodeStringRef message, KVUnicodeStringRef helpKey, int32_t number) {
    Record("ErrorDialogWithMoreInfo " + std::to_string(number) + " " + TextOf(message) + " | " + TextOf(helpKey));
    return 0;
}
KVUserPrivateSuite MakeUserPrivate() {
    KVUserPrivateSuite suite{};
    for (auto& slot : suite.reserved0to2) slot = ReservedSlot;
    suite.ErrorDialogWithMoreInfo = ErrorDialogWithMoreInfo;
    return suite;
}
const KVUserPrivateSuite kUserPrivate = MakeUserPrivate();

// KV ThreadPool Suite
ZPBoolean CanShowModalDialog() {
    Record("CanShowModalDialog");
    return gHost.canShowDialog ? 1 : 0;
}
KVThreadPoolSuite MakeThreadPool() {
    KVThreadPoolSuite suite{};
    for (auto& slot : suite.reserved0to4) slot = ReservedSlot;
    suite.CanShowModalDialog = CanShowModalDialog;
    return suite;
}
const KVThreadPoolSuite kThreadPool = MakeThreadPool();

// KV OrvikPIP Suite
ZPErr LogUsageEvent(const char* category, const char* event, const char* detail) {
    Record(std::string("LogUsageEvent ") + category + " / " + event + " / " + (detail ? detail : "(none)"));
    return 0;
}
const KVOrvikPIPSuite kUsage = {LogUsageEvent};

// Lexo Host Init Suite
ZPErr GetHostResourceOwner(KVResourceOwner* owner) {
    *owner = kHostOwner;
    return 0;
}
const LexoHostInitSuite kHostInit = {GetHostResourceOwner};

// KV Global UnicodeString Suite
ZPErr NewGlobalString(const char* text, KVUnicodeStringRef* string) {
    Record(std::string("NewGlobalString ") + text);
    *string = nullptr;
    if (gHost.newGlobalStringResult != 0) return gHost.newGlobalStringResult;
    if (!gHost.newGlobalStringGivesNull) *string = MakeGlobalString(Resolved(text));
    return 0;
}
const KVGlobalUnicodeStringSuite kGlobalStrings = {NewGlobalString};

// KV Unicode String Suite
ZPErr NewString(std::string text, KVUnicodeStringRef* string) {
    *string = nullptr;
    if (gHost.unicodeStringResult != 0) return gHost.unicodeStringResult;
    if (!gHost.newUnicodeStringGivesNull) *string = MakeString(std::move(text));
    return 0;
}
ZPErr New(KVUnicodeStringRef* string) { return NewString("", string); }
ZPErr NewFromPlatformText(const char* text, KVUnicodeStringRef* string) { return NewString(Resolved(text), string); }
ZPErr NewFromUTF8(const char* text, size_t length, KVUnicodeStringRef* string) {
    return NewString(std::string(text, length), string);
}
ZPErr NewFromUTF16(const uint16_t* units, size_t count, KVUnicodeStringRef* string) {
    std::string text;
    for (size_t i = 0; i < count; ++i) text += static_cast<char>(units[i]);  // tests use ASCII
    return NewString(text, string);
}
ZPErr Dispose(KVUnicodeStringRef string) {
    Record("Dispose " + TextOf(string));
    delete &StringOf(string);
    --gHost.liveStrings;
    return 0;
}
ZPErr Length(KVUnicodeStringRef string, size_t* length) {
    *length = StringOf(string).text.size();
    return gHost.unicodeStringResult;
}
ZPErr GetUTF16(KVUnicodeStringRef string, uint16_t* units, size_t capacity, size_t* count) {
    const std::string& text = StringOf(string).text;
    for (size_t i = 0; i < capacity && i < text.size(); ++i) units[i] = static_cast<uint8_t>(text[i]);
    *count = text.size();
    return gHost.unicodeStringResult;
}
ZPErr GetPlatformText(KVUnicodeStringRef string, char* buffer, size_t capacity, size_t* length) {
    const std::string& text = StringOf(string).text;
    if (capacity > 0) {
        const size_t copied = std::min(capacity - 1, text.size());
        std::memcpy(buffer, text.data(), copied);
        buffer[copied] = '\0';
    }
    *length = text.size();
    return gHost.unicodeStringResult;
}
ZPErr Compare(KVUnicodeStringRef a, KVUnicodeStringRef b, int32_t* order) {
    *order = StringOf(a).text.compare(StringOf(b).text);
    return gHost.unicodeStringResult;
}
ZPErr Assign(KVUnicodeStringRef target, KVUnicodeStringRef source) {
    if (gHost.unicodeStringResult == 0) StringOf(target).text = StringOf(source).text;
    return gHost.unicodeStringResult;
}
ZPErr Append(KVUnicodeStringRef target, KVUnicodeStringRef source) {
    if (gHost.unicodeStringResult == 0) StringOf(target).text += StringOf(source).text;
    return gHost.unicodeStringResult;
}
ZPErr IsEmpty(KVUnicodeStringRef string, ZPBoolean* empty) {
    *empty = StringOf(string).text.empty() ? 1 : 0;
    return gHost.unicodeStringResult;
}
ZPErr Canonicalize(KVUnicodeStringRef string, int32_t form) {
    if (gHost.unicodeStringResult == 0 && form == 1) {
        for (char& c : StringOf(string).text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return gHost.unicodeStringResult;
}
const KVUnicodeStringSuite kUnicodeStrings = {New,    NewFromPlatformText, NewFromUTF8, NewFromUTF16, Dispose,
                                              Length, GetUTF16,            GetPlatformText, Compare,  Assign,
                                              Append, IsEmpty,             Canonicalize};

// ZP Blocks Suite
ZPErr AllocateBlock(size_t size, const char* debugName, void** block) {
    Record(std::string("AllocateBlock ") + std::to_string(size) + " " + debugName);
    *block = nullptr;
    if (gHost.allocateBlockResult != 0) return gHost.allocateBlockResult;
    *block = std::malloc(size);
    ++gHost.liveBlocks;
    return 0;
}
ZPErr FreeBlock(void* block) {
    Record("FreeBlock");
    std::free(block);
    --gHost.liveBlocks;
    return 0;
}
const ZPBlocksSuite kBlocks = {AllocateBlock, FreeBlock};

// KV File Format Suite
ZPErr AddFileFormat(ZPPluginRef, const char* name, const KVFileFormatDescription* description, int32_t,
                    KVFileFormatHandle* fileFormat) {
    Record(std::string("AddFileFormat ") + name + " / " + TextOf(description->title) + " / " +
           description->extension);
    *fileFormat = reinterpret_cast<KVFileFormatHandle>(0xF0F0);
    return 0;
}
const KVFileFormatSuite kFileFormats = {AddFileFormat};

// Any other suite the host has: never called.
const ZPReservedFunction kDummy[4] = {ReservedSlot, ReservedSlot, ReservedSlot, ReservedSlot};

struct KnownSuite {
    const char* name;
    int32_t version;
    const void* table;
};

const KnownSuite kKnownSuites[] = {
    {kZPAccessSuite, kZPAccessSuiteVersion, &kAccess},
    {kZPPluginsSuite, kZPPluginsSuiteVersion, &kPlugins},
    {kZPSuitesSuite, kZPSuitesSuiteVersion, kDummy},
    {kZPBlocksSuite, kZPBlocksSuiteVersion, &kBlocks},
    {kKVNotifierSuite, kKVNotifierSuiteVersion, &kNotifier},
    {kKVContextSuite, kKVContextSuiteVersion, &kContext},
    {kKVContextPrivateSuite, kKVContextPrivateSuiteVersion, kDummy},
    {kUXKBasicSuite, kUXKBasicSuiteVersion, &kUXKBasic},
    {kKVUserSuite, kKVUserSuiteVersion, &kUser},
    {kKVUserPrivateSuite, kKVUserPrivateSuiteVersion, &kUserPrivate},
    {kKVThreadPoolSuite, kKVThreadPoolSuiteVersion, &kThreadPool},
    {kKVOrvikPIPSuite, kKVOrvikPIPSuiteVersion, &kUsage},
    {kLexoHostInitSuite, kLexoHostInitSuiteVersion, &kHostInit},
    {kKVGlobalUnicodeStringSuite, kKVGlobalUnicodeStringSuiteVersion, &kGlobalStrings},
    {kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, &kUnicodeStrings},
    {kKVFilePathSuite, kKVFilePathSuiteVersion, kDummy},
    {kKVFileFormatSuite, kKVFileFormatSuiteVersion, &kFileFormats},
    {kKVDataFilterSuite, kKVDataFilterSuiteVersion, kDummy},
    {kKVFoldersSuite, kKVFoldersSuiteVersion, kDummy},
    {kKVPreferenceSuite, kKVPreferenceSuiteVersion, kDummy},
    {kKVPathStyleSuite, kKVPathStyleSuiteVersion, kDummy},
    {kKVSwatchListSuite, kKVSwatchListSuiteVersion, kDummy},
    {kKVSwatchGroupSuite, kKVSwatchGroupSuiteVersion, kDummy},
    {kKVCustomColorSuite, kKVCustomColorSuiteVersion, kDummy},
    {kKVColorConversionSuite, kKVColorConversionSuiteVersion, kDummy},
    {kKVMdMemorySuite, kKVMdMemorySuiteVersion, kDummy},
    {kKVMatchingArtSuite, kKVMatchingArtSuiteVersion, kDummy},
    {kKVArtSetSuite, kKVArtSetSuiteVersion, kDummy},
    {kKVArtSetGeneratorSuite, kKVArtSetGeneratorSuiteVersion, kDummy},
    {kKVCountedObjectSuite, kKVCountedObjectSuiteVersion, kDummy},
    // Suites a test plug-in imports.
    {"Test Required Suite", 1, kDummy},
    {"Test Optional Suite", 1, kDummy},
    {"Test Second Optional Suite", 1, kDummy},
};

ZPErr AcquireSuite(const char* name, int32_t version, const void** suite) {
    Record(std::string("acquire ") + name);
    *suite = nullptr;
    if (gHost.unavailable.count(name) != 0) return kZPSuiteNotFoundErr;
    if (const auto failure = gHost.acquireFailures.find(name); failure != gHost.acquireFailures.end()) {
        return failure->second;
    }
    for (const KnownSuite& known : kKnownSuites) {
        if (std::strcmp(known.name, name) != 0 || known.version != version) continue;
        ++gHost.acquisitions[name];
        if (gHost.acquireWithoutSuite.count(name) == 0) *suite = known.table;
        return 0;
    }
    return kZPSuiteNotFoundErr;
}

ZPErr ReleaseSuite(const char* name, int32_t) {
    Record(std::string("release ") + name);
    if (const auto failure = gHost.releaseFailures.find(name); failure != gHost.releaseFailures.end()) {
        return failure->second;
    }
    ++gHost.releases[name];
    return 0;
}

const ZPBasicSuite kBasic = {AcquireSuite, ReleaseSuite};

}  // namespace

int Host::Held(const std::string& name) const {
    const auto acquired = acquisitions.find(name);
    const auto released = releases.find(name);
    return (acquired == acquisitions.end() ? 0 : acquired->second) -
           (released == releases.end() ? 0 : released->second);
}

std::vector<std::string> Host::CallsStartingWith(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
        if (call.rfind(prefix, 0) == 0) found.push_back(call);
    }
    return found;
}

Host& ResetHost() {
    gHost = Host{};
    return gHost;
}

Host& TheHost() { return gHost; }

const ZPBasicSuite* BasicSuite() { return &kBasic; }

std::string TextOf(KVUnicodeStringRef string) { return string == nullptr ? "(null)" : StringOf(string).text; }

}  // namespace fake
