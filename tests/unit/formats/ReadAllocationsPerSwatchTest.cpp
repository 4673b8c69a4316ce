// Guards the readers' work per swatch without timing anything: reading a
// book eight times the size into a ReferenceBook may allocate a few times
// more (buffers and rows grow geometrically), but not once per swatch. A
// change that allocates for every swatch, or for every tenth, fails here.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "formats/ReaderResult.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/FailingNew.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/NumberedXmlSwatchbook.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using testsupport::Bytes;
using testsupport::MemoryStream;

constexpr int kSmall = 1000;
constexpr int kLarge = 8 * kSmall;
// Allowed growth of the count from the small book to the large one: room for
// a few more growth steps of each buffer (4 are made today), far below the
// 7,000 of one allocation per swatch or the 14 of one per 500 swatches.
constexpr std::size_t kAllowedExtra = 12;

using Reader = std::function<std::int32_t(OrvikSwatchbookStream&, OrvikSwatchbook&)>;

struct Reading {
    std::size_t allocations;
    std::size_t swatches;
};

// Allocations made while reading `file` into a new book, the book's own
// included; the file is in memory before counting starts.
Reading CountRead(const Bytes& file, const Reader& read) {
    auto stream = MemoryStream::Reading(file);
    ReferenceBook book;
    const std::size_t before = testsupport::AllocationCount();
    const std::int32_t result = read(stream, book);
    const std::size_t allocations = testsupport::AllocationCount() - before;
    EXPECT_EQ(result, formats::kReadOK);
    return {allocations, std::size_t(book.CountSwatches())};
}

void ExpectNoAllocationPerSwatch(const Bytes& small, const Bytes& large, const Reader& read) {
    const Reading fewer = CountRead(small, read);
    const Reading more = CountRead(large, read);
    ASSERT_EQ(fewer.swatches, std::size_t(kSmall));
    ASSERT_EQ(more.swatches, std::size_t(kLarge));
    EXPECT_GE(more.allocations, fewer.allocations);
    EXPECT_LE(more.allocations - fewer.allocations, kAllowedExtra)
        << fewer.allocations << " allocations for " << kSmall << " swatches, " << more.allocations << " for "
        << kLarge;
}

Bytes ColorBookOf(int colors) { return BuildColorBook(testsupport::NumberedSpotColorBook("Guard", colors)); }

// One group around colours of every model the reader knows, one in five
// tinted, as the exchange benchmark reads.
Bytes SwatchExchangeOf(int colors) {
    const char* models[] = {"RGB ", "CMYK", "LAB ", "Gray"};
    const std::vector<float> values[] = {{0.1f, 0.5f, 0.9f}, {0.1f, 0.2f, 0.3f, 0.4f}, {0.5f, -20.0f, 30.0f}, {0.5f}};
    testsupport::SwatchExchangeDescription description;
    description.blocks.push_back(testsupport::GroupStartBlock(u"Group"));
    for (int n = 0; n < colors; ++n) {
        testsupport::ExchangeColor color{
            {}, testsupport::U16("Swatch " + std::to_string(n)), {}, models[n % 4], values[n % 4],
            std::uint16_t(n % 3)};
        if (n % 5 == 0) color.tint = 0.5f;
        description.blocks.push_back(testsupport::ColorBlock(color));
    }
    description.blocks.push_back(testsupport::GroupEndBlock());
    return BuildSwatchExchange(description);
}

Bytes XmlSwatchbookOf(int swatches) {
    const std::string text = testsupport::NumberedXmlSwatchbook(swatches);
    return {text.begin(), text.end()};
}

TEST(ReadAllocationsPerSwatchTest, ColorBookReaderAllocatesNothingPerSwatch) {
    ExpectNoAllocationPerSwatch(ColorBookOf(kSmall), ColorBookOf(kLarge),
                                [](auto& stream, auto& book) { return formats::ReadColorBook(stream, book, 0); });
}

TEST(ReadAllocationsPerSwatchTest, SwatchExchangeReaderAllocatesNothingPerSwatch) {
    ExpectNoAllocationPerSwatch(SwatchExchangeOf(kSmall), SwatchExchangeOf(kLarge), [](auto& stream, auto& book) {
        return formats::ReadSwatchExchange(stream, book, 0);
    });
}

TEST(ReadAllocationsPerSwatchTest, XmlSwatchbookReaderAllocatesNothingPerSwatch) {
    ExpectNoAllocationPerSwatch(XmlSwatchbookOf(kSmall), XmlSwatchbookOf(kLarge), [](auto& stream, auto& book) {
        return formats::ReadXmlSwatchbook(stream, book, 0);
    });
}

}  // namespace
