// The model's faster paths beside the plain ones they stand for, over the
// same inputs: the conversion's tables and fixed-space converters beside the
// rules worked out channel by channel, the reference book's name search and
// the format table's identifier search beside the searches through the
// interface's getters, and the readers filling a reference book they know
// by its type beside the same readers filling one they know only by its
// interface.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/ColorValueConversion.h"
#include "swatchbook/ReferenceBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/FastPathChecks.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"

using namespace swatchbook;
using namespace std::string_literals;
using testsupport::ConversionDifference;
using testsupport::FindFormatDifference;
using testsupport::FilledBookDifference;
using testsupport::FindSwatchDifference;
using testsupport::LookupDifferences;

namespace {

constexpr std::int32_t kEncodings[] = {kInt8Encoding, kInt16Encoding, kFloatEncoding};

// --- Conversion

TEST(FastConversionTest, EveryInt8ValueInEveryChannelAgreesWithTheRules) {
    std::uint8_t source[32] = {};
    for (int value = 0; value < 256; ++value) {
        // The value in every channel, and its neighbours behind it.
        for (std::size_t i = 0; i < sizeof source; ++i) source[i] = std::uint8_t(value + i * 37);
        for (std::int32_t space = kGraySpace; space <= kXYZSpace; ++space) {
            for (std::int32_t to : kEncodings) {
                ASSERT_EQ(ConversionDifference(space, kInt8Encoding, to, source), "");
            }
        }
    }
}

TEST(FastConversionTest, EveryInt16ValueAgreesWithTheRules) {
    std::uint16_t values[16];
    std::uint8_t source[32];
    for (int value = 0; value < 65536; ++value) {
        for (std::size_t i = 0; i < 16; ++i) values[i] = std::uint16_t(value + i * 4099);
        std::memcpy(source, values, sizeof source);
        for (std::int32_t space = kGraySpace; space <= kXYZSpace; ++space) {
            for (std::int32_t to : kEncodings) {
                ASSERT_EQ(ConversionDifference(space, kInt16Encoding, to, source), "");
            }
        }
    }
}

TEST(FastConversionTest, FloatValuesAroundEveryRuleAgreeWithTheRules) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    const double specials[] = {0.0,     -0.0,       0.5,         1.0,          -0.1,       0.003,
                               100.0,   50.0,       -128.0,      128.0,        127.5,      -127.5,
                               255.5,   65535.0,    1e300,       -1e300,       kInf,       -kInf,
                               std::numeric_limits<double>::quiet_NaN(),       2147483648.0,
                               -2147483649.0,       2147483647.5, 255.5 / 65535, 1.0 / 510,
                               std::numeric_limits<double>::denorm_min()};
    std::uint8_t source[32];
    std::uint64_t state = 0x9E3779B97F4A7C15u;
    for (std::size_t round = 0; round < 4000; ++round) {
        double values[4];
        for (std::size_t c = 0; c < 4; ++c) {
            // Specials in turn, then arbitrary bit patterns.
            state = state * 6364136223846793005u + 1442695040888963407u;
            const std::size_t pick = (round * 4 + c) % (std::size(specials) * 2);
            if (pick < std::size(specials)) {
                values[c] = specials[pick];
            } else {
                std::memcpy(&values[c], &state, sizeof state);
            }
        }
        std::memcpy(source, values, sizeof source);
        for (std::int32_t space = kGraySpace; space <= kXYZSpace; ++space) {
            for (std::int32_t to : kEncodings) {
                ASSERT_EQ(ConversionDifference(space, kFloatEncoding, to, source), "");
            }
        }
    }
}

TEST(FastConversionTest, UnknownSpacesEncodingsAndNullBuffersAgreeWithTheRules) {
    std::uint8_t source[32] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    EXPECT_EQ(testsupport::AnyConversionDifference(source), "");
    for (std::int32_t space : {0, kCustomSpace, kCMYKSpace, 7}) {
        std::uint8_t target[32] = {};
        EXPECT_EQ(ConvertColorValues(space, kInt8Encoding, nullptr, kFloatEncoding, target),
                  ConvertColorValuesByRule(space, kInt8Encoding, nullptr, kFloatEncoding, target));
        EXPECT_EQ(ConvertColorValues(space, kFloatEncoding, source, kInt8Encoding, nullptr),
                  ConvertColorValuesByRule(space, kFloatEncoding, source, kInt8Encoding, nullptr));
    }
}

