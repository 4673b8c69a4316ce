#include "formats/exchange/SwatchExchangePrescan.h"

#include <gtest/gtest.h>

#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace formats {
namespace {

using testsupport::BuildSwatchExchange;
using testsupport::Bytes;
using testsupport::ColorBlock;
using testsupport::ExchangeBlock;
using testsupport::MemoryStream;
using testsupport::SwatchExchangeDescription;
using testsupport::U16;

struct Prescan {
    std::int32_t result;
    std::int32_t count;
};

Prescan Prescanned(const Bytes& file) {
    auto stream = MemoryStream::Reading(file);
    std::int32_t count = -99;
    const std::int32_t result = CountUnsupportedSwatchExchangeEntries(stream, count);
    return {result, count};
}

Bytes FileOf(std::vector<ExchangeBlock> blocks) {
    SwatchExchangeDescription file;
    file.blocks = std::move(blocks);
    return BuildSwatchExchange(file);
}

TEST(SwatchExchangePrescanTest, AClosedStreamFailsWithACountOf0) {
    auto closed = MemoryStream::Closed(true);
    std::int32_t count = 7;
    EXPECT_EQ(CountUnsupportedSwatchExchangeEntries(closed, count), 0);
    EXPECT_EQ(count, 0);
    auto writing = MemoryStream::Writing();
    count = 7;
    EXPECT_EQ(CountUnsupportedSwatchExchangeEntries(writing, count), 0);
    EXPECT_EQ(count, 0);
}

TEST(SwatchExchangePrescanTest, AWellFormedFileWithoutBlocksSucceeds) {
    const Prescan prescan = Prescanned(BuildSwatchExchange({}));
    EXPECT_EQ(prescan.result, 1);
    EXPECT_EQ(prescan.count, 0);
}

TEST(SwatchExchangePrescanTest, TheSampleHasNothingUnsupported) {
    const Prescan prescan = Prescanned(BuildSwatchExchange(testsupport::SampleSwatchExchange()));
    EXPECT_EQ(prescan.result, 1);
    EXPECT_EQ(prescan.count, 0);
}

TEST(SwatchExchangePrescanTest, CountsType0AndTypes3To7FFFOnly) {
    std::vector<ExchangeBlock> blocks;
    for (std::uint16_t type : {0x0000, 0x0001, 0x0002, 0x0003, 0x1234, 0x7FFF, 0x8000, 0xC001, 0xC002, 0xFFFF}) {
        blocks.push_back({type, {9, 9}, {}});
    }
    const Prescan prescan = Prescanned(FileOf(blocks));
    EXPECT_EQ(prescan.result, 1);
    EXPECT_EQ(prescan.count, 4);
}

TEST(SwatchExchangePrescanTest, Type3IsCountedAnd8000IsNot) {
    EXPECT_EQ(Prescanned(FileOf({{0x0003, {}, {}}})).count, 1);
    EXPECT_EQ(Prescanned(FileOf({{0x8000, {}, {}}})).count, 0);
}

TEST(SwatchExchangePrescanTest, AnXYZEntryIsNotCounted) {
    const Prescan prescan = Prescanned(FileOf({ColorBlock({{}, U16("X"), {}, "XYZ ", {0.1f, 0.2f, 0.3f}, 0})}));
    EXPECT_EQ(prescan.result, 1);
    EXPECT_EQ(prescan.count, 0);
}

TEST(SwatchExchangePrescanTest, HeaderFaultsFail) {
    SwatchExchangeDescription file;
    file.magic = "OSEX";
    EXPECT_EQ(Prescanned(BuildSwatchExchange(file)).result, 0);
    file = {};
    file.version = 0x00020000;
    EXPECT_EQ(Prescanned(BuildSwatchExchange(file)).result, 0);
    file = {};
    file.version = 0x0001FFFF;
    EXPECT_EQ(Prescanned(BuildSwatchExchange(file)).result, 1);
    file = {};
    file.blockCount = 10001;
    EXPECT_EQ(Prescanned(BuildSwatchExchange(file)).result, 0);
    EXPECT_EQ(Prescanned({'O', 'S', 'E'}).result, 0);
}

TEST(SwatchExchangePrescanTest, AFailurePartWayKeepsWhatWasCounted) {
    SwatchExchangeDescription file;
    file.blocks = {{0x0003, {}, {}}, {0x0004, {1, 2}, {}}, {0x0005, {}, 0xFFFFFFFF}};
    const Prescan overlong = Prescanned(BuildSwatchExchange(file));
    EXPECT_EQ(overlong.result, 0);
    EXPECT_EQ(overlong.count, 3);  // the block whose length runs off is counted

    file.blocks.pop_back();
    file.blockCount = 10000;
    const Prescan tooFew = Prescanned(BuildSwatchExchange(file));
    EXPECT_EQ(tooFew.result, 0);
    EXPECT_EQ(tooFew.count, 2);
}

}  // namespace
}  // namespace formats
