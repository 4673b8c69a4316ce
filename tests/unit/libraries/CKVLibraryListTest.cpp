// Gathering libraries from the host's folders and the remembered files,
// and finding them by index and by path, on real trees.
#include "CKVLibraryList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LibraryListTesting.h"
#include "text/Utf8.h"

namespace {

using library_testing::kApplicationFolder;
using library_testing::kSecondApplicationFolder;
using library_testing::kSecondUserFolder;
using library_testing::kUserFolder;
using library_testing::PathOf;
using library_testing::TestFactory;
using library_testing::TextOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr kv::ResultCode kParameter = kv::FourCC("PARM");

class CKVLibraryListTest : public library_testing::LibraryListTest {};

TEST_F(CKVLibraryListTest, InitNeedsAContextAndAFactory) {
    EXPECT_EQ(list_->Init(nullptr, &TestFactory::Make), kParameter);
    EXPECT_EQ(list_->Init(&context_, nullptr), kParameter);
    EXPECT_EQ(list_->Init(&context_, &TestFactory::Make), kv::kNoErr);
}

TEST_F(CKVLibraryListTest, ANewListHasNoLibrariesAndTheDefaultPrefix) {
    const CKVLibraryList list;
    EXPECT_STREQ(list.PreferencePrefix(), "KVDefaultPersistentLibraryPrefix");
    EXPECT_EQ(list.ChangeCount(), 0u);
    EXPECT_EQ(list.ApplicationRoot(), nullptr);
    EXPECT_EQ(list.UserRoot(), nullptr);
    EXPECT_EQ(list.PersistentRoot(), nullptr);
}

TEST_F(CKVLibraryListTest, WithoutPreferencesOrWithACountOfZeroNothingIsRemembered) {
    InitList();
    EXPECT_THAT(list_->PersistentPaths(), IsEmpty());
    EXPECT_EQ(list_->ReadPersistentList(), kv::FourCC("NAM?"));
    WritePreferences(R"({"KVSwatchLibPersistentPrefix_count": 0})");
    EXPECT_EQ(list_->ReadPersistentList(), kv::kNoErr);
    EXPECT_THAT(list_->PersistentPaths(), IsEmpty());
}

TEST_F(CKVLibraryListTest, FoldersAreScannedInto3RootsInKeyOrderWholeTreesDeep) {
    tree_.File("app/Zeta.ocb");
    tree_.File("app/Alpha.ose");
    tree_.File("user/b.ose");
    tree_.File("user/a/deep/deeper/deepest.ose");
    tree_.File("user/a/x.ose");
    tree_.File("user/a.ose");
    tree_.File("user/B.ose");
    tree_.File("user/a b.ose");
    MapFolder(kApplicationFolder, "app");
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(0, kApplicationFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);

    // Exact code-unit order of the full paths: "B" before "a"; the folder
    // "a", a prefix of "a b.ose" and "a.ose", before both, with everything
    // in it; " " before ".".
    EXPECT_THAT(Listed(), ElementsAre("app/Alpha.ose", "app/Zeta.ocb", "user/B.ose", "user/a/deep/deeper/deepest.ose",
                                      "user/a/x.ose", "user/a b.ose", "user/a.ose", "user/b.ose"));
    EXPECT_EQ(list_->CountListedLibraries(false), 8);
    EXPECT_EQ(list_->CountListedLibraries(true), 11);
    EXPECT_EQ(list_->ChangeCount(), 1u);
    EXPECT_EQ(list_->ApplicationRoot()->LibraryId(), -1);
    EXPECT_EQ(list_->UserRoot()->LibraryId(), -2);
    EXPECT_TRUE(list_->ApplicationRoot()->IsFolder());
    EXPECT_TRUE(list_->ApplicationRoot()->Name().IsEmpty());
    EXPECT_EQ(TextOf(list_->UserRoot()->Name()), "User Defined");
    EXPECT_TRUE(kv::IsEmptyPath(list_->UserRoot()->Path()));
}

TEST_F(CKVLibraryListTest, KeysAreOrderedByUtf16CodeUnitsNotByCharacters) {
    // U+1F3A8 is written D83C DFA8 and so sorts before U+FF21 in code units,
    // after it in characters; U+00E9 sorts after every ASCII letter.
    tree_.File("user/\xEF\xBC\xA1.ose");
    tree_.File("user/\xF0\x9F\x8E\xA8.ose");
    tree_.File("user/\xC3\xA9.ose");
    tree_.File("user/z.ose");
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/z.ose", "user/\xC3\xA9.ose", "user/\xF0\x9F\x8E\xA8.ose",
                                      "user/\xEF\xBC\xA1.ose"));
}

