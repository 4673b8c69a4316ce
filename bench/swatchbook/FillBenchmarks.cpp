// Filling a book of 65,535 swatches the way a reader does.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <vector>

#include "BenchmarkBook.h"
#include "bench/PairedTiming.h"

namespace {

// AddSwatch, SetSwatchName and SetSwatchValuesInt8 for every swatch, between
// BeginFill and EndFill; the baseline copies the same name and value bytes
// into a flat array that is already there.
void BM_FillBook(benchmark::State& state) {
    const std::vector<BenchmarkSwatch>& swatches = BenchmarkSwatches();
    constexpr std::size_t kRecordBytes = 64 + 4;
    std::vector<std::uint8_t> flat(swatches.size() * kRecordBytes);
    PairedTiming timing(state);
    for (auto _ : state) {
        auto book = std::make_unique<ReferenceBook>();
        timing.Iteration([&] { FillBenchmarkBook(*book); },
                         [&] {
                             std::uint8_t* record = flat.data();
                             for (const BenchmarkSwatch& swatch : swatches) {
                                 std::memcpy(record, swatch.name.data(), swatch.name.size() * sizeof(char16_t));
                                 std::memcpy(record + 64, swatch.values, sizeof swatch.values);
                                 record += kRecordBytes;
                             }
                             benchmark::DoNotOptimize(flat.data());
                             benchmark::ClobberMemory();
                         });
        if (book->CountSwatches() != kBenchmarkSwatches) {
            state.SkipWithError("the book was not filled");
        }
    }
    state.SetItemsProcessed(state.iterations() * kBenchmarkSwatches);
}
BENCHMARK(BM_FillBook)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
