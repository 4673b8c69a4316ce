// Runs in a program whose operator new can be told to fail.
#include <gtest/gtest.h>

#include "formats/exchange/SwatchExchangeWriter.h"
#include "tests/support/FailingNew.h"
#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"

namespace formats {
namespace {

TEST(SwatchExchangeWriterAllocationTest, NoMemoryForANameCopyFailsTheWrite) {
    CompleteBook book;
    const std::int32_t format = book.AddFormat();
    book.SetFormatEncoding(format, swatchbook::kFloatEncoding);
    book.SetFormatColorSpace(format, swatchbook::kGraySpace);
    const std::int32_t swatch = book.AddSwatch(-1);
    book.SetSwatchName(swatch, u"Ash");  // short enough to need no allocation of its own
    book.SetSwatchKind(swatch, swatchbook::kGlobalKind);
    const double gray = 0.5;
    book.SetSwatchValuesFloat(swatch, format, &gray);
    auto stream = testsupport::MemoryStream::Writing();
    stream.Reserve(4096);
    std::int32_t result;
    {
        testsupport::AllocationFailureScope noMemory(0);
        result = WriteSwatchExchange(stream, book);
    }
    EXPECT_EQ(result, 0);
    // The header and the block's type and length went out before the name.
    EXPECT_EQ(stream.Bytes().size(), 12u + 6u + 2u);
}

}  // namespace
}  // namespace formats
