#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>

namespace {

namespace fs = std::filesystem;

constexpr ZPErr kFailure = ZP_FOURCC('F', 'A', 'I', 'L');

class FilePathSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    kelvra::testing::Paths paths{host};
    const KVFilePathSuite* suite = paths.Suite();
    testsupport::TemporaryFolder folder;

    KVFilePathRef Path(const std::string& text) { return paths.Make(text); }
    std::string Text(ZPErr (*get)(KVFilePathRef, KVUnicodeStringRef), KVFilePathRef path) {
        return paths.Text(path, get);
    }
    std::string In(const std::string& name) { return (folder.Path() / name).string(); }
    void File(const std::string& name) { std::ofstream(In(name)) << "x"; }
    void Link(const std::string& name, const std::string& target) { fs::create_symlink(target, In(name)); }

    // The string form ResolveShortcut gives for `path`.
    std::string Resolved(const std::string& path) {
        KVFilePathRef resolved = Path("unchanged");
        EXPECT_EQ(suite->ResolveShortcut(Path(path), resolved), 0u);
        return paths.Text(resolved);
    }
    // Exists(path, resolveLinks) as {exists, isFile}.
    std::pair<int, int> Exists(const std::string& path, ZPBoolean resolveLinks) {
        ZPBoolean exists = 7, isFile = 7;
        EXPECT_EQ(suite->Exists(Path(path), resolveLinks, &exists, &isFile), 0u);
        return {exists, isFile};
    }
};

TEST_F(FilePathSuiteTest, StringFormFileNameAndExtension) {
    KVFilePathRef path = Path("/libraries/Pastels.ose");
    EXPECT_EQ(Text(suite->GetAsString, path), "/libraries/Pastels.ose");
    EXPECT_EQ(Text(suite->GetFileName, path), "Pastels.ose");
    EXPECT_EQ(Text(suite->GetFileExtension, path), "ose");
    EXPECT_EQ(Text(suite->GetFileExtension, Path("/a/archive.tar.gz")), "gz");
    EXPECT_EQ(Text(suite->GetFileExtension, Path("/a/noextension")), "");
    EXPECT_EQ(Text(suite->GetFileExtension, Path("/a/.hidden")), "");
    EXPECT_EQ(Text(suite->GetFileExtension, Path("/a.d/name")), "");
    EXPECT_EQ(Text(suite->GetFileExtension, Path("/a/Brights.OSE")), "OSE");
    EXPECT_EQ(Text(suite->GetFileName, Path("/a/folder/")), "folder");
    EXPECT_EQ(Text(suite->GetFileName, Path("/")), "/");
    EXPECT_EQ(Text(suite->GetFileName, Path("")), "");
    EXPECT_EQ(Text(suite->GetAsString, Path("/a/Gr\u00fcn \u00e9t\u00e9.ose")), "/a/Gr\u00fcn \u00e9t\u00e9.ose");
}

TEST_F(FilePathSuiteTest, ExistsWithAndWithoutFollowingLinks) {
    File("book.ocb");
    fs::create_directory(In("sub"));
    Link("dangling", In("missing"));
    Link("to-sub", "sub");
    Link("to-book", "book.ocb");
    EXPECT_EQ(Exists(In("book.ocb"), 1), std::make_pair(1, 1));
    EXPECT_EQ(Exists(In("book.ocb"), 0), std::make_pair(1, 1));
    EXPECT_EQ(Exists(In("sub"), 1), std::make_pair(1, 0));
    EXPECT_EQ(Exists(In("sub"), 0), std::make_pair(1, 0));
    EXPECT_EQ(Exists(In("dangling"), 1), std::make_pair(0, 0));
    // Not followed, a link is there, and it is not a folder itself.
    EXPECT_EQ(Exists(In("dangling"), 0), std::make_pair(1, 1));
    EXPECT_EQ(Exists(In("to-sub"), 1), std::make_pair(1, 0));
    EXPECT_EQ(Exists(In("to-sub"), 0), std::make_pair(1, 1));
    EXPECT_EQ(Exists(In("to-book"), 1), std::make_pair(1, 1));
    EXPECT_EQ(Exists(In("nothing"), 0), std::make_pair(0, 0));
    EXPECT_EQ(Exists("", 1), std::make_pair(0, 0));
    ZPBoolean exists = 7;
    EXPECT_EQ(suite->Exists(Path(In("book.ocb")), 1, &exists, nullptr), 0u);
    EXPECT_EQ(exists, 1);
}

