#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "formats/streams/ByteBuffer.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "tests/support/MemoryStream.h"

namespace formats {
namespace {

using testsupport::MemoryStream;

std::vector<std::uint8_t> Pattern(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = std::uint8_t(i * 7 + i / 251);
    return bytes;
}

// Serves a file and notes, at each read, what was asked for and how the
// buffer stood at that moment.
class ObservingStream final : public OrvikSwatchbookStream {
public:
    struct ReadCall {
        std::size_t requested;
        std::int32_t bufferCount;
        bool intoEndOfBuffer;
        std::int64_t answered;
    };

    ObservingStream(std::vector<std::uint8_t> bytes, const ByteBuffer& buffer)
        : bytes_(std::move(bytes)), buffer_(buffer) {}

    std::int32_t IsOpen() const override { return 1; }
    std::int32_t IsReading() const override { return 1; }
    std::int64_t Read(void* destination, std::size_t count) override {
        const std::size_t n = std::min(count, bytes_.size() - position_);
        std::copy_n(bytes_.data() + position_, n, static_cast<std::uint8_t*>(destination));
        position_ += n;
        const auto* end = buffer_.Data(buffer_.Count());
        calls.push_back({count, buffer_.Count(), static_cast<std::uint8_t*>(destination) + count == end,
                         std::int64_t(n)});
        return std::int64_t(n);
    }
    std::int64_t Write(const void*, std::size_t) override { return 0; }

    std::vector<ReadCall> calls;

private:
    std::vector<std::uint8_t> bytes_;
    const ByteBuffer& buffer_;
    std::size_t position_ = 0;
};

TEST(ReadAllTest, AnEmptyFileGivesAnEmptyBufferAndSuccess) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    ObservingStream stream({}, buffer);
    EXPECT_EQ(ReadAll(buffer, stream), 1);
    EXPECT_EQ(buffer.Count(), 0);
    ASSERT_EQ(stream.calls.size(), 1u);
    EXPECT_EQ(stream.calls[0].requested, 65536u);
}

TEST(ReadAllTest, AFileOfExactlyOneChunkNeedsASecondReadThatFindsNothing) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    ObservingStream stream(Pattern(65536), buffer);
    EXPECT_EQ(ReadAll(buffer, stream), 1);
    EXPECT_EQ(buffer.Count(), 65536);
    ASSERT_EQ(stream.calls.size(), 2u);
    EXPECT_EQ(stream.calls[0].answered, 65536);
    EXPECT_EQ(stream.calls[1].requested, 65536u);
    EXPECT_EQ(stream.calls[1].answered, 0);
}

TEST(ReadAllTest, ALargerFileIsReadInChunksTheBufferGrowingBeforeEach) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    const auto bytes = Pattern(200000);
    ObservingStream stream(bytes, buffer);
    EXPECT_EQ(ReadAll(buffer, stream), 1);
    ASSERT_EQ(stream.calls.size(), 4u);
    for (std::size_t k = 0; k < 4; ++k) {
        SCOPED_TRACE(k);
        EXPECT_EQ(stream.calls[k].requested, 65536u);
        EXPECT_EQ(stream.calls[k].bufferCount, std::int32_t(65536 * (k + 1)));
        EXPECT_TRUE(stream.calls[k].intoEndOfBuffer);
    }
    EXPECT_EQ(stream.calls[3].answered, 200000 - 3 * 65536);
    ASSERT_EQ(buffer.Count(), 200000);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), buffer.Data()));
}

TEST(ReadAllTest, ReadingEmptiesWhatTheBufferHeldBefore) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    buffer.Append("stale", 5);
    auto stream = MemoryStream::Reading({'n', 'e', 'w'});
    EXPECT_EQ(ReadAll(buffer, stream), 1);
    ASSERT_EQ(buffer.Count(), 3);
    EXPECT_EQ(*buffer.Data(0), 'n');
}

TEST(ReadAllTest, AStreamOpenedForWritingFails) {
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    buffer.Append("stale", 5);
    auto stream = MemoryStream::Writing();
    EXPECT_EQ(ReadAll(buffer, stream), 0);
    EXPECT_EQ(buffer.Count(), 0);
    EXPECT_EQ(stream.ReadCalls(), 0u);
}

TEST(ReadAllTest, AReadErrorEndsTheDataWithWhatCameBefore) {
    ByteBuffer buffer(1, 4, 4);
    auto stream = MemoryStream::Closed(true);  // reading, but every read answers 0
    EXPECT_EQ(ReadAll(buffer, stream), 1);
    EXPECT_EQ(buffer.Count(), 0);
}

}  // namespace
}  // namespace formats
