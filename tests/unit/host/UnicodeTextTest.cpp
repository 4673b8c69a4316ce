#include "UnicodeText.h"

#include <gtest/gtest.h>

namespace {

TEST(UnicodeTextTest, ConvertsBetweenUtf8AndUtf16) {
    const std::string utf8 = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";  // A, e acute, euro, emoji
    const std::u16string utf16 = u"A\u00E9\u20AC\U0001F600";
    EXPECT_EQ(kelvra::Utf8ToUtf16(utf8), utf16);
    EXPECT_EQ(kelvra::Utf16ToUtf8(utf16), utf8);
}

TEST(UnicodeTextTest, BadUtf8BytesBecomeReplacementCharacters) {
    EXPECT_EQ(kelvra::Utf8ToUtf16("a\xFF" "b"), u"a\uFFFDb");
    EXPECT_EQ(kelvra::Utf8ToUtf16("\xE2\x82"), u"\uFFFD\uFFFD");      // cut short
    EXPECT_EQ(kelvra::Utf8ToUtf16("\xC0\xAF"), u"\uFFFD\uFFFD");      // overlong
    EXPECT_EQ(kelvra::Utf8ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");  // encoded surrogate
}

TEST(UnicodeTextTest, TextAfterAnAsciiStartIsConvertedToo) {
    EXPECT_EQ(kelvra::Utf16ToUtf8(u"Colour 12"), "Colour 12");
    EXPECT_EQ(kelvra::Utf16ToUtf8(u"Gr\u00FCn 2"), "Gr\xC3\xBCn 2");
    EXPECT_EQ(kelvra::Utf16ToUtf8(u"\u00FC"), "\xC3\xBC");
    EXPECT_EQ(kelvra::Utf16ToUtf8(u"\x7F\x80"), "\x7F\xC2\x80");
    EXPECT_EQ(kelvra::Utf16ToUtf8(u""), "");
    // Longer than a string holds in itself.
    EXPECT_EQ(kelvra::Utf16ToUtf8(u"A name of well over sixteen characters \u20AC"),
              "A name of well over sixteen characters \xE2\x82\xAC");
}

TEST(UnicodeTextTest, LoneSurrogatesBecomeReplacementCharacters) {
    const std::u16string lone = {u'x', char16_t(0xD800), u'y', char16_t(0xDC00)};
    EXPECT_EQ(kelvra::Utf16ToUtf8(lone), "x\xEF\xBF\xBDy\xEF\xBF\xBD");
}

TEST(UnicodeTextTest, ALocalisationKeyStandsForTheTextAfterItsFirstEquals) {
    EXPECT_EQ(kelvra::ResolveLocalisationKey("$$$/Libraries/Str/UserLib=User Defined"), "User Defined");
    EXPECT_EQ(kelvra::ResolveLocalisationKey("$$$/A/B=x=y"), "x=y");
    EXPECT_EQ(kelvra::ResolveLocalisationKey("$$$/A/B="), "");
}

TEST(UnicodeTextTest, AKeyWithoutEqualsStandsForItself) {
    EXPECT_EQ(kelvra::ResolveLocalisationKey("$$$/Kelvra/app/RAMError/OnClickURL"),
              "$$$/Kelvra/app/RAMError/OnClickURL");
}

TEST(UnicodeTextTest, OtherTextsAreNoKeys) {
    EXPECT_FALSE(kelvra::IsLocalisationKey("$$$Nope=x"));
    EXPECT_FALSE(kelvra::IsLocalisationKey(" $$$/A=b"));
    EXPECT_EQ(kelvra::ResolveLocalisationKey("plain=text"), "plain=text");
    EXPECT_TRUE(kelvra::IsLocalisationKey("$$$/"));
}

}  // namespace
