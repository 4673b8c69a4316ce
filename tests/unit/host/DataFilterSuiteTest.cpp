#include "HostTesting.h"
#include "tests/support/TemporaryFolder.h"

#include <KVFileSuites.h>
#include <KVStringSuites.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using kelvra::testing::Acquire;

constexpr ZPErr kFileOpenErr = ZP_FOURCC('O', 'P', 'E', 'N');

class DataFilterSuiteTest : public ::testing::Test {
protected:
    kelvra::Host host;
    const KVUnicodeStringSuite* strings = Acquire<KVUnicodeStringSuite>(host, kKVUnicodeStringSuite, 9);
    const KVFilePathSuite* paths = Acquire<KVFilePathSuite>(host, kKVFilePathSuite, 8);
    const KVDataFilterSuite* filters = Acquire<KVDataFilterSuite>(host, kKVDataFilterSuite, 10);
    testsupport::TemporaryFolder folder;

    std::string In(const char* name) { return (folder.Path() / name).string(); }

    KVDataFilterRef Open(const std::string& file, const char* mode) {
        KVUnicodeStringRef string = nullptr;
        strings->NewFromPlatformText(file.c_str(), &string);
        KVFilePathRef path = nullptr;
        paths->NewFromString(string, &path);
        strings->Dispose(string);
        KVDataFilterRef filter = nullptr;
        EXPECT_EQ(filters->NewFileDataFilter(path, mode, 0, 0, &filter), 0u);
        paths->Dispose(path);
        return filter;
    }
    static std::string Contents(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::stringstream contents;
        contents << in.rdbuf();
        return contents.str();
    }
    ZPErr Write(KVDataFilterRef filter, const std::string& bytes) {
        std::size_t count = bytes.size();
        return filters->WriteDataFilter(filter, bytes.data(), &count);
    }
    std::size_t FilesInFolder() const {
        return std::size_t(std::distance(std::filesystem::directory_iterator(folder.Path()),
                                         std::filesystem::directory_iterator()));
    }
};

TEST_F(DataFilterSuiteTest, ReadsAFileInPiecesWithAShortLastPiece) {
    std::ofstream(In("in.ose"), std::ios::binary) << "0123456789";
    KVDataFilterRef filter = Open(In("in.ose"), "read");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    char buffer[8];
    std::size_t count = 8;
    EXPECT_EQ(filters->ReadDataFilter(filter, buffer, &count), 0u);
    EXPECT_EQ(count, 8u);
    EXPECT_EQ(std::string(buffer, 8), "01234567");
    count = 8;
    EXPECT_EQ(filters->ReadDataFilter(filter, buffer, &count), 0u);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), 0u);
    EXPECT_EQ(host.LiveObjects().dataFilters, 0u);
}

TEST_F(DataFilterSuiteTest, OpeningAMissingFileFails) {
    KVDataFilterRef filter = Open(In("missing.ose"), "read");
    EXPECT_EQ(filters->LinkDataFilter(nullptr, filter), kFileOpenErr);
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), 0u);
}

TEST_F(DataFilterSuiteTest, AWriteReplacesTheTargetOnlyWhenUnlinked) {
    std::ofstream(In("out.ose"), std::ios::binary) << "old";
    KVDataFilterRef filter = Open(In("out.ose"), "write");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    EXPECT_EQ(Write(filter, "new "), 0u);
    EXPECT_EQ(Write(filter, "contents"), 0u);
    EXPECT_EQ(Contents(In("out.ose")), "old");
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), 0u);
    EXPECT_EQ(Contents(In("out.ose")), "new contents");
    EXPECT_EQ(FilesInFolder(), 1u);  // no temporary file left
}

TEST_F(DataFilterSuiteTest, AFailedWriteKeepsTheOldFile) {
    std::ofstream(In("out.ose"), std::ios::binary) << "old";
    host.Faults().FailCall({kKVDataFilterSuite, "WriteDataFilter", 2, false, ZP_FOURCC('D', 'I', 'S', 'K')});
    KVDataFilterRef filter = Open(In("out.ose"), "write");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    EXPECT_EQ(Write(filter, "first "), 0u);
    EXPECT_EQ(Write(filter, "second"), ZP_FOURCC('D', 'I', 'S', 'K'));
    EXPECT_EQ(Write(filter, "third"), 0u);
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), 0u);
    EXPECT_EQ(Contents(In("out.ose")), "old");
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(DataFilterSuiteTest, ADiscardedWriteLeavesTheTargetExactlyAsItWas) {
    std::ofstream(In("out.ose"), std::ios::binary) << "old";
    const auto written = std::filesystem::last_write_time(In("out.ose"));
    KVDataFilterRef filter = Open(In("out.ose"), "write");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    EXPECT_EQ(Write(filter, "new contents"), 0u);
    EXPECT_EQ(FilesInFolder(), 2u);  // the temporary file beside it
    EXPECT_EQ(filters->DiscardDataFilter(filter), 0u);
    EXPECT_EQ(Contents(In("out.ose")), "old");
    EXPECT_EQ(std::filesystem::last_write_time(In("out.ose")), written);
    EXPECT_EQ(FilesInFolder(), 1u);
    EXPECT_EQ(host.LiveObjects().dataFilters, 0u);
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), kZPBadParameterErr);  // it is gone
}