TEST_F(CKVLibraryListTest, OneIndexRunsOverTheRootsInTheirOrderAndTellsTheRoot) {
    tree_.File("app/a.ocb");
    tree_.File("user/u.ose");
    tree_.File("elsewhere/r.ose");
    MapFolder(kApplicationFolder, "app");
    MapFolder(kUserFolder, "user");
    Remember({"elsewhere/r.ose"});
    InitList();
    // Added in the other order: the index follows the roots, not the additions.
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(0, kApplicationFolder), kv::kNoErr);
    ASSERT_EQ(list_->OpenPersistentLibraries(), kv::kNoErr);

    EXPECT_THAT(Listed(), ElementsAre("app/a.ocb", "user/u.ose", "elsewhere/r.ose"));
    std::int32_t root = 99;
    for (std::int32_t i = 0; i < 3; ++i) {
        ASSERT_NE(list_->GetLibraryByIndex(i, &root), nullptr);
        EXPECT_EQ(root, i);
    }
    root = 99;
    EXPECT_EQ(list_->GetLibraryByIndex(3, &root), nullptr);
    EXPECT_EQ(list_->GetLibraryByIndex(-1, &root), nullptr);
    EXPECT_EQ(root, 99);
    EXPECT_EQ(list_->GetLibraryByIndex(list_->CountListedLibraries(false)), nullptr);
}

TEST_F(CKVLibraryListTest, HiddenFilesAndFoldersAreNeverListed) {
    tree_.File("user/.hidden.ose");
    tree_.File("user/.cache/inside.ose");
    tree_.File("user/shown/.also-hidden.ose");
    tree_.File("user/shown/seen.ose");
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/shown/seen.ose"));
    EXPECT_EQ(list_->CountListedLibraries(true), 2);
}

TEST_F(CKVLibraryListTest, LinksAreFollowedToTheirTargetsAndDanglingOnesLeftOut) {
    tree_.File("other/target.ose");
    tree_.File("other/folder/in-folder.ose");
    tree_.File("user/plain.ose");
    tree_.Link("user/to-file.ose", tree_.At("other/target.ose"));
    tree_.Link("user/to-folder", tree_.At("other/folder"));
    tree_.Link("user/chain.ose", tree_.At("user/to-file.ose"));
    tree_.Link("user/dangling.ose", tree_.At("other/gone.ose"));
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);

    // A link is listed under its target's path: the chain and the direct
    // link name one library; the folder link is a folder library.
    EXPECT_THAT(Listed(), ElementsAre("other/folder/in-folder.ose", "other/target.ose", "user/plain.ose"));
    EXPECT_EQ(list_->CountListedLibraries(true), 4);
    const auto& children = list_->UserRoot()->ChildLibraries();
    const auto folder = children.find(kv::Utf8ToUtf16(tree_.At("other/folder")));
    ASSERT_NE(folder, children.end());
    EXPECT_TRUE(folder->second->IsFolder());
    // Its path lies outside the user folders, so a search by path looks
    // among the remembered files and does not find it.
    EXPECT_EQ(Find("other/folder"), nullptr);
    EXPECT_EQ(Find("other/target.ose"), nullptr);
}

TEST_F(CKVLibraryListTest, ALinkToAnAncestorIsListedButNotScannedAgain) {
    tree_.File("user/a.ose");
    tree_.File("user/sub/b.ose");
    tree_.Link("user/sub/up", tree_.At("user"));
    tree_.Link("user/self", tree_.At("user"));
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "user/sub/b.ose"));
}

TEST_F(CKVLibraryListTest, FoldersDeeperThanTheLimitAreNotScanned) {
    std::string deep = "user";
    for (std::size_t level = 0; level < CKVLibraryList::kMaxFolderDepth + 3; ++level) {
        deep += "/d";
        tree_.File(deep + "/f.ose");
    }
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    // The library folder itself and the folders below it down to the limit.
    EXPECT_EQ(list_->CountListedLibraries(false), std::int32_t(CKVLibraryList::kMaxFolderDepth) - 1);
}

