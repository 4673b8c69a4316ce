// Damaged and hostile documents: each ends with its result, in bounded time
// and memory, and the book keeps what was added before the failure.
#include "formats/xml/XmlSwatchbookReader.h"

#include <expat.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "XmlReaderTesting.h"
#include "formats/ReaderResult.h"
#include "swatchbook/ReferenceBook.h"

namespace {

using namespace xmltesting;
using testing::_;
using testing::SizeIs;

const std::string kValidDocument =
    R"(<?xml version="1.0" encoding="UTF-8"?>)"
    R"(<OrvikSwatchbook Version="1" Title="$$$/T=Small" BookID="7" Copyright="us">)"
    R"(<Formats><Format ID="lab" ColorSpace="LAB" Encoding="Int8"/>)"
    R"(<Format ID="rgb" ColorSpace="RGB" Encoding="Float"/></Formats>)"
    R"(<Swatches><Sp N="One" ID="1"><C F="lab">128 20 30</C></Sp><Spacer/>)"
    R"(<Pr N="Two &amp; more"><C F="rgb">0.5 0.25 1</C><A><C F="lab">1 2 3</C></A></Pr>)"
    R"(<Pl N="Three"><C>1 2 3</C></Pl></Swatches>)"
    R"(<PrefixPostfixPairs><PrefixPostfixPair Prefix="P " Postfix=" C"/></PrefixPostfixPairs>)"
    R"(</OrvikSwatchbook>)";

// Whether the parser itself, with no handlers, accepts the document.
bool ParserAccepts(const std::string& document) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    const bool accepted =
        XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return accepted;
}

XML_Error ParserError(const std::string& document) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE);
    const XML_Error error = XML_GetErrorCode(parser);
    XML_ParserFree(parser);
    return error;
}

// Swatch elements whose start tag ends within the first `length` bytes.
std::int32_t SwatchTagsWithin(const std::string& document, std::size_t length) {
    std::int32_t count = 0;
    for (const char* tag : {"<Sp ", "<Pr ", "<Pl "}) {
        for (std::size_t at = document.find(tag); at != std::string::npos; at = document.find(tag, at + 1)) {
            if (document.find('>', at) < length) ++count;
        }
    }
    return count;
}

TEST(ReadXmlSwatchbookHostile, TheValidDocumentReads) {
    ReferenceBook book;
    EXPECT_EQ(Read(kValidDocument, book), formats::kReadOK);
    EXPECT_EQ(book.CountSwatches(), 3);
    EXPECT_EQ(book.GetTitle(), u"Small");
    EXPECT_EQ(book.GetSwatchName(1, false), u"Two & more");
}

TEST(ReadXmlSwatchbookHostile, EveryTruncationFailsAndKeepsTheSwatchesBeforeIt) {
    for (std::size_t length = 0; length < kValidDocument.size(); ++length) {
        const std::string truncated = kValidDocument.substr(0, length);
        CountingBook book;
        EXPECT_CALL(book, BeginFill()).Times(1);
        EXPECT_CALL(book, AddSwatch(-1)).Times(SwatchTagsWithin(kValidDocument, length));
        EXPECT_CALL(book, EndFill()).Times(1);
        ASSERT_EQ(Read(truncated, book), formats::kReadXmlParseError) << "truncated at " << length;
        ASSERT_TRUE(testing::Mock::VerifyAndClearExpectations(&book)) << "truncated at " << length;
    }
}

TEST(ReadXmlSwatchbookHostile, EveryFlippedByteGivesTheParsersVerdict) {
    for (const std::uint8_t mask : {0xFF, 0x20, 0x01}) {
        for (std::size_t at = 0; at < kValidDocument.size(); ++at) {
            std::string damaged = kValidDocument;
            damaged[at] = static_cast<char>(damaged[at] ^ mask);
            const std::int32_t expected = ParserAccepts(damaged) ? formats::kReadOK : formats::kReadXmlParseError;
            ReferenceBook book;
            ASSERT_EQ(Read(damaged, book), expected) << "byte " << at << " ^ " << int(mask);
            ASSERT_LE(book.CountSwatches(), 3) << "byte " << at << " ^ " << int(mask);
        }
    }
}

TEST(ReadXmlSwatchbookHostile, NestingFarDeeperThanTheStateStackIsSkippedAndPopsBack) {
    constexpr int kDepth = 100000;
    std::string document = R"(<OrvikSwatchbook><Swatches><Sp N="outer">)";
    for (int i = 0; i < kDepth; ++i) document += "<Sp N=\"inner\">";
    for (int i = 0; i < kDepth; ++i) document += "</Sp>";
    document += R"(</Sp><Sp N="after"/></Swatches></OrvikSwatchbook>)";
    ReferenceBook book;
    EXPECT_EQ(Read(document, book), formats::kReadOK);
    ASSERT_EQ(book.CountSwatches(), 2);
    EXPECT_EQ(book.GetSwatchName(0, false), u"outer");
    EXPECT_EQ(book.GetSwatchName(1, false), u"after");
}

TEST(ReadXmlSwatchbookHostile, ElementsJustBeyondTheStackDepthAreSkippedAndTheirEndsPopCorrectly) {
    // The root is at depth 1; these put elements at depths up to 254..258.
    for (const int depth : {253, 254, 255, 256, 257}) {
        std::string document = "<OrvikSwatchbook>";
        for (int i = 0; i < depth; ++i) document += "<Swatches>";
        document += R"(<Sp N="deep"/>)";
        for (int i = 0; i < depth; ++i) document += "</Swatches>";
        document += R"(<Swatches><Sp N="shallow"/></Swatches></OrvikSwatchbook>)";
        CountingBook book;
        EXPECT_CALL(book, SetSwatchName(_, _)).Times(0);
        EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"shallow")));
        EXPECT_EQ(Read(document, book), formats::kReadOK) << depth;
    }
}

