// A host document's swatches: its swatch list (groups of swatches, group 0
// being the unnamed default group, which always exists) and its custom
// colours. The suites "KV Swatch List Suite", "KV Swatch Group Suite" and
// "KV Custom Color Suite" work on these objects through their handles;
// tests read them here or as JSON (DocumentJson.h).
#pragma once

#include <KVSwatchSuites.h>
#include <kelvra/FlatNameIndex.h>
#include <kelvra/FlatPointerMap.h>
#include <kelvra/ObjectPool.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kelvra {

struct Swatch {
    std::u16string name;
    // A custom colour is one of the same document's custom colours.
    KVColor color{kKVNoneColor, {}};
};

// An object of a document's pool (ObjectPool.h) as a group or list refers
// to it: the pool owns and destroys it, so this pointer frees nothing.
struct LeaveToPool {
    void operator()(const void*) const noexcept {}
};
template <typename T>
using PooledPtr = std::unique_ptr<T, LeaveToPool>;

struct SwatchGroup {
    std::u16string name;  // empty for the default group
    std::vector<PooledPtr<Swatch>> swatches;
};

struct CustomColor {
    std::u16string name;  // unique within its document
    KVCustomColor definition{};
    std::int32_t bookId = 0;  // the colour book it comes from; 0: none
    // Where the running import's watch (ImportWatch.h) keeps this colour,
    // so that it is found without a table of every colour; meaningless
    // unless `watchedBy` is that import's number.
    std::uint64_t watchedBy = 0;
    std::uint32_t watchEntry = 0;
};

// Where a swatch is: its group's index (0: the default group) and its index
// in that group.
struct SwatchPlace {
    std::size_t group = 0;
    std::size_t index = 0;
};

KVSwatchGroupRef HandleOf(const SwatchGroup& group);
KVSwatchRef HandleOf(const Swatch& swatch);
KVCustomColorHandle HandleOf(const CustomColor& color);

class Document {
public:
    // An empty document: the default group only.
    explicit Document(std::string name);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const std::string& Name() const { return name_; }
    KVDocumentHandle Handle() const;
    KVSwatchListRef SwatchList() const;

    const std::vector<std::unique_ptr<SwatchGroup>>& Groups() const { return groups_; }
    // In the order they were made.
    const std::vector<PooledPtr<CustomColor>>& CustomColors() const { return customColors_; }
    // Over all groups, in order.
    std::size_t SwatchCount() const { return swatches_.Size(); }
    const Swatch* NthSwatch(std::size_t index) const;
    // HostError for a swatch of another document.
    SwatchPlace PlaceOf(const Swatch& swatch) const;

    // Editing, as the suites do it. A negative index or one past the end
    // appends; a group never goes before the default group (0 appends too).
    SwatchGroup& InsertGroup(std::int32_t index);
    Swatch& InsertSwatch(SwatchGroup& group, std::int32_t index);
    // Null when the document has a custom colour of that name already.
    CustomColor* NewCustomColor(std::u16string_view name, const KVCustomColor& definition);

    // This document's objects by handle; null for anything else.
    const SwatchGroup* Find(KVSwatchGroupRef group) const;
    const Swatch* Find(KVSwatchRef swatch) const;
    const CustomColor* Find(KVCustomColorHandle color) const;
    SwatchGroup* Find(KVSwatchGroupRef group);
    Swatch* Find(KVSwatchRef swatch);
    CustomColor* Find(KVCustomColorHandle color);
    // By exact comparison of the code units.
    const CustomColor* FindCustomColor(const std::u16string& name) const;
    CustomColor* FindCustomColor(const std::u16string& name);

private:
    std::string name_;
    // Handles are checked against the pools and the groups' table, so a
    // stale or foreign handle is refused rather than followed.
    ObjectPool<Swatch> swatches_;
    ObjectPool<CustomColor> colors_;
    std::vector<std::unique_ptr<SwatchGroup>> groups_;
    std::vector<PooledPtr<CustomColor>> customColors_;
    FlatPointerMap<const SwatchGroup*, bool> groupHandles_;
    // By the colour's own name, which never changes: no copy of every name.
    FlatNameIndex<CustomColor> colorsByName_;
};

}  // namespace kelvra
