// Host unicode strings: UTF-16 code units; platform text is UTF-8 and a
// localisation key in it is resolved. Each string remembers the key it was
// made from, so that the event log can show it.
#include "../SuiteCall.h"
#include "../UnicodeText.h"
#include "HostSuites.h"

#include <KVStringSuites.h>

#include <cstring>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVUnicodeStringSuite};

ZPErr New(HostState& host, KVUnicodeStringRef* string) {
    if (string == nullptr) return kZPBadParameterErr;
    *string = host.NewString({}, {}, false);
    return kZPNoErr;
}

ZPErr NewFromPlatformText(HostState& host, const char* text, KVUnicodeStringRef* string) {
    if (string == nullptr) return kZPBadParameterErr;
    *string = nullptr;
    if (text == nullptr) return kZPBadParameterErr;
    *string = host.NewStringFromPlatformText(text, false);
    return kZPNoErr;
}

ZPErr NewFromUTF8(HostState& host, const char* text, std::size_t length, KVUnicodeStringRef* string) {
    if (string == nullptr) return kZPBadParameterErr;
    *string = nullptr;
    if (text == nullptr && length != 0) return kZPBadParameterErr;
    *string = host.NewString(Utf8ToUtf16(std::string_view(text, length)), {}, false);
    return kZPNoErr;
}

ZPErr NewFromUTF16(HostState& host, const std::uint16_t* units, std::size_t count, KVUnicodeStringRef* string) {
    if (string == nullptr) return kZPBadParameterErr;
    *string = nullptr;
    if (units == nullptr && count != 0) return kZPBadParameterErr;
    *string = host.NewString(std::u16string_view(reinterpret_cast<const char16_t*>(units), count), {}, false);
    return kZPNoErr;
}

ZPErr Dispose(HostState& host, KVUnicodeStringRef string) {
    return host.DisposeString(string) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr Length(HostState& host, KVUnicodeStringRef string, std::size_t* length) {
    const HostString* found = host.strings.Find(string);
    if (found == nullptr || length == nullptr) return kZPBadParameterErr;
    *length = found->units.size();
    return kZPNoErr;
}

ZPErr GetUTF16(HostState& host, KVUnicodeStringRef string, std::uint16_t* units, std::size_t capacity,
               std::size_t* count) {
    const HostString* found = host.strings.Find(string);
    if (found == nullptr || count == nullptr || (units == nullptr && capacity != 0)) return kZPBadParameterErr;
    const std::size_t copied = std::min(capacity, found->units.size());
    std::copy_n(found->units.begin(), copied, units);
    *count = found->units.size();
    return kZPNoErr;
}

// The longest prefix of `utf8` of at most `limit` bytes that ends at a
// character boundary.
std::size_t CutAtCharacter(const std::string& utf8, std::size_t limit) {
    if (limit >= utf8.size()) return utf8.size();
    while (limit > 0 && (static_cast<unsigned char>(utf8[limit]) & 0xC0) == 0x80) --limit;
    return limit;
}

ZPErr GetPlatformText(HostState& host, KVUnicodeStringRef string, char* buffer, std::size_t capacity,
                      std::size_t* length) {
    const HostString* found = host.strings.Find(string);
    if (found == nullptr || (buffer == nullptr && capacity != 0)) return kZPBadParameterErr;
    const std::string text = Utf16ToUtf8(found->units);
    if (capacity != 0) {
        const std::size_t copied = CutAtCharacter(text, capacity - 1);
        std::memcpy(buffer, text.data(), copied);
        buffer[copied] = 0;
    }
    if (length != nullptr) *length = text.size();
    return kZPNoErr;
}

ZPErr Compare(HostState& host, KVUnicodeStringRef a, KVUnicodeStringRef b, std::int32_t* order) {
    const HostString* first = host.strings.Find(a);
    const HostString* second = host.strings.Find(b);
    if (first == nullptr || second == nullptr || order == nullptr) return kZPBadParameterErr;
    const int compared = first->units.compare(second->units);
    *order = compared < 0 ? -1 : compared > 0 ? 1 : 0;
    return kZPNoErr;
}

ZPErr Assign(HostState& host, KVUnicodeStringRef target, KVUnicodeStringRef source) {
    HostString* to = host.strings.Find(target);
    const HostString* from = host.strings.Find(source);
    if (to == nullptr || from == nullptr || to->global) return kZPBadParameterErr;
    to->units = from->units;
    to->key = from->key;
    return kZPNoErr;
}

ZPErr Append(HostState& host, KVUnicodeStringRef target, KVUnicodeStringRef source) {
    HostString* to = host.strings.Find(target);
    const HostString* from = host.strings.Find(source);
    if (to == nullptr || from == nullptr || to->global) return kZPBadParameterErr;
    to->units += from->units;
    to->key.clear();  // no longer the text of one key
    return kZPNoErr;
}

ZPErr IsEmpty(HostState& host, KVUnicodeStringRef string, ZPBoolean* empty) {
    const HostString* found = host.strings.Find(string);
    if (found == nullptr || empty == nullptr) return kZPBadParameterErr;
    *empty = found->units.empty() ? 1 : 0;
    return kZPNoErr;
}

// Letter case folding of ASCII and Latin-1.
char16_t FoldCase(char16_t unit) {
    if (unit >= u'A' && unit <= u'Z') return char16_t(unit + 0x20);
    if (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7) return char16_t(unit + 0x20);
    return unit;
}

ZPErr Canonicalize(HostState& host, KVUnicodeStringRef string, std::int32_t form) {
    HostString* found = host.strings.Find(string);
    if (found == nullptr || found->global || (form != 0 && form != 1)) return kZPBadParameterErr;
    if (form == 1) std::transform(found->units.begin(), found->units.end(), found->units.begin(), FoldCase);
    return kZPNoErr;
}

const KVUnicodeStringSuite table = {
    HostFunction<kSuite, "New", &New>::Call,
    HostFunction<kSuite, "NewFromPlatformText", &NewFromPlatformText>::Call,
    HostFunction<kSuite, "NewFromUTF8", &NewFromUTF8>::Call,
    HostFunction<kSuite, "NewFromUTF16", &NewFromUTF16>::Call,
    HostFunction<kSuite, "Dispose", &Dispose>::Call,
    HostFunction<kSuite, "Length", &Length>::Call,
    HostFunction<kSuite, "GetUTF16", &GetUTF16>::Call,
    HostFunction<kSuite, "GetPlatformText", &GetPlatformText>::Call,
    HostFunction<kSuite, "Compare", &Compare>::Call,
    HostFunction<kSuite, "Assign", &Assign>::Call,
    HostFunction<kSuite, "Append", &Append>::Call,
    HostFunction<kSuite, "IsEmpty", &IsEmpty>::Call,
    HostFunction<kSuite, "Canonicalize", &Canonicalize>::Call,
};

}  // namespace

const void* KVUnicodeStringSuiteTable() { return &table; }

}  // namespace kelvra
