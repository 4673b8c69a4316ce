// The folder listing and entry times on a real tree.
#include "platform/DirectorySearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <ctime>
#include <map>
#include <set>
#include <string>

#include "FileTree.h"
#include "text/Utf8.h"

namespace {

using kv::platform::DirectorySearch;
using kv::platform::FileTime;
using kv::platform::SearchMode;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::u16string U16(const std::string& text) { return kv::Utf8ToUtf16(text); }

struct Listed {
    std::string name;
    std::string path;
    bool directory;
    bool operator<(const Listed& other) const { return name < other.name; }
    bool operator==(const Listed& other) const = default;
};

std::set<Listed> List(const std::string& folder, SearchMode mode) {
    std::set<Listed> listed;
    DirectorySearch search(U16(folder), mode);
    while (search.Next()) {
        listed.insert({kv::Utf16ToUtf8(search.Name()), kv::Utf16ToUtf8(search.Path()), search.IsDirectory()});
    }
    return listed;
}

std::set<std::string> Names(const std::string& folder, SearchMode mode) {
    std::set<std::string> names;
    for (const Listed& entry : List(folder, mode)) names.insert(entry.name);
    return names;
}

class DirectorySearchTest : public testing::Test {
protected:
    void SetUp() override {
        tree_.File("lib/Brights.ose");
        tree_.File("lib/Darks.ocb");
        tree_.File("lib/.hidden.ose");
        tree_.Folder("lib/Sub");
        tree_.Folder("lib/.cache");
        tree_.Link("lib/to-file.ose", tree_.At("lib/Darks.ocb"));
        tree_.Link("lib/to-folder", tree_.At("lib/Sub"));
        tree_.Link("lib/dangling.ose", tree_.At("lib/gone.ose"));
    }

    testsupport::FileTree tree_;
};

TEST_F(DirectorySearchTest, FilesOnlyListsEveryEntryThatIsNotARealFolderLinksIncluded) {
    EXPECT_THAT(Names(tree_.At("lib"), SearchMode::kFilesOnly),
                ElementsAre("Brights.ose", "Darks.ocb", "dangling.ose", "to-file.ose", "to-folder"));
}

TEST_F(DirectorySearchTest, DirectoriesOnlyListsRealFoldersAndNoLink) {
    EXPECT_THAT(Names(tree_.At("lib"), SearchMode::kDirectoriesOnly), ElementsAre("Sub"));
}

TEST_F(DirectorySearchTest, AllListsBothAndTellsFoldersApart) {
    const std::set<Listed> all = List(tree_.At("lib"), SearchMode::kAll);
    ASSERT_EQ(all.size(), 6u);
    for (const Listed& entry : all) EXPECT_EQ(entry.directory, entry.name == "Sub") << entry.name;
}

TEST_F(DirectorySearchTest, HiddenEntriesAndTheDotEntriesAreNeverListed) {
    for (const SearchMode mode : {SearchMode::kFilesOnly, SearchMode::kDirectoriesOnly, SearchMode::kAll}) {
        for (const std::string& name : Names(tree_.At("lib"), mode)) {
            EXPECT_NE(name.front(), '.') << name;
        }
    }
}

TEST_F(DirectorySearchTest, AnEntrysPathJoinsTheFolderAndTheNameWithOneSeparator) {
    const std::set<Listed> plain = List(tree_.At("lib"), SearchMode::kDirectoriesOnly);
    const std::set<Listed> slashed = List(tree_.At("lib") + "/", SearchMode::kDirectoriesOnly);
    ASSERT_EQ(plain.size(), 1u);
    EXPECT_EQ(plain.begin()->path, tree_.At("lib") + "/Sub");
    EXPECT_EQ(slashed, plain);
}

TEST_F(DirectorySearchTest, APatternListsTheMatchingEntriesOfItsParentJoinedToThePatternAsItStands) {
    const std::string pattern = tree_.At("lib") + "/*.ose";
    EXPECT_THAT(Names(pattern, SearchMode::kFilesOnly), ElementsAre("Brights.ose", "dangling.ose", "to-file.ose"));
    EXPECT_THAT(Names(tree_.At("lib") + "/D?rks.ocb", SearchMode::kAll), ElementsAre("Darks.ocb"));
    const std::set<Listed> listed = List(tree_.At("lib") + "/B*", SearchMode::kAll);
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed.begin()->path, tree_.At("lib") + "/B*/Brights.ose");
    // A pattern never lists hidden entries either.
    EXPECT_THAT(Names(tree_.At("lib") + "/.*", SearchMode::kAll), IsEmpty());
}

TEST_F(DirectorySearchTest, AFolderThatCannotBeReadListsNothing) {
    EXPECT_THAT(Names(tree_.At("nowhere"), SearchMode::kAll), IsEmpty());
    EXPECT_THAT(Names(tree_.At("lib/Brights.ose"), SearchMode::kAll), IsEmpty());
}

TEST_F(DirectorySearchTest, AnEmptyPathListsTheCurrentFolder) {
    char previous[4096];
    ASSERT_NE(getcwd(previous, sizeof previous), nullptr);
    ASSERT_EQ(chdir(tree_.At("lib").c_str()), 0);
    const std::set<Listed> listed = List("", SearchMode::kDirectoriesOnly);
    ASSERT_EQ(chdir(previous), 0);
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(listed.begin()->name, "Sub");
    EXPECT_EQ(std::filesystem::path(listed.begin()->path), std::filesystem::canonical(tree_.At("lib/Sub")));
}

