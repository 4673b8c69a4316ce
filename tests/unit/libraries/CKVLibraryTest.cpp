// A library node: its fields, its ten operations, state saving with its
// error conversion, refreshing against the disk and deleting subtrees.
#include "CKVLibrary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "LibraryListErrors.h"
#include "LibraryTesting.h"

namespace {

using library_testing::LoggingLibrary;
using library_testing::PathOf;
using library_testing::TextOf;
using testing::ElementsAre;
using testsupport::FileTimeAt;

constexpr kv::ResultCode kFail = kv::FourCC("FAIL");
const auto kDocument = reinterpret_cast<KVDocumentHandle>(0xD0C);

class CKVLibraryTest : public library_testing::LibraryTest {
protected:
    std::vector<std::string> log_;
};

TEST_F(CKVLibraryTest, ANewLibraryHoldsWhatItWasGivenAnEmptyNameAndTheTimeOfItsMaking) {
    const std::string file = tree_.File("lib/Brights.ose");
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_REALTIME, &before);
    std::unique_ptr<CKVLibrary> library;
    int context = 0;
    {
        const kv::FilePath path = PathOf(file);
        library = std::make_unique<CKVLibrary>(&context, true, path.Get(), 30007);
    }
    clock_gettime(CLOCK_REALTIME, &after);

    // The path was copied: the caller's is gone.
    EXPECT_EQ(TextOf(kv::PathStringOf(library->Path())), file);
    EXPECT_EQ(library->LibraryId(), 30007);
    EXPECT_EQ(library->Context(), &context);
    EXPECT_TRUE(library->IsFolder());
    EXPECT_FALSE(library->IsMissing());
    EXPECT_FALSE(library->StateSaved());
    EXPECT_TRUE(library->Name().IsEmpty());
    EXPECT_TRUE(library->ChildLibraries().empty());
    EXPECT_GE(kv::platform::Ticks(library->TimeStamp()), kv::platform::Ticks(FileTimeAt(before.tv_sec, before.tv_nsec)));
    EXPECT_LE(kv::platform::Ticks(library->TimeStamp()), kv::platform::Ticks(FileTimeAt(after.tv_sec, after.tv_nsec)));
}

TEST_F(CKVLibraryTest, ARootHasAnEmptyPath) {
    const CKVLibrary root(nullptr, true, nullptr, -2);
    EXPECT_TRUE(kv::IsEmptyPath(root.Path()));
    EXPECT_EQ(root.LibraryId(), -2);
}

TEST_F(CKVLibraryTest, TheConstantOperationsAnswerAsAPlainLibrary) {
    CKVLibrary library(nullptr, false, nullptr, 1);
    EXPECT_STREQ(library.GetBaseName(), "_Base");
    EXPECT_EQ(library.GetDocument(), nullptr);
    EXPECT_EQ(library.GetExtra(), nullptr);
}

TEST_F(CKVLibraryTest, UpdateTimeStampTakesTheFilesLastWriteTimeFollowingLinks) {
    tree_.File("lib/Brights.ose");
    tree_.Link("lib/link.ose", tree_.At("lib/Brights.ose"));
    tree_.SetTime("lib/Brights.ose", 1'600'000'000, 123'400);
    const kv::FilePath file = PathOf(tree_.At("lib/Brights.ose"));
    const kv::FilePath link = PathOf(tree_.At("lib/link.ose"));
    CKVLibrary byFile(nullptr, false, file.Get(), 1);
    CKVLibrary byLink(nullptr, false, link.Get(), 2);

    EXPECT_EQ(byFile.UpdateTimeStamp(), kv::kNoErr);
    EXPECT_EQ(byLink.UpdateTimeStamp(), kv::kNoErr);
    EXPECT_EQ(byFile.TimeStamp(), FileTimeAt(1'600'000'000, 123'400));
    EXPECT_EQ(byLink.TimeStamp(), FileTimeAt(1'600'000'000, 123'400));
}

TEST_F(CKVLibraryTest, UpdateTimeStampOfAMissingFileKeepsTheStamp) {
    const kv::FilePath path = PathOf(tree_.At("lib/gone.ose"));
    CKVLibrary library(nullptr, false, path.Get(), 1);
    const kv::platform::FileTime made = library.TimeStamp();
    EXPECT_EQ(library.UpdateTimeStamp(), kv::kNoErr);
    EXPECT_EQ(library.TimeStamp(), made);
}

