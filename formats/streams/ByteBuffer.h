// The growable buffer into which a reader pulls a whole file before parsing.
// Module code: storage comes from non-throwing new; failures are results.
#pragma once

#include <cstdint>

class OrvikSwatchbookStream;

namespace formats {

class ByteBuffer {
public:
    // What Append answers when the buffer could not grow.
    static constexpr std::uint32_t kAppendFailed = 0xFFFFFFFFu;

    // Sizes are in bytes; the element counts derived from them are at least 1.
    ByteBuffer(std::int32_t elementSize, std::int32_t initialSize, std::int32_t growthSize);
    ~ByteBuffer();
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;

    // Appends `count` elements copied from `source`, or zeroed when it is
    // null; answers the index of the first one, or kAppendFailed.
    std::uint32_t Append(const void* source, std::int32_t count);
    // Appends `count` elements left as they are, for the caller to write
    // (a read straight into the buffer); answers them, or null on failure.
    std::uint8_t* AppendUnwritten(std::int32_t count);
    // Keeps only the first `count` elements (a no-op for a larger count).
    void Truncate(std::int32_t count);
    void Clear() { count_ = 0; }
    void Free();

    std::uint8_t* Data(std::int32_t index = 0) const { return data_ + std::int64_t(index) * elementSize_; }
    std::int32_t Count() const { return count_; }
    // Elements there is room for before the buffer grows.
    std::int32_t Capacity() const { return capacity_; }
    std::int32_t ElementSize() const { return elementSize_; }
    std::int32_t InitialCount() const { return initialCount_; }
    std::int32_t GrowthStep() const { return growthStep_; }

private:
    bool Reserve(std::int64_t needed);

    std::uint8_t* data_ = nullptr;
    std::int32_t elementSize_;
    std::int32_t initialCount_;
    std::int32_t count_ = 0;
    std::int32_t growthStep_;
    std::int32_t capacity_ = 0;
};

// Empties `buffer` and fills it with everything `stream` yields: a chunk of
// the initial count, then, while each read fills its chunk, a chunk of the
// growth step behind it. Answers 1, or 0 when the stream is not for reading
// or the buffer could not grow (the buffer is then freed).
std::int32_t ReadAll(ByteBuffer& buffer, OrvikSwatchbookStream& stream);

// The buffer every reader uses: 64 KiB to start with, 64 KiB more per chunk.
inline constexpr std::int32_t kReadChunkSize = 65536;

}  // namespace formats
