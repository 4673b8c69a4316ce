// A book written by the writer and read back by the reader keeps its groups,
// names, kinds, tints and values, to single precision.
#include <gtest/gtest.h>

#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "formats/ReaderResult.h"
#include "swatchbook/CompleteBook.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/Utf16Text.h"

namespace formats {
namespace {

using testsupport::MemoryStream;
using testsupport::U16;

struct Color {
    std::u16string name;
    std::int32_t kind;
    double tint;
    std::int32_t colorSpace;
    std::vector<double> values;
};

struct Group {
    std::u16string name;  // empty for the default group
    std::vector<Color> colors;
};

// What the reader gives back for a written value.
double ReadBack(std::int32_t colorSpace, std::size_t channel, double value) {
    if (colorSpace == swatchbook::kLabSpace && channel == 0) return double(float(value / 100.0)) * 100.0;
    if (colorSpace == swatchbook::kGraySpace) return double(float(1.0 - value));  // gray is written as ink
    return double(float(value));
}

class SwatchExchangeRoundTripTest : public ::testing::Test {
protected:
    void Fill(const std::vector<Group>& groups) {
        std::int32_t formats[7];
        for (std::int32_t space = swatchbook::kGraySpace; space <= swatchbook::kXYZSpace; ++space) {
            formats[space] = original.AddFormat();
            original.SetFormatEncoding(formats[space], swatchbook::kFloatEncoding);
            original.SetFormatColorSpace(formats[space], space);
        }
        for (const Group& group : groups) {
            if (!group.name.empty()) {
                const std::int32_t index = original.AddGroup();
                original.SelectGroup(index);
                original.SetGroupName(group.name);
            }
            for (const Color& color : group.colors) {
                const std::int32_t swatch = original.AddSwatch(-1);
                original.SetSwatchName(swatch, color.name);
                original.SetSwatchKind(swatch, color.kind);
                original.SetSwatchTint(swatch, color.tint);
                original.SetSwatchValuesFloat(swatch, formats[color.colorSpace], color.values.data());
            }
        }
    }

    void WriteAndReadBack() {
        auto out = MemoryStream::Writing();
        ASSERT_EQ(WriteSwatchExchange(out, original), 1);
        auto in = MemoryStream::Reading(out.Bytes());
        ASSERT_EQ(ReadSwatchExchange(in, copy, 0), kReadOK);
    }

    CompleteBook original;
    CompleteBook copy;
};

TEST_F(SwatchExchangeRoundTripTest, EveryModelKindAndGroupSurvives) {
    const std::vector<Group> groups = {
        {u"",
         {{U16("Loose gray"), swatchbook::kGlobalKind, 0.0, swatchbook::kGraySpace, {0.3}},
          {U16("Loose lab"), swatchbook::kSpotKind, 0.75, swatchbook::kLabSpace, {53.2, -12.5, 101.0}}}},
        {U16("Brand 😀 𝄞"),
         {{U16("Signal Red"), swatchbook::kSpotKind, 0.4, swatchbook::kRGBSpace, {0.9, 0.1, 0.05}},
          {U16("Process ink"), swatchbook::kProcessKind, 0.0, swatchbook::kCMYKSpace, {0.1, 0.7, 0.3, 0.05}},
          {U16("Ünïcødé 🎨"), swatchbook::kGlobalKind, 0.2, swatchbook::kCMYKSpace, {0.0, 1.0, 1.0, 0.0}}}},
        {U16("Second"), {{U16("Dark"), swatchbook::kGlobalKind, 0.0, swatchbook::kGraySpace, {1.0}}}},
    };
    Fill(groups);
    WriteAndReadBack();

    ASSERT_EQ(copy.Groups().size(), groups.size());
    for (std::size_t g = 0; g < groups.size(); ++g) {
        SCOPED_TRACE(g);
        EXPECT_EQ(copy.Groups()[g].name, groups[g].name);
        ASSERT_TRUE(copy.SelectGroup(std::int32_t(g)));
        ASSERT_EQ(copy.CountGroupSwatches(), std::int32_t(groups[g].colors.size()));
        for (std::size_t s = 0; s < groups[g].colors.size(); ++s) {
            const Color& color = groups[g].colors[s];
            const std::int32_t swatch = std::int32_t(s);
            SCOPED_TRACE(testsupport::U8(color.name));
            EXPECT_EQ(copy.GetSwatchName(swatch, false), color.name);
            EXPECT_EQ(copy.GetSwatchKind(swatch), color.kind);
            std::int32_t ok = 0;
            EXPECT_EQ(copy.GetSwatchTint(swatch, &ok), double(float(color.tint)));
            EXPECT_EQ(copy.GetSwatchColorSpace(swatch), color.colorSpace);
            double values[4] = {};
            std::int32_t format = -1;
            ASSERT_EQ(copy.GetValueFormats(swatch, &format), 1);
            ASSERT_TRUE(copy.GetSwatchValuesFloat(swatch, format, values));
            for (std::size_t c = 0; c < color.values.size(); ++c) {
                EXPECT_EQ(values[c], ReadBack(color.colorSpace, c, color.values[c])) << "channel " << c;
            }
        }
    }
}

TEST_F(SwatchExchangeRoundTripTest, XYZSwatchesAreWrittenButNotReadBack) {
    Fill({{u"",
           {{U16("Xyz"), swatchbook::kGlobalKind, 0.0, swatchbook::kXYZSpace, {0.2, 0.3, 0.4}},
            {U16("Rgb"), swatchbook::kGlobalKind, 0.0, swatchbook::kRGBSpace, {0.2, 0.3, 0.4}}}}});
    WriteAndReadBack();
    ASSERT_EQ(copy.CountSwatches(), 1);
    EXPECT_EQ(copy.GetSwatchName(0, false), U16("Rgb"));
}

TEST_F(SwatchExchangeRoundTripTest, ATintedProcessSwatchIsLost) {
    Fill({{u"",
           {{U16("Tinted"), swatchbook::kProcessKind, 0.5, swatchbook::kRGBSpace, {0.2, 0.3, 0.4}},
            {U16("Kept"), swatchbook::kProcessKind, 0.0, swatchbook::kRGBSpace, {0.2, 0.3, 0.4}}}}});
    auto out = MemoryStream::Writing();
    ASSERT_EQ(WriteSwatchExchange(out, original), 1);
    auto in = MemoryStream::Reading(out.Bytes());
    // The header still declares both, so the data end early.
    EXPECT_EQ(ReadSwatchExchange(in, copy, 0), kReadTruncated);
    ASSERT_EQ(copy.CountSwatches(), 1);
    EXPECT_EQ(copy.GetSwatchName(0, false), U16("Kept"));
}

}  // namespace
}  // namespace formats
