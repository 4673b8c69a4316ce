// Runs in a program whose operator new can be told to fail: the reader
// answers or lets std::bad_alloc pass, never crashes or leaks, and a colour
// whose text could not be held is dropped rather than read in part.
#include "formats/xml/XmlSwatchbookReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>

#include "XmlReaderTesting.h"
#include "formats/ReaderResult.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/FailingNew.h"

namespace {

using testsupport::AllocationFailureScope;
using xmltesting::Book;
using xmltesting::Bytes;

TEST(ReadXmlSwatchbookAllocation, NoMemoryForThePiecesFailsBeforeReading) {
    ReferenceBook book;
    auto stream = testsupport::MemoryStream::Reading(Bytes(Book("")));
    std::int32_t result;
    {
        AllocationFailureScope noMemory(0);
        result = formats::ReadXmlSwatchbook(stream, book, 0);
    }
    EXPECT_EQ(result, formats::kReadStreamNotOpen);
    EXPECT_EQ(stream.ReadCalls(), 0u);
}

// A colour text longer than the text buffer's first block, so that it grows.
const std::string kDocument = Book(R"(<Formats><Format ColorSpace="RGB" Encoding="Float"/></Formats>)"
                                   "<Swatches><Pr><C>0.5 0.25 1" +
                                   std::string(100000, ' ') + "</C></Pr></Swatches>");

struct Outcome {
    bool threw = false;
    std::int32_t result = -1;
    std::size_t allocations = 0;
};

// Reads kDocument with the allocations after the first `allowed` failing.
Outcome ReadWithMemoryFor(std::size_t allowed, ReferenceBook& book) {
    auto stream = testsupport::MemoryStream::Reading(Bytes(kDocument));
    Outcome outcome;
    const std::size_t before = testsupport::AllocationCount();
    {
        AllocationFailureScope failing(allowed);
        try {
            outcome.result = formats::ReadXmlSwatchbook(stream, book, 0);
        } catch (const std::bad_alloc&) {
            outcome.threw = true;
        }
    }
    outcome.allocations = testsupport::AllocationCount() - before;
    return outcome;
}

// The colour of swatch 0 is either read whole or dropped whole; answers
// whether it was dropped.
bool ColorDropped(const ReferenceBook& book, std::size_t allowed) {
    const ReferenceSwatch& swatch = book.GetSwatchRecord(0);
    if (swatch.colorSpace == 0) {
        EXPECT_EQ(swatch.values[0], 0.0) << allowed;
        return true;
    }
    EXPECT_EQ(swatch.colorSpace, 4) << allowed;
    EXPECT_EQ(swatch.values[0], 0.5) << allowed;
    EXPECT_EQ(swatch.values[1], 0.25) << allowed;
    EXPECT_EQ(swatch.values[2], 1.0) << allowed;
    return false;
}

TEST(ReadXmlSwatchbookAllocation, EveryFailingAllocationEndsCleanly) {
    ReferenceBook unlimited;
    const std::size_t needed = ReadWithMemoryFor(SIZE_MAX, unlimited).allocations;
    ASSERT_GT(needed, 2u);

    bool droppedSeen = false;
    for (std::size_t allowed = 0; allowed < needed; ++allowed) {
        ReferenceBook book;
        const Outcome outcome = ReadWithMemoryFor(allowed, book);
        if (outcome.threw) continue;
        ASSERT_TRUE(outcome.result == formats::kReadOK || outcome.result == formats::kReadStreamNotOpen) << allowed;
        // With the format and the swatch made, only the colour's text can
        // have been lost.
        if (outcome.result == formats::kReadOK && book.CountSwatches() == 1 && book.CountFormats() == 1) {
            droppedSeen = ColorDropped(book, allowed) || droppedSeen;
        }
    }
    EXPECT_TRUE(droppedSeen);

    ReferenceBook book;
    ASSERT_EQ(ReadWithMemoryFor(needed, book).result, formats::kReadOK);
    EXPECT_FALSE(ColorDropped(book, needed));
}

}  // namespace