TEST_F(CKVLibraryTest, OpenUpdatesTheTimeStampAndAnswersItsResult) {
    tree_.File("lib/Brights.ose");
    tree_.SetTime("lib/Brights.ose", 1'500'000'000);
    const kv::FilePath path = PathOf(tree_.At("lib/Brights.ose"));
    CKVLibrary library(nullptr, false, path.Get(), 1);
    EXPECT_EQ(library.Open(), kv::kNoErr);
    EXPECT_EQ(library.TimeStamp(), FileTimeAt(1'500'000'000));
}

TEST_F(CKVLibraryTest, ReloadOpensThenClosesWhateverOpenAnswers) {
    LoggingLibrary library(log_, "a");
    library.openResult = kFail;
    library.Reload();
    EXPECT_THAT(log_, ElementsAre("reload a", "open a", "close a"));
}

class RefreshTest : public CKVLibraryTest {
protected:
    void SetUp() override {
        CKVLibraryTest::SetUp();
        tree_.File("lib/Brights.ose");
        tree_.SetTime("lib/Brights.ose", 1'600'000'000, 500);
        path_ = std::make_unique<kv::FilePath>(PathOf(tree_.At("lib/Brights.ose")));
        library_ = std::make_unique<LoggingLibrary>(log_, "a", path_->Get());
        library_->document_ = kDocument;
        library_->UpdateTimeStamp();
        log_.clear();
    }
    void TearDown() override {
        library_.reset();
        path_.reset();
        CKVLibraryTest::TearDown();
    }

    std::unique_ptr<kv::FilePath> path_;
    std::unique_ptr<LoggingLibrary> library_;
};

TEST_F(RefreshTest, AFileWhoseTimeIsTheStampIsLeftAlone) {
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a"));
}

TEST_F(RefreshTest, ANewerFileIsReloaded) {
    tree_.SetTime("lib/Brights.ose", 1'600'000'000, 600);
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a", "reload a", "open a", "close a"));
    // Reloading stamped it with the file's time.
    log_.clear();
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a"));
}

TEST_F(RefreshTest, AnOlderFileIsReloadedAsANewerOneIs) {
    tree_.SetTime("lib/Brights.ose", 1'599'999'999, 500);
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a", "reload a", "open a", "close a"));
}

TEST_F(RefreshTest, ALibraryWithoutDocumentIsNeverReloaded) {
    library_->document_ = nullptr;
    tree_.SetTime("lib/Brights.ose", 1'700'000'000);
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a"));
}

TEST_F(RefreshTest, AFileThatIsGoneIsLeftAlone) {
    tree_.Remove("lib/Brights.ose");
    library_->Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh a"));
}

TEST_F(CKVLibraryTest, AFolderRefreshesItsChildrenInKeyOrderAndNothingElse) {
    LoggingLibrary folder(log_, "folder", nullptr, true);
    folder.document_ = kDocument;
    for (const char16_t* key : {u"/b", u"/c", u"/a"}) {
        LoggingLibrary& child = folder.Add(key, std::make_unique<LoggingLibrary>(log_, std::string(1, char(key[1]))));
        child.LogRefreshOnly();
    }
    log_.clear();
    folder.Refresh();
    EXPECT_THAT(log_, ElementsAre("refresh folder", "refresh a", "refresh b", "refresh c"));
}

TEST_F(CKVLibraryTest, AFolderWithoutChildrenRefreshesAndSavesToNothing) {
    LoggingLibrary folder(log_, "folder", nullptr, true);
    folder.Refresh();
    EXPECT_EQ(folder.SaveState(), kv::kNoErr);
    EXPECT_TRUE(folder.StateSaved());
    EXPECT_THAT(log_, ElementsAre("refresh folder", "save folder"));
}

TEST_F(CKVLibraryTest, SaveStateMarksEveryLibraryInKeyOrder) {
    LoggingLibrary root(log_, "root", nullptr, true);
    LoggingLibrary& b = root.Add(u"/b", std::make_unique<LoggingLibrary>(log_, "b", nullptr, true));
    LoggingLibrary& a = root.Add(u"/a", std::make_unique<LoggingLibrary>(log_, "a"));
    LoggingLibrary& inner = b.Add(u"/b/x", std::make_unique<LoggingLibrary>(log_, "x"));
    EXPECT_EQ(root.SaveState(), kv::kNoErr);
    EXPECT_THAT(log_, ElementsAre("save root", "save a", "save b", "save x"));
    for (const CKVLibrary* library : {static_cast<CKVLibrary*>(&root), static_cast<CKVLibrary*>(&a),
                                      static_cast<CKVLibrary*>(&b), static_cast<CKVLibrary*>(&inner)}) {
        EXPECT_TRUE(library->StateSaved());
    }
}

struct SavingCase {
    LoggingLibrary::Saving saving;
    kv::ResultCode code;      // what the failing child gives
    kv::ResultCode expected;  // what its parent answers
};

class SaveStateFailureTest : public CKVLibraryTest, public testing::WithParamInterface<SavingCase> {};

TEST_P(SaveStateFailureTest, TheFirstFailingChildEndsTheSavingWithItsCode) {
    LoggingLibrary root(log_, "root", nullptr, true);
    root.Add(u"/a", std::make_unique<LoggingLibrary>(log_, "a"));
    LoggingLibrary& failing = root.Add(u"/b", std::make_unique<LoggingLibrary>(log_, "b"));
    LoggingLibrary& after = root.Add(u"/c", std::make_unique<LoggingLibrary>(log_, "c"));
    failing.saving = GetParam().saving;
    failing.savingCode = GetParam().code;
    EXPECT_EQ(root.SaveState(), GetParam().expected);
    EXPECT_THAT(log_, ElementsAre("save root", "save a", "save b"));
    EXPECT_TRUE(root.StateSaved());
    EXPECT_FALSE(after.StateSaved());
}

INSTANTIATE_TEST_SUITE_P(
    EachFailure, SaveStateFailureTest,
    testing::Values(SavingCase{LoggingLibrary::Saving::kCode, kFail, kFail},
                    SavingCase{LoggingLibrary::Saving::kKvError, kFail, kFail},
                    SavingCase{LoggingLibrary::Saving::kStdException, 0, kv::FourCC("STEX")},
                    SavingCase{LoggingLibrary::Saving::kBadAlloc, 0, kv::FourCC("STEX")},
                    SavingCase{LoggingLibrary::Saving::kInteger, 4711, 4711},
                    SavingCase{LoggingLibrary::Saving::kUnknown, 0, kv::FourCC("UNEX")}));

TEST_F(CKVLibraryTest, AFailureDeepInTheTreeReachesTheTop) {
    LoggingLibrary root(log_, "root", nullptr, true);
    LoggingLibrary& folder = root.Add(u"/a", std::make_unique<LoggingLibrary>(log_, "a", nullptr, true));
    LoggingLibrary& file = folder.Add(u"/a/x", std::make_unique<LoggingLibrary>(log_, "x"));
    file.saving = LoggingLibrary::Saving::kStdException;
    EXPECT_EQ(root.SaveState(), kv::FourCC("STEX"));
}

TEST(LibraryListErrors, TheErrorThrowerNamesTheLibraryListAndItsLine) {
    try {
        ThrowLibraryListError(kFail);
        FAIL() << "nothing was thrown";
    } catch (const kv::Error& error) {
        EXPECT_EQ(error.Code(), kFail);
        EXPECT_STREQ(error.what(), "KV exception from ErrorThrower declared in file: CKVLibraryList line: 894 ");
    }
}

TEST_F(CKVLibraryTest, DeletingAFolderDeletesItsWholeSubtree) {
    auto root = std::make_unique<LoggingLibrary>(log_, "root", nullptr, true);
    LoggingLibrary& a = root->Add(u"/a", std::make_unique<LoggingLibrary>(log_, "a", nullptr, true));
    LoggingLibrary& b = a.Add(u"/a/b", std::make_unique<LoggingLibrary>(log_, "b", nullptr, true));
    b.Add(u"/a/b/c", std::make_unique<LoggingLibrary>(log_, "c"));
    root->Add(u"/d", std::make_unique<LoggingLibrary>(log_, "d"));
    root.reset();
    EXPECT_THAT(log_, testing::UnorderedElementsAre("delete root", "delete a", "delete b", "delete c", "delete d"));
}

TEST_F(CKVLibraryTest, AChildUnderAKeyTakenAlreadyIsDeletedAndTheFirstStays) {
    LoggingLibrary root(log_, "root", nullptr, true);
    LoggingLibrary& first = root.Add(u"/a", std::make_unique<LoggingLibrary>(log_, "first"));
    root.Add(u"/a", std::make_unique<LoggingLibrary>(log_, "second"));
    ASSERT_EQ(root.ChildLibraries().size(), 1u);
    EXPECT_EQ(root.ChildLibraries().begin()->second.get(), &first);
    EXPECT_THAT(log_, ElementsAre("delete second"));
}

}  // namespace
