#include "formats/xml/XmlSwatchbookReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "KVError.h"
#include "XmlReaderTesting.h"
#include "formats/ReaderResult.h"
#include "swatchbook/ReferenceBook.h"

namespace {

using namespace xmltesting;
using formats::kXmlSwatchbookKeepKeys;
using formats::kXmlSwatchbookKeepSpacers;
using testing::_;
using testing::InSequence;
using testing::Return;
using testing::StrictMock;

using StrictBook = StrictMock<testsupport::MockSwatchbook>;

constexpr const char* kRgbFloat = R"(<Formats><Format ID="f" ColorSpace="RGB" Encoding="Float"/></Formats>)";

TEST(ReadXmlSwatchbook, AStreamThatIsNotOpenGivesOneAndLeavesTheBookAlone) {
    StrictBook book;
    auto stream = testsupport::MemoryStream::Closed(true);
    EXPECT_EQ(formats::ReadXmlSwatchbook(stream, book, 0), formats::kReadStreamNotOpen);
}

TEST(ReadXmlSwatchbook, AnotherRootReadsSuccessfullyAndAddsNothing) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, EndFill());
    }
    EXPECT_EQ(Read(R"(<Swatchbook Title="T"><Swatches><Sp N="a"/></Swatches></Swatchbook>)", book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, CallsTheBookInDocumentOrder) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, SetVersion(2));
        EXPECT_CALL(book, SetTitle(std::u16string(u"Pastels")));
        EXPECT_CALL(book, SetBookID(3005));
        EXPECT_CALL(book, SetPrefix(std::u16string(u"P ")));
        EXPECT_CALL(book, SetPostfix(std::u16string(u" C")));
        EXPECT_CALL(book, SetCopyright(std::u16string(u"(c) us")));
        EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
        EXPECT_CALL(book, SetFormatID(0, std::u16string(u"f")));
        EXPECT_CALL(book, SetFormatColorSpaceName(0, std::u16string(u"RGB"))).WillOnce(Return(true));
        EXPECT_CALL(book, SetFormatColorSpace(0, 4)).WillOnce(Return(true));
        EXPECT_CALL(book, SetFormatEncoding(0, 1)).WillOnce(Return(true));
        EXPECT_CALL(book, SetFormatChannels(0, 3)).WillOnce(Return(false));
        EXPECT_CALL(book, SetFormatCondition(0, std::u16string(u"D50")));
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
        EXPECT_CALL(book, SetSwatchKind(0, 1));
        EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"Red")));
        EXPECT_CALL(book, SetSwatchKey(0, std::u16string(u"R1")));
        EXPECT_CALL(book, FindFormat(std::u16string(u"f"))).WillOnce(Return(0));
        EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(3));
        EXPECT_CALL(book, GetFormatEncoding(0)).WillOnce(Return(1));
        EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsBytes(std::vector<std::uint8_t>{255, 0, 7})));
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(1));
        EXPECT_CALL(book, SetSwatchKind(1, 2));
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(2));
        EXPECT_CALL(book, SetSwatchKind(2, 3));
        EXPECT_CALL(book, EndFill());
    }
    const std::string document = Book(
        R"(<Formats><Format ID="f" ColorSpace="RGB" Encoding="Int8" Channels="3" Condition="D50"/></Formats>)"
        R"(<Swatches><Sp N="Red" ID="R1"><C F="f">255 0 7</C></Sp><Pr/><Pl/></Swatches>)",
        R"(Version="2" Title="Pastels" BookID="3005" Prefix="P " Postfix=" C" Copyright="(c) us")");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AppliesAttributesInTheOrderTheyAreWritten) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, SetCopyright(std::u16string(u"c")));
        EXPECT_CALL(book, SetBookID(9));
        EXPECT_CALL(book, SetVersion(1));
        EXPECT_CALL(book, AddFormat()).WillOnce(Return(0));
        EXPECT_CALL(book, SetFormatCondition(0, std::u16string(u"x")));
        EXPECT_CALL(book, SetFormatEncoding(0, 3));
        EXPECT_CALL(book, SetFormatColorSpaceName(0, std::u16string(u"CMYK")));
        EXPECT_CALL(book, SetFormatColorSpace(0, 5));
        EXPECT_CALL(book, SetFormatID(0, std::u16string(u"k")));
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
        EXPECT_CALL(book, SetSwatchKind(0, 3));
        EXPECT_CALL(book, SetSwatchKey(0, std::u16string(u"7")));
        EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"n")));
        EXPECT_CALL(book, SetPostfix(std::u16string(u"post")));
        EXPECT_CALL(book, SetPrefix(std::u16string(u"pre")));
        EXPECT_CALL(book, EndFill());
    }
    const std::string document = Book(
        R"(<Formats><Format Condition="x" Encoding="Float" ColorSpace="CMYK" ID="k"/></Formats>)"
        R"(<Swatches><Pl ID="7" N="n"/></Swatches>)"
        R"(<PrefixPostfixPairs><PrefixPostfixPair Postfix="post" Prefix="pre"/></PrefixPostfixPairs>)",
        R"(Copyright="c" Unknown="u" BookID="9" Version="1")");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, OnlyTheFirstPrefixPostfixPairReachesTheBook) {
    CountingBook book;
    EXPECT_CALL(book, SetPrefix(_)).Times(0);
    EXPECT_CALL(book, SetPrefix(std::u16string(u"A "))).Times(1);
    EXPECT_CALL(book, SetPostfix(_)).Times(0);
    EXPECT_CALL(book, SetPostfix(std::u16string(u" a"))).Times(1);
    const std::string document = Book(
        R"(<PrefixPostfixPairs><PrefixPostfixPair Prefix="A " Postfix=" a"/>)"
        R"(<PrefixPostfixPair Prefix="B " Postfix=" b"/></PrefixPostfixPairs>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, ReadsFloatColours) {
    CountingBook book;
    ON_CALL(book, FindFormat(std::u16string(u"f"))).WillByDefault(Return(0));
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{0.5, 0.25, -1.0})));
    EXPECT_CALL(book, SetSwatchValuesNative(1, 0, HoldsDoubles(std::vector<double>{1.23, 0.0, 0.0})));
    const std::string document = Book(std::string(kRgbFloat) +
                                      R"(<Swatches><Sp N="a"><C F="f">0.5 0.25 -1</C></Sp>)"
                                      R"(<Sp N="b"><C F="f">1.2.3</C></Sp></Swatches>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, FillsARealBookWithFloatColoursOfThreeChannels) {
    ReferenceBook book;
    const std::string document = Book(
        R"(<Formats><Format ID="f" Channels="3" ColorSpace="LAB" Encoding="Float"/></Formats>)"
        R"(<Swatches><Sp N="a"><C F="f">0.5 0.25 -1</C></Sp><Pl N="b"><C F="f">1.2.3</C></Pl></Swatches>)");
    ASSERT_EQ(Read(document, book), formats::kReadOK);
    ASSERT_EQ(book.GetFormatChannels(0), 3);
    ASSERT_EQ(book.CountSwatches(), 2);
    const ReferenceSwatch& a = book.GetSwatchRecord(0);
    EXPECT_EQ(a.kind, 1);
    EXPECT_EQ(a.colorSpace, 3);
    EXPECT_THAT(a.values, testing::ElementsAre(0.5, 0.25, -1.0, 0.0));
    const ReferenceSwatch& b = book.GetSwatchRecord(1);
    EXPECT_EQ(b.kind, 3);
    EXPECT_THAT(b.values, testing::ElementsAre(1.23, 0.0, 0.0, 0.0));
}

