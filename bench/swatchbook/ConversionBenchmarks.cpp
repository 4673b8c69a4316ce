// ConvertColorValues once per swatch over 65,535 swatches, for three of its
// directions; the baseline copies the same source bytes swatch by swatch.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "BenchmarkBook.h"
#include "bench/PairedTiming.h"
#include "swatchbook/ColorValueConversion.h"
#include "swatchbook/SwatchbookCodes.h"

using namespace swatchbook;

namespace {

template <std::int32_t kSpace, std::int32_t kFrom, std::int32_t kTo>
void BM_ConvertPerSwatch(benchmark::State& state) {
    const std::size_t channels = static_cast<std::size_t>(DefaultChannelCount(kSpace));
    const std::size_t fromBytes = channels * static_cast<std::size_t>(BytesPerChannel(kFrom));
    const std::size_t toBytes = channels * static_cast<std::size_t>(BytesPerChannel(kTo));
    const std::size_t swatches = kBenchmarkSwatches;
    // Source values: the benchmark swatches' bytes, spread over each encoding.
    std::vector<std::uint8_t> source(swatches * fromBytes);
    for (std::size_t i = 0; i < source.size(); ++i) {
        source[i] = BenchmarkSwatches()[i / fromBytes].values[i % 4];
    }
    if (kFrom == kFloatEncoding) {
        for (std::size_t i = 0; i < source.size() / 8; ++i) {
            const double value = (source[i * 8] + source[i * 8 + 1]) / 510.0;
            std::memcpy(&source[i * 8], &value, sizeof value);
        }
    }
    std::vector<std::uint8_t> converted(swatches * toBytes);
    std::vector<std::uint8_t> copied(swatches * fromBytes);
    PairedTiming timing(state);
    for (auto _ : state) {
        bool ok = true;
        timing.Iteration(
            [&] {
                for (std::size_t i = 0; i < swatches; ++i) {
                    ok &= ConvertColorValues(kSpace, kFrom, &source[i * fromBytes], kTo, &converted[i * toBytes]);
                }
                benchmark::DoNotOptimize(converted.data());
                benchmark::ClobberMemory();
            },
            [&] {
                // One call per swatch, as the conversion is. The size is hidden
                // from the optimiser and every copy fenced, so the copies stay
                // calls and cannot be merged into one block move of the whole
                // array (which the optimiser did with the plain loop: a single
                // memcpy whose speed differed several times between machines).
                std::size_t bytes = fromBytes;
                benchmark::DoNotOptimize(bytes);
                benchmark::DoNotOptimize(copied.data());
                for (std::size_t i = 0; i < swatches; ++i) {
                    std::memcpy(&copied[i * fromBytes], &source[i * fromBytes], bytes);
                    benchmark::ClobberMemory();
                }
            });
        if (!ok) {
            state.SkipWithError("a conversion failed");
        }
    }
    state.SetItemsProcessed(state.iterations() * kBenchmarkSwatches);
}

BENCHMARK(BM_ConvertPerSwatch<kCMYKSpace, kInt8Encoding, kFloatEncoding>)
    ->Name("BM_ConvertPerSwatch/CMYK/Int8ToFloat")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ConvertPerSwatch<kRGBSpace, kFloatEncoding, kInt16Encoding>)
    ->Name("BM_ConvertPerSwatch/RGB/FloatToInt16")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ConvertPerSwatch<kLabSpace, kInt16Encoding, kInt8Encoding>)
    ->Name("BM_ConvertPerSwatch/Lab/Int16ToInt8")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
