// kelvra-host import writes its report from the host's documents in place;
// both printed forms must read exactly as when written from the documents'
// JSON form, which is how the report was always written. Each test prints
// one report both ways over the same documents and compares the bytes.
#include <ImportReport.h>

#include <kelvra/Document.h>
#include <kelvra/DocumentJson.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

using kelvra::cli::ChipDepth;
using kelvra::cli::ImportReport;
using nlohmann::json;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// Its shortest decimal, read as a double, lies halfway between two floats
// and reads back as the neighbour above.
constexpr float kHalfwayFloat = 0x1.5c87fap-84f;

KVColor Gray(float gray) {
    KVColor color{kKVGrayColor, {}};
    color.c.gray.gray = gray;
    return color;
}

KVColor Rgb(float red, float green, float blue) {
    KVColor color{kKVThreeColor, {}};
    color.c.three = {red, green, blue};
    return color;
}

KVColor Cmyk(float cyan, float magenta, float yellow, float black) {
    KVColor color{kKVFourColor, {}};
    color.c.four = {cyan, magenta, yellow, black};
    return color;
}

KVColor Custom(KVCustomColorHandle handle, float tint) {
    KVColor color{kKVCustomColor, {}};
    color.c.custom = {handle, tint};
    return color;
}

KVCustomColor Definition(std::int32_t kind, float a, float b, float c, float d, std::uint32_t flags) {
    KVCustomColor definition{};
    definition.kind = kind;
    definition.c.four = {a, b, c, d};
    definition.flags = flags;
    return definition;
}

void Add(kelvra::Document& document, kelvra::SwatchGroup& group, std::u16string name, const KVColor& color) {
    kelvra::Swatch& swatch = document.InsertSwatch(group, -1);
    swatch.name = std::move(name);
    swatch.color = color;
}

// Every kind of swatch and custom colour, with the values whose text is
// hardest to get right: NaN of either sign, the infinities, -0, the
// smallest and largest floats, the halfway float; names with quotes,
// control characters, non-ASCII text and lone surrogates, two of them
// custom colours whose names become the same UTF-8.
void FillAwkwardDocument(kelvra::Document& document) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    kelvra::SwatchGroup& first = *document.Groups()[0];
    Add(document, first, u"Paper", Gray(0.2f));
    Add(document, first, u"Odd \"gray\"", Gray(-nan));
    Add(document, first, u"Red\n", Rgb(1, -0.0f, kHalfwayFloat));
    Add(document, first, u"Far", Rgb(kInfinity, -kInfinity, std::numeric_limits<float>::max()));
    Add(document, first, u"Ink ünd Tinte", Cmyk(0.1f, 1e-7f, std::numeric_limits<float>::denorm_min(), 0.3333333f));
    Add(document, first, u"Stripes", KVColor{kKVPatternColor, {}});
    Add(document, first, u"Fade", KVColor{kKVGradientColor, {}});
    Add(document, first, u"Nothing", KVColor{kKVNoneColor, {}});
    Add(document, first, u"Unknown kind", KVColor{99, {}});

    kelvra::CustomColor& gold = *document.NewCustomColor(u"Gold", Definition(kKVCustomLabColor, 80, 5, 60, 0, 1));
    gold.bookId = 3000;
    kelvra::CustomColor& leaf =
        *document.NewCustomColor(u"Leaf", Definition(kKVCustomThreeColor, 0.1f, 0.7f, kHalfwayFloat, 0, 0));
    kelvra::CustomColor& odd = *document.NewCustomColor(u"Odd", Definition(7, nan, -kInfinity, -0.0f, 1, 0xFFu));
    odd.bookId = -1;
    kelvra::CustomColor& loneHigh = *document.NewCustomColor(u"Lone \xD800", Definition(0, 1, 0, 0, 0, 1));
    kelvra::CustomColor& loneLow = *document.NewCustomColor(u"Lone \xDC00", Definition(0, 0, 1, 0, 0, 2));

    kelvra::SwatchGroup& spots = document.InsertGroup(-1);
    spots.name = u"Spot \"A\" \xD83D";
    Add(document, spots, u"Gold 25%", Custom(HandleOf(gold), 0.25f));
    Add(document, spots, u"Gold", Custom(HandleOf(gold), 0));
    Add(document, spots, u"Leaf", Custom(HandleOf(leaf), kHalfwayFloat));
    Add(document, spots, u"Odd", Custom(HandleOf(odd), nan));
    Add(document, spots, u"High", Custom(HandleOf(loneHigh), 0));
    Add(document, spots, u"Low", Custom(HandleOf(loneLow), -kInfinity));
    Add(document, spots, u"Lost", Custom(nullptr, 0.5f));
    document.InsertGroup(-1).name = u"Empty";
}

