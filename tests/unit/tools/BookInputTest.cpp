#include "BookInput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using testing::ElementsAre;
using tool::DetectInputFormat;
using tool::InputFormat;

class BookInputTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& text) { return folder_.Write(name, text); }
    std::string Write(const std::string& name, const testsupport::Bytes& bytes) { return folder_.Write(name, bytes); }

    testsupport::TemporaryFolder folder_;
};

TEST_F(BookInputTest, TellsTheFormatsApart) {
    const auto colorBook = testsupport::BuildColorBook(testsupport::SampleColorBook());
    EXPECT_EQ(DetectInputFormat(Write("a.OCB", "anything")), InputFormat::kColorBook);
    EXPECT_EQ(DetectInputFormat(Write("a.ose", "anything")), InputFormat::kSwatchExchange);
    EXPECT_EQ(DetectInputFormat(Write("a.xml", "1 2 3 x")), InputFormat::kXmlSwatchbook);
    EXPECT_EQ(DetectInputFormat(Write("book", colorBook)), InputFormat::kColorBook);
    EXPECT_EQ(DetectInputFormat(Write("file.dat", testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange()))),
              InputFormat::kSwatchExchange);
    EXPECT_EQ(DetectInputFormat(Write("p.txt", "GIMP Palette\n1 2 3 x\n")), InputFormat::kHeadedPalette);
    EXPECT_EQ(DetectInputFormat(Write("b.txt", "\n  <OrvikSwatchbook/>")), InputFormat::kXmlSwatchbook);
    EXPECT_EQ(DetectInputFormat(Write("l.txt", "#fff white\n")), InputFormat::kColorList);
    EXPECT_EQ(DetectInputFormat(Write("empty", "")), InputFormat::kColorList);
    EXPECT_EQ(tool::InputFormatFromName("palette"), InputFormat::kHeadedPalette);
    EXPECT_EQ(tool::InputFormatFromName("auto"), std::nullopt);
}

TEST_F(BookInputTest, APaletteBecomesAnRgbBookOfProcessSwatchesWithTheirLines) {
    CompleteBook book;
    const auto read = tool::ReadBookInput(Write("p.txt", "GIMP Palette\nName: Pier\n\n1 2 3 A\n4 5 6 B\n"),
                                          std::nullopt, book, 0);
    EXPECT_EQ(read.error, "");
    EXPECT_THAT(read.lines, ElementsAre(4, 5));
    EXPECT_EQ(book.GetTitle(), u"Pier");
    ASSERT_EQ(book.CountFormats(), 1);
    EXPECT_EQ(book.GetFormatColorSpace(0), swatchbook::kRGBSpace);
    EXPECT_EQ(book.GetFormatEncoding(0), swatchbook::kInt8Encoding);
    ASSERT_EQ(book.CountSwatches(), 2);
    EXPECT_EQ(book.GetSwatchKind(1), swatchbook::kProcessKind);
    EXPECT_EQ(book.GetSwatchName(1, false), u"B");
    EXPECT_THAT(book.Groups()[0].swatches[1].values[0].bytes, ElementsAre(4, 5, 6));
}

TEST_F(BookInputTest, AReaderFailureSaysWhatIsWrongWithTheFile) {
    CompleteBook book;
    const std::string junk = Write("junk.ocb", "JUNK and more");
    EXPECT_EQ(tool::ReadBookInput(junk, std::nullopt, book, 0).error, junk + ": does not begin as its format must");
    const std::string broken = Write("broken.xml", "<OrvikSwatchbook>");
    EXPECT_EQ(tool::ReadBookInput(broken, std::nullopt, book, 0).error, broken + ": is not a well-formed XML swatchbook");
    testsupport::SwatchExchangeDescription many;
    many.blockCount = 10001;
    const std::string big = Write("big.ose", testsupport::BuildSwatchExchange(many));
    EXPECT_EQ(tool::ReadBookInput(big, std::nullopt, book, 0).error, big + ": declares more than 10000 blocks");
    // A format given by name wins over the file's look.
    const std::string list = Write("list.xml", "1 2 3 x\n");
    EXPECT_EQ(tool::ReadBookInput(list, InputFormat::kColorList, book, 0).error, "");
}

}  // namespace
