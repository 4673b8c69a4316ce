#include <kelvra/Document.h>
#include <kelvra/HostError.h>

#include <utility>

namespace kelvra {

namespace {

// Where an index of the suites lands among `size` items: -1 or past the end
// is the end.
std::size_t InsertionPoint(std::int32_t index, std::size_t size) {
    return index < 0 || std::size_t(index) > size ? size : std::size_t(index);
}

// Room for one more item, growing as push_back would, so that adding it
// next cannot fail.
template <typename T>
void MakeRoomForOne(std::vector<T>& items) {
    if (items.size() == items.capacity()) items.reserve(items.empty() ? 16 : 2 * items.size());
}

// The non-const lookups share the const ones: a document's objects are its
// own to edit.
template <typename T>
T* Editable(const T* object) {
    return const_cast<T*>(object);
}

}  // namespace

KVSwatchGroupRef HandleOf(const SwatchGroup& group) {
    return reinterpret_cast<KVSwatchGroupRef>(const_cast<SwatchGroup*>(&group));
}

KVSwatchRef HandleOf(const Swatch& swatch) { return reinterpret_cast<KVSwatchRef>(const_cast<Swatch*>(&swatch)); }

KVCustomColorHandle HandleOf(const CustomColor& color) {
    return reinterpret_cast<KVCustomColorHandle>(const_cast<CustomColor*>(&color));
}

Document::Document(std::string name) : name_(std::move(name)) {
    groups_.push_back(std::make_unique<SwatchGroup>());
    groupHandles_.Emplace(groups_.front().get(), true);
}

KVDocumentHandle Document::Handle() const {
    return reinterpret_cast<KVDocumentHandle>(const_cast<Document*>(this));
}

KVSwatchListRef Document::SwatchList() const {
    return reinterpret_cast<KVSwatchListRef>(const_cast<std::vector<std::unique_ptr<SwatchGroup>>*>(&groups_));
}

const Swatch* Document::NthSwatch(std::size_t index) const {
    for (const auto& group : groups_) {
        if (index < group->swatches.size()) return group->swatches[index].get();
        index -= group->swatches.size();
    }
    return nullptr;
}

SwatchPlace Document::PlaceOf(const Swatch& swatch) const {
    // From the end: an import asks about the swatch it has just added.
    for (std::size_t group = groups_.size(); group-- > 0;) {
        const auto& swatches = groups_[group]->swatches;
        for (std::size_t index = swatches.size(); index-- > 0;) {
            if (swatches[index].get() == &swatch) return {group, index};
        }
    }
    throw HostError("the swatch is not one of document \"" + name_ + "\"");
}

SwatchGroup& Document::InsertGroup(std::int32_t index) {
    const std::size_t at = index <= 0 ? groups_.size() : InsertionPoint(index, groups_.size());
    auto group = std::make_unique<SwatchGroup>();
    groupHandles_.Emplace(group.get(), true);
    return **groups_.insert(groups_.begin() + std::ptrdiff_t(at), std::move(group));
}

Swatch& Document::InsertSwatch(SwatchGroup& group, std::int32_t index) {
    auto& swatches = group.swatches;
    const std::size_t at = InsertionPoint(index, swatches.size());
    // Room first, so that a host out of memory leaves the document as it was.
    MakeRoomForOne(swatches);
    Swatch& swatch = swatches_.Add();
    swatches.insert(swatches.begin() + std::ptrdiff_t(at), PooledPtr<Swatch>(&swatch));
    return swatch;
}

CustomColor* Document::NewCustomColor(std::u16string_view name, const KVCustomColor& definition) {
    // The name is hashed once for the look-up and the index; room is made
    // first, so that a host out of memory leaves the document as it was.
    const std::size_t hash = colorsByName_.Hash(name);
    if (colorsByName_.Find(name, hash) != nullptr) return nullptr;
    colorsByName_.Reserve(colorsByName_.Size() + 1);
    MakeRoomForOne(customColors_);
    CustomColor& made = colors_.Add(CustomColor{std::u16string(name), definition});
    customColors_.emplace_back(&made);
    colorsByName_.Add(&made, hash);
    return &made;
}

const SwatchGroup* Document::Find(KVSwatchGroupRef group) const {
    const auto* found = reinterpret_cast<const SwatchGroup*>(group);
    return groupHandles_.Contains(found) ? found : nullptr;
}

const Swatch* Document::Find(KVSwatchRef swatch) const {
    const auto* found = reinterpret_cast<const Swatch*>(swatch);
    return swatches_.Contains(found) ? found : nullptr;
}

const CustomColor* Document::Find(KVCustomColorHandle color) const {
    const auto* found = reinterpret_cast<const CustomColor*>(color);
    return colors_.Contains(found) ? found : nullptr;
}

SwatchGroup* Document::Find(KVSwatchGroupRef group) { return Editable(std::as_const(*this).Find(group)); }

Swatch* Document::Find(KVSwatchRef swatch) { return Editable(std::as_const(*this).Find(swatch)); }

CustomColor* Document::Find(KVCustomColorHandle color) { return Editable(std::as_const(*this).Find(color)); }

const CustomColor* Document::FindCustomColor(const std::u16string& name) const { return colorsByName_.Find(name); }

CustomColor* Document::FindCustomColor(const std::u16string& name) {
    return Editable(std::as_const(*this).FindCustomColor(name));
}

}  // namespace kelvra
