#include "KVUnicodeString.h"

#include <utility>

#include "KVError.h"
#include "KVStringSuites.h"
#include "SuiteNode.h"

namespace kv {

namespace {

const KVUnicodeStringSuite& Suite() {
    static SuiteNode node(kKVUnicodeStringSuite, kKVUnicodeStringSuiteVersion, SuiteNode::kOnDemand);
    return RequireSuite<KVUnicodeStringSuite>(node);
}

// Makes a string with `make`, which fills in the new string and answers the
// host's code.
template <class Make>
KVUnicodeStringRef Made(Make make) {
    KVUnicodeStringRef string = nullptr;
    ThrowIfError(make(&string));
    if (string == nullptr) throw Contract::Violation("Failed Postcondition");
    return string;
}

}  // namespace

UnicodeString::UnicodeString() : string_(Made([](KVUnicodeStringRef* string) { return Suite().New(string); })) {}

UnicodeString UnicodeString::FromPlatformText(const char* text) {
    return UnicodeString(Made([&](KVUnicodeStringRef* string) { return Suite().NewFromPlatformText(text, string); }));
}

UnicodeString UnicodeString::FromUTF8(const char* text, std::size_t length) {
    return UnicodeString(
        Made([&](KVUnicodeStringRef* string) { return Suite().NewFromUTF8(text, length, string); }));
}

UnicodeString UnicodeString::FromUTF16(std::u16string_view text) {
    const auto* units = reinterpret_cast<const std::uint16_t*>(text.data());
    return UnicodeString(
        Made([&](KVUnicodeStringRef* string) { return Suite().NewFromUTF16(units, text.size(), string); }));
}

UnicodeString::UnicodeString(UnicodeString&& other) noexcept : string_(std::exchange(other.string_, nullptr)) {}

UnicodeString& UnicodeString::operator=(UnicodeString&& other) noexcept {
    std::swap(string_, other.string_);
    return *this;
}

UnicodeString::~UnicodeString() {
    if (string_ == nullptr) return;
    // A string exists only if the suite was acquired for it; it is still held.
    try {
        Suite().Dispose(string_);
    } catch (const Error&) {
    }
}

std::size_t UnicodeString::Length() const {
    std::size_t length = 0;
    ThrowIfError(Suite().Length(string_, &length));
    return length;
}

std::u16string UnicodeString::ToUTF16() const { return UTF16Of(string_); }

std::size_t UnicodeString::GetPlatformText(char* buffer, std::size_t capacity) const {
    std::size_t length = 0;
    ThrowIfError(Suite().GetPlatformText(string_, buffer, capacity, &length));
    return length;
}

bool UnicodeString::IsEmpty() const {
    ZPBoolean empty = 0;
    ThrowIfError(Suite().IsEmpty(string_, &empty));
    return empty != 0;
}

std::int32_t UnicodeString::Compare(const UnicodeString& other) const {
    std::int32_t order = 0;
    ThrowIfError(Suite().Compare(string_, other.string_, &order));
    return order;
}

void UnicodeString::Assign(const UnicodeString& source) { AssignString(string_, source.string_); }

void UnicodeString::Append(const UnicodeString& source) { ThrowIfError(Suite().Append(string_, source.string_)); }

void UnicodeString::Canonicalize(std::int32_t form) { ThrowIfError(Suite().Canonicalize(string_, form)); }

std::u16string UTF16Of(KVUnicodeStringRef string) {
    std::size_t length = 0;
    ThrowIfError(Suite().Length(string, &length));
    std::u16string text(length, u'\0');
    std::size_t count = 0;
    ThrowIfError(Suite().GetUTF16(string, reinterpret_cast<std::uint16_t*>(text.data()), text.size(), &count));
    text.resize(count < text.size() ? count : text.size());
    return text;
}

void AssignString(KVUnicodeStringRef target, KVUnicodeStringRef source) {
    ThrowIfError(Suite().Assign(target, source));
}

}  // namespace kv
