#include "BookDump.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "swatchbook/ReferenceBook.h"

namespace {

std::string Dump(std::int32_t result, const ReferenceBook& book, bool pretty = false) {
    std::ostringstream out;
    tool::DumpBook(out, result, book, pretty);
    return out.str();
}

TEST(DumpBook, WritesAnEmptyBook) {
    ReferenceBook book;
    EXPECT_EQ(Dump(5, book),
              "{\"result\": 5, \"book\": {\"version\": 0, \"pageSize\": 0, \"pageKeyOffset\": 0, \"bookId\": 0, "
              "\"title\": \"\", \"copyright\": \"\", \"prefix\": \"\", \"postfix\": \"\", "
              "\"formats\": [], \"swatches\": []}}");
}

TEST(DumpBook, WritesPropertiesStoredFormatStringsAndSwatchRecords) {
    ReferenceBook book;
    book.SetVersion(2);
    book.SetPageSize(7);
    book.SetPageKeyOffset(3);
    book.SetBookID(3005);
    book.SetTitle(u"Past\u00e9ls");
    book.SetCopyright(u"\"c\"");
    book.SetPrefix(u"P ");
    book.SetPostfix(u" C");
    book.AddFormat();
    book.SetFormatColorSpace(0, 4);
    book.SetFormatEncoding(0, 3);
    book.AddFormat();
    book.SetFormatColorSpace(1, 3);
    book.SetFormatEncoding(1, 1);
    book.SetFormatCondition(1, u"D50");
    book.SetFormatColorSpaceName(1, u"Lab");
    book.SetFormatID(1, u"lab");
    book.AddSwatch(-1);
    book.SetSwatchKind(0, 2);
    book.SetSwatchName(0, std::u16string{u'R', char16_t(0xDC00)});
    const double rgb[] = {1.0, 0.1, std::nan("")};
    book.SetSwatchValuesNative(0, 0, rgb);
    book.AddSwatch(-1);

    EXPECT_EQ(Dump(0, book),
              "{\"result\": 0, \"book\": {\"version\": 2, \"pageSize\": 7, \"pageKeyOffset\": 3, \"bookId\": 3005, "
              "\"title\": \"Past\\u00e9ls\", \"copyright\": \"\\u0022c\\u0022\", \"prefix\": \"P \", "
              "\"postfix\": \" C\", \"formats\": ["
              "{\"colorSpace\": 4, \"encoding\": 3, \"channels\": 3, \"condition\": \"\", \"colorSpaceName\": \"\", "
              "\"id\": \"\"}, "
              "{\"colorSpace\": 3, \"encoding\": 1, \"channels\": 3, \"condition\": \"D50\", "
              "\"colorSpaceName\": \"Lab\", \"id\": \"lab\"}], "
              "\"swatches\": ["
              "{\"kind\": 2, \"name\": \"R\\udc00\", \"colorSpace\": 4, \"values\": [1, 0.10000000000000001, \"NaN\", 0]}, "
              "{\"kind\": 0, \"name\": \"\", \"colorSpace\": 0, \"values\": [0, 0, 0, 0]}]}}");
}

TEST(DumpBook, WritesAFullLengthNameWhole) {
    ReferenceBook book;
    book.AddSwatch(-1);
    const std::u16string name(31, u'x');
    ASSERT_TRUE(book.SetSwatchName(0, name));
    EXPECT_NE(Dump(0, book).find("\"name\": \"" + std::string(31, 'x') + "\""), std::string::npos);
}

TEST(DumpBook, PrettyIndentsAndNamesEachCodeBesideItsNumber) {
    ReferenceBook book;
    book.AddFormat();
    book.SetFormatColorSpace(0, 5);
    book.SetFormatEncoding(0, 3);
    book.AddSwatch(-1);
    book.SetSwatchKind(0, 1);
    book.SetSwatchName(0, u"Ink");
    const double cmyk[] = {1, 0, 0, 0};
    book.SetSwatchValuesNative(0, 0, cmyk);
    book.AddSwatch(-1);
    EXPECT_EQ(Dump(5, book, true),
              "{\n"
              "  \"result\": 5,\n"
              "  \"resultMeaning\": \"the data ended early\",\n"
              "  \"book\": {\n"
              "    \"version\": 0,\n"
              "    \"pageSize\": 0,\n"
              "    \"pageKeyOffset\": 0,\n"
              "    \"bookId\": 0,\n"
              "    \"title\": \"\",\n"
              "    \"copyright\": \"\",\n"
              "    \"prefix\": \"\",\n"
              "    \"postfix\": \"\",\n"
              "    \"formats\": [\n"
              "      {\n"
              "        \"colorSpace\": 5,\n"
              "        \"colorSpaceMeaning\": \"CMYK\",\n"
              "        \"encoding\": 3,\n"
              "        \"encodingMeaning\": \"Float\",\n"
              "        \"channels\": 4,\n"
              "        \"condition\": \"\",\n"
              "        \"colorSpaceName\": \"\",\n"
              "        \"id\": \"\"\n"
              "      }\n"
              "    ],\n"
              "    \"swatches\": [\n"
              "      {\n"
              "        \"kind\": 1,\n"
              "        \"kindMeaning\": \"spot\",\n"
              "        \"name\": \"Ink\",\n"
              "        \"colorSpace\": 5,\n"
              "        \"colorSpaceMeaning\": \"CMYK\",\n"
              "        \"values\": [1, 0, 0, 0]\n"
              "      },\n"
              "      {\n"
              "        \"kind\": 0,\n"
              "        \"kindMeaning\": \"no kind (an empty place)\",\n"
              "        \"name\": \"\",\n"
              "        \"colorSpace\": 0,\n"
              "        \"colorSpaceMeaning\": \"none\",\n"
              "        \"values\": [0, 0, 0, 0]\n"
              "      }\n"
              "    ]\n"
              "  }\n"
              "}");
}

TEST(DumpBook, ACodeWithoutAMeaningIsCalledUnknown) {
    const ReferenceBook book;
    EXPECT_NE(Dump(77, book, true).find("\"result\": 77,\n  \"resultMeaning\": \"unknown\",\n"), std::string::npos);
}

}  // namespace
