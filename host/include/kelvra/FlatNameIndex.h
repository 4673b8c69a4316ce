// Objects found by their name (a `name` member of UTF-16 text) in one flat
// array (open addressing, linear probing). Each slot keeps the name's hash
// beside the object, so a look-up compares names only when the hashes are
// equal and growing never hashes a name again; a caller that looks a name
// up and then adds it hashes it once. A document's custom colours are
// looked up by name three times per colour an import makes, which a
// node-based map paid for with a cache miss per node.
#pragma once

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

    std::size_t Size() const { return size_; }

    // The object named `name`, whose Hash is `hash`; null when none is.
    T* Find(std::u16string_view name, std::size_t hash) const {
        if (size_ == 0) return nullptr;
        for (std::size_t at = Home(hash); slots_[at].item != nullptr; at = Next(at)) {
            const Slot& slot = slots_[at];
            if (slot.hash == hash && std::u16string_view(slot.item->name) == name) return slot.item;
        }
        return nullptr;
    }
    T* Find(std::u16string_view name) const { return Find(name, Hash(name)); }

    // Room for `count` objects, so that adding up to that many allocates
    // nothing and cannot fail.
    void Reserve(std::size_t count) {
        std::size_t capacity = slots_.empty() ? 16 : slots_.size();
        while (2 * count > capacity) capacity *= 2;
        if (capacity != slots_.size()) Rehash(capacity);
    }

    // Adds `item`, whose name's Hash is `hash` and which no object of the
    // index has.
    void Add(T* item, std::size_t hash) {
        Reserve(size_ + 1);
        std::size_t at = Home(hash);
        while (slots_[at].item != nullptr) at = Next(at);
        slots_[at] = {hash, item};
        ++size_;
    }

private:
    struct Slot {
        std::size_t hash = 0;
        T* item = nullptr;
    };

    std::size_t Home(std::size_t hash) const {
        return std::size_t((static_cast<std::uint64_t>(hash) * 0x9E3779B97F4A7C15ull) >> shift_);
    }
    std::size_t Next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

    void Rehash(std::size_t capacity) {
        std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(capacity));
        shift_ = 64 - std::countr_zero(capacity);
        size_ = 0;
        for (const Slot& slot : old) {
            if (slot.item != nullptr) Add(slot.item, slot.hash);
        }
    }

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
    int shift_ = 64;
};

}  // namespace kelvra