TEST_F(CKVLibraryListTest, AddingTheSameFolderTwiceAddsNothingTheSecondTime) {
    tree_.File("user/a.ose");
    tree_.File("user/sub/b.ose");
    MapFolder(kUserFolder, "user");
    MapFolder(kSecondUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    const std::vector<std::string> first = Listed();
    const CKVLibrary* a = Find("user/a.ose");
    const std::size_t asked = TestFactory::asked.size();
    ASSERT_EQ(list_->AddLibraryFolder(1, kSecondUserFolder), kv::kNoErr);

    EXPECT_EQ(Listed(), first);
    EXPECT_EQ(Find("user/a.ose"), a);
    EXPECT_EQ(list_->UserFolders().size(), 2u);
    // The factory was asked again for each path; the new libraries went.
    EXPECT_EQ(TestFactory::asked.size(), 2 * asked);
    EXPECT_EQ(list_->ChangeCount(), 1u);
}

TEST_F(CKVLibraryListTest, TheFactoryNumbersEveryLibraryItMakesAlsoThoseTheListDropsOrItRefuses) {
    tree_.File("user/a.ose");
    tree_.File("user/b.ose");
    tree_.File("user/c.ose");
    MapFolder(kUserFolder, "user");
    TestFactory::refused.insert(tree_.At("user/b.ose"));
    TestFactory::throwing.insert(tree_.At("user/c.ose"));
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose"));
    EXPECT_EQ(TestFactory::nextId, 30003);
}

TEST_F(CKVLibraryListTest, AHostFolderThatIsNotThereAddsNothing) {
    InitList();
    EXPECT_EQ(list_->AddLibraryFolder(1, 4711), kv::kNoErr);
    EXPECT_EQ(list_->UserRoot(), nullptr);
    EXPECT_THAT(list_->UserFolders(), IsEmpty());
    // The first folder asked for starts the count all the same.
    EXPECT_EQ(list_->ChangeCount(), 1u);
}

TEST_F(CKVLibraryListTest, TheHostsRefusalOfAFolderIsAnswered) {
    InitList();
    host_.Faults().FailCall({"KV Folders Suite", "FindFolder", 1, false, kv::FourCC("FLDR")});
    EXPECT_EQ(list_->AddLibraryFolder(0, kApplicationFolder), kv::FourCC("FLDR"));
    EXPECT_EQ(list_->ApplicationRoot(), nullptr);
}

TEST_F(CKVLibraryListTest, UserFoldersAreMadeApplicationFoldersAreNot) {
    MapFolder(kApplicationFolder, "app", false);
    MapFolder(kUserFolder, "user", false);
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(0, kApplicationFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_FALSE(std::filesystem::exists(tree_.At("app")));
    EXPECT_TRUE(std::filesystem::is_directory(tree_.At("user")));
    EXPECT_EQ(list_->CountListedLibraries(true), 0);
}

TEST_F(CKVLibraryListTest, RemembersTheFilesOfThePreferencesInPathOrderOnceEach) {
    for (const char* name : {"r/c.ose", "r/a.ose", "r/b.ose"}) tree_.File(name);
    Remember({"r/c.ose", "r/a.ose", "r/c.ose", "r/gone.ose", "r/b.ose"});
    InitList();
    std::vector<std::string> remembered;
    for (const kv::FilePath& path : list_->PersistentPaths()) remembered.push_back(Relative(path.Get()));
    // The one that does not exist is dropped quietly; the one after it is read.
    EXPECT_THAT(remembered, ElementsAre("r/a.ose", "r/b.ose", "r/c.ose"));
}

TEST_F(CKVLibraryListTest, TheEntriesAfterOneThatCannotBeReadAreNotRead) {
    for (const char* name : {"r/0.ose", "r/1.ose", "r/2.ose"}) tree_.File(name);
    WritePreferences(R"({"KVSwatchLibPersistentPrefix_count": 3,
                          "KVSwatchLibPersistentPrefix0": ")" + tree_.At("r/0.ose") + R"(",
                          "KVSwatchLibPersistentPrefix2": ")" + tree_.At("r/2.ose") + R"("})");
    InitList();
    ASSERT_EQ(list_->PersistentPaths().size(), 1u);
    EXPECT_EQ(Relative(list_->PersistentPaths()[0].Get()), "r/0.ose");
}

TEST_F(CKVLibraryListTest, SuffixesAreDecimalIndicesWithoutLeadingZeros) {
    std::string json = R"({"KVSwatchLibPersistentPrefix_count": 12)";
    for (int i = 0; i < 12; ++i) {
        const std::string name = "r/" + std::string(1, char('a' + i)) + ".ose";
        tree_.File(name);
        json += ", \"KVSwatchLibPersistentPrefix" + std::to_string(i) + "\": \"" + tree_.At(name) + "\"";
    }
    json += R"(, "KVSwatchLibPersistentPrefix010": "nothing"})";
    WritePreferences(json);
    InitList();
    EXPECT_EQ(list_->PersistentPaths().size(), 12u);
}

TEST_F(CKVLibraryListTest, AFailingCountIsAnsweredAndAnExceptionWhileReadingIsUnkn) {
    tree_.File("r/a.ose");
    Remember({"r/a.ose"});
    InitList();
    list_->ClearPersistentPaths();
    host_.Faults().FailCall({"KV Preference Suite", "GetIntegerPreference", 1, false, kv::FourCC("PREF")});
    EXPECT_EQ(list_->ReadPersistentList(), kv::FourCC("PREF"));
    // A path the host cannot make ends the reading with an exception.
    host_.Faults().FailCall({"KV File Path Suite", "New", 1, false, kv::FourCC("PATH")});
    EXPECT_EQ(list_->ReadPersistentList(), kv::FourCC("UNKN"));
    EXPECT_THAT(list_->PersistentPaths(), IsEmpty());
}

TEST_F(CKVLibraryListTest, ARememberedPathInsideAUserFolderIsListedOnceUnderTheUserRoot) {
    tree_.File("user/a.ose");
    tree_.File("elsewhere/b.ose");
    MapFolder(kUserFolder, "user");
    Remember({"user/a.ose", "elsewhere/b.ose"});
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->OpenPersistentLibraries(), kv::kNoErr);
    std::int32_t root = -1;
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose", "elsewhere/b.ose"));
    ASSERT_NE(list_->GetLibraryByIndex(0, &root), nullptr);
    EXPECT_EQ(root, CKVLibraryList::kUserRoot);
    ASSERT_EQ(list_->PersistentLibraries().size(), 1u);
    EXPECT_EQ(Relative(list_->PersistentLibraries()[0]->Path()), "elsewhere/b.ose");
    EXPECT_EQ(list_->PersistentRoot()->LibraryId(), -3);
    // The folder set the count to 1, the remembered file raised it.
    EXPECT_EQ(list_->ChangeCount(), 2u);
}

