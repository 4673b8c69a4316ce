// The complete book answers the swatch exchange writer as a book over a host
// document does: a file read into it and written out gives the same bytes
// as the same file imported into a document and exported from there. The
// files hold only what a document keeps as it is: the host turns a global
// or process Lab colour into RGB, drops a process colour's tint, and keeps
// gray as ink where a reader gives lightness (the complete book keeps what
// the reader gave, so its gray is written as the complement).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/InProcessHost.h"
#include "formats/ReaderResult.h"
#include "formats/colorbook/ColorBookReader.h"
#include "formats/exchange/SwatchExchangeReader.h"
#include "formats/exchange/SwatchExchangeWriter.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/KelvraSwatchBook.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/SwatchExchangeBuilder.h"

namespace {

using testsupport::MemoryStream;
using Bytes = std::vector<std::uint8_t>;
using Reader = std::function<std::int32_t(OrvikSwatchbookStream&, OrvikSwatchbook&)>;

class CompleteBookExportTest : public testsupport::InProcessHostTest {
protected:
    Bytes WrittenFromCompleteBook(const Bytes& file, const Reader& read) {
        CompleteBook book;
        auto in = MemoryStream::Reading(file);
        EXPECT_EQ(read(in, book), formats::kReadOK);
        auto out = MemoryStream::Writing();
        EXPECT_EQ(formats::WriteSwatchExchange(out, book), 1);
        return out.Bytes();
    }

    Bytes WrittenFromDocument(const Bytes& file, const Reader& read) {
        kelvra::Document& document = host_.Documents().New("Imported");
        host_.Documents().MakeCurrent(document);
        {
            KelvraSwatchBook book(nullptr);
            auto in = MemoryStream::Reading(file);
            EXPECT_EQ(read(in, book), formats::kReadOK);
            book.FlushPendingSwatch();
        }
        KelvraSwatchBook book(document.SwatchList());
        book.LoadSnapshot();
        auto out = MemoryStream::Writing();
        EXPECT_EQ(formats::WriteSwatchExchange(out, book), 1);
        return out.Bytes();
    }

    void ExpectSameBytes(const Bytes& file, const Reader& read) {
        const Bytes fromBook = WrittenFromCompleteBook(file, read);
        EXPECT_GT(fromBook.size(), 12u);  // more than a header
        EXPECT_EQ(fromBook, WrittenFromDocument(file, read));
    }
};

TEST_F(CompleteBookExportTest, AColorBookOfEachColourSpace) {
    for (std::uint16_t space : {testsupport::kColorBookRGB, testsupport::kColorBookCMYK, testsupport::kColorBookLab}) {
        SCOPED_TRACE(space);
        testsupport::ColorBookDescription book;
        book.bookId = 4100;
        book.prefix = u"HB ";
        book.postfix = u" C";
        book.colorSpace = space;
        book.records = {{u"Sea", "1", {102, 128, 88, 0}, {}},
                        {u"", "", {0, 0, 0, 0}, {}},
                        {u"Buoy", "2", {140, 188, 168, 255}, {}}};
        for (auto& record : book.records) record.components.resize(space == testsupport::kColorBookCMYK ? 4 : 3);
        // Lab books are spot colours, the others global.
        ExpectSameBytes(testsupport::BuildColorBook(book), [](OrvikSwatchbookStream& in, OrvikSwatchbook& into) {
            return formats::ReadColorBook(in, into, 0);
        });
    }
}

TEST_F(CompleteBookExportTest, AnXmlSwatchbookOfEveryKindAndEncoding) {
    const std::string xml = R"(<OrvikSwatchbook Title="Inks" Prefix="LI "><Formats>
        <Format ID="lab" ColorSpace="LAB" Encoding="Float"/><Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
        <Format ID="rgb" ColorSpace="RGB" Encoding="Int16"/></Formats><Swatches>
        <Sp N="Warm Gray"><C F="lab">60 2 8</C></Sp><Pr N="Copper"><C F="cmyk">0 128 200 60</C></Pr>
        <Pl N="Black"><C F="cmyk">0 0 0 255</C></Pl><Pr N="Sky"><C F="rgb">0 255 65535</C></Pr>
        <Pl N="Leaf"><C F="rgb">65535 0 200</C></Pl><Sp N="Gold"><C F="rgb">65535 1000 0</C></Sp></Swatches>
        </OrvikSwatchbook>)";
    ExpectSameBytes(Bytes(xml.begin(), xml.end()), [](OrvikSwatchbookStream& in, OrvikSwatchbook& into) {
        return formats::ReadXmlSwatchbook(in, into, 0);
    });
}

TEST_F(CompleteBookExportTest, AnExchangeFileWithGroupsAndTints) {
    using testsupport::ColorBlock;
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        ColorBlock({{}, u"Sky", {}, "RGB ", {0.25f, 0.5f, 1.0f}, 2}),
        testsupport::GroupStartBlock(u"Brand"),
        ColorBlock({{}, u"Signal", {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 1}),
        ColorBlock({0.5f, u"Signal Light", {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 1}),
        ColorBlock({0.25f, u"Leaf", {}, "RGB ", {0.0f, 0.5f, 0.25f}, 0}),
        ColorBlock({{}, u"Ink", {}, "LAB ", {0.2f, 10.0f, -30.0f}, 1}),
        testsupport::GroupEndBlock(),
        testsupport::GroupStartBlock(u"Empty"),
        testsupport::GroupEndBlock(),
    };
    ExpectSameBytes(testsupport::BuildSwatchExchange(file), [](OrvikSwatchbookStream& in, OrvikSwatchbook& into) {
        return formats::ReadSwatchExchange(in, into, 0);
    });
}

}  // namespace
