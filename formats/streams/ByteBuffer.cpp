#include "ByteBuffer.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "OrvikSwatchbookStream.h"

namespace formats {

namespace {

// Sixteenfold while the buffer is small, fourfold beyond a mebibyte.
constexpr std::int64_t kSmallGrowthFactor = 16;
constexpr std::int64_t kLargeGrowthFactor = 4;
constexpr std::int64_t kSmallBytes = std::int64_t(1) << 20;

std::int32_t ElementsIn(std::int32_t size, std::int32_t elementSize) {
    return std::max<std::int32_t>(1, size / elementSize);
}

}  // namespace

ByteBuffer::ByteBuffer(std::int32_t elementSize, std::int32_t initialSize, std::int32_t growthSize)
    : elementSize_(std::max<std::int32_t>(1, elementSize)),
      initialCount_(ElementsIn(initialSize, elementSize_)),
      growthStep_(ElementsIn(growthSize, elementSize_)) {}

ByteBuffer::~ByteBuffer() {
    Free();
}

void ByteBuffer::Free() {
    delete[] data_;
    data_ = nullptr;
    count_ = 0;
    capacity_ = 0;
}

// Capacity grows at least sixteenfold up to a mebibyte, so that a file of
// up to 1 MiB filled chunk by chunk is copied only by its first chunk, and
// at least fourfold beyond, so that a larger one is copied by a third of
// its bytes on average while the room no read reaches stays below three
// times the file. That room is never touched: it takes address space but
// no memory.
bool ByteBuffer::Reserve(std::int64_t needed) {
    if (needed <= capacity_) return true;
    constexpr std::int64_t kMaxCount = INT32_MAX;
    if (needed > kMaxCount || needed * elementSize_ > std::int64_t(PTRDIFF_MAX)) return false;
    const std::int64_t factor =
        std::int64_t(capacity_) * elementSize_ < kSmallBytes ? kSmallGrowthFactor : kLargeGrowthFactor;
    std::int64_t capacity = data_ == nullptr
                                ? std::max<std::int64_t>(initialCount_, needed)
                                : std::max({needed, std::int64_t(capacity_) + growthStep_, std::int64_t(capacity_) * factor});
    capacity = std::min(capacity, kMaxCount);
    auto* data = new (std::nothrow) std::uint8_t[std::size_t(capacity * elementSize_)];
    if (data == nullptr) return false;
    if (count_ != 0) std::memcpy(data, data_, std::size_t(count_) * std::size_t(elementSize_));
    delete[] data_;
    data_ = data;
    capacity_ = std::int32_t(capacity);
    return true;
}

std::uint32_t ByteBuffer::Append(const void* source, std::int32_t count) {
    if (count < 0 || !Reserve(std::int64_t(count_) + count)) return kAppendFailed;
    const std::int32_t first = count_;
    const std::size_t bytes = std::size_t(count) * std::size_t(elementSize_);
    if (bytes != 0) {
        if (source != nullptr) {
            std::memcpy(Data(first), source, bytes);
        } else {
            std::memset(Data(first), 0, bytes);
        }
    }
    count_ += count;
    return std::uint32_t(first);
}

std::uint8_t* ByteBuffer::AppendUnwritten(std::int32_t count) {
    if (count < 0 || !Reserve(std::int64_t(count_) + count)) return nullptr;
    std::uint8_t* first = Data(count_);
    count_ += count;
    return first;
}

void ByteBuffer::Truncate(std::int32_t count) {
    if (count >= 0 && count < count_) count_ = count;
}

std::int32_t ReadAll(ByteBuffer& buffer, OrvikSwatchbookStream& stream) {
    buffer.Free();
    if (stream.IsReading() != 1) return 0;
    for (std::int32_t chunk = buffer.InitialCount();; chunk = buffer.GrowthStep()) {
        // What the stream does not fill is cut off below, so it is never read.
        std::uint8_t* destination = buffer.AppendUnwritten(chunk);
        if (destination == nullptr) {
            buffer.Free();
            return 0;
        }
        const std::int64_t chunkBytes = std::int64_t(chunk) * buffer.ElementSize();
        const std::int64_t got = std::clamp<std::int64_t>(stream.Read(destination, std::size_t(chunkBytes)), 0, chunkBytes);
        if (got < chunkBytes) {
            buffer.Truncate(buffer.Count() - chunk + std::int32_t(got / buffer.ElementSize()));
            return 1;
        }
    }
}

}  // namespace formats
