// "KV File Format" requests sent through the host library, to the test
// module with a file format (FormatModule.cpp): the message carries the
// format, option, file and document, and the file path lives only as long
// as the message.
#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVFrameworkSuites.h>

#include <gtest/gtest.h>

namespace {

constexpr ZPErr kNotThisFormat = ZP_FOURCC('F', 'M', 'T', '?');

class FileFormatRequestTest : public ::testing::Test {
protected:
    FileFormatRequestTest() { EXPECT_EQ(module.Startup(), 0u); }
    ~FileFormatRequestTest() override { module.Shutdown(); }

    KVFileFormatHandle Format() const { return host.FileFormats().at(0).handle; }

    kelvra::Host host;
    kelvra::Module& module = host.Load(FORMAT_MODULE);
    testsupport::TemporaryFolder folder;
};

TEST_F(FileFormatRequestTest, CheckHandsTheModuleTheFileAndTheFormat) {
    ASSERT_EQ(host.FileFormats().size(), 1u);
    EXPECT_EQ(host.FileFormats()[0].name, "Test Swatch Text Reader");
    EXPECT_EQ(module.CheckFileFormat({Format(), kKVFileFormatReadOption, folder.Write("a.tsw", ""), nullptr}), 0u);
    EXPECT_EQ(module.CheckFileFormat({Format(), kKVFileFormatReadOption, folder.Write("a.txt", ""), nullptr}),
              kNotThisFormat);
    EXPECT_EQ(module.CheckFileFormat({nullptr, kKVFileFormatReadOption, folder.Write("b.tsw", ""), nullptr}),
              kNotThisFormat);
    EXPECT_EQ(host.Messages().back().caller, "KV File Format");
    EXPECT_EQ(host.Messages().back().selector, "KV Check");
    EXPECT_EQ(host.Messages().back().result, kNotThisFormat);
}

TEST_F(FileFormatRequestTest, GoReadsIntoTheDocumentOfTheRequest) {
    kelvra::Document& target = host.Documents().New("target");
    kelvra::Document& current = host.Documents().New("current");
    const auto file = folder.Write("a.tsw", "rgb 1 0 0 Red\n");
    EXPECT_EQ(module.GoFileFormat({Format(), kKVFileFormatImportOption, file, target.Handle()}), 0u);
    EXPECT_EQ(target.SwatchCount(), 1u);
    EXPECT_EQ(current.SwatchCount(), 0u);
    // No document in the request: the current one.
    EXPECT_EQ(module.GoFileFormat({Format(), kKVFileFormatImportOption, file, nullptr}), 0u);
    EXPECT_EQ(current.SwatchCount(), 1u);
    EXPECT_EQ(host.Messages().back().selector, "KV Go");
}

TEST_F(FileFormatRequestTest, TheMessagesFilePathLivesOnlyAsLongAsTheMessage) {
    host.Documents().New("d");
    const auto before = host.LiveObjects().filePaths;
    EXPECT_EQ(module.GoFileFormat({Format(), 0, folder.Write("a.tsw", "gray 0.5 Mid\n"), nullptr}), 0u);
    EXPECT_EQ(module.CheckFileFormat({Format(), 0, folder.Write("a.tsw", ""), nullptr}), 0u);
    EXPECT_EQ(host.LiveObjects().filePaths, before);
    EXPECT_EQ(host.LiveObjects().strings, 0u);
    EXPECT_EQ(host.LiveObjects().dataFilters, 0u);
}

TEST_F(FileFormatRequestTest, WithoutADocumentTheModuleHearsNoDocument) {
    EXPECT_EQ(module.GoFileFormat({Format(), 0, folder.Write("a.tsw", "rgb 1 0 0 Red\n"), nullptr}), kZPNoDocumentErr);
}

TEST_F(FileFormatRequestTest, ANotLoadedModuleCannotBeAsked) {
    EXPECT_EQ(module.Unload(), 0u);
    EXPECT_THROW(module.CheckFileFormat({Format(), 0, folder.Write("a.tsw", ""), nullptr}), kelvra::HostError);
    EXPECT_EQ(module.Reload(), 0u);
}

}  // namespace