TEST_F(DirectorySearchTest, ANameThatIsNotUtf8IsListedWithReplacementCharacters) {
    tree_.File("odd/caf\xE9.ose");
    EXPECT_THAT(Names(tree_.At("odd"), SearchMode::kFilesOnly), ElementsAre("caf\xEF\xBF\xBD.ose"));
}

TEST_F(DirectorySearchTest, EntryTimesAreTheLastWriteTimesAtFullResolutionLinksFollowed) {
    tree_.SetTime("lib/Brights.ose", 1'700'000'000, 123'456'789);
    tree_.SetTime("lib/Darks.ocb", 1'600'000'000, 987'654'300);
    tree_.SetTime("lib/to-file.ose", 1'500'000'000);
    tree_.SetTime("lib/dangling.ose", 1'400'000'000, 500);
    std::map<std::string, FileTime> times;
    DirectorySearch search(U16(tree_.At("lib")), SearchMode::kFilesOnly);
    while (search.Next()) times[kv::Utf16ToUtf8(search.Name())] = search.LastWriteTime();
    EXPECT_EQ(times["Brights.ose"], testsupport::FileTimeAt(1'700'000'000, 123'456'789));
    EXPECT_EQ(times["to-file.ose"], testsupport::FileTimeAt(1'600'000'000, 987'654'300));
    // A link that leads nowhere has only its own time.
    EXPECT_EQ(times["dangling.ose"], testsupport::FileTimeAt(1'400'000'000, 500));
}

TEST_F(DirectorySearchTest, FindEntryTimeGivesThePathsOwnEntryHiddenOrNot) {
    tree_.SetTime("lib/Sub", 1'234'567'890, 100);
    tree_.SetTime("lib/.cache", 1'111'111'111);
    FileTime time{};
    ASSERT_TRUE(kv::platform::FindEntryTime(U16(tree_.At("lib/Sub")), time));
    EXPECT_EQ(time, testsupport::FileTimeAt(1'234'567'890, 100));
    ASSERT_TRUE(kv::platform::FindEntryTime(U16(tree_.At("lib/to-folder")), time));
    EXPECT_EQ(time, testsupport::FileTimeAt(1'234'567'890, 100));
    ASSERT_TRUE(kv::platform::FindEntryTime(U16(tree_.At("lib/.cache")), time));
    EXPECT_EQ(time, testsupport::FileTimeAt(1'111'111'111));
}

TEST_F(DirectorySearchTest, FindEntryTimeOfNothingLeavesTheTimeAlone) {
    FileTime time{7, 9};
    EXPECT_FALSE(kv::platform::FindEntryTime(U16(tree_.At("lib/gone.ose")), time));
    EXPECT_FALSE(kv::platform::FindEntryTime(U16(tree_.At("lib/dangling.ose")), time));
    EXPECT_FALSE(kv::platform::FindEntryTime(U16(tree_.At("lib/*.none")), time));
    EXPECT_EQ(time, (FileTime{7, 9}));
}

TEST_F(DirectorySearchTest, FindEntryTimeOfAPatternGivesItsMatch) {
    tree_.SetTime("lib/Darks.ocb", 1'000'000'000, 200);
    FileTime time{};
    ASSERT_TRUE(kv::platform::FindEntryTime(U16(tree_.At("lib/Dar?s.*")), time));
    EXPECT_EQ(time, testsupport::FileTimeAt(1'000'000'000, 200));
}

TEST(FileTime, ComparesHighHalvesFirst) {
    EXPECT_TRUE(kv::platform::IsLater(FileTime{0, 2}, FileTime{0xFFFFFFFF, 1}));
    EXPECT_FALSE(kv::platform::IsLater(FileTime{0xFFFFFFFF, 1}, FileTime{0, 2}));
    EXPECT_TRUE(kv::platform::IsLater(FileTime{5, 1}, FileTime{4, 1}));
    EXPECT_FALSE(kv::platform::IsLater(FileTime{4, 1}, FileTime{4, 1}));
    EXPECT_EQ(kv::platform::Ticks(FileTime{0x89ABCDEF, 0x01234567}), 0x0123456789ABCDEFull);
    EXPECT_EQ(kv::platform::FileTimeFromTicks(0x0123456789ABCDEFull), (FileTime{0x89ABCDEF, 0x01234567}));
}

TEST(FileTime, TheCurrentSystemTimeLiesBetweenTwoReadingsOfTheSystemClock) {
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_REALTIME, &before);
    const FileTime now = kv::platform::CurrentSystemTime();
    clock_gettime(CLOCK_REALTIME, &after);
    EXPECT_GE(kv::platform::Ticks(now), kv::platform::Ticks(testsupport::FileTimeAt(before.tv_sec, before.tv_nsec)));
    EXPECT_LE(kv::platform::Ticks(now), kv::platform::Ticks(testsupport::FileTimeAt(after.tv_sec, after.tv_nsec)));
}

}  // namespace
