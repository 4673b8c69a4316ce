// A document's swatches leave through a snapshot and the swatch exchange
// writer and come back into a fresh document through the reader: the same
// groups, names, colours, tints and custom colours, less what the exchange
// format cannot carry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <kelvra/DocumentJson.h>

#include "ImportTesting.h"
#include "tests/support/InProcessHost.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "swatchbook/KelvraSwatchBook.h"
#include "tests/support/MemoryStream.h"

namespace {

using import_testing::DescribeCustomColors;
using import_testing::DescribeSwatches;
using testing::ElementsAre;

class ExportRoundTripTest : public testsupport::InProcessHostTest {};

TEST_F(ExportRoundTripTest, AnExportedDocumentImportsIntoAFreshOneWithTheSameSwatches) {
    const kelvra::Document& source =
        host_.Documents().Add(kelvra::DocumentFromJson(nlohmann::json::parse(import_testing::kMixedSwatchesDocument)));

    testsupport::MemoryStream file = testsupport::MemoryStream::Writing();
    {
        KelvraSwatchBook book(source.SwatchList());
        book.LoadSnapshot();
        ASSERT_EQ(formats::WriteSwatchExchange(file, book), 1);
    }

    const kelvra::Document& fresh = host_.Documents().New("Fresh");
    {
        KelvraSwatchBook book(nullptr);
        testsupport::MemoryStream in = testsupport::MemoryStream::Reading(file.Bytes());
        ASSERT_EQ(formats::ReadSwatchExchange(in, book, 0), 0);
        book.FlushPendingSwatch();
    }
    // The pattern, the gradient, the swatch without colour and the
    // registration colour stay behind; a custom colour takes its swatch's name.
    EXPECT_THAT(DescribeSwatches(fresh),
                ElementsAre("[]", "Paper: gray 0.25", "Sky: rgb 0.25 0.5 1", "[Brand]", "Ink: cmyk 0.1 0.2 0.3 0.4",
                            "Gold: custom \"Gold\" tint 0.5", "Leaf: custom \"Leaf\" tint 0", "[Empty]"));
    EXPECT_THAT(DescribeCustomColors(fresh),
                ElementsAre("Gold: lab 80 5 60 spot book 0", "Leaf: rgb 0 0.5 0.25 global book 0"));
}

}  // namespace