// --- Look-ups

class FastLookupTest : public testing::Test {
protected:
    std::int32_t AddNamed(const std::u16string& name) {
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchName(swatch, name);
        return swatch;
    }

    ReferenceBook book;
};

TEST_F(FastLookupTest, NamesOfEveryShapeAreFoundAsTheInterfaceFindsThem) {
    book.SetPrefix(u"ORV ");
    book.SetPostfix(u" U");
    AddNamed(u"100");
    AddNamed(u"");
    AddNamed(u"100");  // a second one: the first must win
    AddNamed(std::u16string(31, u'w'));
    AddNamed(u"A\0B"s);  // reads back as "A"
    // Renamed shorter: the units of the longer name stay behind its terminator.
    const std::int32_t renamed = AddNamed(u"Longer name");
    book.SetSwatchName(renamed, u"Long");
    book.AddSwatch(-1);  // never named
    AddNamed(u"100 CVU");
    for (std::int32_t bookId : {0, 3002, 3005}) {
        book.SetBookID(bookId);
        for (const std::u16string& name :
             {u"ORV 100 U"s, u"ORV 100 CVU"s, u"100"s, u""s, u"ORV  U"s, u"A"s, u"A\0B"s, u"Long"s, u"Long\0er"s,
              u"Long\0er name"s, u"Longer name"s, std::u16string(31, u'w'), std::u16string(32, u'w'),
              u"ORV " + std::u16string(31, u'w') + u" U", u"CVU"s, u"ORV 100 CVU CVU"s}) {
            EXPECT_EQ(FindSwatchDifference(book, name), "");
        }
    }
    EXPECT_EQ(LookupDifferences(book), "");
}

TEST_F(FastLookupTest, TheFirstOfEqualNamesIsFoundByBoth) {
    AddNamed(u"Blue");
    AddNamed(u"Red");
    AddNamed(u"Red");
    EXPECT_EQ(book.FindSwatch(u"Red", false, false), 1);
    EXPECT_EQ(book.FindSwatch(u"Red", false, false, 0), 1);
}

TEST_F(FastLookupTest, IdentifiersAndIndicesAreFoundAsTheInterfaceFindsThem) {
    for (int i = 0; i < 12; ++i) book.AddFormat();
    book.SetFormatID(1, u"0");    // named like the first format's index
    book.SetFormatID(2, u"");     // stored empty: known by its index
    book.SetFormatID(3, u"rgb");
    book.SetFormatID(4, u"rgb");  // a second one: the first must win
    book.SetFormatID(5, u"rgb\0x"s);
    book.SetFormatID(6, u"old");
    book.SetFormatID(6, u"new");  // the old string stays in the pool, released
    book.SetFormatID(7, u"2");
    for (const std::u16string& id : {u"0"s, u"1"s, u"2"s, u"3"s, u"10"s, u"11"s, u"12"s, u"rgb"s, u"rgb\0x"s,
                                     u"rgb\0"s, u""s, u"old"s, u"new"s, u"01"s, u"-1"s}) {
        EXPECT_EQ(FindFormatDifference(book, id), "");
    }
    EXPECT_EQ(book.FindFormat(u"0"), 0);
    EXPECT_EQ(book.FindFormat(u"1"), -1);
    EXPECT_EQ(book.FindFormat(u"2"), 2);
    EXPECT_EQ(book.FindFormat(u"11"), 11);
    EXPECT_EQ(book.FindFormat(u"old"), -1);
    EXPECT_EQ(LookupDifferences(book), "");
}

// --- Readers filling a reference book

using testsupport::Bytes;

std::string ColorBookDifference(const Bytes& file, std::uint32_t flags) {
    return FilledBookDifference([&](OrvikSwatchbook& book) {
        auto stream = testsupport::MemoryStream::Reading(file);
        return formats::ReadColorBook(stream, book, flags);
    });
}

std::string ExchangeDifference(const Bytes& file, std::uint32_t flags) {
    return FilledBookDifference([&](OrvikSwatchbook& book) {
        auto stream = testsupport::MemoryStream::Reading(file);
        return formats::ReadSwatchExchange(stream, book, flags);
    });
}

