#include "RecordingSwatchbook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "swatchbook/ReferenceBook.h"
#include "tests/support/MockSwatchbook.h"

namespace {

using testing::_;
using testing::Return;

class RecordingSwatchbookTest : public testing::Test {
protected:
    // Everything logged since the last call.
    std::string Logged() {
        std::string text = out_.str();
        out_.str("");
        return text;
    }

    // An RGB (3 channel) format 0 in the given encoding, and swatch 0.
    void AddRgbFormat(std::int32_t encoding) {
        inner_.AddFormat();
        inner_.SetFormatColorSpace(0, 4);
        inner_.SetFormatEncoding(0, encoding);
        inner_.AddSwatch(-1);
    }

    ReferenceBook inner_;
    std::ostringstream out_;
    tool::RecordingSwatchbook book_{inner_, out_};
};

TEST_F(RecordingSwatchbookTest, LogsSettersWithTheirArgumentsAndForwardsThem) {
    book_.SetVersion(3);
    book_.SetTitle(u"Pastels");
    book_.SetBookID(3005);
    EXPECT_EQ(Logged(),
              "{\"op\": \"SetVersion\", \"args\": [3]}\n"
              "{\"op\": \"SetTitle\", \"args\": [\"Pastels\"]}\n"
              "{\"op\": \"SetBookID\", \"args\": [3005]}\n");
    EXPECT_EQ(inner_.GetVersion(), 3);
    EXPECT_EQ(inner_.GetTitle(), u"Pastels");
    EXPECT_EQ(inner_.GetBookID(), 3005);
}

TEST_F(RecordingSwatchbookTest, LogsTheInnerBooksResult) {
    EXPECT_EQ(book_.AddFormat(), 0);
    EXPECT_TRUE(book_.SetFormatColorSpace(0, 5));
    EXPECT_FALSE(book_.SetFormatEncoding(0, 4));
    EXPECT_FALSE(book_.SetFormatChannels(0, 7));
    EXPECT_EQ(Logged(),
              "{\"op\": \"AddFormat\", \"args\": [], \"ret\": 0}\n"
              "{\"op\": \"SetFormatColorSpace\", \"args\": [0, 5], \"ret\": true}\n"
              "{\"op\": \"SetFormatEncoding\", \"args\": [0, 4], \"ret\": false}\n"
              "{\"op\": \"SetFormatChannels\", \"args\": [0, 7], \"ret\": false}\n");
    EXPECT_EQ(inner_.GetFormatChannels(0), 4);
}

TEST_F(RecordingSwatchbookTest, LogsGettersWithTheirArgumentsAndResults) {
    inner_.SetTitle(u"T\u00e9");
    inner_.AddFormat();
    inner_.SetFormatColorSpace(0, 3);
    EXPECT_EQ(book_.GetTitle(), u"T\u00e9");
    EXPECT_EQ(book_.GetFormatColorSpaceName(0, true), u"LAB");
    EXPECT_EQ(book_.GetFormatID(0, true), u"0");
    EXPECT_EQ(book_.FindFormat(u"0"), 0);
    EXPECT_EQ(book_.GetFormatChannels(9), 0);
    EXPECT_EQ(Logged(),
              "{\"op\": \"GetTitle\", \"args\": [], \"ret\": \"T\\u00e9\"}\n"
              "{\"op\": \"GetFormatColorSpaceName\", \"args\": [0, true], \"ret\": \"LAB\"}\n"
              "{\"op\": \"GetFormatID\", \"args\": [0, true], \"ret\": \"0\"}\n"
              "{\"op\": \"FindFormat\", \"args\": [\"0\"], \"ret\": 0}\n"
              "{\"op\": \"GetFormatChannels\", \"args\": [9], \"ret\": 0}\n");
}

TEST_F(RecordingSwatchbookTest, LeavesOutTheResultOfSetSwatchKind) {
    inner_.AddSwatch(-1);
    EXPECT_EQ(book_.SetSwatchKind(0, 2), 2);
    EXPECT_EQ(Logged(), "{\"op\": \"SetSwatchKind\", \"args\": [0, 2]}\n");
    EXPECT_EQ(inner_.GetSwatchKind(0), 2);
}

TEST_F(RecordingSwatchbookTest, LogsGroupCallsWithoutOutArguments) {
    std::int32_t ok = 7;
    book_.EndGroup(0xC002, 4294967300LL, 5);
    EXPECT_EQ(book_.AddGroup(), -1);
    EXPECT_EQ(book_.CountGroups(&ok), 0);
    EXPECT_FALSE(book_.SelectGroup(2));
    EXPECT_EQ(Logged(),
              "{\"op\": \"EndGroup\", \"args\": [49154, 4294967300, 5]}\n"
              "{\"op\": \"AddGroup\", \"args\": [], \"ret\": -1}\n"
              "{\"op\": \"CountGroups\", \"args\": [], \"ret\": 0}\n"
              "{\"op\": \"SelectGroup\", \"args\": [2], \"ret\": false}\n");
}

TEST_F(RecordingSwatchbookTest, LogsSwatchReadsWithoutOutArguments) {
    AddRgbFormat(3);
    std::int32_t ok = 0;
    double values[4];
    std::int32_t formats[4];
    EXPECT_EQ(book_.GetSwatchTint(0, &ok), 0.0);
    EXPECT_EQ(ok, 1);
    book_.GetSwatchValuesNative(0, 0, values);
    book_.GetValueFormats(0, formats);
    EXPECT_EQ(Logged(),
              "{\"op\": \"GetSwatchTint\", \"args\": [0], \"ret\": 0}\n"
              "{\"op\": \"GetSwatchValuesNative\", \"args\": [0, 0], \"ret\": false}\n"
              "{\"op\": \"GetValueFormats\", \"args\": [0], \"ret\": 0}\n");
}

TEST_F(RecordingSwatchbookTest, LogsNamesWithEveryCodeUnitAndDoublesWithSeventeenDigits) {
    inner_.AddSwatch(-1);
    EXPECT_TRUE(book_.SetSwatchName(0, std::u16string{u'R', char16_t(0xD800), u'"'}));
    book_.SetSwatchTint(0, 0.1);
    book_.SetSwatchTint(0, std::nan(""));
    book_.SetSwatchTint(0, -INFINITY);
    EXPECT_EQ(Logged(),
              "{\"op\": \"SetSwatchName\", \"args\": [0, \"R\\ud800\\u0022\"], \"ret\": true}\n"
              "{\"op\": \"SetSwatchTint\", \"args\": [0, 0.10000000000000001], \"ret\": true}\n"
              "{\"op\": \"SetSwatchTint\", \"args\": [0, \"NaN\"], \"ret\": true}\n"
              "{\"op\": \"SetSwatchTint\", \"args\": [0, \"-Infinity\"], \"ret\": true}\n");
}

TEST_F(RecordingSwatchbookTest, LogsValuesInTheCallsEncodingForTheFormatsChannelCount) {
    AddRgbFormat(3);
    const std::uint8_t bytes[] = {255, 0, 128, 99};
    const std::uint16_t words[] = {65535, 0, 1, 99};
    const double doubles[] = {1.0, 0.5, 0.1, 99.0};
    book_.SetSwatchValuesInt8(0, 0, bytes);
    book_.SetSwatchValuesInt16(0, 0, words);
    book_.SetSwatchValuesFloat(0, 0, doubles);
    book_.SetSwatchValues(0, 0, 1, bytes);
    book_.SetSwatchValues(0, 0, 2, words);
    book_.SetSwatchValues(0, 0, 3, doubles);
    EXPECT_EQ(Logged(),
              "{\"op\": \"SetSwatchValuesInt8\", \"args\": [0, 0, [255, 0, 128]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValuesInt16\", \"args\": [0, 0, [65535, 0, 1]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValuesFloat\", \"args\": [0, 0, [1, 0.5, 0.10000000000000001]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValues\", \"args\": [0, 0, 1, [255, 0, 128]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValues\", \"args\": [0, 0, 2, [65535, 0, 1]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValues\", \"args\": [0, 0, 3, [1, 0.5, 0.10000000000000001]], \"ret\": true}\n");
    EXPECT_EQ(inner_.GetSwatchRecord(0).values[1], 0.5);
}

TEST_F(RecordingSwatchbookTest, LogsNativeValuesByTheFormatsEncoding) {
    const std::uint8_t bytes[] = {1, 2, 3};
    const std::uint16_t words[] = {1000, 2000, 3000};
    const double doubles[] = {0.25, 0.5, 0.75};
    for (const auto& [encoding, values, logged] :
         {std::tuple<std::int32_t, const void*, const char*>{1, bytes, "[1, 2, 3]"},
          {2, words, "[1000, 2000, 3000]"},
          {3, doubles, "[0.25, 0.5, 0.75]"}}) {
        ReferenceBook inner;
        std::ostringstream out;
        tool::RecordingSwatchbook book(inner, out);
        inner.AddFormat();
        inner.SetFormatColorSpace(0, 4);
        inner.SetFormatEncoding(0, encoding);
        inner.AddSwatch(-1);
        book.SetSwatchValuesNative(0, 0, values);
        EXPECT_EQ(out.str(), std::string("{\"op\": \"SetSwatchValuesNative\", \"args\": [0, 0, ") + logged +
                                 "], \"ret\": true}\n");
    }
}

TEST_F(RecordingSwatchbookTest, LogsNativeValuesOfAnUnknownEncodingAsDoubles) {
    inner_.AddFormat();
    inner_.SetFormatColorSpace(0, 4);
    inner_.AddSwatch(-1);
    const double doubles[] = {0.25, 0.5, 0.75};
    EXPECT_TRUE(book_.SetSwatchValuesNative(0, 0, doubles));
    EXPECT_EQ(Logged(), "{\"op\": \"SetSwatchValuesNative\", \"args\": [0, 0, [0.25, 0.5, 0.75]], \"ret\": true}\n");
}

TEST_F(RecordingSwatchbookTest, LogsNoValuesForABadFormatOrNoChannels) {
    inner_.AddSwatch(-1);
    inner_.AddFormat();  // no colour space: no channels
    const double doubles[] = {1, 2, 3};
    EXPECT_FALSE(book_.SetSwatchValuesFloat(0, 5, doubles));
    EXPECT_FALSE(book_.SetSwatchValuesNative(0, 0, doubles));
    EXPECT_FALSE(book_.SetSwatchValuesFloat(0, 0, nullptr));
    EXPECT_EQ(Logged(),
              "{\"op\": \"SetSwatchValuesFloat\", \"args\": [0, 5, []], \"ret\": false}\n"
              "{\"op\": \"SetSwatchValuesNative\", \"args\": [0, 0, []], \"ret\": false}\n"
              "{\"op\": \"SetSwatchValuesFloat\", \"args\": [0, 0, []], \"ret\": false}\n");
}

TEST(RecordingSwatchbook, SizesValuesByTheChannelCountAtTheTimeOfTheCall) {
    testing::NiceMock<testsupport::MockSwatchbook> inner;
    std::ostringstream out;
    tool::RecordingSwatchbook book(inner, out);
    EXPECT_CALL(inner, GetFormatChannels(2)).WillOnce(Return(1)).WillOnce(Return(4));
    EXPECT_CALL(inner, SetSwatchValuesInt8(1, 2, _)).WillOnce(Return(true)).WillOnce(Return(false));
    const std::uint8_t bytes[] = {10, 20, 30, 40};
    book.SetSwatchValuesInt8(1, 2, bytes);
    book.SetSwatchValuesInt8(1, 2, bytes);
    EXPECT_EQ(out.str(),
              "{\"op\": \"SetSwatchValuesInt8\", \"args\": [1, 2, [10]], \"ret\": true}\n"
              "{\"op\": \"SetSwatchValuesInt8\", \"args\": [1, 2, [10, 20, 30, 40]], \"ret\": false}\n");
}

TEST(RecordingSwatchbook, LogsFindSwatchAndStripAffixes) {
    testing::NiceMock<testsupport::MockSwatchbook> inner;
    std::ostringstream out;
    tool::RecordingSwatchbook book(inner, out);
    EXPECT_CALL(inner, FindSwatch(std::u16string(u"P 1 C"), true, false)).WillOnce(Return(4));
    EXPECT_CALL(inner, StripAffixes(std::u16string(u"P 1 C"))).WillOnce(Return(u"1"));
    EXPECT_EQ(book.FindSwatch(u"P 1 C", true, false), 4);
    EXPECT_EQ(book.StripAffixes(u"P 1 C"), u"1");
    EXPECT_EQ(out.str(),
              "{\"op\": \"FindSwatch\", \"args\": [\"P 1 C\", true, false], \"ret\": 4}\n"
              "{\"op\": \"StripAffixes\", \"args\": [\"P 1 C\"], \"ret\": \"1\"}\n");
}

}  // namespace
