// "KV Tintora Suite" as another plug-in sees it: published at start-up,
// emptied at unload, gone at shut-down, and each function's answers at the
// edges of its arguments.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "ImportTesting.h"
#include "SuiteTesting.h"

namespace {

using import_testing::DescribeSwatches;
using import_testing::Shown;
using suite_testing::CodeText;
using suite_testing::kExcludedFolder;
using suite_testing::kUserFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ZPErr kParameter = ZP_FOURCC('P', 'A', 'R', 'M');
constexpr ZPErr kNoDocument = ZP_FOURCC('D', 'O', 'C', '?');

class PublishedSuiteTest : public suite_testing::SuiteTest {};

TEST_F(PublishedSuiteTest, TheSuiteIsPublishedInVersion1AndAnotherVersionIsRefused) {
    const void* suite = nullptr;
    EXPECT_EQ(host_.BasicSuite()->AcquireSuite(kKVTintoraSuite, 2, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(suite, nullptr);
    ASSERT_EQ(host_.BasicSuite()->AcquireSuite(kKVTintoraSuite, 1, &suite), kZPNoErr);
    EXPECT_EQ(suite, plugin_->Tintora());
    EXPECT_EQ(host_.BasicSuite()->ReleaseSuite(kKVTintoraSuite, 1), kZPNoErr);
    // Its table is a host block of 14 entries under the suite's name.
    const kelvra::BlockCounts blocks = host_.LiveBlocks();
    EXPECT_THAT(blocks.blockNames, testing::Contains("KV Tintora Suite"));
}

TEST_F(PublishedSuiteTest, WithNoLibraryFoldersAndNothingRememberedThereIsOneLibrary) {
    host_.Folders() = kelvra::HostFolders();
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(Name(1), "PARM");
}

TEST_F(PublishedSuiteTest, TheLibrariesAreTheFilesOfTheFoldersByPathAfterTheOwnLibrary) {
    Library("user-88/Zeta.ose");
    Library("user-88/Brights.ose");
    Library("user-88/Sub/Inner.ocb");
    Library("user-88/.hidden.ose");
    Library("user-88/notes.txt");
    Library("user-89/Other.kv");
    Library("application-33/App.ocb");
    EXPECT_EQ(Count(), 7);
    EXPECT_THAT(Names(), ElementsAre("App", "Brights", "Inner", "Zeta", "notes.txt", "Other"));
}

TEST_F(PublishedSuiteTest, AFileDeletedLeavesTheListAtTheNextCallAndComesBackWhenPutBack) {
    Library("user-88/Alpha.ose");
    const std::string beta = Library("user-88/Beta.ose");
    Library("user-88/Gamma.ose");
    ASSERT_EQ(Count(), 4);
    // The folder's time is set past the last refresh: a refresh looks into
    // folders whose time moved.
    const auto Moved = [&] {
        const std::filesystem::file_time_type later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
        std::filesystem::last_write_time(Home(kUserFolder), later);
    };
    std::filesystem::remove(beta);
    Moved();
    EXPECT_EQ(Count(), 3);
    EXPECT_THAT(Names(), ElementsAre("Alpha", "Gamma"));
    Library("user-88/Beta.ose");
    Moved();
    EXPECT_EQ(Count(), 4);
    EXPECT_THAT(Names(), ElementsAre("Alpha", "Beta", "Gamma"));
}

TEST_F(PublishedSuiteTest, TheHostFolderOfType72IsNeverListed) {
    Library(std::string(kExcludedFolder) + "/Inside.ose");
    Library(std::string(kUserFolder) + "/Outside.ose");
    EXPECT_EQ(Count(), 2);
    EXPECT_THAT(Names(), ElementsAre("Outside"));
}

TEST_F(PublishedSuiteTest, GetLibraryNameOfIndex0AnswersParmAndLeavesTheNameEmpty) {
    Library("user-88/Brights.ose");
    ASSERT_EQ(Count(), 2);
    KVUnicodeStringRef name = plugin_->NewString("left over");
    EXPECT_EQ(Suite().GetLibraryName(0, name), kParameter);
    EXPECT_EQ(plugin_->TextOf(name), "");
    plugin_->Strings().Dispose(name);
    EXPECT_EQ(Name(-1), "PARM");
    EXPECT_EQ(Name(2), "PARM");
    EXPECT_EQ(Suite().GetLibraryName(1, nullptr), kParameter);
}

TEST_F(PublishedSuiteTest, NamesAreKnownOnlyOnceTheLibrariesWereLookedFor) {
    Library("user-88/Brights.ose");
    EXPECT_EQ(Name(1), "PARM");
    ASSERT_EQ(Count(), 2);
    EXPECT_EQ(Name(1), "Brights");
}

TEST_F(PublishedSuiteTest, OpeningALibraryGivesTheSwatchListOfANewDocumentOfItsFile) {
    Library("user-88/Book.ocb");
    ASSERT_EQ(Count(), 2);
    EXPECT_FALSE(Suite().IsLibraryOpen(1));
    KVSwatchListRef list = nullptr;
    EXPECT_EQ(Suite().GetLibrarySwatchList(1, &list), kParameter);

    ASSERT_EQ(Suite().OpenLibrary(1, &list), kZPNoErr);
    EXPECT_TRUE(Suite().IsLibraryOpen(1));
    const kelvra::Document* document = DocumentOf(list);
    ASSERT_NE(document, nullptr);
    EXPECT_THAT(DescribeSwatches(*document),
                ElementsAre("[]", "P Red 032 C: custom \"P Red 032 C\" tint 0", "P Grün C: custom \"P Grün C\" tint 0",
                            "P Sky C: custom \"P Sky C\" tint 0"));
    KVSwatchListRef same = nullptr;
    EXPECT_EQ(Suite().GetLibrarySwatchList(1, &same), kZPNoErr);
    EXPECT_EQ(same, list);

    // Each opening reads the file into a document of its own.
    KVSwatchListRef again = nullptr;
    ASSERT_EQ(Suite().OpenLibrary(1, &again), kZPNoErr);
    EXPECT_NE(again, list);
    EXPECT_EQ(DescribeSwatches(*DocumentOf(again)), DescribeSwatches(*document));
    EXPECT_THAT(Shown(host_), IsEmpty());
}

TEST_F(PublishedSuiteTest, IndicesOutsideTheListAreBadParameters) {
    Library("user-88/Book.ocb");
    ASSERT_EQ(Count(), 2);
    KVSwatchListRef list = nullptr;
    EXPECT_EQ(Suite().OpenLibrary(2, &list), kParameter);
    EXPECT_FALSE(Suite().IsLibraryOpen(2));
    EXPECT_EQ(Suite().GetLibrarySwatchList(2, &list), kParameter);
    EXPECT_EQ(Suite().OpenLibrary(1, nullptr), kParameter);
    EXPECT_EQ(Suite().CountLibraries(nullptr), kParameter);
}

TEST_F(PublishedSuiteTest, Index0AndBelowMeanTheOwnLibraryAndTheCurrentDocument) {
    KVSwatchListRef list = nullptr;
    // No document is current: the host's answer.
    EXPECT_EQ(Suite().GetLibrarySwatchList(0, &list), kNoDocument);
    kelvra::Document& current = host_.Documents().New("Current");
    EXPECT_EQ(Suite().GetLibrarySwatchList(-5, &list), kZPNoErr);
    EXPECT_EQ(list, current.SwatchList());
    EXPECT_FALSE(Suite().IsLibraryOpen(0));
}

TEST_F(PublishedSuiteTest, AFileOpenedFromElsewhereIsListedAfterTheFoldersLibrariesAndOpenedOnce) {
    Library("user-88/Brights.ose");
    const std::string elsewhere = Library("elsewhere/Far.ocb");
    ASSERT_EQ(Count(), 2);
    KVFilePathRef path = plugin_->NewPath(elsewhere);
    KVSwatchListRef list = nullptr;
    ASSERT_EQ(Suite().OpenLibraryFile(path, &list), kZPNoErr);
    ASSERT_NE(DocumentOf(list), nullptr);
    EXPECT_EQ(Count(), 3);
    EXPECT_THAT(Names(), ElementsAre("Brights", "Far"));
    EXPECT_TRUE(Suite().IsLibraryOpen(2));
    // Open already: the same document's list.
    KVSwatchListRef again = nullptr;
    ASSERT_EQ(Suite().OpenLibraryFile(path, &again), kZPNoErr);
    EXPECT_EQ(again, list);
    plugin_->Paths().Dispose(path);
}

TEST_F(PublishedSuiteTest, OpenLibraryFileRefusesAnEmptyPathAndAFileThatIsNotThere) {
    KVFilePathRef empty = nullptr;
    ASSERT_EQ(plugin_->Paths().New(&empty), kZPNoErr);
    KVFilePathRef gone = plugin_->NewPath(Home("gone.ose"));
    KVSwatchListRef list = nullptr;
    EXPECT_EQ(Suite().OpenLibraryFile(empty, &list), kParameter);
    EXPECT_EQ(Suite().OpenLibraryFile(gone, &list), kParameter);
    EXPECT_EQ(Suite().OpenLibraryFile(nullptr, &list), kParameter);
    EXPECT_EQ(Count(), 1);
    plugin_->Paths().Dispose(empty);
    plugin_->Paths().Dispose(gone);
}

TEST_F(PublishedSuiteTest, AFileTheHostCannotOpenAnswersTheHostsCodeAndStaysClosed) {
    Library("user-88/notes.txt");
    ASSERT_EQ(Count(), 2);
    KVSwatchListRef list = nullptr;
    const ZPErr result = Suite().OpenLibrary(1, &list);
    EXPECT_NE(result, kZPNoErr);
    EXPECT_NE(result, kParameter);
    EXPECT_FALSE(Suite().IsLibraryOpen(1));
}

TEST_F(PublishedSuiteTest, AfterUnloadAndReloadTheSuiteStaysPublishedWithEveryEntryEmpty) {
    ASSERT_EQ(module_->Unload(), kZPNoErr);
    const KVTintoraSuite empty{};
    EXPECT_EQ(std::memcmp(plugin_->Tintora(), &empty, sizeof empty), 0);
    ASSERT_EQ(module_->Reload(), kZPNoErr);
    EXPECT_EQ(std::memcmp(plugin_->Tintora(), &empty, sizeof empty), 0);
    const void* suite = nullptr;
    ASSERT_EQ(host_.BasicSuite()->AcquireSuite(kKVTintoraSuite, 1, &suite), kZPNoErr);
    EXPECT_EQ(suite, plugin_->Tintora());
    host_.BasicSuite()->ReleaseSuite(kKVTintoraSuite, 1);
}

TEST_F(PublishedSuiteTest, AfterShutdownTheSuiteIsGoneWithItsTable) {
    plugin_.reset();
    ASSERT_EQ(module_->Shutdown(), kZPNoErr);
    const void* suite = nullptr;
    EXPECT_EQ(host_.BasicSuite()->AcquireSuite(kKVTintoraSuite, 1, &suite), kZPSuiteNotFoundErr);
    EXPECT_EQ(host_.LiveBlocks().blocks, 0u);
    // Started again, it publishes anew.
    ASSERT_EQ(module_->Startup(), kZPNoErr);
    plugin_ = std::make_unique<suite_testing::OtherPlugin>(host_);
    ASSERT_NE(plugin_->Tintora(), nullptr);
    EXPECT_EQ(Count(), 1);
}

TEST_F(PublishedSuiteTest, ASecondStartupAfterAFailedOneBuildsANewObjectFromScratch) {
    plugin_.reset();
    ASSERT_EQ(module_->Shutdown(), kZPNoErr);
    Library("user-88/Brights.ose");
    host_.Faults().MakeSuiteUnavailable("ZP Suites Suite");
    EXPECT_EQ(module_->Startup(), kZPSuiteNotFoundErr);
    EXPECT_EQ(module_->Globals(), nullptr);
    EXPECT_THAT(import_testing::Leftovers(host_), IsEmpty());
    host_.Faults().Clear();
    ASSERT_EQ(module_->Startup(), kZPNoErr);
    plugin_ = std::make_unique<suite_testing::OtherPlugin>(host_);
    ASSERT_NE(plugin_->Tintora(), nullptr);
    EXPECT_EQ(Count(), 2);
    EXPECT_THAT(Names(), ElementsAre("Brights"));
}

TEST_F(PublishedSuiteTest, OpenLibraryWithIndex0OpensTheOwnLibrary) {
    EXPECT_FALSE(Suite().IsLibraryOpen(0));
    KVSwatchListRef list = nullptr;
    ASSERT_EQ(Suite().OpenLibrary(0, &list), kZPNoErr);
    const kelvra::Document* document = DocumentOf(list);
    ASSERT_NE(document, nullptr);
    // The own library has no file: the host opens it as a new empty document.
    EXPECT_TRUE(host_.Documents().IsHidden(*document));
    EXPECT_EQ(document->SwatchCount(), 0u);
    EXPECT_TRUE(Suite().IsLibraryOpen(0));
    EXPECT_TRUE(Suite().IsLibraryOpen(-3));
}

TEST_F(PublishedSuiteTest, OpeningTheOwnLibraryWhenThereIsNoneAnswersDocQuestion) {
    plugin_.reset();
    ASSERT_EQ(module_->Shutdown(), kZPNoErr);
    // Start-up goes on without memory for the own library: find the
    // allocation that makes it by failing each in turn.
    bool seen = false;
    for (std::uint64_t nth = 1; nth <= 200 && !seen; ++nth) {
        host_.Faults().FailBlockAllocation(nth, false);
        const ZPErr started = module_->Startup();
        host_.Faults().Clear();
        if (started != kZPNoErr) continue;
        suite_testing::OtherPlugin other(host_);
        KVSwatchListRef list = nullptr;
        const ZPErr opened = other.Tintora()->OpenLibrary(0, &list);
        if (opened == kNoDocument) {
            seen = true;
            EXPECT_FALSE(other.Tintora()->IsLibraryOpen(0));
        }
        ASSERT_EQ(module_->Shutdown(), kZPNoErr) << nth;
    }
    EXPECT_TRUE(seen);
    ASSERT_EQ(module_->Startup(), kZPNoErr);
    plugin_ = std::make_unique<suite_testing::OtherPlugin>(host_);
}

TEST_F(PublishedSuiteTest, IsColorBookFileReadsTheMagicOfTheCallersFilter) {
    const std::string book = Library("book.ocb");
    const std::string exchange = Library("book.ose");
    const std::string empty = Home("empty.ocb");
    std::ofstream(empty).close();
    auto Check = [&](const std::string& file) {
        KVFilePathRef path = plugin_->NewPath(file);
        KVDataFilterRef filter = nullptr;
        EXPECT_EQ(plugin_->Filters().NewFileDataFilter(path, "read", 0, 0, &filter), kZPNoErr);
        EXPECT_EQ(plugin_->Filters().LinkDataFilter(nullptr, filter), kZPNoErr);
        const ZPBoolean is = Suite().IsColorBookFile(filter);
        EXPECT_EQ(plugin_->Filters().UnlinkDataFilter(filter, nullptr), kZPNoErr);
        plugin_->Paths().Dispose(path);
        return is != 0;
    };
    EXPECT_TRUE(Check(book));
    EXPECT_FALSE(Check(exchange));
    EXPECT_FALSE(Check(empty));
    EXPECT_EQ(Suite().IsColorBookFile(nullptr), 0);
}

}  // namespace
