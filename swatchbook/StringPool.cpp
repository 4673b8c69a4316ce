#include "StringPool.h"

#include <cstring>
#include <limits>

namespace swatchbook {

namespace {
constexpr std::size_t kMaxBytes = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
}  // namespace

std::uint32_t StringPool::Store(std::u16string_view text) {
    const std::size_t length = text.size() * sizeof(char16_t);
    const std::size_t offset = bytes_.Count();
    if (text.size() > kMaxBytes / sizeof(char16_t) || length > kMaxBytes - offset) {
        return 0;
    }
    if (!bytes_.Append(length)) {
        return 0;
    }
    std::int32_t index = firstFree_;
    if (index != kNoEntry) {
        firstFree_ = entries_[static_cast<std::size_t>(index)].length;
    } else if (entries_.Count() < kMaxBytes && entries_.Append()) {
        index = static_cast<std::int32_t>(entries_.Count() - 1);
    } else {
        bytes_.Truncate(offset);
        return 0;
    }
    if (length > 0) {
        std::memcpy(bytes_.Data() + offset, text.data(), length);
    }
    entries_[static_cast<std::size_t>(index)] = {static_cast<std::int32_t>(offset), static_cast<std::int32_t>(length)};
    return static_cast<std::uint32_t>(index) + 1;
}

std::u16string StringPool::Lookup(std::uint32_t id) const {
    const Entry* entry = LiveEntry(id);
    if (entry == nullptr) {
        return {};
    }
    std::u16string text(static_cast<std::size_t>(entry->length) / sizeof(char16_t), u'\0');
    if (!text.empty()) {
        std::memcpy(text.data(), bytes_.Data() + entry->offset, static_cast<std::size_t>(entry->length));
    }
    return text;
}

void StringPool::Release(std::uint32_t id) {
    if (LiveEntry(id) == nullptr) {
        return;
    }
    Entry& entry = entries_[id - 1];
    deadBytes_ += static_cast<std::size_t>(entry.length);
    entry = {kReleased, firstFree_};
    firstFree_ = static_cast<std::int32_t>(id - 1);
}

void StringPool::Compact() {
    GrowableRows<std::uint8_t> packed;
    // Without memory for the packed copy the pool simply stays as it is.
    if (packed.ReserveExactly(bytes_.Count() - deadBytes_)) {
        for (std::size_t i = 0; i < entries_.Count(); ++i) {
            Entry& entry = entries_[i];
            if (entry.offset == kReleased) {
                continue;
            }
            const std::size_t offset = packed.Count();
            if (entry.length > 0) {
                // Cannot fail: the capacity is already there.
                packed.Append(static_cast<std::size_t>(entry.length));
                std::memcpy(packed.Data() + offset, bytes_.Data() + entry.offset,
                            static_cast<std::size_t>(entry.length));
            }
            entry.offset = static_cast<std::int32_t>(offset);
        }
        bytes_.Swap(packed);
        deadBytes_ = 0;
    }
    bytes_.ShrinkToFit();
    entries_.ShrinkToFit();
}

}  // namespace swatchbook