TEST(ReadXmlSwatchbook, WrapsIntegerColours) {
    CountingBook book;
    ON_CALL(book, FindFormat(std::u16string(u"b"))).WillByDefault(Return(0));
    ON_CALL(book, FindFormat(std::u16string(u"w"))).WillByDefault(Return(1));
    ON_CALL(book, GetFormatChannels(_)).WillByDefault(Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(1));
    ON_CALL(book, GetFormatEncoding(1)).WillByDefault(Return(2));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsBytes(std::vector<std::uint8_t>{44, 255, 0})));
    EXPECT_CALL(book, SetSwatchValuesNative(1, 1, HoldsUint16s(std::vector<std::uint16_t>{4464, 65535, 0})));
    const std::string document = Book(R"(<Swatches><Sp><C F="b">300 -1 256</C></Sp>)"
                                      R"(<Sp><C F="w">70000 -1 65536</C></Sp></Swatches>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AColourWithoutFormatUsesTheFirstFormat) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(1));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, FindFormat(_)).Times(0);
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{0.75})));
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr N="g"><C>0.75</C></Pr></Swatches>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AColourOfAnUnknownFormatIsDropped) {
    CountingBook book;
    EXPECT_CALL(book, FindFormat(std::u16string(u"none"))).WillOnce(Return(-1));
    EXPECT_CALL(book, GetFormatChannels(_)).Times(0);
    EXPECT_CALL(book, SetSwatchValuesNative(_, _, _)).Times(0);
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr><C F="none">1</C></Pr></Swatches>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AFormatWithoutChannelsGetsNoValues) {
    CountingBook book;
    EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(0)).WillOnce(Return(-5));
    EXPECT_CALL(book, SetSwatchValuesNative(_, _, _)).Times(0);
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr><C>1</C></Pr><Pr><C>2</C></Pr></Swatches>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AFormatOfMoreChannelsThanAnyColourBookUsesIsDropped) {
    CountingBook book;
    EXPECT_CALL(book, GetFormatChannels(0)).WillOnce(Return(256)).WillOnce(Return(257)).WillOnce(Return(1 << 30));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>(256, 0.0))));
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr><C/></Pr><Pr><C/></Pr><Pr><C/></Pr></Swatches>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, CollectsOnlyTheTextOfTheColourItself) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{1.0, 3.0, 0.0})));
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr>9<C>1 <x>2<y>5</y></x> 3</C>8<A>7</A></Pr></Swatches>)"), book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, CollectsCdataAndCharacterReferences) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{0.5, 0.25, 12.0})));
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr><C><![CDATA[0.5]]>&#32;0.25&#x20;&#49;2</C></Pr></Swatches>)"), book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, StartsEachColourWithAnEmptyText) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(1));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{12.0})));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{34.0})));
    EXPECT_EQ(Read(Book(R"(<Swatches><Pr><C>12</C><C>34</C></Pr></Swatches>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, ASpacerIsAnEmptyPlaceOnlyWhenSpacersAreKept) {
    {
        CountingBook book;
        EXPECT_CALL(book, AddSwatch(_)).Times(0);
        EXPECT_CALL(book, SetSwatchKind(_, _)).Times(0);
        EXPECT_EQ(Read(Book(R"(<Swatches><Spacer N="x"><Sp/></Spacer></Swatches>)"), book), formats::kReadOK);
    }
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
        EXPECT_CALL(book, SetSwatchKind(0, 4));
        EXPECT_CALL(book, EndFill());
    }
    EXPECT_EQ(Read(Book(R"(<Swatches><Spacer N="x"><Sp/></Spacer></Swatches>)"), book, kXmlSwatchbookKeepSpacers),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, ASpacerDoesNotBecomeTheCurrentSwatch) {
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(Return(1));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, _)).Times(1);
    EXPECT_EQ(Read(Book(R"(<Swatches><Sp><C>1</C><Spacer/></Sp><Spacer/></Swatches>)"), book,
                   kXmlSwatchbookKeepSpacers),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, CutsLocalisationKeysInAttributeValues) {
    CountingBook book;
    EXPECT_CALL(book, SetTitle(std::u16string(u"Pastels")));
    EXPECT_CALL(book, SetCopyright(std::u16string()));
    EXPECT_CALL(book, SetVersion(7));
    EXPECT_EQ(Read(Book("", R"(Title="$$$/Book/Title=Pastels" Copyright="$$$abc" Version="$$$/V=7")"), book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, KeepsLocalisationKeysWithFlagBitZero) {
    CountingBook book;
    EXPECT_CALL(book, SetTitle(std::u16string(u"$$$/Book/Title=Pastels")));
    EXPECT_CALL(book, SetCopyright(std::u16string(u"$$$abc")));
    EXPECT_CALL(book, SetVersion(0));
    EXPECT_EQ(Read(Book("", R"(Title="$$$/Book/Title=Pastels" Copyright="$$$abc" Version="$$$/V=7")"), book,
                   kXmlSwatchbookKeepKeys),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, CutsKeysInFormatSwatchAndPairAttributesAndColourFormatNames) {
    CountingBook book;
    EXPECT_CALL(book, SetFormatID(0, std::u16string(u"f")));
    EXPECT_CALL(book, SetFormatColorSpaceName(0, std::u16string(u"LAB")));
    EXPECT_CALL(book, SetFormatColorSpace(0, 3));
    EXPECT_CALL(book, SetFormatEncoding(0, 2));
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"Red")));
    EXPECT_CALL(book, FindFormat(std::u16string(u"f"))).WillOnce(Return(-1));
    EXPECT_CALL(book, SetPrefix(std::u16string(u"P")));
    const std::string document = Book(
        R"(<Formats><Format ID="$$$/F=f" ColorSpace="$$$/S=LAB" Encoding="$$$/E=Int16"/></Formats>)"
        R"(<Swatches><Sp N="$$$/N/Red=Red"><C F="$$$/F=f"/></Sp></Swatches>)"
        R"(<PrefixPostfixPairs><PrefixPostfixPair Prefix="$$$/P=P"/></PrefixPostfixPairs>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, MapsUnknownColourSpacesToCustomAndUnknownEncodingsToZero) {
    CountingBook book;
    EXPECT_CALL(book, SetFormatColorSpaceName(0, std::u16string(u"Gray")));
    EXPECT_CALL(book, SetFormatColorSpace(0, 1));
    EXPECT_CALL(book, SetFormatColorSpaceName(1, std::u16string(u"HSB")));
    EXPECT_CALL(book, SetFormatColorSpace(1, 1));
    EXPECT_CALL(book, SetFormatEncoding(0, 0));
    EXPECT_CALL(book, SetFormatEncoding(1, 0));
    EXPECT_CALL(book, SetFormatColorSpaceName(2, std::u16string(u"XYZ")));
    EXPECT_CALL(book, SetFormatColorSpace(2, 6));
    const std::string document = Book(
        R"(<Formats><Format ColorSpace="Gray" Encoding="Int32"/><Format ColorSpace="HSB" Encoding="float"/>)"
        R"(<Format ColorSpace="XYZ"/></Formats>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, ReadsChannelsAsADecimalInteger) {
    CountingBook book;
    EXPECT_CALL(book, SetFormatChannels(0, 1215752191));
    EXPECT_CALL(book, SetFormatChannels(1, -3));
    EXPECT_CALL(book, SetFormatChannels(2, 0));
    EXPECT_EQ(Read(Book(R"(<Formats><Format Channels="99999999999"/><Format Channels=" -3x"/>)"
                        R"(<Format Channels="three"/></Formats>)"),
                   book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, SkipsUnknownElementsWithEverythingInside) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, EndFill());
    }
    const std::string document = Book(
        R"(<Other><Swatches><Sp N="no"/></Swatches></Other>)"
        R"(<Formats><Group><Format ID="no"/></Group></Formats>)"
        R"(<Swatches><Group><Sp N="no"/></Group></Swatches>)"
        R"(<PrefixPostfixPairs><Group><PrefixPostfixPair Prefix="no"/></Group></PrefixPostfixPairs>)"
        R"(<Swatches xmlns:x="urn:x"><x:Sp N="no"/><sp/><SP/></Swatches>)");
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, SkipsWhatAFormatHolds) {
    CountingBook book;
    EXPECT_CALL(book, AddFormat()).Times(1);
    EXPECT_EQ(Read(Book(R"(<Formats><Format ID="a"><Format ID="b"/></Format></Formats>)"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AMalformedDocumentKeepsWhatWasAddedAndEndsTheFill) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
        EXPECT_CALL(book, SetSwatchKind(0, 1));
        EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"kept")));
        EXPECT_CALL(book, EndFill());
    }
    EXPECT_EQ(Read(R"(<OrvikSwatchbook><Swatches><Sp N="kept"/><Sp N=lost/>)", book),
              formats::kReadXmlParseError);
}

