// Damaged files: the sample cut at every length and with every byte flipped
// in turn, for the reader and the pre-scan.
#include <gtest/gtest.h>

#include "formats/ReaderResult.h"
#include "formats/exchange/SwatchExchangePrescan.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace formats {
namespace {

using testsupport::Bytes;
using testsupport::MemoryStream;

class SwatchExchangeHostileTest : public ::testing::Test {
protected:
    SwatchExchangeHostileTest() {
        file = testsupport::SampleSwatchExchange();
        file.blocks.insert(file.blocks.begin() + 2, {0x0003, {1, 2, 3}, {}});
        whole = testsupport::BuildSwatchExchange(file);
        // Where each block begins, and how far a colour entry must reach
        // before the reader adds its swatch (up to and with its model code).
        std::size_t offset = 12;
        for (const auto& block : file.blocks) {
            blockStarts.push_back(offset);
            if (block.type == 0x0001 || block.type == 0x0002) {
                const std::size_t tint = block.type == 0x0002 ? 4 : 0;
                const std::size_t nameField = 2 + 2 * ((block.data[tint] << 8) | block.data[tint + 1]);
                swatchPoints.push_back(offset + 6 + tint + nameField + 4);
            }
            offset += 6 + block.data.size();
        }
    }

    std::int32_t Read(const Bytes& bytes, CompleteBook& book) {
        auto stream = MemoryStream::Reading(bytes);
        return ReadSwatchExchange(stream, book, 0);
    }

    std::int32_t Prescan(const Bytes& bytes, std::int32_t& count) {
        auto stream = MemoryStream::Reading(bytes);
        return CountUnsupportedSwatchExchangeEntries(stream, count);
    }

    testsupport::SwatchExchangeDescription file;
    Bytes whole;
    std::vector<std::size_t> blockStarts;
    std::vector<std::size_t> swatchPoints;
};

TEST_F(SwatchExchangeHostileTest, EveryTruncationGives5AndKeepsTheSwatchesBegunBeforeIt) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        const Bytes cut(whole.begin(), whole.begin() + std::ptrdiff_t(size));
        CompleteBook book;
        EXPECT_EQ(Read(cut, book), size == whole.size() ? kReadOK : kReadTruncated);
        std::int32_t begun = 0;
        for (std::size_t point : swatchPoints) begun += size >= point ? 1 : 0;
        EXPECT_EQ(book.CountSwatches(), begun);

        std::int32_t count = -1;
        EXPECT_EQ(Prescan(cut, count), size == whole.size() ? 1 : 0);
        EXPECT_EQ(count, size >= blockStarts[2] + 6 ? 1 : 0);  // the type-3 block
    }
}

TEST_F(SwatchExchangeHostileTest, EveryFlippedByteEndsWithAResult) {
    for (std::size_t at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        Bytes damaged = whole;
        damaged[at] ^= 0xFF;
        CompleteBook book;
        const std::int32_t result = Read(damaged, book);
        std::int32_t count = -1;
        const std::int32_t prescan = Prescan(damaged, count);
        if (at < 4) {
            EXPECT_EQ(result, kReadBadMagic);
            EXPECT_EQ(prescan, 0);
        } else if (at < 6) {
            EXPECT_EQ(result, kReadBadVersion);
            EXPECT_EQ(prescan, 0);
        } else if (at < 8) {
            EXPECT_EQ(result, kReadOK);  // the minor version is not checked
            EXPECT_EQ(prescan, 1);
        } else if (at < 11) {
            EXPECT_EQ(result, kReadTooManyBlocks);
            EXPECT_EQ(prescan, 0);
        } else {
            EXPECT_TRUE(result == kReadOK || result == kReadTruncated) << result;
            EXPECT_LE(book.CountSwatches(), 4 + 255);
            EXPECT_GE(count, 0);
        }
    }
}

TEST_F(SwatchExchangeHostileTest, FieldsAndLengthsFarPastTheEndGive5) {
    for (std::size_t block = 0; block < blockStarts.size(); ++block) {
        SCOPED_TRACE(block);
        Bytes damaged = whole;
        testsupport::PatchU32(damaged, blockStarts[block] + 2, 0xFFFFFFF0u);
        CompleteBook book;
        EXPECT_EQ(Read(damaged, book), kReadTruncated);
        std::int32_t count = -1;
        EXPECT_EQ(Prescan(damaged, count), 0);
    }
    Bytes manyBlocks = whole;
    testsupport::PatchU32(manyBlocks, 8, 10000);
    CompleteBook book;
    EXPECT_EQ(Read(manyBlocks, book), kReadTruncated);
    EXPECT_EQ(book.CountSwatches(), 4);
}

}  // namespace
}  // namespace formats
