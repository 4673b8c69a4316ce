#include "LibraryFormat.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using tool::LibraryFormat;
using testsupport::TemporaryFolder;

const std::string kXml = "<OrvikSwatchbook/>";

TEST(LibraryFormatFromName, KnowsTheThreeFormats) {
    EXPECT_EQ(tool::LibraryFormatFromName("ocb"), LibraryFormat::kColorBook);
    EXPECT_EQ(tool::LibraryFormatFromName("ose"), LibraryFormat::kSwatchExchange);
    EXPECT_EQ(tool::LibraryFormatFromName("xml"), LibraryFormat::kXmlSwatchbook);
    EXPECT_FALSE(tool::LibraryFormatFromName("auto"));
    EXPECT_FALSE(tool::LibraryFormatFromName("OCB"));
}

TEST(DetectLibraryFormat, GoesByTheExtensionFirstInAnyCase) {
    TemporaryFolder folder;
    const auto colorBook = testsupport::BuildColorBook(testsupport::SampleColorBook());
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book.xml", colorBook)), LibraryFormat::kXmlSwatchbook);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book.OSE", colorBook)), LibraryFormat::kSwatchExchange);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book.Ocb", kXml)), LibraryFormat::kColorBook);
}

TEST(DetectLibraryFormat, GoesByTheMagicWithoutAKnownExtension) {
    TemporaryFolder folder;
    const auto colorBook = testsupport::BuildColorBook(testsupport::SampleColorBook());
    const auto exchange = testsupport::BuildSwatchExchange(testsupport::SampleSwatchExchange());
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book", colorBook)), LibraryFormat::kColorBook);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book.bin", exchange)), LibraryFormat::kSwatchExchange);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("book.txt", kXml)), LibraryFormat::kXmlSwatchbook);
}

TEST(DetectLibraryFormat, TakesShortAndEmptyFilesForXml) {
    TemporaryFolder folder;
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("empty", std::string())), LibraryFormat::kXmlSwatchbook);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("short", std::string("OSE"))), LibraryFormat::kXmlSwatchbook);
    EXPECT_EQ(tool::DetectLibraryFormat(folder.Write("short2", std::string("7KC"))), LibraryFormat::kXmlSwatchbook);
}

}  // namespace
