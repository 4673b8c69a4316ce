// Reading a colour book of 65,535 colours and a swatch exchange file of
// 10,000 blocks from memory into a ReferenceBook, each beside a baseline that
// only walks the same fields and byte-swaps them into a plain array.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "bench/LargeColorBook.h"
#include "bench/PairedTiming.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/streams/BigEndian.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using namespace testsupport;

constexpr int kExchangeBlocks = 10000;
constexpr int kExchangeGroups = 10;

std::u16string NameOf(const char* stem, int i) {
    return U16(std::string(stem) + " " + std::to_string(i));
}

// Ten groups, each with its start and end block, and colour entries of every
// model read, one in five of them tinted.
const Bytes& ExchangeFile() {
    static const Bytes file = [] {
        SwatchExchangeDescription description;
        const int perGroup = (kExchangeBlocks - 2 * kExchangeGroups) / kExchangeGroups;
        const char* models[] = {"RGB ", "CMYK", "LAB ", "Gray"};
        const std::vector<float> values[] = {{0.1f, 0.5f, 0.9f}, {0.1f, 0.2f, 0.3f, 0.4f}, {0.5f, -20.0f, 30.0f}, {0.5f}};
        int n = 0;
        for (int g = 0; g < kExchangeGroups; ++g) {
            description.blocks.push_back(GroupStartBlock(NameOf("Group", g)));
            for (int i = 0; i < perGroup; ++i, ++n) {
                ExchangeColor color{{}, NameOf("Swatch", n), {}, models[n % 4], values[n % 4], std::uint16_t(n % 3)};
                if (n % 5 == 0) color.tint = 0.5f;
                description.blocks.push_back(ColorBlock(color));
            }
            description.blocks.push_back(GroupEndBlock());
        }
        return BuildSwatchExchange(description);
    }();
    return file;
}

void ReportRates(benchmark::State& state, std::size_t bytes, std::int64_t swatches) {
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(bytes));
    state.counters["swatches/s"] =
        benchmark::Counter(double(swatches), benchmark::Counter::kIsIterationInvariantRate);
}

struct PlainColor {
    char16_t name[32];
    char code[7];
    std::uint8_t components[4];
};

// The bare work: the same fields walked, names swapped, into a plain array.
void WalkColorBook(const Bytes& file, std::vector<PlainColor>& colors) {
    Bytes bytes = file;  // the reader, too, takes its own copy of the file
    std::uint8_t* p = bytes.data() + 8;
    for (int text = 0; text < 4; ++text) p += 4 + 2 * formats::LoadU32(p);
    const int count = formats::LoadU16(p);
    p += 8;
    for (int i = 0; i < count; ++i) {
        const std::uint32_t units = formats::LoadU32(p);
        p += 4;
        formats::SwapUtf16InPlace(p, units);
        std::memcpy(colors[std::size_t(i)].name, p, std::min<std::size_t>(units, 31) * 2);
        p += 2 * units;
        std::memcpy(colors[std::size_t(i)].code, p, 6);
        for (int c = 0; c < 4; ++c) colors[std::size_t(i)].components[c] = std::uint8_t(255 - p[6 + c]);
        p += 10;
    }
    benchmark::DoNotOptimize(colors.data());
    benchmark::ClobberMemory();
}

void BM_ReadColorBook(benchmark::State& state) {
    auto stream = MemoryStream::Reading(LargeColorBook());
    ReferenceBook book;
    std::vector<PlainColor> colors(kLargeColorBookColors);
    {
        PairedTiming timing(state);
        for (auto _ : state) {
            timing.Iteration(
                [&] {
                    stream.Rewind();
                    if (formats::ReadColorBook(stream, book, formats::kColorBookWithCodes) != 0) {
                        state.SkipWithError("read failed");
                    }
                    benchmark::DoNotOptimize(book.CountSwatches());
                },
                [&] { WalkColorBook(LargeColorBook(), colors); });
        }
    }
    ReportRates(state, LargeColorBook().size(), kLargeColorBookColors);
}

struct PlainEntry {
    char16_t name[32];
    std::uint8_t model[4];
    float tint;
    float values[4];
    std::uint16_t colorType;
};

// The bare work: the same blocks walked, names swapped, into a plain array.
void WalkExchange(const Bytes& file, std::vector<PlainEntry>& entries) {
    Bytes bytes = file;
    const std::uint32_t blocks = formats::LoadU32(bytes.data() + 8);
    std::size_t at = 12;
    std::size_t swatches = 0;
    for (std::uint32_t b = 0; b < blocks; ++b) {
        const std::uint16_t type = formats::LoadU16(&bytes[at]);
        const std::uint32_t length = formats::LoadU32(&bytes[at + 2]);
        std::uint8_t* p = &bytes[at + 6];
        if (type == 1 || type == 2) {
            PlainEntry& entry = entries[swatches++];
            entry.tint = type == 2 ? formats::LoadFloat(p) : 0.0f;
            p += type == 2 ? 4 : 0;
            const std::size_t units = formats::LoadU16(p);
            formats::SwapUtf16InPlace(p + 2, units);
            std::memcpy(entry.name, p + 2, std::min<std::size_t>(units, 32) * 2);
            p += 2 + 2 * units;
            std::memcpy(entry.model, p, 4);
            const int channels = entry.model[0] == 'C' ? 4 : entry.model[0] == 'G' ? 1 : 3;
            for (int c = 0; c < channels; ++c) entry.values[c] = formats::LoadFloat(p + 4 + 4 * c);
            entry.colorType = formats::LoadU16(p + 4 + 4 * channels);
        }
        at += 6 + length;
    }
    benchmark::DoNotOptimize(entries.data());
    benchmark::ClobberMemory();
}

void BM_ReadSwatchExchange(benchmark::State& state) {
    auto stream = MemoryStream::Reading(ExchangeFile());
    ReferenceBook book;
    std::vector<PlainEntry> entries(kExchangeBlocks);
    {
        PairedTiming timing(state);
        for (auto _ : state) {
            timing.Iteration(
                [&] {
                    stream.Rewind();
                    if (formats::ReadSwatchExchange(stream, book, 0) != 0) state.SkipWithError("read failed");
                    benchmark::DoNotOptimize(book.CountSwatches());
                },
                [&] { WalkExchange(ExchangeFile(), entries); });
        }
    }
    ReportRates(state, ExchangeFile().size(), book.CountSwatches());
}

BENCHMARK(BM_ReadColorBook)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadSwatchExchange)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
