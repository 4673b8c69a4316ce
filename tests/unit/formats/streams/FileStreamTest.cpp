#include "formats/streams/FileStream.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>
#include <string>
#include <vector>

#include "formats/streams/ByteBuffer.h"

namespace formats {
namespace {

class FileStreamTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                ("tintora-filestream-" + std::to_string(::getpid()) + "-" + test->name());
    }
    void TearDown() override { std::filesystem::remove(path_); }

    std::filesystem::path path_;
};

TEST_F(FileStreamTest, WritesAndReadsBackAFile) {
    {
        FileStream out(path_.c_str(), false);
        ASSERT_EQ(out.IsOpen(), 1);
        EXPECT_EQ(out.IsReading(), 0);
        EXPECT_EQ(out.Write("hello, ", 7), 7);
        EXPECT_EQ(out.Write("world", 5), 5);
        char byte;
        EXPECT_EQ(out.Read(&byte, 1), 0);
    }
    FileStream in(path_.c_str(), true);
    ASSERT_EQ(in.IsOpen(), 1);
    EXPECT_EQ(in.IsReading(), 1);
    char text[32] = {};
    EXPECT_EQ(in.Read(text, sizeof text), 12);
    EXPECT_STREQ(text, "hello, world");
    EXPECT_EQ(in.Read(text, sizeof text), 0);
    EXPECT_EQ(in.Write("x", 1), 0);
}

TEST_F(FileStreamTest, AMissingFileLeavesTheStreamClosed) {
    FileStream in((path_ / "missing").c_str(), true);
    EXPECT_EQ(in.IsOpen(), 0);
    char byte;
    EXPECT_EQ(in.Read(&byte, 1), 0);
    FileStream none(nullptr, true);
    EXPECT_EQ(none.IsOpen(), 0);
}

TEST_F(FileStreamTest, ReadAllTakesAWholeFileOfSeveralChunks) {
    std::vector<char> bytes(140000);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = char(i % 253);
    std::ofstream(path_, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size()));
    FileStream in(path_.c_str(), true);
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    ASSERT_EQ(ReadAll(buffer, in), 1);
    ASSERT_EQ(buffer.Count(), 140000);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), reinterpret_cast<const char*>(buffer.Data())));
}

}  // namespace
}  // namespace formats
