// A map from object addresses to values in one flat array (open addressing,
// linear probing): the host's handle tables check a handle on every suite
// call and add one for most objects an import makes, and a node-based map
// paid an allocation per entry and a cache miss per node on each of them.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace kelvra {

template <typename Key, typename Value>
class FlatPointerMap {
    static_assert(std::is_pointer_v<Key>, "keyed by addresses");

public:
    std::size_t Size() const { return size_; }

    // Adds key → value unless key is there; false (value dropped) if it was.
    bool Emplace(Key key, Value value) {
        if (2 * (size_ + 1) > slots_.size()) Grow();
        std::size_t at = Home(key);
        for (; slots_[at].key != nullptr; at = Next(at)) {
            if (slots_[at].key == key) return false;
        }
        slots_[at] = {key, std::move(value)};
        ++size_;
        return true;
    }

    Value* Find(Key key) {
        if (size_ == 0 || key == nullptr) return nullptr;
        for (std::size_t at = Home(key); slots_[at].key != nullptr; at = Next(at)) {
            if (slots_[at].key == key) return &slots_[at].value;
        }
        return nullptr;
    }
    const Value* Find(Key key) const { return const_cast<FlatPointerMap*>(this)->Find(key); }
    bool Contains(Key key) const { return Find(key) != nullptr; }

    bool Erase(Key key) {
        if (size_ == 0 || key == nullptr) return false;
        for (std::size_t at = Home(key); slots_[at].key != nullptr; at = Next(at)) {
            if (slots_[at].key == key) {
                EraseAt(at);
                return true;
            }
        }
        return false;
    }

    // Erases every entry for which predicate(key, value) holds.
    template <typename Predicate>
    void EraseIf(Predicate predicate) {
        // An erase can shift a later entry back into the slot just looked at,
        // so that slot is looked at again; an entry kept may be asked twice.
        for (std::size_t at = 0; at < slots_.size();) {
            if (slots_[at].key != nullptr && predicate(slots_[at].key, slots_[at].value)) {
                EraseAt(at);
            } else {
                ++at;
            }
        }
    }

    // Calls visit(key, value) for every entry, in no particular order.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (const Slot& slot : slots_) {
            if (slot.key != nullptr) visit(slot.key, slot.value);
        }
    }

    void Clear() {
        slots_.clear();
        size_ = 0;
    }

private:
    struct Slot {
        Key key = nullptr;
        Value value{};
    };

    // Addresses differ in their low bits by the objects' alignment; the
    // multiplication spreads every bit over the top ones, which are taken.
    std::size_t Home(Key key) const {
        const auto bits = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key));
        return std::size_t((bits * 0x9E3779B97F4A7C15ull) >> shift_);
    }
    std::size_t Next(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

    void Grow() {
        const std::size_t capacity = slots_.empty() ? 16 : 2 * slots_.size();
        std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(capacity));
        shift_ = 64 - std::countr_zero(slots_.size());
        size_ = 0;
        for (Slot& slot : old) {
            if (slot.key != nullptr) Emplace(slot.key, std::move(slot.value));
        }
    }

    // Backward-shift deletion: later entries of the same run move up, so no
    // slot is ever a tombstone and lookups stop at the first empty slot.
    void EraseAt(std::size_t hole) {
        for (std::size_t at = Next(hole); slots_[at].key != nullptr; at = Next(at)) {
            const std::size_t home = Home(slots_[at].key);
            // The entry may fill the hole if its home is not after the hole
            // on the way round from its home to where it lies.
            const bool movable = hole <= at ? (home <= hole || home > at) : (home <= hole && home > at);
            if (movable) {
                slots_[hole] = std::move(slots_[at]);
                hole = at;
            }
        }
        slots_[hole] = Slot{};
        --size_;
    }

    std::vector<Slot> slots_;
    std::size_t size_ = 0;
    int shift_ = 64;
};

}  // namespace kelvra
