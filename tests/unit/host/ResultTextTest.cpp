#include <kelvra/ResultText.h>

#include <gtest/gtest.h>

namespace {

TEST(ResultTextTest, SuccessIsZero) { EXPECT_EQ(kelvra::ResultText(0), "0"); }

TEST(ResultTextTest, PrintableCodesAreFourCharacters) {
    EXPECT_EQ(kelvra::ResultText(0x5041524D), "PARM");
    EXPECT_EQ(kelvra::ResultText(0x70466C73), "pFls");
    EXPECT_EQ(kelvra::ResultText(0x53214664), "S!Fd");
    EXPECT_EQ(kelvra::ResultText(ZP_FOURCC('D', 'O', 'C', '?')), "DOC?");
}

TEST(ResultTextTest, OtherCodesAreDecimal) {
    EXPECT_EQ(kelvra::ResultText(2139), "2139");
    EXPECT_EQ(kelvra::ResultText(361), "361");
    EXPECT_EQ(kelvra::ResultText(0x41424300), "1094861568");  // last byte not printable
    EXPECT_EQ(kelvra::ResultText(0xFFFFFFFF), "4294967295");
}

}  // namespace
