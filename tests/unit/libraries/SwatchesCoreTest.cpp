// The plug-in's library: display names, opening a library file as a host
// document and handing out its swatch list.
#include "SwatchesCore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CKVLibraryList.h"
#include "LibraryListTesting.h"

namespace {

using library_testing::kUserFolder;
using library_testing::PathOf;
using library_testing::TextOf;
using testing::ElementsAre;

constexpr const char* kDocumentJson =
    R"({"name": "Greens", "groups": [{"name": "", "swatches": [{"name": "Leaf", "kind": "rgb", "values": [0, 1, 0]}]}]})";

class SwatchesCoreTest : public library_testing::LibraryListTest {
protected:
    std::string NameOf(const std::string& relative, bool isFolder = false) {
        const kv::FilePath path = PathOf(tree_.At(relative));
        const SwatchesCore library(nullptr, 30000, path.Get(), isFolder ? 1 : 7, isFolder);
        return TextOf(library.Name());
    }

    std::uint64_t SwatchListCalls() { return Calls("KV Swatch List Suite", "GetSwatchList"); }
};

TEST_F(SwatchesCoreTest, TheDisplayNameLeavesOutALibraryExtensionOnly) {
    EXPECT_EQ(NameOf("Brights.ose"), "Brights");
    EXPECT_EQ(NameOf("Brights.txt"), "Brights.txt");
    EXPECT_EQ(NameOf("Book.ocb"), "Book");
    EXPECT_EQ(NameOf("Document.kv"), "Document");
    EXPECT_EQ(NameOf("archive.tar.ose"), "archive.tar");
    EXPECT_EQ(NameOf("Plain"), "Plain");
    EXPECT_EQ(NameOf("Greens", true), "Greens");
}

TEST_F(SwatchesCoreTest, TheExtensionIsComparedByteForByte) {
    EXPECT_EQ(NameOf("Upper.OSE"), "Upper.OSE");
    EXPECT_EQ(NameOf("Mixed.Ocb"), "Mixed.Ocb");
    EXPECT_EQ(NameOf("Longer.osex"), "Longer.osex");
}

TEST_F(SwatchesCoreTest, ThePluginsOwnLibraryHasNoPathAndNoName) {
    const SwatchesCore own(&context_, 20000);
    EXPECT_EQ(own.LibraryId(), 20000);
    EXPECT_EQ(own.Context(), &context_);
    EXPECT_TRUE(own.Name().IsEmpty());
    EXPECT_TRUE(kv::IsEmptyPath(own.Path()));
    EXPECT_FALSE(own.IsFolder());
    EXPECT_FALSE(own.IsOpen());
}

TEST_F(SwatchesCoreTest, ALibraryNeverOpenedHasNoSwatchListAndTheHostIsNotAsked) {
    const kv::FilePath path = PathOf(tree_.File("Greens.kv", kDocumentJson));
    const SwatchesCore library(nullptr, 30000, path.Get(), 7, false);
    const std::uint64_t before = SwatchListCalls();
    EXPECT_EQ(library.GetSwatchList(), nullptr);
    EXPECT_EQ(library.GetDocument(), nullptr);
    EXPECT_EQ(SwatchListCalls(), before);
}

TEST_F(SwatchesCoreTest, OpeningMakesANewHostDocumentEachTimeAndLeavesTheStamp) {
    const kv::FilePath path = PathOf(tree_.File("Greens.kv", kDocumentJson));
    SwatchesCore library(nullptr, 30000, path.Get(), 7, false);
    const kv::platform::FileTime stamp = library.TimeStamp();

    ASSERT_EQ(library.Open(), kv::kNoErr);
    const KVDocumentHandle first = library.GetDocument();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(library.IsOpen());
    const kelvra::Document* document = host_.Documents().Find(first);
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(library.GetSwatchList(), document->SwatchList());
    ASSERT_EQ(document->SwatchCount(), 1u);
    EXPECT_EQ(document->NthSwatch(0)->name, u"Leaf");

    library.Reload();
    EXPECT_NE(library.GetDocument(), first);
    EXPECT_NE(host_.Documents().Find(library.GetDocument()), nullptr);
    EXPECT_EQ(library.TimeStamp(), stamp);
}

TEST_F(SwatchesCoreTest, AFileThatCannotBeOpenedAnswersTheHostsCodeAndStaysClosed) {
    const kv::FilePath path = PathOf(tree_.At("Gone.kv"));
    SwatchesCore library(nullptr, 30000, path.Get(), 7, false);
    EXPECT_NE(library.Open(), kv::kNoErr);
    EXPECT_FALSE(library.IsOpen());
    EXPECT_EQ(library.GetSwatchList(), nullptr);
}

TEST_F(SwatchesCoreTest, AHostThatCannotGiveTheSwatchListGivesNone) {
    const kv::FilePath path = PathOf(tree_.File("Greens.kv", kDocumentJson));
    SwatchesCore library(nullptr, 30000, path.Get(), 7, false);
    ASSERT_EQ(library.Open(), kv::kNoErr);
    host_.Faults().FailCall({"KV Swatch List Suite", "GetSwatchList", 1, false, kv::FourCC("FALT")});
    EXPECT_EQ(library.GetSwatchList(), nullptr);
    EXPECT_NE(library.GetSwatchList(), nullptr);
}

// Numbers its libraries as the plug-in's factory does.
std::int32_t nextId = 30000;
void MakeSwatchesCore(CKVLibrary*& library, KVFilePathRef path, bool isFolder) {
    library = new SwatchesCore(nullptr, nextId++, path, isFolder ? 1 : 7, isFolder);
}

TEST_F(SwatchesCoreTest, TwoLibrariesMadeForOnePathGetTwoIdsAndTheListKeepsTheFirst) {
    tree_.File("user/Brights.ose");
    MapFolder(kUserFolder, "user");
    nextId = 30000;
    ASSERT_EQ(list_->Init(&context_, &MakeSwatchesCore), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_EQ(nextId, 30002);
    ASSERT_EQ(list_->CountListedLibraries(false), 1);
    const CKVLibrary* kept = list_->GetLibraryByIndex(0);
    EXPECT_EQ(kept->LibraryId(), 30000);
    EXPECT_EQ(TextOf(kept->Name()), "Brights");
}

}  // namespace