class ImportOutputInPlaceTest : public testing::Test {
protected:
    ImportOutputInPlaceTest() {
        FillAwkwardDocument(user_);
        FillAwkwardDocument(library_);
        other_.InsertGroup(-1).name = u"Only a group";
        for (ImportReport* report : {&inPlace_, &fromJson_}) {
            report->module = "Tintora.so";
            report->shutdown = 0;
        }
        inPlace_.hostDocuments = {&user_, &other_};
        inPlace_.hostLibraryDocuments = {&library_};
        fromJson_.documents = json::array({kelvra::ToJson(user_), kelvra::ToJson(other_)});
        fromJson_.libraryDocuments = json::array({kelvra::ToJson(library_)});
    }

    static std::string Text(const ImportReport& report, ChipDepth chips) {
        std::ostringstream out;
        kelvra::cli::WriteImportText(out, report, chips);
        return out.str();
    }

    kelvra::Document user_{"awkward.ose"};
    kelvra::Document other_{"Untitled"};
    kelvra::Document library_{"library.ocb"};
    ImportReport inPlace_;
    ImportReport fromJson_;
};

TEST_F(ImportOutputInPlaceTest, TheTextReadsTheSameAsFromTheJsonForm) {
    for (const ChipDepth chips : {ChipDepth::None, ChipDepth::Colors256, ChipDepth::TrueColor}) {
        EXPECT_EQ(Text(inPlace_, chips), Text(fromJson_, chips));
    }
    const std::string text = Text(inPlace_, ChipDepth::None);
    EXPECT_NE(text.find("#FF0000 \"Red\\n\": rgb 255 0 0\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\"Odd\": spot cmyk NaN -Infinity 0% 100%, registration, tint NaN, book -1\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\"High\": custom colour \"Lone \xEF\xBF\xBD\", spot cmyk 100% 0% 0% 0%\n"), std::string::npos)
        << text;
    // The two lone surrogates become one name, which the JSON form finds
    // as the first colour of that name.
    EXPECT_NE(text.find("\"Low\": custom colour \"Lone \xEF\xBF\xBD\", spot cmyk 100% 0% 0% 0%, tint -Infinity\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\"Lost\": custom colour missing, tint 50%\n"), std::string::npos) << text;
    EXPECT_NE(text.find("; 2 documents: 16 swatches in 5 groups, 5 custom colours\n"), std::string::npos) << text;
}

TEST_F(ImportOutputInPlaceTest, TheJsonIsTheSameBytesAsTheJsonFormDumped) {
    std::ostringstream out;
    kelvra::cli::WriteImportJson(out, inPlace_);
    EXPECT_EQ(out.str(), kelvra::cli::ImportJson(fromJson_).dump(2) + "\n");
    EXPECT_NE(out.str().find("\"values\": [\n                \"NaN\"\n              ]"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("\"tint\": 7.038531e-26"), std::string::npos) << out.str();
}

TEST_F(ImportOutputInPlaceTest, AReportWithoutDocumentsReadsTheSame) {
    inPlace_.hostDocuments.clear();
    inPlace_.hostLibraryDocuments.clear();
    fromJson_.documents = json::array();
    fromJson_.libraryDocuments = json::array();
    EXPECT_EQ(Text(inPlace_, ChipDepth::None), Text(fromJson_, ChipDepth::None));
    std::ostringstream out;
    kelvra::cli::WriteImportJson(out, inPlace_);
    EXPECT_EQ(out.str(), kelvra::cli::ImportJson(fromJson_).dump(2) + "\n");
}

}  // namespace
