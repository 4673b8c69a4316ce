// The custom colours of documents. New colours go to the current document
// and names are looked up there; a handle reaches its colour in any open
// document. Names are unique within a document.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVCustomColorSuite};

bool IsDefinition(const KVCustomColor* definition) {
    return definition != nullptr && definition->kind >= kKVCustomFourColor && definition->kind <= kKVCustomLabColor;
}

CustomColor* FindColor(HostState& host, KVCustomColorHandle color) {
    Document* document = host.documents.OwnerOf(color);
    return document == nullptr ? nullptr : document->Find(color);
}

ZPErr NewCustomColor(HostState& host, const KVCustomColor* definition, KVUnicodeStringRef name,
                     KVCustomColorHandle* customColor) {
    if (customColor == nullptr) return kZPBadParameterErr;
    *customColor = nullptr;
    const HostString* text = host.strings.Find(name);
    if (!IsDefinition(definition) || text == nullptr) return kZPBadParameterErr;
    Document* document = host.documents.Current();
    if (document == nullptr) return kZPNoDocumentErr;
    CustomColor* made = document->NewCustomColor(text->units, *definition);
    if (made == nullptr) return kZPBadParameterErr;
    host.imports.Made(*made);
    *customColor = HandleOf(*made);
    return kZPNoErr;
}

ZPErr GetCustomColor(HostState& host, KVCustomColorHandle customColor, KVCustomColor* definition) {
    const CustomColor* found = FindColor(host, customColor);
    if (found == nullptr || definition == nullptr) return kZPBadParameterErr;
    *definition = found->definition;
    return kZPNoErr;
}

ZPErr SetCustomColor(HostState& host, KVCustomColorHandle customColor, const KVCustomColor* definition) {
    CustomColor* found = FindColor(host, customColor);
    if (found == nullptr || !IsDefinition(definition)) return kZPBadParameterErr;
    const KVCustomColor previous = found->definition;
    found->definition = *definition;
    host.imports.Redefined(*found, previous);
    return kZPNoErr;
}

ZPErr GetCustomColorName(HostState& host, KVCustomColorHandle customColor, KVUnicodeStringRef name) {
    const CustomColor* found = FindColor(host, customColor);
    if (found == nullptr) return kZPBadParameterErr;
    return host.SetText(name, found->name) ? kZPNoErr : kZPBadParameterErr;
}

ZPErr FindCustomColor(HostState& host, KVUnicodeStringRef name, KVCustomColorHandle* customColor) {
    if (customColor == nullptr) return kZPBadParameterErr;
    *customColor = nullptr;
    const HostString* text = host.strings.Find(name);
    if (text == nullptr) return kZPBadParameterErr;
    const Document* document = host.documents.Current();
    if (document == nullptr) return kZPNoDocumentErr;
    const CustomColor* found = document->FindCustomColor(text->units);
    if (found == nullptr) return kZPNameNotFoundErr;
    *customColor = HandleOf(*found);
    return kZPNoErr;
}

ZPErr SetCustomColorBookID(HostState& host, KVCustomColorHandle customColor, std::int32_t bookId) {
    CustomColor* found = FindColor(host, customColor);
    if (found == nullptr) return kZPBadParameterErr;
    found->bookId = bookId;
    return kZPNoErr;
}

const KVCustomColorSuite table = {
    HostFunction<kSuite, "NewCustomColor", &NewCustomColor>::Call,
    HostFunction<kSuite, "GetCustomColor", &GetCustomColor>::Call,
    HostFunction<kSuite, "SetCustomColor", &SetCustomColor>::Call,
    HostFunction<kSuite, "GetCustomColorName", &GetCustomColorName>::Call,
    HostFunction<kSuite, "FindCustomColor", &FindCustomColor>::Call,
    HostFunction<kSuite, "SetCustomColorBookID", &SetCustomColorBookID>::Call,
};

}  // namespace

const void* KVCustomColorSuiteTable() { return &table; }

}  // namespace kelvra
