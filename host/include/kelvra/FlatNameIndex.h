// Objects found by their name (a `name` member of UTF-16 text) in one flat
// table (open addressing, linear probing) of small slots beside a list of
// the objects with their names' hashes. A look-up compares names only when
// the hashes are equal, growing never hashes a name again, and a caller
// that looks a name up and then adds it hashes it once. A document's custom
// colours are looked up by name three times per colour an import makes,
// which a node-based map paid for with a cache miss per node.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace kelvra {

template <typename T>
class FlatNameIndex {
public:
    static std::size_t Hash(std::u16string_view name) { return std::hash<std::u16string_view>{}(name); }

    std::size_t Size() const { return items_.size(); }

    // The object named `name`, whose Hash is `hash`; null when none is.
    T* Find(std::u16string_view name, std::size_t hash) const {
        if (items_.empty()) return nullptr;
        const std::uint32_t tag = Tag(hash);
        for (std::size_t at = Home(hash); slots_[at].number != 0; at = Next(at)) {
            const Slot slot = slots_[at];
            if (slot.tag != tag) continue;
            const Item& item = items_[slot.number - 1];
            if (item.hash == hash && std::u16string_view(item.object->name) == name) return item.object;
        }
        return nullptr;
    }
    T* Find(std::u16string_view name) const { return Find(name, Hash(name)); }

    // Room for `count` objects, so that adding up to that many allocates
    // nothing and cannot fail.
    void Reserve(std::size_t count) {
        std::size_t capacity = slots_.empty() ? 16 : slots_.size();
        while (2 * count > capacity) capacity *= 2;
        if (count > items_.capacity()) items_.reserve(std::max(count, 2 * items_.capacity()));
        if (capacity != slots_.size()) Rehash(capacity);
    }

    // Adds `item`, whose name's Hash is `hash` and which no object of the
    // index has.
    void Add(T* item, std::size_t hash) {
        Reserve(items_.size() + 1);
        items_.push_back({hash, item});
        Place(hash, items_.size());
    }

private:
    // The slots hold a part of the hash and the object's place in `items_`
    // (from 1; 0 for an empty slot): eight bytes, so that the table, whose
    // slot a look-up reads first at a place the hash chooses, is half as
    // large as one of whole hashes and pointers and stays in the cache more.
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t number = 0;
    };
    struct Item {
        std::size_t hash;
        T* object;
    };

    static std::uint32_t Tag(std::size_t hash) { return static_cast<std::uint32_t>(hash); }
    std::size_t Home(std::size_t hash) const {
        return std::size_t((static_cast<std::uint64_t>(hash) * 0x9E3779B97F4A7C15ull) >> shift_);
    }
    std::size_t Next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

    void Place(std::size_t hash, std::size_t number) {
        std::size_t at = Home(hash);
        while (slots_[at].number != 0) at = Next(at);
        slots_[at] = {Tag(hash), static_cast<std::uint32_t>(number)};
    }

    void Rehash(std::size_t capacity) {
        std::vector<Slot> grown(capacity);
        slots_.swap(grown);
        shift_ = 64 - std::countr_zero(capacity);
        for (std::size_t i = 0; i < items_.size(); ++i) Place(items_[i].hash, i + 1);
    }

    std::vector<Slot> slots_;
    std::vector<Item> items_;
    int shift_ = 64;
};

}  // namespace kelvra
