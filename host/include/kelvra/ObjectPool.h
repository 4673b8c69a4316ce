// Objects of one kind kept in blocks that never move, each block twice the
// size of the last: a document adds tens of thousands of swatches and
// colours in an import, and one allocation each (and a free each when it
// closes) was much of the import's time. Whether an address is one of the
// pool's objects is answered from the blocks themselves, without a table of
// every object.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace kelvra {

template <typename T>
class ObjectPool {
public:
    ObjectPool() = default;
    ObjectPool(const ObjectPool&) = delete;
    ObjectPool& operator=(const ObjectPool&) = delete;
    ~ObjectPool() {
        for (Block& block : blocks_) std::destroy_n(block.objects.get(), block.used);
    }

    std::size_t Size() const { return size_; }

    // A new object made from `args`; when that throws, the pool is as it was.
    template <typename... Args>
    T& Add(Args&&... args) {
        if (blocks_.empty() || blocks_.back().used == blocks_.back().capacity) AddBlock();
        Block& block = blocks_.back();
        T* made = ::new (static_cast<void*>(block.objects.get() + block.used)) T(std::forward<Args>(args)...);
        ++block.used;
        ++size_;
        return *made;
    }

    // Whether `object` is the address of one of the pool's objects.
    bool Contains(const T* object) const {
        const auto address = reinterpret_cast<std::uintptr_t>(object);
        // From the newest block, which holds half of the objects and the
        // ones most recently made.
        for (std::size_t i = blocks_.size(); i-- > 0;) {
            const Block& block = blocks_[i];
            const auto first = reinterpret_cast<std::uintptr_t>(block.objects.get());
            if (address >= first && address < first + block.used * sizeof(T)) {
                return (address - first) % sizeof(T) == 0;
            }
        }
        return false;
    }

private:
    // Storage only: the pool destroys the objects in it.
    struct FreeStorage {
        void operator()(T* objects) const { ::operator delete(objects, std::align_val_t(alignof(T))); }
    };
    struct Block {
        std::unique_ptr<T, FreeStorage> objects;
        std::size_t capacity = 0;
        std::size_t used = 0;
    };

    void AddBlock() {
        const std::size_t capacity = blocks_.empty() ? 16 : 2 * blocks_.back().capacity;
        blocks_.reserve(blocks_.size() + 1);
        std::unique_ptr<T, FreeStorage> storage(
            static_cast<T*>(::operator new(capacity * sizeof(T), std::align_val_t(alignof(T)))));
        blocks_.push_back({std::move(storage), capacity, 0});
    }

    std::vector<Block> blocks_;
    std::size_t size_ = 0;
};

}  // namespace kelvra
