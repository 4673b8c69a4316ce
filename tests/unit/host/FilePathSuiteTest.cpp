#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

namespace {

using kelvra::testing::Acquire;

class FilePathSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    const KVUnicodeStringSuite* strings = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9);
    const KVFilePathSuite* paths = Acquire<KVFilePathSuite>(host, kKVFilePathSuite, 8);
    testsupport::TemporaryFolder folder;

    KVFilePathRef Path(const std::string& text) {
        KVUnicodeStringRef string = nullptr;
        EXPECT_EQ(strings->NewFromPlatformText(text.c_str(), &string), 0u);
        KVFilePathRef path = nullptr;
        EXPECT_EQ(paths->NewFromString(string, &path), 0u);
        strings->Dispose(string);
        return path;
    }
    std::string Text(ZPErr (*get)(KVFilePathRef, KVUnicodeStringRef), KVFilePathRef path) {
        KVUnicodeStringRef string = nullptr;
        strings->New(&string);
        EXPECT_EQ(get(path, string), 0u);
        char buffer[1024];
        strings->GetPlatformText(string, buffer, sizeof buffer, nullptr);
        strings->Dispose(string);
        return buffer;
    }
    std::string In(const char* name) { return (folder.Path() / name).string(); }
};

TEST_F(FilePathSuiteTest, StringFormFileNameAndExtension) {
    KVFilePathRef path = Path("/libraries/Pastels.ose");
    EXPECT_EQ(Text(paths->GetAsString, path), "/libraries/Pastels.ose");
    EXPECT_EQ(Text(paths->GetFileName, path), "Pastels.ose");
    EXPECT_EQ(Text(paths->GetFileExtension, path), "ose");
    EXPECT_EQ(Text(paths->GetFileExtension, Path("/a/archive.tar.gz")), "gz");
    EXPECT_EQ(Text(paths->GetFileExtension, Path("/a/noextension")), "");
    EXPECT_EQ(Text(paths->GetFileExtension, Path("/a/.hidden")), "");
    EXPECT_EQ(Text(paths->GetFileExtension, Path("/a.d/name")), "");
    EXPECT_EQ(Text(paths->GetFileName, Path("/a/folder/")), "folder");
    EXPECT_EQ(Text(paths->GetFileName, Path("/")), "/");
}

TEST_F(FilePathSuiteTest, ExistsWithAndWithoutFollowingLinks) {
    std::ofstream(In("book.ocb")) << "x";
    std::filesystem::create_directory(In("sub"));
    std::filesystem::create_symlink(In("missing"), In("dangling"));
    ZPBoolean exists = 0, isFile = 0;
    EXPECT_EQ(paths->Exists(Path(In("book.ocb")), 1, &exists, &isFile), 0u);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(isFile, 1);
    EXPECT_EQ(paths->Exists(Path(In("sub")), 1, &exists, &isFile), 0u);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(isFile, 0);
    EXPECT_EQ(paths->Exists(Path(In("dangling")), 1, &exists, nullptr), 0u);
    EXPECT_EQ(exists, 0);
    EXPECT_EQ(paths->Exists(Path(In("dangling")), 0, &exists, &isFile), 0u);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(isFile, 1);
    EXPECT_EQ(paths->Exists(Path(In("nothing")), 0, &exists, &isFile), 0u);
    EXPECT_EQ(exists, 0);
}

TEST_F(FilePathSuiteTest, ResolvesAShortcutToItsTarget) {
    std::ofstream(In("target.ose")) << "x";
    std::filesystem::create_symlink("target.ose", In("shortcut"));
    KVFilePathRef resolved = nullptr;
    ASSERT_EQ(paths->New(&resolved), 0u);
    EXPECT_EQ(paths->ResolveShortcut(Path(In("shortcut")), resolved), 0u);
    EXPECT_EQ(Text(paths->GetAsString, resolved), In("target.ose"));
    EXPECT_EQ(paths->ResolveShortcut(Path(In("target.ose")), resolved), 0u);
    EXPECT_EQ(Text(paths->GetAsString, resolved), In("target.ose"));
}

TEST_F(FilePathSuiteTest, CompareAssignAndIsEmpty) {
    std::int32_t order = 0;
    EXPECT_EQ(paths->Compare(Path("/a/b"), Path("/a/c"), &order), 0u);
    EXPECT_LT(order, 0);
    KVFilePathRef copy = nullptr;
    paths->New(&copy);
    ZPBoolean empty = 0;
    EXPECT_EQ(paths->IsEmpty(copy, &empty), 0u);
    EXPECT_EQ(empty, 1);
    EXPECT_EQ(paths->Assign(copy, Path("/x")), 0u);
    EXPECT_EQ(paths->Compare(copy, Path("/x"), &order), 0u);
    EXPECT_EQ(order, 0);
}

TEST_F(FilePathSuiteTest, BadHandlesAnswerParmAndUndisposedPathsAreCounted) {
    KVFilePathRef path = Path("/x");
    EXPECT_EQ(host.LiveObjects().filePaths, 1u);
    EXPECT_EQ(paths->Dispose(path), 0u);
    EXPECT_EQ(paths->Dispose(path), kZPBadParameterErr);
    ZPBoolean exists = 0;
    EXPECT_EQ(paths->Exists(path, 1, &exists, nullptr), kZPBadParameterErr);
    EXPECT_EQ(paths->NewFromString(nullptr, &path), kZPBadParameterErr);
    EXPECT_EQ(host.LiveObjects().filePaths, 0u);
}

}  // namespace
