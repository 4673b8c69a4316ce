// tintora sheet: what the HTML and SVG sheets of the sample files hold. How
// a browser shows them is tested in tests/browser.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <expat.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "ToolTesting.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using tooltesting::RunTool;

const std::string kSamples = SAMPLES_DIR;

std::string FileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

bool IsWellFormedXml(const std::string& text) {
    const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreate(nullptr), XML_ParserFree);
    return XML_Parse(parser.get(), text.data(), int(text.size()), XML_TRUE) == XML_STATUS_OK;
}

class SheetCommandTest : public testing::Test {
protected:
    std::string Sheet(const std::string& sample, const std::string& extension) {
        const std::string out = (folder_.Path() / (sample + extension)).string();
        const auto run = RunTool({"sheet", kSamples + "/" + sample, "-o", out});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_THAT(run.out, testing::StartsWith("wrote " + out + ": "));
        return FileText(out);
    }

    testsupport::TemporaryFolder folder_;
};

TEST_F(SheetCommandTest, AColourBookShowsItsHeaderPagesAndKeySwatches) {
    const std::string html = Sheet("harbour.ocb", ".html");
    EXPECT_THAT(html, HasSubstr("<title>Harbour Colours</title>"));
    EXPECT_THAT(html, HasSubstr("<h1>Harbour Colours</h1>"));
    EXPECT_THAT(html, HasSubstr("Book ID 4100 · Sample book of the Tintora project"));
    EXPECT_THAT(html, HasSubstr("<h3>Page 1</h3>"));
    EXPECT_THAT(html, HasSubstr("<h3>Page 2</h3>"));
    EXPECT_EQ(Count(html, "class=\"swatch key\""), 2u);  // the second swatch of each page of two
    EXPECT_THAT(html, HasSubstr("data-swatch=\"HB Sea Blue\" style=\"background-color: #3060A0\""));
    EXPECT_THAT(html, HasSubstr("<span class=\"name\">HB Buoy Red</span><span class=\"kind\">spot · key</span>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"detail\">Lab 8-bit 102 128 88</span>"));
    EXPECT_THAT(html, HasSubstr("Lab colours are turned into sRGB as the host turns them"));
    EXPECT_THAT(html, Not(HasSubstr("CMYK colours are shown approximately")));
}

TEST_F(SheetCommandTest, TheHtmlNeedsNothingFromOutside) {
    for (const char* sample : {"harbour.ocb", "studio.ose", "legacy.xml"}) {
        const std::string html = Sheet(sample, ".html");
        for (const char* outside : {"<script", "src=", "href=", "@import", "url(", "http:", "https:"}) {
            EXPECT_THAT(html, Not(HasSubstr(outside))) << sample;
        }
        EXPECT_THAT(html, HasSubstr("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"));
        EXPECT_THAT(html, HasSubstr("@media print"));
    }
}

TEST_F(SheetCommandTest, AnExchangeFileShowsItsGroupsKindsTintsAndApproximations) {
    const std::string html = Sheet("studio.ose", ".html");
    EXPECT_THAT(html, HasSubstr("<h2>Brand</h2>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"name\">Paper</span><span class=\"kind\">process</span>"
                                "<span class=\"detail\">Gray float 0.95</span><span class=\"detail\">sRGB #F2F2F2"));
    EXPECT_THAT(html, HasSubstr("<span class=\"name\">Signal Light</span><span class=\"kind\">spot</span>"
                                "<span class=\"detail\">tint 0.5</span><span class=\"detail\">CMYK float 0 0.8 0.9 0"
                                "</span><span class=\"detail\">sRGB ≈ #FF331A</span><span class=\"detail\">at its tint "
                                "≈ #FF998C</span>"));
    EXPECT_THAT(html, HasSubstr("<span class=\"name\">Leaf</span><span class=\"kind\">global</span>"));
    EXPECT_THAT(html, HasSubstr("CMYK colours are shown approximately (≈), without colour management: "
                                "R = (1 − C)(1 − K)"));
    EXPECT_THAT(html, HasSubstr("A chip shows its swatch at its tint"));
    // A corner mark per kind.
    EXPECT_EQ(Count(html, "<circle"), 3u);
    EXPECT_EQ(Count(html, "<path"), 1u);
    EXPECT_EQ(Count(html, "<rect"), 2u);
}

TEST_F(SheetCommandTest, TheSvgStandsAloneAndCarriesTheSameSwatches) {
    const std::string svg = Sheet("studio.ose", ".svg");
    EXPECT_TRUE(IsWellFormedXml(svg));
    EXPECT_THAT(svg, HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"980\""));
    EXPECT_THAT(svg, HasSubstr("data-swatch=\"Sky\""));
    EXPECT_THAT(svg, HasSubstr("fill=\"#4080FF\""));
    EXPECT_THAT(svg, HasSubstr(">Brand</text>"));
    EXPECT_EQ(Count(svg, "class=\"chip\""), 6u);
    EXPECT_THAT(svg, Not(HasSubstr("href")));
}

TEST_F(SheetCommandTest, AnXmlSwatchbookShowsItsSpacerAsAnEmptyPlace) {
    const std::string html = Sheet("legacy.xml", ".html");
    EXPECT_EQ(Count(html, "class=\"swatch empty\""), 1u);
    EXPECT_THAT(html, HasSubstr("<span class=\"name\">LI Warm Gray C</span>"));
    EXPECT_THAT(html, HasSubstr("CMYK 8-bit 0 128 200 60"));
    EXPECT_TRUE(IsWellFormedXml(Sheet("legacy.xml", ".svg")));
}

TEST_F(SheetCommandTest, NamesAndTextsAreEscaped) {
    const std::string palette = folder_.Write("p.txt", "1 2 3 <b>\"Ink\" & 'Co'</b>\n");
    const std::string out = (folder_.Path() / "p.svg").string();
    ASSERT_EQ(RunTool({"sheet", palette, "-o", out}).status, 0);
    const std::string svg = FileText(out);
    EXPECT_TRUE(IsWellFormedXml(svg));
    EXPECT_THAT(svg, HasSubstr("&lt;b&gt;&quot;Ink&quot; &amp; &#39;Co&#39;&lt;/b&gt;"));
}

TEST_F(SheetCommandTest, AnOutputOfAnotherKindIsRefusedAndLeftAlone) {
    const std::string out = folder_.Write("sheet.pdf", std::string("old"));
    const auto run = RunTool({"sheet", kSamples + "/studio.ose", "-o", out});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tintora sheet: " + out + ": a sheet's name must end in .html or .svg\n");
    EXPECT_EQ(FileText(out), "old");
}

}  // namespace