// Named colours, a gap, a localisation key, a name cut to nothing, one too
// long for the book and one holding a zero unit, in every colour space.
testsupport::ColorBookDescription MixedColorBook(std::uint16_t colorSpace) {
    testsupport::ColorBookDescription book;
    book.title = u"$$$/Book/Title=Pastels";
    book.prefix = u"ORV ";
    book.postfix = u" C";
    book.colorSpace = colorSpace;
    const std::size_t channels = colorSpace == testsupport::kColorBookCMYK ? 4 : 3;
    const std::u16string names[] = {u"Red", u"", u"$$$/Book/Red=Red 032", u"$$$/Only=", std::u16string(32, u'w'),
                                    u"A\0B"s, u"$$$no key"};
    std::uint8_t byte = 0;
    for (const std::u16string& name : names) {
        std::vector<std::uint8_t> components;
        for (std::size_t c = 0; c < channels; ++c) components.push_back(byte += 37);
        book.records.push_back({name, "AB1", components, std::nullopt});
    }
    return book;
}

TEST(FastFillTest, ColorBooksFillAReferenceBookAsThroughTheInterface) {
    for (std::uint16_t colorSpace : {testsupport::kColorBookRGB, testsupport::kColorBookCMYK, testsupport::kColorBookLab}) {
        for (const std::string& trailer : {""s, "spot"s, "proc"s}) {
            testsupport::ColorBookDescription description = MixedColorBook(colorSpace);
            if (!trailer.empty()) description.trailer = testsupport::ColorBookTrailer(trailer);
            for (std::uint32_t flags = 0; flags < 32; ++flags) {
                EXPECT_EQ(ColorBookDifference(BuildColorBook(description), flags), "")
                    << "colour space " << colorSpace << ", trailer " << trailer << ", flags " << flags;
            }
        }
    }
}

TEST(FastFillTest, DamagedColorBooksLeaveAReferenceBookAsThroughTheInterface) {
    const Bytes whole = BuildColorBook(MixedColorBook(testsupport::kColorBookCMYK));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(ColorBookDifference(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)), 16), "")
            << size << " bytes";
    }
    testsupport::ColorBookDescription unknownSpace = MixedColorBook(testsupport::kColorBookRGB);
    unknownSpace.colorSpace = 1;
    EXPECT_EQ(ColorBookDifference(BuildColorBook(unknownSpace), 0), "");
}

TEST(FastFillTest, SwatchExchangeFilesFillAReferenceBookAsThroughTheInterface) {
    testsupport::SwatchExchangeDescription description;
    description.blocks.push_back(testsupport::GroupStartBlock(u"Group"));
    const char* models[] = {"RGB ", "CMYK", "LAB ", "Gray", "XYZ "};
    const std::vector<float> values[] = {{0.1f, 1.5f, -0.9f}, {0.1f, 0.2f, 0.3f, 0.4f}, {1.2f, -200.0f, 30.0f},
                                         {0.5f}, {0.1f, 0.2f, 0.3f}};
    const std::u16string names[] = {u"Red", u"", u"$$$/Key=Blue", std::u16string(40, u'w'), u"A\0B"s};
    for (int i = 0; i < 25; ++i) {
        testsupport::ExchangeColor color{{}, names[i % 5], {}, models[i % 5], values[i % 5], std::uint16_t(i % 4)};
        if (i % 3 == 0) color.tint = 0.25f;
        description.blocks.push_back(testsupport::ColorBlock(color));
    }
    description.blocks.push_back(testsupport::GroupEndBlock());
    const Bytes whole = BuildSwatchExchange(description);
    for (std::uint32_t flags : {0u, 1u}) {
        EXPECT_EQ(ExchangeDifference(whole, flags), "") << "flags " << flags;
        // Cut anywhere: what was added before the data ended must agree too.
        for (std::size_t size = 0; size < whole.size(); size += 7) {
            EXPECT_EQ(ExchangeDifference(Bytes(whole.begin(), whole.begin() + std::ptrdiff_t(size)), flags), "")
                << size << " bytes, flags " << flags;
        }
    }
}

std::string XmlDifference(const std::string& document, std::uint32_t flags) {
    return FilledBookDifference([&](OrvikSwatchbook& book) {
        auto stream = testsupport::MemoryStream::Reading(Bytes(document.begin(), document.end()));
        return formats::ReadXmlSwatchbook(stream, book, flags);
    });
}

