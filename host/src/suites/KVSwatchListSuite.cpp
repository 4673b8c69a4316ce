// A document's swatch list: its swatches counted over all groups, and each
// swatch's name and colour. A null list or document is the current one.
#include "../SuiteCall.h"
#include "../UnicodeText.h"
#include "HostSuites.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVSwatchListSuite};

ZPErr CountSwatches(HostState& host, KVSwatchListRef list, std::int32_t* count) {
    if (count == nullptr) return kZPBadParameterErr;
    *count = 0;
    Document* document = nullptr;
    if (const ZPErr error = host.documents.Resolve(list, document)) return error;
    *count = std::int32_t(document->SwatchCount());
    return kZPNoErr;
}

ZPErr GetNthSwatch(HostState& host, KVSwatchListRef list, std::int32_t index, KVSwatchRef* swatch) {
    if (swatch == nullptr) return kZPBadParameterErr;
    *swatch = nullptr;
    Document* document = nullptr;
    if (const ZPErr error = host.documents.Resolve(list, document)) return error;
    const Swatch* found = index < 0 ? nullptr : document->NthSwatch(std::size_t(index));
    if (found == nullptr) return kZPBadParameterErr;
    *swatch = HandleOf(*found);
    return kZPNoErr;
}

Swatch* FindSwatch(HostState& host, KVSwatchRef swatch) {
    Document* document = host.documents.OwnerOf(swatch);
    return document == nullptr ? nullptr : document->Find(swatch);
}

ZPErr GetSwatchName(HostState& host, KVSwatchRef swatch, KVUnicodeStringRef name) {
    const Swatch* found = FindSwatch(host, swatch);
    if (found == nullptr) return kZPBadParameterErr;
    return host.SetText(name, found->name) ? kZPNoErr : kZPBadParameterErr;
}

// A swatch without a name is hard to find again; the user should hear of it.
Event EmptyNameEvent(const Document& document, const Swatch& swatch) {
    Event event;
    event.kind = Event::Kind::EmptySwatchName;
    event.document = document.Name();
    const SwatchPlace place = document.PlaceOf(swatch);
    event.group = std::int32_t(place.group);
    event.groupName = Utf16ToUtf8(document.Groups()[place.group]->name);
    event.swatch = std::int32_t(place.index);
    return event;
}

ZPErr SetSwatchName(HostState& host, KVSwatchRef swatch, KVUnicodeStringRef name) {
    Document* document = host.documents.OwnerOf(swatch);
    const HostString* text = host.strings.Find(name);
    if (document == nullptr || text == nullptr) return kZPBadParameterErr;
    Swatch& found = *document->Find(swatch);
    found.name = text->units;
    if (found.name.empty()) host.events.Add(EmptyNameEvent(*document, found));
    return kZPNoErr;
}

ZPErr GetSwatchColor(HostState& host, KVSwatchRef swatch, KVColor* color) {
    const Swatch* found = FindSwatch(host, swatch);
    if (found == nullptr || color == nullptr) return kZPBadParameterErr;
    *color = found->color;
    return kZPNoErr;
}

bool IsColorKind(std::int32_t kind) { return kind >= kKVGrayColor && kind <= kKVNoneColor; }

ZPErr SetSwatchColor(HostState& host, KVSwatchRef swatch, const KVColor* color) {
    Document* document = host.documents.OwnerOf(swatch);
    if (document == nullptr || color == nullptr || !IsColorKind(color->kind)) return kZPBadParameterErr;
    // A swatch can only show a custom colour of its own document.
    CustomColor* custom = color->kind == kKVCustomColor ? document->Find(color->c.custom.color) : nullptr;
    if (color->kind == kKVCustomColor && custom == nullptr) return kZPBadParameterErr;
    Swatch& found = *document->Find(swatch);
    found.color = *color;
    if (custom != nullptr) host.imports.Shown(*custom, found);
    return kZPNoErr;
}

ZPErr GetSwatchList(HostState& host, KVDocumentHandle document, KVSwatchListRef* list) {
    if (list == nullptr) return kZPBadParameterErr;
    *list = nullptr;
    Document* found = nullptr;
    if (const ZPErr error = host.documents.Resolve(document, found)) return error;
    *list = found->SwatchList();
    return kZPNoErr;
}

const KVSwatchListSuite table = [] {
    KVSwatchListSuite suite{};
    suite.CountSwatches = HostFunction<kSuite, "CountSwatches", &CountSwatches>::Call;
    suite.GetNthSwatch = HostFunction<kSuite, "GetNthSwatch", &GetNthSwatch>::Call;
    suite.GetSwatchName = HostFunction<kSuite, "GetSwatchName", &GetSwatchName>::Call;
    suite.SetSwatchName = HostFunction<kSuite, "SetSwatchName", &SetSwatchName>::Call;
    suite.GetSwatchColor = HostFunction<kSuite, "GetSwatchColor", &GetSwatchColor>::Call;
    suite.SetSwatchColor = HostFunction<kSuite, "SetSwatchColor", &SetSwatchColor>::Call;
    FillReserved(suite.reserved6to10);
    suite.GetSwatchList = HostFunction<kSuite, "GetSwatchList", &GetSwatchList>::Call;
    return suite;
}();

}  // namespace

const void* KVSwatchListSuiteTable() { return &table; }

}  // namespace kelvra
