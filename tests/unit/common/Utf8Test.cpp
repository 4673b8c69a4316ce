#include "text/Utf8.h"

#include <gtest/gtest.h>

namespace {

using kv::Utf16ToUtf8;
using kv::Utf8ToUtf16;

TEST(Utf8ToUtf16, KeepsAsciiAsItIs) { EXPECT_EQ(Utf8ToUtf16("Red 032"), u"Red 032"); }

TEST(Utf8ToUtf16, EmptyGivesEmpty) { EXPECT_EQ(Utf8ToUtf16(""), u""); }

TEST(Utf8ToUtf16, IntoReusedStorageGivesExactlyTheNewText) {
    std::u16string text = u"a text longer than any of the next";
    kv::Utf8ToUtf16("Red", text);
    EXPECT_EQ(text, u"Red");
    // An ASCII run, then a sequence to decode, then ASCII again.
    kv::Utf8ToUtf16("Gr\xC3\xBCn 5", text);
    EXPECT_EQ(text, u"Gr\u00FCn 5");
    kv::Utf8ToUtf16("\xE2\x82\xAC", text);
    EXPECT_EQ(text, u"\u20AC");
    kv::Utf8ToUtf16("", text);
    EXPECT_EQ(text, u"");
}

TEST(Utf8ToUtf16, DecodesTwoAndThreeByteSequences) {
    EXPECT_EQ(Utf8ToUtf16("\xC3\xA9t\xC3\xA9"), u"\u00E9t\u00E9");
    EXPECT_EQ(Utf8ToUtf16("\xE2\x82\xAC"), u"\u20AC");
    EXPECT_EQ(Utf8ToUtf16("\xEF\xBF\xBF"), u"\uFFFF");
}

TEST(Utf8ToUtf16, WritesCharactersBeyondThePlaneAsSurrogatePairs) {
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x8E\xA8"), std::u16string({char16_t(0xD83C), char16_t(0xDFA8)}));
    EXPECT_EQ(Utf8ToUtf16("\xF4\x8F\xBF\xBF"), std::u16string({char16_t(0xDBFF), char16_t(0xDFFF)}));
}

TEST(Utf8ToUtf16, ReplacesEachInvalidByte) {
    EXPECT_EQ(Utf8ToUtf16("a\xFF" "b"), u"a\uFFFDb");
    EXPECT_EQ(Utf8ToUtf16("\x80"), u"\uFFFD");
    // A lead byte whose continuation is missing or cut off at the end.
    EXPECT_EQ(Utf8ToUtf16("\xC3" "A"), u"\uFFFDA");
    EXPECT_EQ(Utf8ToUtf16("\xE2\x82"), u"\uFFFD\uFFFD");
}

TEST(Utf8ToUtf16, RejectsOverlongFormsSurrogatesAndValuesBeyondTheRange) {
    EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xE0\x80\xAF"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Utf8ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Utf16ToUtf8, EncodesOneToFourBytes) {
    EXPECT_EQ(Utf16ToUtf8(u"Red 032"), "Red 032");
    EXPECT_EQ(Utf16ToUtf8(u"\u00E9t\u00E9"), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(Utf16ToUtf8(u"\u20AC"), "\xE2\x82\xAC");
    EXPECT_EQ(Utf16ToUtf8(std::u16string({char16_t(0xD83C), char16_t(0xDFA8)})), "\xF0\x9F\x8E\xA8");
    EXPECT_EQ(Utf16ToUtf8(u""), "");
}

TEST(Utf16ToUtf8, ReplacesLoneSurrogates) {
    EXPECT_EQ(Utf16ToUtf8(std::u16string({u'a', char16_t(0xD83C), u'b'})), "a\xEF\xBF\xBD" "b");
    EXPECT_EQ(Utf16ToUtf8(std::u16string({char16_t(0xDFA8), char16_t(0xD83C)})), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(Utf16ToUtf8(std::u16string({char16_t(0xD83C), char16_t(0xD83C), char16_t(0xDFA8)})),
              "\xEF\xBF\xBD\xF0\x9F\x8E\xA8");
}

TEST(Utf16ToUtf8, RoundTripsWithUtf8ToUtf16) {
    const std::u16string text = u"Gr\u00FCn \u20AC \U0001F3A8 \uFFFF";
    EXPECT_EQ(Utf8ToUtf16(Utf16ToUtf8(text)), text);
}

}  // namespace