TEST_F(DataFilterSuiteTest, ADiscardedWriteMakesNoNewFile) {
    KVDataFilterRef filter = Open(In("new.ose"), "write");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    EXPECT_EQ(Write(filter, "contents"), 0u);
    EXPECT_EQ(filters->DiscardDataFilter(filter), 0u);
    EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_F(DataFilterSuiteTest, DiscardFreesReadAndUnlinkedFilters) {
    std::ofstream(In("a"), std::ios::binary) << "a";
    KVDataFilterRef reader = Open(In("a"), "read");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, reader), 0u);
    KVDataFilterRef neverLinked = Open(In("b"), "write");
    EXPECT_EQ(filters->DiscardDataFilter(reader), 0u);
    EXPECT_EQ(filters->DiscardDataFilter(neverLinked), 0u);
    EXPECT_EQ(host.LiveObjects().dataFilters, 0u);
    EXPECT_EQ(Contents(In("a")), "a");
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(DataFilterSuiteTest, DiscardOfNoFilterAnswersParm) {
    EXPECT_EQ(filters->DiscardDataFilter(nullptr), kZPBadParameterErr);
    KVDataFilterRef filter = Open(In("a"), "write");
    EXPECT_EQ(filters->DiscardDataFilter(filter), 0u);
    EXPECT_EQ(filters->DiscardDataFilter(filter), kZPBadParameterErr);  // twice
}

TEST_F(DataFilterSuiteTest, AFailedDiscardAnswersItsCodeAndStillKeepsNothing) {
    std::ofstream(In("out.ose"), std::ios::binary) << "old";
    KVDataFilterRef filter = Open(In("out.ose"), "write");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, filter), 0u);
    EXPECT_EQ(Write(filter, "new"), 0u);
    host.Faults().FailCall({kKVDataFilterSuite, "DiscardDataFilter", 1, false, ZP_FOURCC('D', 'I', 'S', 'K')});
    EXPECT_EQ(filters->DiscardDataFilter(filter), ZP_FOURCC('D', 'I', 'S', 'K'));
    EXPECT_EQ(Contents(In("out.ose")), "old");
    EXPECT_EQ(FilesInFolder(), 1u);
    EXPECT_EQ(host.LiveObjects().dataFilters, 0u);
}

TEST_F(DataFilterSuiteTest, WritingIntoAMissingFolderFailsToOpen) {
    KVDataFilterRef filter = Open(In("no/such/folder.ose"), "write");
    EXPECT_EQ(filters->LinkDataFilter(nullptr, filter), kFileOpenErr);
    EXPECT_EQ(filters->UnlinkDataFilter(filter, nullptr), 0u);
}

TEST_F(DataFilterSuiteTest, UnlinkHandsBackThePreviousFilter) {
    std::ofstream(In("a"), std::ios::binary) << "a";
    KVDataFilterRef first = Open(In("a"), "read");
    KVDataFilterRef second = Open(In("a"), "read");
    ASSERT_EQ(filters->LinkDataFilter(nullptr, first), 0u);
    ASSERT_EQ(filters->LinkDataFilter(first, second), 0u);
    KVDataFilterRef previous = nullptr;
    EXPECT_EQ(filters->UnlinkDataFilter(second, &previous), 0u);
    EXPECT_EQ(previous, first);
    EXPECT_EQ(filters->UnlinkDataFilter(first, &previous), 0u);
    EXPECT_EQ(previous, nullptr);
}

TEST_F(DataFilterSuiteTest, BadCallsAnswerParm) {
    std::ofstream(In("a"), std::ios::binary) << "a";
    KVDataFilterRef reader = Open(In("a"), "read");
    std::size_t count = 1;
    char byte = 0;
    EXPECT_EQ(filters->ReadDataFilter(reader, &byte, &count), kZPBadParameterErr);  // not linked yet
    ASSERT_EQ(filters->LinkDataFilter(nullptr, reader), 0u);
    EXPECT_EQ(filters->LinkDataFilter(nullptr, reader), kZPBadParameterErr);  // twice
    EXPECT_EQ(Write(reader, "x"), kZPBadParameterErr);
    EXPECT_EQ(filters->UnlinkDataFilter(reader, nullptr), 0u);
    EXPECT_EQ(filters->UnlinkDataFilter(reader, nullptr), kZPBadParameterErr);
    KVDataFilterRef filter = nullptr;
    EXPECT_EQ(filters->NewFileDataFilter(nullptr, "read", 0, 0, &filter), kZPBadParameterErr);
}

TEST_F(DataFilterSuiteTest, AnUnknownModeIsRefused) {
    KVUnicodeStringRef string = nullptr;
    strings->NewFromPlatformText(In("a").c_str(), &string);
    KVFilePathRef path = nullptr;
    paths->NewFromString(string, &path);
    KVDataFilterRef filter = nullptr;
    EXPECT_EQ(filters->NewFileDataFilter(path, "append", 0, 0, &filter), kZPBadParameterErr);
    EXPECT_EQ(filter, nullptr);
}

}  // namespace