TEST_F(FilePathSuiteTest, ResolvesARelativeOrAbsoluteLinkToItsTarget) {
    File("target.ose");
    Link("relative", "target.ose");
    Link("absolute", In("target.ose"));
    EXPECT_EQ(Resolved(In("relative")), In("target.ose"));
    EXPECT_EQ(Resolved(In("absolute")), In("target.ose"));
}

TEST_F(FilePathSuiteTest, AnythingThatIsNoLinkIsCopiedAsItIs) {
    File("target.ose");
    fs::create_directory(In("sub"));
    EXPECT_EQ(Resolved(In("target.ose")), In("target.ose"));
    EXPECT_EQ(Resolved(In("sub")), In("sub"));
    EXPECT_EQ(Resolved(In("not-there.ose")), In("not-there.ose"));
    EXPECT_EQ(Resolved("relative/name.ose"), "relative/name.ose");
    EXPECT_EQ(Resolved(""), "");
}

TEST_F(FilePathSuiteTest, FollowsAChainOfLinksEachRelativeToItsOwnFolder) {
    fs::create_directories(In("one/two"));
    File("one/final.ose");
    Link("start", "one/two/middle");                // relative to the folder
    Link("one/two/middle", "../final-link");        // relative to one/two
    Link("one/final-link", In("one/final.ose"));    // absolute
    EXPECT_EQ(Resolved(In("start")), In("one/final.ose"));
    EXPECT_EQ(Resolved(In("one/two/middle")), In("one/final.ose"));
}

// Joined as they are: "one/two/.." is "one" only when "two" is no link
// itself, so nothing is simplified.
TEST_F(FilePathSuiteTest, ARelativeLastHopIsJoinedToItsLinksFolder) {
    fs::create_directories(In("one/two"));
    File("one/final.ose");
    Link("start", "one/two/middle");
    Link("one/two/middle", "../final.ose");
    EXPECT_EQ(Resolved(In("start")), In("one/two/../final.ose"));
    EXPECT_EQ(Exists(Resolved(In("start")), 0), std::make_pair(1, 1));
}

TEST_F(FilePathSuiteTest, ADanglingLinkResolvesToItsMissingTarget) {
    Link("dangling", "gone.ose");
    Link("to-dangling", "dangling");
    EXPECT_EQ(Resolved(In("dangling")), In("gone.ose"));
    EXPECT_EQ(Resolved(In("to-dangling")), In("gone.ose"));
    EXPECT_EQ(Exists(Resolved(In("to-dangling")), 0), std::make_pair(0, 0));
}

TEST_F(FilePathSuiteTest, ALinkToAFolderResolvesToTheFolder) {
    fs::create_directory(In("sub"));
    Link("to-sub", "sub");
    EXPECT_EQ(Resolved(In("to-sub")), In("sub"));
    EXPECT_EQ(Exists(Resolved(In("to-sub")), 0), std::make_pair(1, 0));
}

TEST_F(FilePathSuiteTest, ALoopEndsInTheEmptyPathWhichDoesNotExist) {
    Link("first", "second");
    Link("second", "first");
    Link("self", "self");
    Link("into-loop", "first");
    for (const char* name : {"first", "self", "into-loop"}) {
        const std::string resolved = Resolved(In(name));
        EXPECT_EQ(resolved, "") << name;
        EXPECT_EQ(Exists(resolved, 0), std::make_pair(0, 0)) << name;
        EXPECT_EQ(Exists(resolved, 1), std::make_pair(0, 0)) << name;
    }
}

// Link i points at link i + 1; the last at a file.
void MakeChain(const std::function<void(const std::string&, const std::string&)>& link, int links) {
    for (int i = 0; i < links; ++i)
        link("chain" + std::to_string(i), i + 1 < links ? "chain" + std::to_string(i + 1) : "end.ose");
}

