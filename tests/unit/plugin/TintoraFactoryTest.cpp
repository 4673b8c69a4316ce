// The plug-in's library factory, in this process against the emulated host:
// how it numbers libraries and which folder it never makes one for.
#include "Tintora.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/FailingNew.h"
#include "tests/support/InProcessHost.h"
#include "tests/unit/libraries/FileTree.h"
#include "text/Utf8.h"

namespace {

class TintoraFactoryTest : public testsupport::InProcessHostTest {
protected:
    void SetUp() override {
        InProcessHostTest::SetUp();
        host_.Folders().Map(72, tree_.Folder("user/excluded"));
        plugin_.SetGlobal(&plugin_);
    }
    void TearDown() override {
        plugin_.SetGlobal(nullptr);
        InProcessHostTest::TearDown();
    }

    // The factory's library for a path of the tree.
    std::unique_ptr<CKVLibrary> Make(const std::string& relative, bool isFolder) {
        const kv::FilePath path = kv::FilePath::FromUTF16(kv::Utf8ToUtf16(tree_.At(relative)));
        CKVLibrary* library = nullptr;
        Tintora::MakeLibrary(library, path.Get(), isFolder);
        return std::unique_ptr<CKVLibrary>(library);
    }

    testsupport::FileTree tree_;
    Tintora plugin_{nullptr};
};

TEST_F(TintoraFactoryTest, LibrariesAreNumberedFrom30000FilesAndFoldersAlike) {
    EXPECT_EQ(Make("user/a.ose", false)->LibraryId(), 30000);
    const std::unique_ptr<CKVLibrary> folder = Make("user/sub", true);
    EXPECT_EQ(folder->LibraryId(), 30001);
    EXPECT_TRUE(folder->IsFolder());
    EXPECT_EQ(Make("user/b.ose", false)->LibraryId(), 30002);
}

TEST_F(TintoraFactoryTest, ANumberIsUsedUpAlsoWhenThereIsNoMemoryForTheLibrary) {
    EXPECT_EQ(Make("user/a.ose", false)->LibraryId(), 30000);
    const kv::FilePath path = kv::FilePath::FromUTF16(u"/nowhere/b.ose");
    CKVLibrary* library = nullptr;
    {
        const testsupport::AllocationFailureScope noMemory(0);
        Tintora::MakeLibrary(library, path.Get(), false);
    }
    EXPECT_EQ(library, nullptr);
    EXPECT_EQ(Make("user/c.ose", false)->LibraryId(), 30002);
}

TEST_F(TintoraFactoryTest, TheHostFolderOfType72GetsNoLibraryAndNoNumber) {
    EXPECT_EQ(Make("user/excluded", true), nullptr);
    EXPECT_EQ(Make("user/excluded/inside", true)->LibraryId(), 30000);
    // Only as a folder: a file of that path would be listed.
    EXPECT_EQ(Make("user/excluded", false)->LibraryId(), 30001);
}

TEST_F(TintoraFactoryTest, WithoutAStartedPluginThereIsNoLibrary) {
    plugin_.SetGlobal(nullptr);
    EXPECT_EQ(Make("user/a.ose", false), nullptr);
    plugin_.SetGlobal(&plugin_);
    EXPECT_EQ(Make("user/a.ose", false)->LibraryId(), 30000);
}

}  // namespace
