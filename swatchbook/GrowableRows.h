// A growable array of fixed-size rows for the books' storage. It never
// throws: storage comes from non-throwing allocation, and an append or insert
// that cannot grow the storage fails and leaves the array as it was.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>

namespace swatchbook {

enum class RowGrowth {
    // Grow by 64 KiB worth of rows at a time: tables that stay small.
    kFixedStep,
    // Multiply the capacity by kGrowthFactor: long lists filled one row at a
    // time and then shrunk to their count, so that few of their rows are
    // copied before that last copy. Rows never written cost no memory.
    kGeometric,
};

template <typename Row>
class GrowableRows {
    static_assert(std::is_trivially_copyable_v<Row>, "rows are moved with memcpy");

public:
    // 64 KiB worth of rows, at least one: the first allocation and each growth step.
    static constexpr std::size_t kStepRows = std::max<std::size_t>(1, 65536 / sizeof(Row));
    static constexpr std::size_t kGrowthFactor = 8;

    explicit GrowableRows(RowGrowth growth = RowGrowth::kFixedStep) : growth_(growth) {}
    ~GrowableRows() { Release(); }
    GrowableRows(const GrowableRows&) = delete;
    GrowableRows& operator=(const GrowableRows&) = delete;

    std::size_t Count() const { return count_; }
    std::size_t Capacity() const { return capacity_; }
    Row* Data() { return rows_; }
    const Row* Data() const { return rows_; }
    Row& operator[](std::size_t index) { return rows_[index]; }
    const Row& operator[](std::size_t index) const { return rows_[index]; }

    // Appends `count` zero-filled rows; false, changing nothing, when the
    // storage cannot grow.
    bool Append(std::size_t count = 1) {
        if (count > kMaxRows - count_ || !Reserve(count_ + count)) {
            return false;
        }
        if (count > 0) {
            std::memset(static_cast<void*>(rows_ + count_), 0, count * sizeof(Row));
        }
        count_ += count;
        return true;
    }

    // Inserts one zero-filled row before `position` (at most Count()); false,
    // changing nothing, when the storage cannot grow.
    bool Insert(std::size_t position) {
        if (position == count_ && count_ < capacity_) {
            // The common case, an append with room: in line, nothing to move.
            std::memset(static_cast<void*>(rows_ + count_), 0, sizeof(Row));
            ++count_;
            return true;
        }
        return InsertGrowingOrMoving(position);
    }

    // Forgets the rows from `count` on and keeps the storage.
    void Truncate(std::size_t count) { count_ = std::min(count, count_); }

    // Forgets the rows and frees the storage.
    void Release() {
        if (rows_ == nullptr) {
            return;  // nothing to free
        }
        ::operator delete(rows_);
        rows_ = nullptr;
        count_ = 0;
        capacity_ = 0;
    }

    // Makes the capacity exactly the row count; an empty array is freed.
    // Without memory for the smaller copy the array stays as it is.
    void ShrinkToFit() {
        if (count_ == 0) {
            Release();
        } else if (capacity_ > count_) {
            MoveTo(count_);
        }
    }

    // Makes room for at least `capacity` rows without changing the count,
    // allocating exactly that much when it must grow; false without memory.
    bool ReserveExactly(std::size_t capacity) {
        return capacity <= capacity_ || (capacity <= kMaxRows && MoveTo(capacity));
    }

    void Swap(GrowableRows& other) {
        std::swap(rows_, other.rows_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(growth_, other.growth_);
    }

private:
    static constexpr std::size_t kMaxRows = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(Row);

    // Insert when the storage must grow or rows must move up.
    [[gnu::noinline]] bool InsertGrowingOrMoving(std::size_t position) {
        if (!Append()) {
            return false;
        }
        if (position == count_ - 1) {
            return true;  // appended, already zero
        }
        Row* row = rows_ + position;
        std::memmove(static_cast<void*>(row + 1), row, (count_ - 1 - position) * sizeof(Row));
        std::memset(static_cast<void*>(row), 0, sizeof(Row));
        return true;
    }

    bool Reserve(std::size_t needed) {
        if (needed <= capacity_) {
            return true;
        }
        std::size_t grown = capacity_ + std::min(kStepRows, kMaxRows - capacity_);
        if (growth_ == RowGrowth::kGeometric) {
            grown = std::max(grown, capacity_ > kMaxRows / kGrowthFactor ? kMaxRows : capacity_ * kGrowthFactor);
        }
        return MoveTo(std::max(grown, needed));
    }

    bool MoveTo(std::size_t capacity) {
        void* storage = ::operator new(capacity * sizeof(Row), std::nothrow);
        if (storage == nullptr) {
            return false;
        }
        Row* rows = static_cast<Row*>(storage);
        if (count_ > 0) {
            std::memcpy(static_cast<void*>(rows), rows_, count_ * sizeof(Row));
        }
        ::operator delete(rows_);
        rows_ = rows;
        capacity_ = capacity;
        return true;
    }

    Row* rows_ = nullptr;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
    RowGrowth growth_;
};

}  // namespace swatchbook