TEST_F(CKVLibraryListTest, InsideAFolderMeansItsTextLessItsLastCharacterCaseFolded) {
    tree_.File("Lib2.ose");
    tree_.File("LIB/upper.ose");
    tree_.File("outside.ose");
    tree_.Folder("lib");
    // The host gives the user folder with a separator at its end.
    host_.Folders().Map(kUserFolder, tree_.At("lib") + "/");
    Remember({"Lib2.ose", "LIB/upper.ose", "outside.ose"});
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->OpenPersistentLibraries(), kv::kNoErr);
    // "Lib2.ose" and "LIB/upper.ose" count as inside "lib/": left out.
    EXPECT_THAT(Listed(), ElementsAre("outside.ose"));
}

TEST_F(CKVLibraryListTest, ARememberedFileThatVanishedStopsTheWalkKeepingThoseBeforeIt) {
    for (const char* name : {"r/a.ose", "r/b.ose", "r/c.ose"}) tree_.File(name);
    Remember({"r/a.ose", "r/b.ose", "r/c.ose"});
    InitList();
    tree_.Remove("r/b.ose");
    EXPECT_EQ(list_->OpenPersistentLibraries(), kParameter);
    EXPECT_THAT(Listed(), ElementsAre("r/a.ose"));
    EXPECT_EQ(list_->PersistentLibraries().size(), 1u);
}

TEST_F(CKVLibraryListTest, ARememberedFileTheFactoryRefusesStopsTheWalkAfterCountingIt) {
    for (const char* name : {"r/a.ose", "r/b.ose"}) tree_.File(name);
    Remember({"r/a.ose", "r/b.ose"});
    TestFactory::refused.insert(tree_.At("r/a.ose"));
    InitList();
    EXPECT_EQ(list_->OpenPersistentLibraries(), kParameter);
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(list_->ChangeCount(), 1u);
}

TEST_F(CKVLibraryListTest, ARememberedDanglingLinkIsKeptButCannotBeOpened) {
    tree_.Link("r/link.ose", tree_.At("r/gone.ose"));
    Remember({"r/link.ose"});
    InitList();
    EXPECT_EQ(list_->PersistentPaths().size(), 1u);
    EXPECT_EQ(list_->OpenPersistentLibraries(), kParameter);
}

