// A small module with one file format, "Test Swatch Text Reader" (extension
// "tsw"), for testing the host's documents and kelvra-host import without
// the real module. It reads a text file of one instruction a line and
// writes what it says through the host's swatch suites:
//
//   group NAME                    a new group; later swatches go into it
//   gray V NAME                   process swatches (V the ink amount)
//   rgb R G B NAME
//   cmyk C M Y K NAME
//   lab L A B NAME                converted to RGB by the host
//   spot C M Y K TINT BOOK NAME   a spot CMYK custom colour (made, or redefined
//                                 when the document has one of that name) and
//                                 a swatch of it at TINT
//   ask TEXT                      a question; "no" ends the import with "STOP"
//   alert TEXT                    an alert
//   fail CODE                     ends the import with the four-character CODE
//   open PATH                     has the host open PATH as a library document
//                                 ("KV Path Style Suite" 5), which enters this
//                                 module again while it imports
//
// Swatches go into the document named in the request; custom colours into
// the current one. A host failure ends the import with the host's code.
#include <KVFileSuites.h>
#include <KVFrameworkSuites.h>
#include <KVStringSuites.h>
#include <KVSwatchSuites.h>
#include <ZPBasicBlocks.h>
#include <ZPMessages.h>

#include "TestPropertyList.h"

#include <cstdlib>
#include <cstring>

