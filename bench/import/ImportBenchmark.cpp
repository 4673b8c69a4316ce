// Importing a colour book of 65,535 colours into a host document: the real
// module answers "KV Go" in the emulated host, which gives every colour a
// swatch and a spot custom colour. The baseline reads the same file into a
// ReferenceBook through a plain file stream, so the ratio is what the host
// book, the data filter and the host's suites add to reading the file.
#include <benchmark/benchmark.h>

#include <kelvra/Host.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "bench/PairedTiming.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/streams/FileStream.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

constexpr int kColors = 65535;

// A file in the temporary folder, removed when the program ends.
struct TemporaryFile {
    std::filesystem::path path;
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
};

// A CMYK book of spot colours, written into the temporary folder.
std::filesystem::path WriteColorBook() {
    testsupport::ColorBookDescription book;
    book.title = testsupport::U16("Benchmark book");
    book.bookId = 3100;
    book.colorSpace = testsupport::kColorBookCMYK;
    for (int i = 0; i < kColors; ++i) {
        book.records.push_back({testsupport::U16("Colour " + std::to_string(i)), std::to_string(i),
                                {std::uint8_t(i), std::uint8_t(i >> 8), std::uint8_t(i * 3), 7}, {}});
    }
    book.trailer = testsupport::ColorBookTrailer("spot");
    const testsupport::Bytes bytes = testsupport::BuildColorBook(book);
    const std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("bench-import-" + std::to_string(getpid()) + ".ocb");
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                std::streamsize(bytes.size()));
    return path;
}

const std::filesystem::path& ColorBookFile() {
    static const TemporaryFile file{WriteColorBook()};
    return file.path;
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
        if (result != kZPNoErr || baselineResult != 0 || document.SwatchCount() != std::size_t(kColors)) {
            state.SkipWithError("the import or the baseline failed");
            break;
        }
        hostCalls = host.Faults().TotalCalls() - callsBefore;
        host.Documents().Close(document);
    }
    state.counters["swatches"] = kColors;
    state.counters["host_calls_per_swatch"] = double(hostCalls) / kColors;
    module.Shutdown();
}

BENCHMARK(BM_ImportColorBook)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
