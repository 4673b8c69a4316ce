// Messages laid out as the host's dialogs show them.
#include <DialogText.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string Shown(std::string_view text, std::string_view indent = "> ") {
    std::ostringstream out;
    kelvra::cli::WriteDialogText(out, text, indent);
    return out.str();
}

TEST(DialogTextTest, QuoteMarksBecomeQuotationMarks) {
    EXPECT_EQ(Shown("The file ^Qodd.ose^Q contains unsupported swatch types.  Some swatches will not be imported."),
              "The file \u201Codd.ose\u201D contains unsupported swatch types.  Some swatches will not be imported.");
    // Opening and closing alternate across lines; a lone one opens.
    EXPECT_EQ(Shown("^Qa\nb^Q ^Qc"), "\u201Ca\n> b\u201D \u201Cc");
    EXPECT_EQ(Shown("a^b ^"), "a^b ^");
}

TEST(DialogTextTest, LineBreaksStartIndentedLinesAndBlanksAtTheirEndsAreNotSeen) {
    EXPECT_EQ(Shown("An unknown error occurred.\t\t\t\t\t\nClick MORE INFO and try some of the solutions."),
              "An unknown error occurred.\n> Click MORE INFO and try some of the solutions.");
    EXPECT_EQ(Shown("one\r\ntwo\rthree  \n\n"), "one\n> two\n> three");
    // An empty line is empty: no indent.
    EXPECT_EQ(Shown("one\n\nthree"), "one\n\n> three");
}

TEST(DialogTextTest, TabsMoveToTheNextStopOfEightColumns) {
    EXPECT_EQ(Shown("a\tb"), "a       b");
    EXPECT_EQ(Shown("abcdefgh\tx"), "abcdefgh        x");
    // A character takes one column however many bytes it has.
    EXPECT_EQ(Shown("\u00FC\tx"), "\u00FC       x");
    EXPECT_EQ(Shown("^Qa^Q\tx"), "\u201Ca\u201D     x");
}

}  // namespace