TEST(FastFillTest, XmlSwatchbooksFillAReferenceBookAsThroughTheInterface) {
    // Keys of every kind (the reference book keeps none), formats found by
    // identifier and by index, a colour of an unknown format, spacers and
    // localisation keys.
    const std::string whole =
        "<?xml version=\"1.0\"?>\n<OrvikSwatchbook Version=\"2\" Title=\"$$$/T=Tones\" BookID=\"3002\">"
        "<Formats><Format ID=\"rgb\" ColorSpace=\"RGB\" Encoding=\"Int8\"/>"
        "<Format ColorSpace=\"CMYK\" Encoding=\"Float\"/><Format ID=\"1\" ColorSpace=\"LAB\" Encoding=\"Int16\"/>"
        "</Formats><Swatches>"
        "<Sp N=\"Red\" ID=\"R1\"><C F=\"rgb\">255 0 0</C></Sp>"
        "<Pr N=\"$$$/K=Ink\" ID=\"$$$/K=\xC3\xA9\"><C F=\"1\">0.1 0.2 0.3 0.4</C></Pr>"
        "<Spacer/><Pl ID=\"\" N=\"Gr\xC3\xBCn\"><C>12 34 56</C><A><C F=\"rgb\">1 2 3</C></A></Pl>"
        "<Sp N=\"Lab\" ID=\"9\"><C F=\"2\">32768 100 65535</C></Sp>"
        "<Sp N=\"None\" ID=\"x\"><C F=\"none\">1 2 3</C></Sp>"
        "</Swatches></OrvikSwatchbook>\n";
    for (std::uint32_t flags : {0u, 1u, 16u, 17u}) {
        EXPECT_EQ(XmlDifference(whole, flags), "") << "flags " << flags;
        // Cut anywhere: what was added before the parser failed must agree too.
        for (std::size_t size = 0; size < whole.size(); size += 5) {
            EXPECT_EQ(XmlDifference(whole.substr(0, size), flags), "") << size << " bytes, flags " << flags;
        }
    }
}

TEST(FastFillTest, FormatsAddedAfterColoursAreFoundByLaterColours) {
    // Colours look formats up before and after further "Formats": an answer
    // kept from before a format was added or renamed must not be reused.
    const std::string document =
        "<OrvikSwatchbook><Formats><Format ID=\"a\" ColorSpace=\"RGB\" Encoding=\"Int8\"/></Formats>"
        "<Swatches><Sp N=\"A1\"><C F=\"a\">1 2 3</C></Sp><Sp N=\"B1\"><C F=\"b\">4 5 6</C></Sp></Swatches>"
        "<Formats><Format ID=\"b\" ColorSpace=\"CMYK\" Encoding=\"Int8\"/>"
        "<Format ID=\"a\" ColorSpace=\"LAB\" Encoding=\"Int16\"/></Formats>"
        "<Swatches><Sp N=\"B2\"><C F=\"b\">7 8 9 10</C></Sp><Sp N=\"A2\"><C F=\"a\">32768 1 2</C></Sp>"
        "</Swatches></OrvikSwatchbook>";
    EXPECT_EQ(XmlDifference(document, 0), "");
    auto stream = testsupport::MemoryStream::Reading(Bytes(document.begin(), document.end()));
    ReferenceBook book;
    ASSERT_EQ(formats::ReadXmlSwatchbook(stream, book, 0), 0);
    ASSERT_EQ(book.CountSwatches(), 4);
    EXPECT_EQ(book.GetSwatchRecord(0).colorSpace, swatchbook::kRGBSpace);
    EXPECT_EQ(book.GetSwatchRecord(1).colorSpace, 0);  // "b" did not exist yet
    EXPECT_EQ(book.GetSwatchRecord(2).colorSpace, swatchbook::kCMYKSpace);
    EXPECT_EQ(book.GetSwatchRecord(3).colorSpace, swatchbook::kRGBSpace);  // the first "a" still wins
}

TEST(FastFillTest, TheCheckSeesABookThatDiffers) {
    // A reader that gives the book it knows by type one more swatch.
    const std::string difference = FilledBookDifference([](OrvikSwatchbook& book) {
        book.BeginFill();
        book.AddSwatch(-1);
        if (dynamic_cast<ReferenceBook*>(&book) != nullptr) book.AddSwatch(-1);
        return 0;
    });
    EXPECT_EQ(difference, "filled books differ in swatches: 2 and 1");
}

}  // namespace