TEST_F(CKVLibraryListTest, AddPersistentLibraryListsAFileOnceAndCountsEveryCall) {
    tree_.File("r/a.ose");
    InitList();
    const kv::FilePath file = PathOf(tree_.At("r/a.ose"));
    const kv::FilePath gone = PathOf(tree_.At("r/gone.ose"));
    CKVLibrary* first = list_->AddPersistentLibrary(file.Get());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(list_->AddPersistentLibrary(file.Get()), first);
    EXPECT_EQ(list_->AddPersistentLibrary(gone.Get()), nullptr);
    EXPECT_THAT(Listed(), ElementsAre("r/a.ose"));
    EXPECT_EQ(list_->ChangeCount(), 2u);
    // Adding a library is no remembering.
    EXPECT_THAT(list_->PersistentPaths(), IsEmpty());
    EXPECT_THAT(list_->PersistentLibraries(), IsEmpty());
}

TEST_F(CKVLibraryListTest, FindLibraryByPathSearchesTheRootThePathBelongsTo) {
    tree_.File("app/a.ocb");
    tree_.File("user/sub/deep/u.ose");
    tree_.File("elsewhere/r.ose");
    MapFolder(kApplicationFolder, "app");
    MapFolder(kUserFolder, "user");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(0, kApplicationFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    const kv::FilePath remembered = PathOf(tree_.At("elsewhere/r.ose"));
    CKVLibrary* added = list_->AddPersistentLibrary(remembered.Get());

    EXPECT_EQ(Find("app/a.ocb"), list_->GetLibraryByIndex(0));
    EXPECT_EQ(Find("user/sub/deep/u.ose"), list_->GetLibraryByIndex(1));
    EXPECT_EQ(Find("elsewhere/r.ose"), added);
    const CKVLibrary* folder = Find("user/sub/deep");
    ASSERT_NE(folder, nullptr);
    EXPECT_TRUE(folder->IsFolder());
    EXPECT_EQ(Find("user/none.ose"), nullptr);
    EXPECT_EQ(Find("elsewhere/none.ose"), nullptr);
    const kv::FilePath empty;
    EXPECT_EQ(list_->FindLibraryByPath(empty.Get()), nullptr);
}

TEST_F(CKVLibraryListTest, FindLibraryByPathFindsAFileOfTwoUserFoldersWhereTheSearchMeetsItFirst) {
    // The second user folder lies inside the first: its files are direct
    // children of the root and also children of the first folder's "inner".
    tree_.File("user/inner/x.ose");
    MapFolder(kUserFolder, "user");
    MapFolder(kSecondUserFolder, "user/inner");
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->AddLibraryFolder(1, kSecondUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/inner/x.ose", "user/inner/x.ose"));
    const CKVLibrary* direct = nullptr;
    for (const auto& [key, child] : list_->UserRoot()->ChildLibraries()) {
        if (!child->IsFolder()) direct = child.get();
    }
    ASSERT_NE(direct, nullptr);
    EXPECT_EQ(Find("user/inner/x.ose"), direct);
}

TEST_F(CKVLibraryListTest, ClearingForgetsTheRootsAndTheFoldersAndClearingPathsTheRememberedOnes) {
    tree_.File("user/a.ose");
    tree_.File("r/b.ose");
    MapFolder(kUserFolder, "user");
    Remember({"r/b.ose"});
    InitList();
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    ASSERT_EQ(list_->OpenPersistentLibraries(), kv::kNoErr);
    list_->ClearLibraries();
    EXPECT_EQ(list_->UserRoot(), nullptr);
    EXPECT_EQ(list_->PersistentRoot(), nullptr);
    EXPECT_THAT(list_->UserFolders(), IsEmpty());
    EXPECT_THAT(list_->PersistentLibraries(), IsEmpty());
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(list_->CountListedLibraries(true), 0);
    EXPECT_EQ(list_->PersistentPaths().size(), 1u);
    list_->ClearPersistentPaths();
    EXPECT_THAT(list_->PersistentPaths(), IsEmpty());
    // Gathering again starts the count from 1.
    ASSERT_EQ(list_->AddLibraryFolder(1, kUserFolder), kv::kNoErr);
    EXPECT_THAT(Listed(), ElementsAre("user/a.ose"));
    EXPECT_EQ(list_->ChangeCount(), 1u);
}

}  // namespace
