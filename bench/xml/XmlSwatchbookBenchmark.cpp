// Reading an XML swatchbook of 10,000 swatches from memory into a
// ReferenceBook, beside the parser alone going through the same bytes in the
// same pieces with handlers that do nothing.
#include <benchmark/benchmark.h>
#include <expat.h>

#include <algorithm>
#include <string>

#include "bench/PairedTiming.h"
#include "formats/ReaderResult.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/NumberedXmlSwatchbook.h"

namespace {

constexpr int kSwatches = 10000;

const std::string& Document() {
    static const std::string document = testsupport::NumberedXmlSwatchbook(kSwatches);
    return document;
}

void XMLCALL IgnoreStart(void*, const XML_Char*, const XML_Char**) {}
void XMLCALL IgnoreEnd(void*, const XML_Char*) {}
void XMLCALL IgnoreText(void*, const XML_Char*, int) {}

// The parser alone, fed like the reader feeds it.
bool ParseWithEmptyHandlers(const std::string& document) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(parser, IgnoreStart, IgnoreEnd);
    XML_SetCharacterDataHandler(parser, IgnoreText);
    bool accepted = true;
    for (std::size_t at = 0; accepted; at += formats::kXmlFeedChunkSize) {
        const std::size_t piece = std::min<std::size_t>(formats::kXmlFeedChunkSize, document.size() - at);
        const bool last = piece < std::size_t(formats::kXmlFeedChunkSize);
        accepted = XML_Parse(parser, document.data() + at, int(piece), last) == XML_STATUS_OK;
        if (last) break;
    }
    XML_ParserFree(parser);
    return accepted;
}

void BM_ReadXmlSwatchbook(benchmark::State& state) {
    const std::string& document = Document();
    auto stream = testsupport::MemoryStream::Reading({document.begin(), document.end()});
    ReferenceBook book;
    bool allRead = true;
    {
        PairedTiming timing(state);
        for (auto _ : state) {
            stream.Rewind();
            timing.Iteration(
                [&] { allRead = formats::ReadXmlSwatchbook(stream, book, 0) == formats::kReadOK && allRead; },
                [&] { allRead = ParseWithEmptyHandlers(document) && allRead; });
        }
    }
    if (!allRead || book.CountSwatches() != kSwatches) state.SkipWithError("the document was not read whole");
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(document.size()));
    state.counters["swatches/s"] =
        benchmark::Counter(double(kSwatches), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["document_KB"] = double(document.size()) / 1000.0;
}
BENCHMARK(BM_ReadXmlSwatchbook)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
