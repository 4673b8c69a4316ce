// Each faster path of the model beside the plain path it stands for, on the
// same bytes (layout in inputs/FastPathInput.h): the conversions of the
// input's colour values in every colour space and pair of encodings, the
// reader filling a reference book directly beside the same reader filling
// one it knows only by its interface, then the look-ups in that book. Any difference is
// printed and aborts the run.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "fuzz/inputs/FastPathInput.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/FastPathChecks.h"
#include "tests/support/MemoryStream.h"

namespace {

using fuzzinputs::BookFormat;

// A look-up check of one swatch searches the book up to 168 times (14 names,
// 3 BookIDs, 4 flag pairs), of one format 5 times, each plain search reading
// up to every entry through the interface. So that each input takes well
// under a second, a book of n entries has only as many entries checked as
// keep searches × n × checked within kEntryReads, spread evenly from the last
// one back: every swatch of a book of up to 79, one of a book of 6,000, none
// of a larger one (whose conversions and formats are still checked).
constexpr std::int64_t kEntryReads = std::int64_t(1) << 20;
constexpr std::int64_t kSwatchSearches = 168;
constexpr std::int64_t kFormatSearches = 5;

void FailOn(const std::string& difference) {
    if (difference.empty()) return;
    std::fprintf(stderr, "fast and plain paths differ: %s\n", difference.c_str());
    std::abort();
}

std::int32_t ReadBook(BookFormat format, OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags) {
    switch (format) {
        case BookFormat::kColorBook: return formats::ReadColorBook(stream, book, flags);
        case BookFormat::kExchange: return formats::ReadSwatchExchange(stream, book, flags);
        case BookFormat::kXml: break;
    }
    return formats::ReadXmlSwatchbook(stream, book, flags);
}

// Calls check(i) for the entries of 0..count-1 the budget allows.
template <typename Check>
void ForEntriesWithinBudget(std::int32_t count, std::int64_t searches, Check check) {
    if (count <= 0) return;
    const std::int64_t checked = std::min<std::int64_t>(count, kEntryReads / (searches * count));
    if (checked == 0) return;
    const std::int64_t step = count / checked;
    for (std::int64_t i = count - 1, n = 0; n < checked; i -= step, ++n) check(std::int32_t(i));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzinputs::FastPathInput input = fuzzinputs::DecodeFastPathInput(data, size);
    FailOn(testsupport::AnyConversionDifference(input.values));

    FailOn(testsupport::FilledBookDifference([&](OrvikSwatchbook& book) {
        auto stream = testsupport::MemoryStream::Reading(input.file);
        return ReadBook(input.format, stream, book, input.flags);
    }));

    auto stream = testsupport::MemoryStream::Reading(std::move(input.file));
    ReferenceBook book;
    ReadBook(input.format, stream, book, input.flags);
    ForEntriesWithinBudget(book.CountSwatches(), kSwatchSearches,
                           [&](std::int32_t swatch) { FailOn(testsupport::SwatchLookupDifference(book, swatch)); });
    ForEntriesWithinBudget(book.CountFormats(), kFormatSearches,
                           [&](std::int32_t format) { FailOn(testsupport::FormatLookupDifference(book, format)); });
    return 0;
}
