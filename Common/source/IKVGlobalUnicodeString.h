// A host global unicode string made from fixed platform text (usually a
// localisation key) on first use and kept for the life of the module; the
// host owns it and never needs it disposed of.
#pragma once

#include "KVStringSuites.h"

namespace kv {

class IKVGlobalUnicodeString {
public:
    constexpr explicit IKVGlobalUnicodeString(const char* text) noexcept : text_(text) {}
    IKVGlobalUnicodeString(const IKVGlobalUnicodeString&) = delete;
    IKVGlobalUnicodeString& operator=(const IKVGlobalUnicodeString&) = delete;

    // The string, made through `suite` unless made before. A host failure
    // throws kv::Error with the host's code; a success without a string
    // throws kv::Contract::Violation.
    KVUnicodeStringRef Get(const KVGlobalUnicodeStringSuite& suite);

private:
    const char* text_;
    KVUnicodeStringRef string_ = nullptr;
};

}  // namespace kv
