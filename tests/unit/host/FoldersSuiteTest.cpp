#include "HostCodes.h"
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVFileSuites.h>

#include <gtest/gtest.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

class FoldersSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Paths paths{host};
    const KVFoldersSuite* folders = kelvra::testing::Acquire<KVFoldersSuite>(host, kKVFoldersSuite, 5);
    testsupport::TemporaryFolder temporary;

    std::string In(const std::string& name) { return (temporary.Path() / name).string(); }
    // FindFolder's answer and the path it left.
    std::pair<ZPErr, std::string> Find(std::int32_t type, ZPBoolean create) {
        KVFilePathRef path = paths.Make("before");
        const ZPErr result = folders->FindFolder(type, create, path);
        return {result, paths.Text(path)};
    }
};

TEST_F(FoldersSuiteTest, AnUnknownTypeAnswersAnEmptyPath) {
    host.Folders().Map(33, In("applications"));
    EXPECT_EQ(Find(34, 0), std::make_pair(kZPNoErr, std::string()));
    EXPECT_EQ(Find(34, 1), std::make_pair(kZPNoErr, std::string()));
    EXPECT_EQ(Find(-1, 1), std::make_pair(kZPNoErr, std::string()));
}

TEST_F(FoldersSuiteTest, WithoutCreateTheMappedPathIsAnsweredWhetherOrNotItExists) {
    host.Folders().Map(88, In("user/libraries"));
    EXPECT_EQ(Find(88, 0), std::make_pair(kZPNoErr, In("user/libraries")));
    EXPECT_FALSE(fs::exists(In("user")));
    fs::create_directories(In("user/libraries"));
    EXPECT_EQ(Find(88, 0), std::make_pair(kZPNoErr, In("user/libraries")));
}

TEST_F(FoldersSuiteTest, CreateMakesTheDirectoryWithItsParents) {
    host.Folders().Map(89, In("a/b/c"));
    EXPECT_EQ(Find(89, 1), std::make_pair(kZPNoErr, In("a/b/c")));
    EXPECT_TRUE(fs::is_directory(In("a/b/c")));
    // And once more, now that it is there.
    EXPECT_EQ(Find(89, 1), std::make_pair(kZPNoErr, In("a/b/c")));
}

TEST_F(FoldersSuiteTest, ADirectoryThatCannotBeMadeAnswersFoldAndAnEmptyPath) {
    std::ofstream(In("file")) << "x";
    host.Folders().Map(88, In("file/libraries"));
    host.Folders().Map(89, In("file"));
    EXPECT_EQ(Find(88, 1), std::make_pair(kelvra::kFolderNotMadeErr, std::string()));
    EXPECT_EQ(Find(89, 1), std::make_pair(kelvra::kFolderNotMadeErr, std::string()));
    EXPECT_EQ(kelvra::kFolderNotMadeErr, ZP_FOURCC('F', 'O', 'L', 'D'));
    // Not asked to make it, the host does not look.
    EXPECT_EQ(Find(88, 0), std::make_pair(kZPNoErr, In("file/libraries")));
}

TEST_F(FoldersSuiteTest, ANullOrUnknownPathAnswersParm) {
    host.Folders().Map(33, In("applications"));
    EXPECT_EQ(folders->FindFolder(33, 1, nullptr), kZPBadParameterErr);
    KVFilePathRef disposed = paths.Make("x");
    paths.Suite()->Dispose(disposed);
    EXPECT_EQ(folders->FindFolder(33, 1, disposed), kZPBadParameterErr);
    EXPECT_FALSE(fs::exists(In("applications")));
}

TEST_F(FoldersSuiteTest, TheHomeHoldsEveryTypeTheModuleAsksForWithSeventyTwoInsideEightyEight) {
    host.Folders().UseHome(In("home"));
    EXPECT_EQ(Find(33, 0).second, In("home/application-33"));
    EXPECT_EQ(Find(73, 0).second, In("home/application-73"));
    EXPECT_EQ(Find(88, 0).second, In("home/user-88"));
    EXPECT_EQ(Find(89, 0).second, In("home/user-89"));
    EXPECT_EQ(Find(72, 0).second, In("home/user-88/excluded-72"));
    EXPECT_EQ(host.Folders().All().size(), 5u);
    // Making 72 makes the user folder it lies in.
    EXPECT_EQ(Find(72, 1).first, kZPNoErr);
    EXPECT_TRUE(fs::is_directory(In("home/user-88")));
}

TEST_F(FoldersSuiteTest, AMappedTypeOverridesTheHomes) {
    host.Folders().UseHome(In("home"));
    host.Folders().Map(33, In("elsewhere"));
    EXPECT_EQ(Find(33, 0).second, In("elsewhere"));
    EXPECT_EQ(Find(73, 0).second, In("home/application-73"));
    EXPECT_EQ(*host.Folders().Find(33), In("elsewhere"));
    EXPECT_EQ(host.Folders().Find(34), nullptr);
}

TEST_F(FoldersSuiteTest, AnInjectedFaultAnswersItsCodeAndMakesNothing) {
    host.Folders().Map(88, In("user"));
    const std::size_t livePaths = host.LiveObjects().filePaths;
    host.Faults().FailCall({kKVFoldersSuite, "FindFolder", 1, false, kFailure});
    EXPECT_EQ(Find(88, 1), std::make_pair(kFailure, std::string("before")));
    EXPECT_FALSE(fs::exists(In("user")));
    EXPECT_EQ(host.LiveObjects().filePaths, livePaths + 1);  // Find's own path
    EXPECT_EQ(Find(88, 1), std::make_pair(kZPNoErr, In("user")));
    EXPECT_TRUE(fs::is_directory(In("user")));
}

}  // namespace
