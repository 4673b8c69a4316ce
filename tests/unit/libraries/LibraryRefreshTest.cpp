// Keeping the list in line with the disk: files and folders added, deleted
// and put back between refreshes, folders whose times moved or did not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "CKVLibraryList.h"
#include "LibraryListTesting.h"

namespace {

using library_testing::kUserFolder;
using testing::ElementsAre;
using testsupport::FileTimeAt;

// Long before any scan, and long after.
constexpr std::int64_t kPast = 1'000'000'000;
std::int64_t Future() { return std::time(nullptr) + 3600; }

class LibraryRefreshTest : public library_testing::LibraryListTest {
protected:
    void SetUp() override {
        LibraryListTest::SetUp();
        for (const char* name : {"user/a.ose", "user/b.ose", "user/c.ose", "user/sub/d.ose", "user/sub/deep/e.ose",
                                 "user/sub/deep/deeper/f.ose"}) {
            tree_.File(name);
        }
        MapFolder(kUserFolder, "user");
        InitList();
        ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
        ASSERT_THAT(Listed(), ElementsAre("user/a.ose", "user/b.ose", "user/c.ose", "user/sub/d.ose",
                                          "user/sub/deep/deeper/f.ose", "user/sub/deep/e.ose"));
        Unchanged({"user", "user/sub", "user/sub/deep", "user/sub/deep/deeper"});
    }

    // Folder times that did not move since any scan.
    void Unchanged(std::initializer_list<const char*> folders) {
        for (const char* folder : folders) tree_.SetTime(folder, kPast);
    }
    void Changed(const char* folder) { tree_.SetTime(folder, Future()); }
};

TEST_F(LibraryRefreshTest, NothingChangedChangesNothing) {
    const CKVLibrary* b = Find("user/b.ose");
    list_->RefreshAll();
    EXPECT_EQ(Listed().size(), 6u);
    EXPECT_EQ(Find("user/b.ose"), b);
    EXPECT_EQ(list_->ChangeCount(), 1u);
}

TEST_F(LibraryRefreshTest, RefreshingNotesItsStartAsTheLastScanTime) {
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_REALTIME, &before);
    list_->RefreshAll();
    clock_gettime(CLOCK_REALTIME, &after);
    EXPECT_GE(kv::platform::Ticks(list_->LastScanTime()), kv::platform::Ticks(FileTimeAt(before.tv_sec, before.tv_nsec)));
    EXPECT_LE(kv::platform::Ticks(list_->LastScanTime()), kv::platform::Ticks(FileTimeAt(after.tv_sec, after.tv_nsec)));
}

TEST_F(LibraryRefreshTest, ADeletedFileStaysAMissingNodeAndComesBackUnderItWhenPutBack) {
    CKVLibrary* b = Find("user/b.ose");
    const CKVLibrary* c = list_->GetLibraryByIndex(2);
    tree_.Remove("user/b.ose");
    Changed("user");
    list_->RefreshAll();

    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/c.ose", "user/sub/d.ose", "user/sub/deep/deeper/f.ose",
                                      "user/sub/deep/e.ose"));
    EXPECT_EQ(list_->GetLibraryByIndex(1), c);
    EXPECT_EQ(list_->CountListedLibraries(false), 5);
    EXPECT_EQ(Find("user/b.ose"), b);
    EXPECT_TRUE(b->IsMissing());
    EXPECT_EQ(list_->ChangeCount(), 2u);

    tree_.File("user/b.ose");
    Changed("user");
    list_->RefreshAll();
    EXPECT_EQ(Listed().size(), 6u);
    EXPECT_EQ(list_->GetLibraryByIndex(1), b);
    EXPECT_FALSE(b->IsMissing());
    EXPECT_EQ(list_->ChangeCount(), 3u);
}

TEST_F(LibraryRefreshTest, OneRescanThatMarksSeveralFilesMissingCountsOnce) {
    tree_.Remove("user/a.ose");
    tree_.Remove("user/c.ose");
    Changed("user");
    list_->RefreshAll();
    EXPECT_EQ(list_->CountListedLibraries(false), 4);
    EXPECT_EQ(list_->ChangeCount(), 2u);
}

TEST_F(LibraryRefreshTest, AFolderThreeDeepWhoseTimeMovedIsRescannedThroughFoldersThatDidNot) {
    tree_.File("user/sub/deep/deeper/new.ose");
    Changed("user/sub/deep/deeper");
    list_->RefreshAll();
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/b.ose", "user/c.ose", "user/sub/d.ose",
                                      "user/sub/deep/deeper/f.ose", "user/sub/deep/deeper/new.ose",
                                      "user/sub/deep/e.ose"));
    EXPECT_EQ(list_->ChangeCount(), 2u);
}

TEST_F(LibraryRefreshTest, AFileAddedToAFolderWhoseTimeDidNotMoveWaitsUntilItMoves) {
    tree_.File("user/new.ose");
    Unchanged({"user"});
    list_->RefreshAll();
    EXPECT_EQ(Find("user/new.ose"), nullptr);
    EXPECT_EQ(list_->CountListedLibraries(false), 6);

    Changed("user");
    list_->RefreshAll();
    EXPECT_NE(Find("user/new.ose"), nullptr);
    EXPECT_EQ(list_->CountListedLibraries(false), 7);
}

TEST_F(LibraryRefreshTest, ANewFolderIsListedWithItsContents) {
    tree_.File("user/more/g.ose");
    tree_.File("user/more/h.ose");
    Changed("user");
    list_->RefreshAll();
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/b.ose", "user/c.ose", "user/more/g.ose", "user/more/h.ose",
                                      "user/sub/d.ose", "user/sub/deep/deeper/f.ose", "user/sub/deep/e.ose"));
    EXPECT_EQ(list_->ChangeCount(), 2u);
}

TEST_F(LibraryRefreshTest, ADeletedFolderHidesItsContentsAndStaysHiddenWhenMadeAgain) {
    tree_.Remove("user/sub/deep");
    Changed("user/sub");
    list_->RefreshAll();
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/b.ose", "user/c.ose", "user/sub/d.ose"));
    EXPECT_EQ(list_->CountListedLibraries(true), 5);
    EXPECT_TRUE(Find("user/sub/deep/e.ose")->IsMissing());

    tree_.File("user/sub/deep/e.ose");
    Changed("user/sub");
    Changed("user/sub/deep");
    list_->RefreshAll();
    EXPECT_TRUE(Find("user/sub/deep")->IsMissing());
    EXPECT_EQ(list_->CountListedLibraries(false), 4);
}

TEST_F(LibraryRefreshTest, RememberedFilesAreNotRefreshed) {
    tree_.File("r/remembered.ose");
    Remember({"r/remembered.ose"});
    ASSERT_EQ(list_->ReadPersistentList(), kv::kNoErr);
    ASSERT_EQ(list_->OpenPersistentLibraries(), kv::kNoErr);
    tree_.Remove("r/remembered.ose");
    list_->RefreshAll();
    EXPECT_EQ(list_->CountListedLibraries(false), 7);
}

TEST_F(LibraryRefreshTest, ALinkToAListedFileAddsNothing) {
    CKVLibrary* b = Find("user/b.ose");
    tree_.Remove("user/b.ose");
    tree_.Link("user/b-link.ose", tree_.At("user/c.ose"));
    Changed("user");
    list_->RefreshAll();
    // The link names c, which is listed already: nothing new.
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/c.ose", "user/sub/d.ose", "user/sub/deep/deeper/f.ose",
                                      "user/sub/deep/e.ose"));
    EXPECT_TRUE(b->IsMissing());
}

}  // namespace
