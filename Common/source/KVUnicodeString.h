// A host unicode string owned by the module. Each operation forwards to one
// function of "KV Unicode String Suite" and throws kv::Error with the host's
// code when the host fails; a host that reports success without giving a
// string breaks its contract (kv::Contract::Violation).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ZPTypes.h"

namespace kv {

class UnicodeString {
public:
    // An empty string.
    UnicodeString();
    // Platform text; a localisation key ("$$$/...=Default") becomes its
    // localised text.
    static UnicodeString FromPlatformText(const char* text);
    static UnicodeString FromUTF8(const char* text, std::size_t length);
    // Copies the units into a host string; nothing of the caller's is kept.
    static UnicodeString FromUTF16(std::u16string_view text);

    UnicodeString(UnicodeString&& other) noexcept;
    UnicodeString& operator=(UnicodeString&& other) noexcept;
    UnicodeString(const UnicodeString&) = delete;
    UnicodeString& operator=(const UnicodeString&) = delete;
    ~UnicodeString();

    KVUnicodeStringRef Get() const noexcept { return string_; }

    std::size_t Length() const;
    std::u16string ToUTF16() const;
    // Zero-terminated platform text cut to capacity - 1 bytes; answers the
    // full length in bytes.
    std::size_t GetPlatformText(char* buffer, std::size_t capacity) const;
    bool IsEmpty() const;
    // Exact comparison of code units: < 0, 0 or > 0.
    std::int32_t Compare(const UnicodeString& other) const;
    void Assign(const UnicodeString& source);
    void Append(const UnicodeString& source);
    void Canonicalize(std::int32_t form);

private:
    explicit UnicodeString(KVUnicodeStringRef string) noexcept : string_(string) {}

    KVUnicodeStringRef string_;
};

// A string the module does not own (another plug-in's, say), through the
// same suite functions.
std::u16string UTF16Of(KVUnicodeStringRef string);
void AssignString(KVUnicodeStringRef target, KVUnicodeStringRef source);

}  // namespace kv
