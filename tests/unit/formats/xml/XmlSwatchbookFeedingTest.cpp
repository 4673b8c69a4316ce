// How the reader hands a document to the parser: pieces of 256000 bytes, the
// first short piece final, nothing read after the parser failed.
#include "formats/xml/XmlSwatchbookReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "XmlReaderTesting.h"
#include "formats/ReaderResult.h"

namespace {

using namespace xmltesting;
using testing::_;

constexpr std::size_t kPiece = 256000;

// A document of exactly `size` bytes holding the swatches "first" and "last",
// padded with white space between them.
std::string DocumentOfSize(std::size_t size, bool closed = true) {
    const std::string head = R"(<OrvikSwatchbook><Swatches><Sp N="first"/>)";
    const std::string tail = closed ? R"(<Sp N="last"/></Swatches></OrvikSwatchbook>)" : R"(<Sp N="last"/>)";
    return head + std::string(size - head.size() - tail.size(), ' ') + tail;
}

struct Outcome {
    std::int32_t result;
    std::size_t reads;
};

Outcome ReadCounting(const std::string& document, OrvikSwatchbook& book) {
    auto stream = testsupport::MemoryStream::Reading(Bytes(document));
    const std::int32_t result = formats::ReadXmlSwatchbook(stream, book, 0);
    return {result, stream.ReadCalls()};
}

void ExpectFirstAndLast(CountingBook& book) {
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"first")));
    EXPECT_CALL(book, SetSwatchName(1, std::u16string(u"last")));
}

TEST(ReadXmlSwatchbookFeeding, ADocumentLargerThanAPieceIsFedInPiecesAndRead) {
    CountingBook book;
    ExpectFirstAndLast(book);
    const Outcome outcome = ReadCounting(DocumentOfSize(600000), book);
    EXPECT_EQ(outcome.result, formats::kReadOK);
    EXPECT_EQ(outcome.reads, 3u);  // 256000, 256000, then 88000 as the final piece
}

TEST(ReadXmlSwatchbookFeeding, ADocumentOfWholePiecesEndsWithAnEmptyFinalPiece) {
    for (const std::size_t pieces : {1u, 2u}) {
        CountingBook book;
        ExpectFirstAndLast(book);
        const Outcome outcome = ReadCounting(DocumentOfSize(pieces * kPiece), book);
        EXPECT_EQ(outcome.result, formats::kReadOK);
        EXPECT_EQ(outcome.reads, pieces + 1);
    }
}

TEST(ReadXmlSwatchbookFeeding, TheLastPieceIsMarkedFinalSoAnUnclosedDocumentFails) {
    for (const std::size_t size : {600000u, 512000u, 1000u}) {
        CountingBook book;
        ExpectFirstAndLast(book);
        EXPECT_CALL(book, EndFill());
        const Outcome outcome = ReadCounting(DocumentOfSize(size, false), book);
        EXPECT_EQ(outcome.result, formats::kReadXmlParseError) << size;
        EXPECT_EQ(outcome.reads, size / kPiece + 1) << size;
    }
}

TEST(ReadXmlSwatchbookFeeding, AnEmptyDocumentIsOneEmptyFinalPieceAndFails) {
    CountingBook book;
    EXPECT_CALL(book, BeginFill());
    EXPECT_CALL(book, EndFill());
    const Outcome outcome = ReadCounting("", book);
    EXPECT_EQ(outcome.result, formats::kReadXmlParseError);
    EXPECT_EQ(outcome.reads, 1u);
}

TEST(ReadXmlSwatchbookFeeding, NothingIsReadAfterTheFirstError) {
    CountingBook book;
    std::string document = DocumentOfSize(1000000);
    document.replace(100, 3, "<<<");
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"first")));
    EXPECT_CALL(book, EndFill());
    const Outcome outcome = ReadCounting(document, book);
    EXPECT_EQ(outcome.result, formats::kReadXmlParseError);
    EXPECT_EQ(outcome.reads, 1u);
}

TEST(ReadXmlSwatchbookFeeding, AnErrorInALaterPieceStopsThereAndKeepsTheSwatchesBefore) {
    CountingBook book;
    std::string document = DocumentOfSize(1000000);
    document.replace(300000, 3, "<<<");
    EXPECT_CALL(book, SetSwatchName(_, _)).Times(0);
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"first")));
    const Outcome outcome = ReadCounting(document, book);
    EXPECT_EQ(outcome.result, formats::kReadXmlParseError);
    EXPECT_EQ(outcome.reads, 2u);
}

TEST(ReadXmlSwatchbookFeeding, AnElementAcrossTwoPiecesReadsWhole) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(testing::Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(testing::Return(3));
    const std::string head = "<OrvikSwatchbook><Swatches>";
    const std::string swatch = R"(<Sp N="across the boundary"><C>0.125 0.25 0.5</C></Sp>)";
    // The boundary falls inside the name and, for the colour, inside its text.
    for (const std::size_t before : {10u, 40u}) {
        const std::string padding(kPiece - head.size() - before, ' ');
        const std::string document = head + padding + swatch + "</Swatches></OrvikSwatchbook>";
        EXPECT_CALL(book, SetSwatchName(_, std::u16string(u"across the boundary")));
        EXPECT_CALL(book, SetSwatchValuesNative(_, 0, HoldsDoubles(std::vector<double>{0.125, 0.25, 0.5})));
        EXPECT_EQ(ReadCounting(document, book).result, formats::kReadOK);
    }
}

}  // namespace
