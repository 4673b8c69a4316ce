// Host objects handed to modules as opaque handles. A handle the host did
// not hand out (or that was disposed of) is found in no table, so a bad
// handle is answered with an error instead of being followed.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <kelvra/FlatPointerMap.h>

namespace kelvra {

template <typename T>
class HandleTable {
public:
    template <typename Handle>
    Handle Add(std::unique_ptr<T> object) {
        T* raw = object.get();
        items_.Emplace(raw, Item{std::move(object), ++added_});
        return reinterpret_cast<Handle>(raw);
    }
    // Null for anything that is not a live handle of this table.
    template <typename Handle>
    T* Find(Handle handle) const {
        const Item* found = items_.Find(reinterpret_cast<const T*>(handle));
        return found == nullptr ? nullptr : found->object.get();
    }
    template <typename Handle>
    bool Remove(Handle handle) {
        return items_.Erase(reinterpret_cast<const T*>(handle));
    }
    // The object of a live handle, no longer in the table; null for anything
    // else.
    template <typename Handle>
    std::unique_ptr<T> Take(Handle handle) {
        const T* key = reinterpret_cast<const T*>(handle);
        Item* found = items_.Find(key);
        if (found == nullptr) return nullptr;
        std::unique_ptr<T> object = std::move(found->object);
        items_.Erase(key);
        return object;
    }
    template <typename Predicate>
    void RemoveIf(Predicate predicate) {
        items_.EraseIf([&](const T*, const Item& item) { return predicate(*item.object); });
    }
    template <typename Predicate>
    std::size_t CountIf(Predicate predicate) const {
        std::size_t count = 0;
        items_.ForEach([&](const T*, const Item& item) { count += predicate(*item.object) ? 1 : 0; });
        return count;
    }
    std::size_t Count() const { return items_.Size(); }
    // The live objects in the order they were added.
    std::vector<const T*> InOrder() const {
        std::vector<const Item*> items;
        items_.ForEach([&](const T*, const Item& item) { items.push_back(&item); });
        std::sort(items.begin(), items.end(), [](const Item* a, const Item* b) { return a->order < b->order; });
        std::vector<const T*> objects;
        for (const Item* item : items) objects.push_back(item->object.get());
        return objects;
    }
    // Copies of the live objects in the order they were added, for callers
    // that must not see the table change under them.
    std::vector<T> CopiesInOrder() const {
        std::vector<T> copies;
        for (const T* object : InOrder()) copies.push_back(*object);
        return copies;
    }
    void Clear() { items_.Clear(); }

private:
    struct Item {
        std::unique_ptr<T> object;
        std::uint64_t order;
    };
    FlatPointerMap<const T*, Item> items_;
    std::uint64_t added_ = 0;
};

}  // namespace kelvra