TEST(ReadXmlSwatchbook, ADeclaredEncodingTheParserDoesNotKnowFails) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, EndFill());
    }
    EXPECT_EQ(Read(R"(<?xml version="1.0" encoding="x-unknown-8"?><OrvikSwatchbook Title="t"/>)", book),
              formats::kReadXmlParseError);
}

TEST(ReadXmlSwatchbook, ReadsADeclaredLatinOneDocument) {
    CountingBook book;
    EXPECT_CALL(book, SetTitle(std::u16string(u"Caf\u00E9")));
    EXPECT_EQ(Read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><OrvikSwatchbook Title=\"Caf\xE9\"/>", book),
              formats::kReadOK);
}

TEST(ReadXmlSwatchbook, ConvertsNamesBeyondTheBasicPlaneToSurrogatePairs) {
    CountingBook book;
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"\u00E9\U0001F3A8")));
    EXPECT_EQ(Read(Book("<Swatches><Sp N=\"\xC3\xA9&#x1F3A8;\"/></Swatches>"), book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, LoadsNoExternalEntities) {
    CountingBook book;
    EXPECT_CALL(book, SetTitle(_)).Times(0);
    EXPECT_CALL(book, AddSwatch(_)).Times(0);
    const std::string document =
        R"(<!DOCTYPE OrvikSwatchbook [<!ENTITY ext SYSTEM "file:///etc/hostname">]>)"
        R"(<OrvikSwatchbook><Swatches>&ext;</Swatches></OrvikSwatchbook>)";
    EXPECT_EQ(Read(document, book), formats::kReadOK);
}

TEST(ReadXmlSwatchbook, AnExceptionOfTheBookPassesThroughAndStopsTheRead) {
    StrictBook book;
    {
        InSequence order;
        EXPECT_CALL(book, BeginFill());
        EXPECT_CALL(book, AddSwatch(-1)).WillOnce(Return(0));
        EXPECT_CALL(book, SetSwatchKind(0, 1)).WillOnce(testing::Throw(kv::Error(kv::kCantHappenErr, nullptr)));
    }
    try {
        Read(Book(R"(<Swatches><Sp N="a"/><Sp N="b"/></Swatches>)"), book);
        FAIL() << "the book's exception was swallowed";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kv::kCantHappenErr);
    }
}

}  // namespace
