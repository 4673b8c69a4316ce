// Importing a colour book of 65,535 colours into a host document: the real
// module answers "KV Go" in the emulated host, which gives every colour a
// swatch and a spot custom colour. The baseline reads the same file into a
// ReferenceBook through a plain file stream, so the ratio is what the host
// book, the data filter and the host's suites add to reading the file.
#include <benchmark/benchmark.h>

#include <kelvra/Host.h>

#include <filesystem>

#include "bench/LargeColorBook.h"
#include "bench/PairedTiming.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/TemporaryFolder.h"

namespace {

// The benchmark colour book as a file, removed when the program ends.
const std::filesystem::path& ColorBookFile() {
    static const testsupport::TemporaryFolder folder;
    static const std::filesystem::path file = folder.Write("book.ocb", LargeColorBook());
    return file;
}

void BM_ImportColorBook(benchmark::State& state) {
    const std::filesystem::path& file = ColorBookFile();
    kelvra::Host host;
    kelvra::Module& module = host.Load(TINTORA_MODULE);
    if (module.Startup() != kZPNoErr) {
        state.SkipWithError("the module did not start");
        return;
    }
    KVFileFormatHandle colorBook = nullptr;
    for (const kelvra::FileFormatRecord& format : host.FileFormats()) {
        if (format.name == "Orvik Color Book Reader") colorBook = format.handle;
    }

    std::uint64_t hostCalls = 0;
    PairedTiming timing(state);
    for (auto _ : state) {
        kelvra::Document& document = host.Documents().New("Import");
        ZPErr result = kZPNoErr;
        std::int32_t baselineResult = 0;
        const std::uint64_t callsBefore = host.Faults().TotalCalls();
        timing.Iteration(
            [&] { result = module.GoFileFormat({colorBook, kKVFileFormatImportOption, file, document.Handle()}); },
            [&] {
                formats::FileStream stream(file.c_str(), true);
                ReferenceBook book;
                baselineResult = formats::ReadColorBook(stream, book, 0);
                benchmark::DoNotOptimize(book.CountSwatches());
            });
        if (result != kZPNoErr || baselineResult != 0 || document.SwatchCount() != std::size_t(kLargeColorBookColors)) {
            state.SkipWithError("the import or the baseline failed");
            break;
        }
        hostCalls = host.Faults().TotalCalls() - callsBefore;
        host.Documents().Close(document);
    }
    state.counters["swatches"] = kLargeColorBookColors;
    state.counters["host_calls_per_swatch"] = double(hostCalls) / kLargeColorBookColors;
    module.Shutdown();
}

BENCHMARK(BM_ImportColorBook)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
