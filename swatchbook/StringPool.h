// The strings of a book's format table, kept by 1-based id in one byte
// array. A replaced string becomes dead bytes until the book is compacted, so
// that filling a book does not allocate once per string.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "GrowableRows.h"

namespace swatchbook {

class StringPool {
public:
    // Stores a copy of `text`; its id (1 or more), or 0 when the storage
    // cannot grow. A released entry is taken before a new one is appended.
    std::uint32_t Store(std::u16string_view text);

    // The string of `id`; empty for 0, an id never handed out or a released one.
    std::u16string Lookup(std::uint32_t id) const;

    // Whether the string of `id` (as Lookup would answer it) is `text`,
    // compared where it lies, unit by unit: format identifiers are short,
    // and a library call to compare them took longer than the comparison.
    bool Holds(std::uint32_t id, std::u16string_view text) const {
        const Entry* entry = LiveEntry(id);
        const std::size_t length = entry == nullptr ? 0 : static_cast<std::size_t>(entry->length);
        if (length != text.size() * sizeof(char16_t)) {
            return false;
        }
        const std::uint8_t* stored = length == 0 ? nullptr : bytes_.Data() + entry->offset;
        for (std::size_t i = 0; i < text.size(); ++i) {
            char16_t unit;
            std::memcpy(&unit, stored + i * sizeof(char16_t), sizeof unit);
            if (unit != text[i]) {
                return false;
            }
        }
        return true;
    }

    // Gives the entry back for reuse; its bytes stay, dead, until Compact.
    // Ids that are not live are ignored.
    void Release(std::uint32_t id);

    // Packs the live strings in entry order, drops the dead bytes and trims
    // both arrays to their size. Ids stay as they are.
    void Compact();

    std::size_t CountEntries() const { return entries_.Count(); }
    std::size_t CountBytes() const { return bytes_.Count(); }
    std::size_t DeadBytes() const { return deadBytes_; }
    std::size_t EntryCapacity() const { return entries_.Capacity(); }
    std::size_t ByteCapacity() const { return bytes_.Capacity(); }

private:
    // A released entry has offset -1 and keeps the index of the next free
    // entry (-1 for none) in its length.
    struct Entry {
        std::int32_t offset;
        std::int32_t length;
    };
    static constexpr std::int32_t kReleased = -1;
    static constexpr std::int32_t kNoEntry = -1;

    const Entry* LiveEntry(std::uint32_t id) const {
        if (id == 0 || id > entries_.Count()) {
            return nullptr;
        }
        const Entry& entry = entries_[id - 1];
        return entry.offset == kReleased ? nullptr : &entry;
    }

    GrowableRows<std::uint8_t> bytes_;
    GrowableRows<Entry> entries_;
    std::size_t deadBytes_ = 0;
    std::int32_t firstFree_ = kNoEntry;
};

}  // namespace swatchbook
