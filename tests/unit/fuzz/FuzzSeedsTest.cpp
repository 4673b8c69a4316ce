// The seeds are there to start fuzzing past the sizes at which the readers
// read in another piece: 65,536-byte chunks of the whole-file read, the
// XML reader's 256,000-byte pieces. These tests hold the large seeds to
// those sizes, to files the readers read through, and every seed to the
// -max_len the fuzz commands pass.
#include "fuzz/inputs/FuzzSeeds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "formats/ReaderResult.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "fuzz/inputs/FastPathInput.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/MemoryStream.h"

namespace {

using fuzzinputs::Seed;
using testsupport::Bytes;

constexpr std::size_t kChunk = 65536;
constexpr std::size_t kPiece = 256000;

const Bytes& SeedBytes(const std::vector<Seed>& seeds, std::string_view name) {
    const auto found = std::find_if(seeds.begin(), seeds.end(), [&](const Seed& seed) { return seed.name == name; });
    if (found == seeds.end()) throw std::runtime_error("no seed " + std::string(name));
    return found->bytes;
}

// Where the content ends: the padding behind it is zeros.
std::size_t ContentEnd(const Bytes& bytes) {
    const auto last = std::find_if(bytes.rbegin(), bytes.rend(), [](std::uint8_t byte) { return byte != 0; });
    return std::size_t(bytes.rend() - last);
}

std::int32_t ReadColorBook(const Bytes& bytes, ReferenceBook& book) {
    auto stream = testsupport::MemoryStream::Reading(bytes);
    return formats::ReadColorBook(stream, book, 0);
}

std::int32_t ReadExchange(const Bytes& bytes, OrvikSwatchbook& book) {
    auto stream = testsupport::MemoryStream::Reading(bytes);
    return formats::ReadSwatchExchange(stream, book, 0);
}

std::int32_t ReadXml(const Bytes& bytes, ReferenceBook& book) {
    auto stream = testsupport::MemoryStream::Reading(bytes);
    return formats::ReadXmlSwatchbook(stream, book, 0);
}

struct LargeSeed {
    std::string name;
    std::size_t size;
    std::size_t contentPast;  // the entries run on past this many bytes
};

// The large seeds of a reader of whole files, with the file name extension.
std::vector<LargeSeed> WholeFileSeeds(const std::string& extension) {
    return {{"past-one-chunk" + extension, 69632, kChunk},
            {"two-chunks" + extension, 2 * kChunk, kChunk},
            {"past-two-chunks" + extension, 180224, 2 * kChunk}};
}

// The seed of `large`, of its size; its content (what is not zeros behind
// it) runs past `large.contentPast`.
const Bytes& CheckedLargeSeed(const std::vector<Seed>& seeds, const LargeSeed& large) {
    const Bytes& bytes = SeedBytes(seeds, large.name);
    EXPECT_EQ(bytes.size(), large.size);
    EXPECT_GT(ContentEnd(bytes), large.contentPast);
    return bytes;
}

TEST(FuzzSeedsTest, ColorBooksRunPastOneAndTwoChunksAndReadWhole) {
    const std::vector<Seed> seeds = fuzzinputs::ColorBookSeeds();
    for (const LargeSeed& large : WholeFileSeeds(".ocb")) {
        SCOPED_TRACE(large.name);
        ReferenceBook book;
        EXPECT_EQ(ReadColorBook(CheckedLargeSeed(seeds, large), book), formats::kReadOK);
        // Some 35 bytes a colour, less the gaps.
        EXPECT_GT(std::size_t(book.CountSwatches()) * 36, large.contentPast);
        EXPECT_EQ(book.GetSwatchName(0, true), u"ORV Shade 00000 U");
    }
}

TEST(FuzzSeedsTest, ExchangeFilesRunPastOneAndTwoChunksAndReadWhole) {
    const std::vector<Seed> seeds = fuzzinputs::ExchangeSeeds();
    for (const LargeSeed& large : WholeFileSeeds(".ose")) {
        SCOPED_TRACE(large.name);
        CompleteBook book;
        EXPECT_EQ(ReadExchange(CheckedLargeSeed(seeds, large), book), formats::kReadOK);
        // Some 54 bytes a colour with its share of the groups.
        EXPECT_GT(std::size_t(book.CountSwatches()) * 60, large.contentPast);
        EXPECT_GT(book.CountGroups(nullptr), 20);
    }
}

TEST(FuzzSeedsTest, XmlBooksHaveASwatchAcrossEachPieceBoundaryAndReadWhole) {
    const std::vector<Seed> seeds = fuzzinputs::XmlSeeds();
    for (const LargeSeed& large : {LargeSeed{"past-one-piece.xml", 288000, kPiece},
                                   LargeSeed{"two-pieces.xml", 2 * kPiece, kPiece},
                                   LargeSeed{"past-two-pieces.xml", 544000, 2 * kPiece}}) {
        SCOPED_TRACE(large.name);
        const Bytes& bytes = CheckedLargeSeed(seeds, large);
        const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        for (std::size_t boundary = kPiece; boundary <= large.contentPast; boundary += kPiece) {
            // The boundary lies inside a colour's values, not between swatches.
            const std::size_t opened = text.rfind("<C F=\"lab\">", boundary);
            const std::size_t valuesAt = opened + std::string_view("<C F=\"lab\">").size();
            EXPECT_LT(valuesAt, boundary) << boundary;
            EXPECT_GT(text.find("</C>", opened), boundary) << boundary;
        }
        ReferenceBook book;
        EXPECT_EQ(ReadXml(bytes, book), formats::kReadOK);
        // Some 130 bytes a swatch.
        EXPECT_GT(std::size_t(book.CountSwatches()) * 140, large.contentPast);
        EXPECT_EQ(book.GetSwatchName(0, true), u"ORV Shade 00000 U");
    }
}

TEST(FuzzSeedsTest, AnXmlBookHasAColourTextLongerThanAChunk) {
    const std::vector<Seed> seeds = fuzzinputs::XmlSeeds();
    const Bytes& bytes = SeedBytes(seeds, "long-color-text.xml");
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::size_t opened = text.find("<C F=\"lab\">");
    ASSERT_NE(opened, std::string_view::npos);
    EXPECT_GT(text.find("</C>", opened) - opened, kChunk);
    ReferenceBook book;
    EXPECT_EQ(ReadXml(bytes, book), formats::kReadOK);
    EXPECT_EQ(book.CountSwatches(), 1);
}

TEST(FuzzSeedsTest, FastPathSeedsAreTheReadersSmallSeedsForTheirReader) {
    const std::vector<Seed> seeds = fuzzinputs::FastPathSeeds();
    const struct {
        const char* stem;
        fuzzinputs::BookFormat format;
        std::vector<Seed> files;
    } readers[] = {
        {"colorbook", fuzzinputs::BookFormat::kColorBook, fuzzinputs::ColorBookSeeds()},
        {"exchange", fuzzinputs::BookFormat::kExchange, fuzzinputs::ExchangeSeeds()},
        {"xml", fuzzinputs::BookFormat::kXml, fuzzinputs::XmlSeeds()},
    };
    std::size_t small = 0;
    for (const auto& reader : readers) {
        for (const Seed& file : reader.files) {
            if (file.bytes.size() > 4096) continue;
            const std::string name = std::string(reader.stem) + "-" + file.name;
            SCOPED_TRACE(name);
            const Bytes& bytes = SeedBytes(seeds, name);
            const fuzzinputs::FastPathInput input = fuzzinputs::DecodeFastPathInput(bytes.data(), bytes.size());
            EXPECT_EQ(input.format, reader.format);
            EXPECT_EQ(input.file, file.bytes);
            ++small;
        }
    }
    EXPECT_EQ(seeds.size(), small);
    EXPECT_GE(small, 10u);
}

TEST(FuzzSeedsTest, EverySeedFitsInTheFuzzersMaximumLength) {
    std::size_t largest = 0;
    for (const fuzzinputs::Corpus& corpus : fuzzinputs::AllCorpora()) {
        EXPECT_FALSE(corpus.seeds.empty()) << corpus.target;
        for (const Seed& seed : corpus.seeds) largest = std::max(largest, seed.bytes.size());
    }
    EXPECT_LE(largest, fuzzinputs::kFuzzMaxLen);
    EXPECT_GT(largest, 2 * kPiece);
}

}  // namespace
