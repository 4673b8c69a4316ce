// Reading a colour book or an XML swatchbook the host names into a book of
// the caller, as other plug-ins will ask the module to.
#include <gtest/gtest.h>

#include <KVFileSuites.h>

#include "ImportTesting.h"
#include "tests/support/ByteWriter.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/InProcessHost.h"
#include "KVError.h"
#include "formats/handlers/BookImport.h"
#include "swatchbook/ReferenceBook.h"
#include "tests/support/ColorBookBuilder.h"

namespace {

using testsupport::HostPath;

class BookImportTest : public testsupport::InProcessHostTest {
protected:
    kv::ResultCode ErrorOf(void (*import)(KVFilePathRef, OrvikSwatchbook*), const std::filesystem::path& path,
                           OrvikSwatchbook* book) {
        const HostPath file(path);
        try {
            import(file.Get(), book);
        } catch (const kv::Error& error) {
            return error.Code();
        }
        return kv::kNoErr;
    }

    testsupport::TemporaryFolder folder_;
};

TEST_F(BookImportTest, AColourBookIsReadIntoTheGivenBook) {
    ReferenceBook book;
    EXPECT_EQ(ErrorOf(formats::ImportColorBook,
                      folder_.Write("sample.ocb", testsupport::BuildColorBook(testsupport::SampleColorBook())), &book),
              kv::kNoErr);
    EXPECT_EQ(book.CountSwatches(), 3);
    EXPECT_EQ(book.GetSwatchName(2, true), u"P Sky C");
    EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
}

TEST_F(BookImportTest, AnXmlSwatchbookIsReadIntoTheGivenBook) {
    const std::string text = R"(<OrvikSwatchbook Title="Inks"><Formats><Format ID="f" ColorSpace="RGB" )"
                             R"(Encoding="Float"/></Formats><Swatches><Sp N="Red"><C F="f">1 0 0</C></Sp>)"
                             R"(<Pl N="Blue"><C F="f">0 0 1</C></Pl></Swatches></OrvikSwatchbook>)";
    ReferenceBook book;
    EXPECT_EQ(ErrorOf(formats::ImportXmlSwatchbook, folder_.Write("inks.xml", testsupport::Bytes{text.begin(), text.end()}), &book),
              kv::kNoErr);
    EXPECT_EQ(book.GetTitle(), u"Inks");
    EXPECT_EQ(book.CountSwatches(), 2);
    EXPECT_EQ(book.GetSwatchName(1, false), u"Blue");
}

TEST_F(BookImportTest, ANullBookIsABadParameterAndTheFileIsNotOpened) {
    const std::filesystem::path path = folder_.Write("sample.ocb", testsupport::Bytes{});
    EXPECT_EQ(ErrorOf(formats::ImportColorBook, path, nullptr), kv::kBadParameterErr);
    EXPECT_EQ(ErrorOf(formats::ImportXmlSwatchbook, path, nullptr), kv::kBadParameterErr);
    EXPECT_EQ(Calls(kKVDataFilterSuite, "NewFileDataFilter"), 0u);
}

TEST_F(BookImportTest, AFileTheReaderFailsOnIsCantAndKeepsWhatWasRead) {
    testsupport::ColorBookDescription odd = testsupport::SampleColorBook();
    odd.colorSpace = 5;
    ReferenceBook book;
    EXPECT_EQ(ErrorOf(formats::ImportColorBook, folder_.Write("odd.ocb", testsupport::BuildColorBook(odd)), &book),
              kv::kCantHappenErr);
    EXPECT_EQ(book.GetTitle(), u"Sample Book");
    EXPECT_EQ(ErrorOf(formats::ImportXmlSwatchbook, folder_.Write("bad.xml", testsupport::Bytes{'<', 'a'}), &book),
              kv::kCantHappenErr);
    EXPECT_EQ(ErrorOf(formats::ImportXmlSwatchbook, folder_.Path() / "missing.xml", &book), kv::kCantHappenErr);
    EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
}

}  // namespace