namespace {

[[gnu::section(".kvres.PIPL.PLUGIN"), gnu::used]] constexpr auto kPropertyList =
    test_module::PropertyList("FormatModule", 2);
[[gnu::section(".kvres.STRL.16050"), gnu::used]] const unsigned char kStrings[] = {0, 1, 0, 4, 'T', 'e', 's', 't'};

constexpr ZPErr kNotThisFormat = ZP_FOURCC('F', 'M', 'T', '?');
constexpr ZPErr kStopped = ZP_FOURCC('S', 'T', 'O', 'P');

struct Suites {
    const KVFileFormatSuite* formats = nullptr;
    const KVUnicodeStringSuite* strings = nullptr;
    const KVFilePathSuite* paths = nullptr;
    const KVDataFilterSuite* filters = nullptr;
    const KVSwatchListSuite* lists = nullptr;
    const KVSwatchGroupSuite* groups = nullptr;
    const KVCustomColorSuite* colors = nullptr;
    const KVColorConversionSuite* conversion = nullptr;
    const KVUserSuite* user = nullptr;
    const KVPathStyleSuite* pathStyle = nullptr;
};

struct State {
    Suites suites;
    KVFileFormatHandle format = nullptr;
};

struct SuiteUse {
    const char* name;
    int32_t version;
    const void** slot;
};

#define SUITE_USE(field, name) \
    {name, name##Version, reinterpret_cast<const void**>(&suites.field)}

void ReleaseSuites(const ZPBasicSuite* basic, Suites& suites) {
    const SuiteUse uses[] = {
        SUITE_USE(formats, kKVFileFormatSuite),     SUITE_USE(strings, kKVUnicodeStringSuite),
        SUITE_USE(paths, kKVFilePathSuite),         SUITE_USE(filters, kKVDataFilterSuite),
        SUITE_USE(lists, kKVSwatchListSuite),       SUITE_USE(groups, kKVSwatchGroupSuite),
        SUITE_USE(colors, kKVCustomColorSuite),     SUITE_USE(conversion, kKVColorConversionSuite),
        SUITE_USE(user, kKVUserSuite),               SUITE_USE(pathStyle, kKVPathStyleSuite),
    };
    for (const SuiteUse& use : uses) {
        if (*use.slot != nullptr) basic->ReleaseSuite(use.name, use.version);
        *use.slot = nullptr;
    }
}

ZPErr AcquireSuites(const ZPBasicSuite* basic, Suites& suites) {
    const SuiteUse uses[] = {
        SUITE_USE(formats, kKVFileFormatSuite),     SUITE_USE(strings, kKVUnicodeStringSuite),
        SUITE_USE(paths, kKVFilePathSuite),         SUITE_USE(filters, kKVDataFilterSuite),
        SUITE_USE(lists, kKVSwatchListSuite),       SUITE_USE(groups, kKVSwatchGroupSuite),
        SUITE_USE(colors, kKVCustomColorSuite),     SUITE_USE(conversion, kKVColorConversionSuite),
        SUITE_USE(user, kKVUserSuite),               SUITE_USE(pathStyle, kKVPathStyleSuite),
    };
    for (const SuiteUse& use : uses) {
        if (const ZPErr error = basic->AcquireSuite(use.name, use.version, use.slot)) {
            ReleaseSuites(basic, suites);
            return error;
        }
    }
    return 0;
}

#define RETURN_IF_ERROR(call)                   \
    do {                                        \
        if (const ZPErr error_ = (call)) return error_; \
    } while (0)

// A host string for the time of one call.
class HostString {
public:
    HostString(const KVUnicodeStringSuite* suite, const char* text, size_t length) : suite_(suite) {
        error_ = suite->NewFromUTF8(text, length, &string_);
    }
    ~HostString() {
        if (string_ != nullptr) suite_->Dispose(string_);
    }
    HostString(const HostString&) = delete;
    HostString& operator=(const HostString&) = delete;
    ZPErr Error() const { return error_; }
    KVUnicodeStringRef Get() const { return string_; }

private:
    const KVUnicodeStringSuite* suite_;
    KVUnicodeStringRef string_ = nullptr;
    ZPErr error_ = 0;
};

ZPErr Register(ZPMessageData& message, State& state) {
    KVUnicodeStringRef title = nullptr;
    RETURN_IF_ERROR(state.suites.strings->NewFromPlatformText("$$$/Test/Str/Title=Test Swatches", &title));
    const KVFileFormatDescription description = {ZP_FOURCC('T', 'S', 'W', 'T'), title, 0, "tsw"};
    const ZPErr error = state.suites.formats->AddFileFormat(message.self, "Test Swatch Text Reader", &description,
                                                            kKVFileFormatSwatchLibraryOption, &state.format);
    state.suites.strings->Dispose(title);
    return error;
}

ZPErr Startup(ZPMessageData& message) {
    void* memory = nullptr;
    if (const ZPErr error = kv::ZPBasicAllocateBlock(sizeof(State), &memory)) return error;
    State* state = static_cast<State*>(memory);
    *state = State{};
    ZPErr error = AcquireSuites(message.basic, state->suites);
    if (error == 0) {
        error = Register(message, *state);
        if (error != 0) ReleaseSuites(message.basic, state->suites);
    }
    if (error != 0) {
        kv::ZPBasicFreeBlock(state);
        return error;
    }
    message.globals = state;
    return 0;
}

ZPErr Shutdown(ZPMessageData& message) {
    State* state = static_cast<State*>(message.globals);
    if (state == nullptr) return 0;
    ReleaseSuites(message.basic, state->suites);
    kv::ZPBasicFreeBlock(state);
    message.globals = nullptr;
    return 0;
}

ZPErr Check(const Suites& suites, const KVFileFormatMessage& message) {
    KVUnicodeStringRef extension = nullptr;
    RETURN_IF_ERROR(suites.strings->New(&extension));
    char text[8] = {};
    ZPErr error = suites.paths->GetFileExtension(message.data.file, extension);
    if (error == 0) error = suites.strings->GetPlatformText(extension, text, sizeof text, nullptr);
    suites.strings->Dispose(extension);
    RETURN_IF_ERROR(error);
    return std::strcmp(text, "tsw") == 0 ? 0 : kNotThisFormat;
}

// The whole file, zero-terminated, in `buffer`.
ZPErr ReadFile(const Suites& suites, KVFilePathRef file, char* buffer, size_t capacity) {
    KVDataFilterRef filter = nullptr;
    RETURN_IF_ERROR(suites.filters->NewFileDataFilter(file, "read", 0, 0, &filter));
    ZPErr error = suites.filters->LinkDataFilter(nullptr, filter);
    size_t count = capacity - 1;
    if (error == 0) error = suites.filters->ReadDataFilter(filter, buffer, &count);
    const ZPErr closed = suites.filters->UnlinkDataFilter(filter, nullptr);
    buffer[error == 0 ? count : 0] = '\0';
    return error != 0 ? error : closed;
}

// Reads `count` numbers; `text` then points at what follows them.
bool Numbers(const char*& text, float* numbers, int count) {
    for (int i = 0; i < count; ++i) {
        char* end = nullptr;
        numbers[i] = std::strtof(text, &end);
        if (end == text) return false;
        text = end;
    }
    while (*text == ' ') ++text;
    return true;
}

class Importer {
public:
    Importer(const Suites& suites, KVSwatchListRef list) : suites_(suites), list_(list) {}

    ZPErr Start() { return suites_.groups->GetNthGroup(list_, 0, &group_); }

    ZPErr Line(const char* line, size_t length) {
        const char* space = static_cast<const char*>(std::memchr(line, ' ', length));
        if (space == nullptr) return kZPCantHappenErr;
        const size_t word = size_t(space - line);
        const char* rest = space + 1;
        const size_t restLength = length - word - 1;
        const auto is = [&](const char* name) { return std::strlen(name) == word && std::memcmp(line, name, word) == 0; };
        if (is("group")) return Group(rest, restLength);
        if (is("ask")) return Ask(rest, restLength);
        if (is("alert")) return Alert(rest, restLength);
        if (is("open")) return Open(rest, restLength);
        if (is("fail")) return restLength == 4 ? ZP_FOURCC(rest[0], rest[1], rest[2], rest[3]) : kZPCantHappenErr;
        if (is("spot")) return Spot(rest, line + length);
        const char* end = line + length;
        float v[4] = {};
        KVColor color{};
        if (is("gray")) {
            if (!Numbers(rest, v, 1)) return kZPCantHappenErr;
            color.kind = kKVGrayColor;
            color.c.gray.gray = v[0];
        } else if (is("rgb")) {
            if (!Numbers(rest, v, 3)) return kZPCantHappenErr;
            color.kind = kKVThreeColor;
            color.c.three = {v[0], v[1], v[2]};
        } else if (is("cmyk")) {
            if (!Numbers(rest, v, 4)) return kZPCantHappenErr;
            color.kind = kKVFourColor;
            color.c.four = {v[0], v[1], v[2], v[3]};
        } else if (is("lab")) {
            if (!Numbers(rest, v, 3)) return kZPCantHappenErr;
            float rgb[3] = {};
            RETURN_IF_ERROR(suites_.conversion->ConvertColor(kKVLabSpace, v, kKVRGBSpace, rgb));
            color.kind = kKVThreeColor;
            color.c.three = {rgb[0], rgb[1], rgb[2]};
        } else {
            return kZPCantHappenErr;
        }
        return Swatch(rest, size_t(end - rest), color);
    }

private:
    ZPErr Group(const char* name, size_t length) {
        HostString text(suites_.strings, name, length);
        RETURN_IF_ERROR(text.Error());
        RETURN_IF_ERROR(suites_.groups->InsertGroup(list_, -1, &group_));
        return suites_.groups->SetGroupName(group_, text.Get());
    }

    ZPErr Ask(const char* question, size_t length) {
        HostString text(suites_.strings, question, length);
        RETURN_IF_ERROR(text.Error());
        ZPBoolean yes = 0;
        RETURN_IF_ERROR(suites_.user->QuestionAlert(text.Get(), &yes));
        return yes != 0 ? 0 : kStopped;
    }

    ZPErr Alert(const char* message, size_t length) {
        HostString text(suites_.strings, message, length);
        RETURN_IF_ERROR(text.Error());
        return suites_.user->ErrorAlert(text.Get());
    }

    ZPErr Open(const char* file, size_t length) {
        HostString text(suites_.strings, file, length);
        RETURN_IF_ERROR(text.Error());
        KVFilePathRef path = nullptr;
        RETURN_IF_ERROR(suites_.paths->NewFromString(text.Get(), &path));
        KVDocumentHandle document = nullptr;
        const ZPErr error = suites_.pathStyle->OpenLibraryDocument(path, &document);
        suites_.paths->Dispose(path);
        return error;
    }

    ZPErr Swatch(const char* name, size_t length, const KVColor& color) {
        HostString text(suites_.strings, name, length);
        RETURN_IF_ERROR(text.Error());
        KVSwatchRef swatch = nullptr;
        RETURN_IF_ERROR(suites_.groups->InsertSwatch(group_, -1, &swatch));
        RETURN_IF_ERROR(suites_.lists->SetSwatchName(swatch, text.Get()));
        return suites_.lists->SetSwatchColor(swatch, &color);
    }

    ZPErr Spot(const char* rest, const char* end) {
        float v[5] = {};
        if (!Numbers(rest, v, 5)) return kZPCantHappenErr;
        char* afterBook = nullptr;
        const long bookId = std::strtol(rest, &afterBook, 10);
        if (afterBook == rest || *afterBook != ' ') return kZPCantHappenErr;
        rest = afterBook + 1;
        HostString name(suites_.strings, rest, size_t(end - rest));
        RETURN_IF_ERROR(name.Error());
        KVCustomColor definition{};
        definition.kind = kKVCustomFourColor;
        definition.c.four = {v[0], v[1], v[2], v[3]};
        definition.flags = kKVCustomSpotColor;
        KVCustomColorHandle custom = nullptr;
        const ZPErr found = suites_.colors->FindCustomColor(name.Get(), &custom);
        if (found == 0) {
            RETURN_IF_ERROR(suites_.colors->SetCustomColor(custom, &definition));
        } else if (found == kZPNameNotFoundErr) {
            RETURN_IF_ERROR(suites_.colors->NewCustomColor(&definition, name.Get(), &custom));
            RETURN_IF_ERROR(suites_.colors->SetCustomColorBookID(custom, int32_t(bookId)));
        } else {
            return found;
        }
        KVColor color{};
        color.kind = kKVCustomColor;
        color.c.custom = {custom, v[4]};
        return Swatch(rest, size_t(end - rest), color);
    }

    const Suites& suites_;
    KVSwatchListRef list_;
    KVSwatchGroupRef group_ = nullptr;
};

constexpr size_t kFileCapacity = 65536;

ZPErr Import(const Suites& suites, const KVFileFormatMessage& message, const char* text) {
    KVSwatchListRef list = nullptr;
    RETURN_IF_ERROR(suites.lists->GetSwatchList(message.data.document, &list));
    Importer importer(suites, list);
    RETURN_IF_ERROR(importer.Start());
    for (const char* line = text; *line != '\0';) {
        const char* newline = std::strchr(line, '\n');
        const size_t length = newline != nullptr ? size_t(newline - line) : std::strlen(line);
        if (length != 0) RETURN_IF_ERROR(importer.Line(line, length));
        line += length + (newline != nullptr ? 1 : 0);
    }
    return 0;
}

// Each import has its own copy of its file: an "open" line imports another
// file before this one is done.
ZPErr Go(const Suites& suites, const KVFileFormatMessage& message) {
    void* memory = nullptr;
    RETURN_IF_ERROR(kv::ZPBasicAllocateBlock(kFileCapacity, &memory));
    char* text = static_cast<char*>(memory);
    ZPErr error = ReadFile(suites, message.data.file, text, kFileCapacity);
    if (error == 0) error = Import(suites, message, text);
    kv::ZPBasicFreeBlock(memory);
    return error;
}

bool Is(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

ZPErr Dispatch(const char* caller, const char* selector, void* record) {
    ZPMessageData& message = *static_cast<ZPMessageData*>(record);
    if (Is(caller, kZPInterfaceCaller) && Is(selector, kZPStartupSelector)) return Startup(message);
    if (Is(caller, kZPInterfaceCaller) && Is(selector, kZPShutdownSelector)) return Shutdown(message);
    const State* state = static_cast<const State*>(message.globals);
    if (state == nullptr || !Is(caller, kKVFileFormatCaller)) return 0;
    const auto& request = *static_cast<const KVFileFormatMessage*>(record);
    if (request.fileFormat != state->format) return Is(selector, kKVCheckFileFormatSelector) ? kNotThisFormat : 0;
    if (Is(selector, kKVCheckFileFormatSelector)) return Check(state->suites, request);
    if (Is(selector, kKVGoFileFormatSelector)) return Go(state->suites, request);
    return 0;
}

}  // namespace

extern "C" [[gnu::visibility("default")]] ZPErr FormatModuleMain(const char* caller, const char* selector,
                                                                 void* message) __asm__("main");

ZPErr FormatModuleMain(const char* caller, const char* selector, void* message) {
    return Dispatch(caller, selector, message);
}
