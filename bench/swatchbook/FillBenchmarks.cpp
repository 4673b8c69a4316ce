// Filling a book of 65,535 swatches the way a reader does.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <vector>

#include "BenchmarkBook.h"
#include "bench/PairedTiming.h"

namespace {

// AddSwatch, SetSwatchName and SetSwatchValuesInt8 for every swatch of a new
// book, between BeginFill and EndFill. The baseline copies the same name and
// value bytes into a flat array that it, too, gets afresh in every iteration:
// a new book's storage is part of the work, and an array kept from one
// iteration to the next would leave the first touch of fresh pages to the
// work alone. Both are freed untimed.
void BM_FillBook(benchmark::State& state) {
    const std::vector<BenchmarkSwatch>& swatches = BenchmarkSwatches();
    constexpr std::size_t kRecordBytes = 64 + 4;
    PairedTiming timing(state);
    for (auto _ : state) {
        auto book = std::make_unique<ReferenceBook>();
        std::unique_ptr<std::uint8_t[]> flat;
        timing.Iteration([&] { FillBenchmarkBook(*book); },
                         [&] {
                             flat.reset(new std::uint8_t[swatches.size() * kRecordBytes]);
                             std::uint8_t* record = flat.get();
                             for (const BenchmarkSwatch& swatch : swatches) {
                                 std::memcpy(record, swatch.name.data(), swatch.name.size() * sizeof(char16_t));
                                 std::memcpy(record + 64, swatch.values, sizeof swatch.values);
                                 record += kRecordBytes;
                             }
                             benchmark::DoNotOptimize(flat.get());
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