TEST(ReadXmlSwatchbookHostile, AnEntityExpansionBombStopsAtTheParsersLimitKeepingEarlierSwatches) {
    std::string declarations = R"(<!ENTITY e0 "0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 ">)";
    for (int level = 1; level <= 9; ++level) {
        declarations += "<!ENTITY e" + std::to_string(level) + " \"";
        for (int i = 0; i < 10; ++i) declarations += "&e" + std::to_string(level - 1) + ";";
        declarations += "\">";
    }
    const std::string document = "<!DOCTYPE OrvikSwatchbook [" + declarations + "]>" +
                                 Book(R"(<Swatches><Sp N="before"/><Sp N="bomb"><C>&e9;</C></Sp></Swatches>)");
    ASSERT_EQ(ParserError(document), XML_ERROR_AMPLIFICATION_LIMIT_BREACH);

    ReferenceBook book;
    EXPECT_EQ(Read(document, book), formats::kReadXmlParseError);
    ASSERT_EQ(book.CountSwatches(), 2);
    EXPECT_EQ(book.GetSwatchName(0, false), u"before");
    EXPECT_EQ(book.GetSwatchName(1, false), u"bomb");
}

TEST(ReadXmlSwatchbookHostile, AnEntityExpansionBombInAnAttributeStopsToo) {
    std::string declarations = R"(<!ENTITY e0 "abcdefghijklmnopqrstuvwxyz">)";
    for (int level = 1; level <= 9; ++level) {
        declarations += "<!ENTITY e" + std::to_string(level) + " \"";
        for (int i = 0; i < 10; ++i) declarations += "&e" + std::to_string(level - 1) + ";";
        declarations += "\">";
    }
    const std::string document = "<!DOCTYPE OrvikSwatchbook [" + declarations + "]>" + Book("", "Title=\"&e9;\"");
    CountingBook book;
    EXPECT_CALL(book, SetTitle(_)).Times(0);
    EXPECT_CALL(book, EndFill());
    EXPECT_EQ(Read(document, book), formats::kReadXmlParseError);
}

TEST(ReadXmlSwatchbookHostile, AFiftyMegabyteAttributeValueIsFedInPiecesAndRead) {
    constexpr std::size_t kValueSize = 50'000'000;
    const std::string document = Book(R"(<Swatches><Sp N="before"/></Swatches>)",
                                      "Title=\"" + std::string(kValueSize, 'x') + "\"");
    CountingBook book;
    EXPECT_CALL(book, SetTitle(SizeIs(kValueSize)));
    EXPECT_CALL(book, SetSwatchName(0, std::u16string(u"before")));
    auto stream = testsupport::MemoryStream::Reading(Bytes(document));
    EXPECT_EQ(formats::ReadXmlSwatchbook(stream, book, 0), formats::kReadOK);
    EXPECT_EQ(stream.ReadCalls(), document.size() / 256000 + 1);
}

TEST(ReadXmlSwatchbookHostile, AFiftyMegabyteColourTextIsCollectedInPiecesAndRead) {
    constexpr std::size_t kTextSize = 50'000'000;
    const std::string text = "0.5 0.25 -1" + std::string(kTextSize - 11, ' ');
    const std::string document = Book("<Swatches><Sp N=\"big\"><C>" + text + "</C></Sp></Swatches>");
    CountingBook book;
    ON_CALL(book, GetFormatChannels(0)).WillByDefault(testing::Return(3));
    ON_CALL(book, GetFormatEncoding(0)).WillByDefault(testing::Return(3));
    EXPECT_CALL(book, SetSwatchValuesNative(0, 0, HoldsDoubles(std::vector<double>{0.5, 0.25, -1.0})));
    auto stream = testsupport::MemoryStream::Reading(Bytes(document));
    EXPECT_EQ(formats::ReadXmlSwatchbook(stream, book, 0), formats::kReadOK);
    EXPECT_EQ(stream.ReadCalls(), document.size() / 256000 + 1);
}

TEST(ReadXmlSwatchbookHostile, InvalidUtf8FailsAndKeepsTheSwatchesBefore) {
    for (const char* bad : {"\xFF", "\xC3(", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC0\xAF"}) {
        ReferenceBook book;
        const std::string document = Book("<Swatches><Sp N=\"ok\"/><Sp N=\"" + std::string(bad) + "\"/></Swatches>");
        EXPECT_EQ(Read(document, book), formats::kReadXmlParseError);
        ASSERT_EQ(book.CountSwatches(), 1);
        EXPECT_EQ(book.GetSwatchName(0, false), u"ok");
    }
}

std::string Utf16(const std::u16string& text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : u"\uFEFF" + text) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

TEST(ReadXmlSwatchbookHostile, AUtf16DocumentWithAByteOrderMarkReads) {
    const std::u16string document =
        u"<OrvikSwatchbook Title=\"Caf\u00E9\"><Swatches><Sp N=\"\U0001F3A8 \u20AC\"/></Swatches></OrvikSwatchbook>";
    for (const bool bigEndian : {false, true}) {
        ReferenceBook book;
        EXPECT_EQ(Read(Utf16(document, bigEndian), book), formats::kReadOK);
        EXPECT_EQ(book.GetTitle(), u"Caf\u00E9");
        ASSERT_EQ(book.CountSwatches(), 1);
        EXPECT_EQ(book.GetSwatchName(0, false), u"\U0001F3A8 \u20AC");
    }
}

}  // namespace
