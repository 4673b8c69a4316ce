#include "BenchmarkBook.h"

#include "swatchbook/SwatchbookCodes.h"

using namespace swatchbook;

namespace {

const char16_t kPrefix[] = u"ORV ";
const char16_t kPostfix[] = u" C";

std::u16string Decimal(std::uint32_t value) {
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value != 0);
    return digits;
}

std::vector<BenchmarkSwatch> MakeSwatches() {
    std::vector<BenchmarkSwatch> swatches;
    swatches.reserve(kBenchmarkSwatches);
    for (std::uint32_t i = 1; i <= kBenchmarkSwatches; ++i) {
        // An odd multiplier permutes 1..65535 modulo 65536.
        const std::uint32_t number = (i * 40503u) % 65536u;
        swatches.push_back({u"Tone " + Decimal(number),
                            {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(number >> 8),
                             static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i >> 8)}});
    }
    return swatches;
}

}  // namespace

const std::vector<BenchmarkSwatch>& BenchmarkSwatches() {
    static const std::vector<BenchmarkSwatch> swatches = MakeSwatches();
    return swatches;
}

std::u16string FullName(const std::u16string& name) {
    return kPrefix + name + kPostfix;
}

void FillBenchmarkBook(ReferenceBook& book) {
    book.BeginFill();
    book.SetPrefix(kPrefix);
    book.SetPostfix(kPostfix);
    const std::int32_t format = book.AddFormat();
    book.SetFormatEncoding(format, kInt8Encoding);
    book.SetFormatColorSpace(format, kCMYKSpace);
    for (const BenchmarkSwatch& swatch : BenchmarkSwatches()) {
        const std::int32_t index = book.AddSwatch(-1);
        book.SetSwatchName(index, swatch.name);
        book.SetSwatchValuesInt8(index, format, swatch.values);
    }
    book.EndFill();
}

std::vector<std::int32_t> LookupOrder(std::size_t count) {
    std::vector<std::int32_t> order;
    std::uint32_t state = 12345;
    for (std::size_t i = 0; i < count; ++i) {
        state = state * 1103515245u + 12345u;
        order.push_back(static_cast<std::int32_t>((state >> 8) % kBenchmarkSwatches));
    }
    return order;
}
