// Looking swatches up by full name in a book of 65,535 swatches.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "BenchmarkBook.h"
#include "bench/PairedTiming.h"

namespace {

constexpr std::size_t kLookups = 256;

// What every lookup benchmark needs: the filled book, the same names in a
// plain array, and the names to look for (full and bare).
struct LookupSetup {
    LookupSetup() {
        FillBenchmarkBook(book);
        for (const BenchmarkSwatch& swatch : BenchmarkSwatches()) {
            plainNames.push_back(swatch.name);
        }
        for (std::int32_t index : LookupOrder(kLookups)) {
            expected.push_back(index);
            bareNames.push_back(plainNames[static_cast<std::size_t>(index)]);
            fullNames.push_back(FullName(bareNames.back()));
        }
    }

    // Indices of plainNames sorted by name, equal names in index order.
    std::vector<std::int32_t> SortedIndices() const {
        std::vector<std::int32_t> sorted(plainNames.size());
        std::iota(sorted.begin(), sorted.end(), 0);
        std::sort(sorted.begin(), sorted.end(), [this](std::int32_t a, std::int32_t b) {
            const int order = plainNames[static_cast<std::size_t>(a)].compare(plainNames[static_cast<std::size_t>(b)]);
            return order < 0 || (order == 0 && a < b);
        });
        return sorted;
    }

    std::int32_t FindSorted(const std::vector<std::int32_t>& sorted, const std::u16string& name) const {
        const auto found = std::lower_bound(sorted.begin(), sorted.end(), name,
                                            [this](std::int32_t index, const std::u16string& key) {
                                                return plainNames[static_cast<std::size_t>(index)] < key;
                                            });
        return found != sorted.end() && plainNames[static_cast<std::size_t>(*found)] == name ? *found : -1;
    }

    ReferenceBook book;
    std::vector<std::u16string> plainNames;
    std::vector<std::int32_t> expected;
    std::vector<std::u16string> bareNames;
    std::vector<std::u16string> fullNames;
};

void CheckFound(benchmark::State& state, std::int32_t found, std::int32_t plain, std::int32_t expected) {
    if (found != expected || plain != expected) {
        state.SkipWithError("a lookup found the wrong swatch");
    }
}

// FindSwatch compares every name in turn; the baseline scans a plain array
// of the same names.
void BM_FindSwatch(benchmark::State& state) {
    const LookupSetup setup;
    PairedTiming timing(state);
    std::size_t next = 0;
    for (auto _ : state) {
        const std::size_t i = next++ % kLookups;
        std::int32_t found = -1;
        std::int32_t plain = -1;
        timing.Iteration(
            [&] { found = setup.book.FindSwatch(setup.fullNames[i], true, false); },
            [&] {
                const auto it = std::find(setup.plainNames.begin(), setup.plainNames.end(), setup.bareNames[i]);
                plain = static_cast<std::int32_t>(it - setup.plainNames.begin());
            });
        benchmark::DoNotOptimize(found);
        benchmark::DoNotOptimize(plain);
        CheckFound(state, found, plain, setup.expected[i]);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FindSwatch)->UseManualTime()->Unit(benchmark::kMicrosecond);

// The first FindSwatchIndex of a book sorts its names into the index; the
// baseline sorts the indices of a plain array of the same names and
// searches it once.
void BM_FindSwatchIndexFirstLookup(benchmark::State& state) {
    LookupSetup setup;
    PairedTiming timing(state);
    std::size_t next = 0;
    for (auto _ : state) {
        const std::size_t i = next++ % kLookups;
        // Renaming a swatch drops the index, so the lookup builds it anew.
        setup.book.SetSwatchName(0, setup.plainNames[0]);
        std::int32_t found = -1;
        std::int32_t plain = -1;
        timing.Iteration([&] { found = setup.book.FindSwatchIndex(setup.fullNames[i]); },
                         [&] { plain = setup.FindSorted(setup.SortedIndices(), setup.bareNames[i]); });
        benchmark::DoNotOptimize(found);
        benchmark::DoNotOptimize(plain);
        CheckFound(state, found, plain, setup.expected[i]);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FindSwatchIndexFirstLookup)->UseManualTime()->Unit(benchmark::kMillisecond);

// Later lookups only search the index; the baseline searches a sorted plain
// array of the same names.
void BM_FindSwatchIndexSteady(benchmark::State& state) {
    const LookupSetup setup;
    const std::vector<std::int32_t> sorted = setup.SortedIndices();
    benchmark::DoNotOptimize(setup.book.FindSwatchIndex(setup.fullNames[0]));
    PairedTiming timing(state);
    std::size_t next = 0;
    for (auto _ : state) {
        const std::size_t i = next++ % kLookups;
        std::int32_t found = -1;
        std::int32_t plain = -1;
        timing.Iteration([&] { found = setup.book.FindSwatchIndex(setup.fullNames[i]); },
                         [&] { plain = setup.FindSorted(sorted, setup.bareNames[i]); });
        benchmark::DoNotOptimize(found);
        benchmark::DoNotOptimize(plain);
        CheckFound(state, found, plain, setup.expected[i]);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FindSwatchIndexSteady)->UseManualTime()->Unit(benchmark::kNanosecond);

}  // namespace