TEST_F(FilePathSuiteTest, FollowsFortyLinksAsStatDoesButNotFortyOne) {
    File("end.ose");
    fs::create_directory(In("long"));
    std::ofstream(In("long/end.ose")) << "x";
    MakeChain([&](const std::string& name, const std::string& target) { Link(name, target); }, 40);
    MakeChain([&](const std::string& name, const std::string& target) { Link("long/" + name, target); }, 41);
    EXPECT_EQ(Resolved(In("chain0")), In("end.ose"));
    EXPECT_EQ(Exists(In("chain0"), 1), std::make_pair(1, 1));
    EXPECT_EQ(Resolved(In("long/chain0")), "");
    EXPECT_EQ(Exists(In("long/chain0"), 1), std::make_pair(0, 0));
}

TEST_F(FilePathSuiteTest, CompareOrdersByUtf16CodeUnits) {
    const auto order = [&](const std::string& a, const std::string& b) {
        std::int32_t result = 7;
        EXPECT_EQ(suite->Compare(Path(a), Path(b), &result), 0u);
        return result;
    };
    EXPECT_EQ(order("/a/b", "/a/c"), -1);
    EXPECT_EQ(order("/a/c", "/a/b"), 1);
    EXPECT_EQ(order("/a/b", "/a/b"), 0);
    EXPECT_EQ(order("/a/B", "/a/a"), -1);  // no case folding
    EXPECT_EQ(order("/a", "/a/"), -1);
    // U+1F600 is a surrogate pair (D83D …), below U+FF5A in UTF-16 though
    // above it in UTF-8.
    EXPECT_EQ(order("/\U0001F600", "/\uFF5A"), -1);
}

TEST_F(FilePathSuiteTest, CompareAssignAndIsEmpty) {
    std::int32_t order = 0;
    KVFilePathRef copy = nullptr;
    suite->New(&copy);
    ZPBoolean empty = 0;
    EXPECT_EQ(suite->IsEmpty(copy, &empty), 0u);
    EXPECT_EQ(empty, 1);
    EXPECT_EQ(suite->Assign(copy, Path("/x")), 0u);
    EXPECT_EQ(suite->IsEmpty(copy, &empty), 0u);
    EXPECT_EQ(empty, 0);
    EXPECT_EQ(suite->Compare(copy, Path("/x"), &order), 0u);
    EXPECT_EQ(order, 0);
}

TEST_F(FilePathSuiteTest, BadHandlesAnswerParmAndUndisposedPathsAreCounted) {
    KVFilePathRef path = Path("/x");
    EXPECT_EQ(host.LiveObjects().filePaths, 1u);
    EXPECT_EQ(suite->Dispose(path), 0u);
    EXPECT_EQ(suite->Dispose(path), kZPBadParameterErr);
    ZPBoolean exists = 0;
    EXPECT_EQ(suite->Exists(path, 1, &exists, nullptr), kZPBadParameterErr);
    EXPECT_EQ(suite->NewFromString(nullptr, &path), kZPBadParameterErr);
    EXPECT_EQ(suite->ResolveShortcut(path, Path("/y")), kZPBadParameterErr);
    EXPECT_EQ(host.LiveObjects().filePaths, 1u);
}

TEST_F(FilePathSuiteTest, AnInjectedFaultAnswersItsCodeAndLeavesTheTargetAlone) {
    File("target.ose");
    Link("link", "target.ose");
    KVFilePathRef link = Path(In("link"));
    KVFilePathRef resolved = Path("before");
    const std::size_t livePaths = host.LiveObjects().filePaths;
    host.Faults().FailCall({kKVFilePathSuite, "ResolveShortcut", 1, false, kFailure});
    EXPECT_EQ(suite->ResolveShortcut(link, resolved), kFailure);
    EXPECT_EQ(paths.Text(resolved), "before");
    EXPECT_EQ(host.LiveObjects().filePaths, livePaths);
    EXPECT_EQ(suite->ResolveShortcut(link, resolved), 0u);
    EXPECT_EQ(paths.Text(resolved), In("target.ose"));
}

}  // namespace
