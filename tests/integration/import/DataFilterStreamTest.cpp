// The stream over the host's data filters, on real files of the emulated
// host: whole files read in 64 KiB chunks, writing, and every way the host
// can refuse, with no filter left behind.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "ImportTesting.h"
#include "tests/support/ByteWriter.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/InProcessHost.h"
#include "formats/streams/ByteBuffer.h"
#include "formats/streams/DataFilterStream.h"

namespace {

using testsupport::HostPath;
using testsupport::TemporaryFolder;

constexpr const char* kFilters = "KV Data Filter Suite";
constexpr ZPErr kFault = ZP_FOURCC('F', 'A', 'L', 'T');

std::vector<std::uint8_t> Pattern(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = std::uint8_t(i * 7 + i / 251);
    return bytes;
}

std::vector<std::uint8_t> FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class DataFilterStreamTest : public testsupport::InProcessHostTest {
protected:
    // Reads the whole file as the readers do; the buffer's bytes and the
    // number of host reads it took.
    std::vector<std::uint8_t> ReadWhole(const std::filesystem::path& path, std::uint64_t& reads) {
        const HostPath file(path);
        const std::uint64_t before = Calls(kFilters, "ReadDataFilter");
        DataFilterStream stream(file.Get(), true);
        EXPECT_EQ(stream.IsOpen(), 1);
        EXPECT_EQ(stream.IsReading(), 1);
        formats::ByteBuffer buffer(1, formats::kReadChunkSize, formats::kReadChunkSize);
        EXPECT_EQ(formats::ReadAll(buffer, stream), 1);
        reads = Calls(kFilters, "ReadDataFilter") - before;
        return {buffer.Data(), buffer.Data() + buffer.Count()};
    }

    TemporaryFolder folder_;
};

TEST_F(DataFilterStreamTest, AnEmptyFileGivesAnEmptyBufferAndSuccess) {
    std::uint64_t reads = 0;
    EXPECT_TRUE(ReadWhole(folder_.Write("empty.ose", testsupport::Bytes{}), reads).empty());
    EXPECT_EQ(reads, 1u);
}

TEST_F(DataFilterStreamTest, AFileOfExactly65536BytesTakesASecondReadThatGivesNothing) {
    const std::vector<std::uint8_t> bytes = Pattern(65536);
    std::uint64_t reads = 0;
    EXPECT_EQ(ReadWhole(folder_.Write("chunk.ose", bytes), reads), bytes);
    EXPECT_EQ(reads, 2u);
}

TEST_F(DataFilterStreamTest, A200000ByteFileIsReadInChunksOf65536Bytes) {
    const std::vector<std::uint8_t> bytes = Pattern(200000);
    std::uint64_t reads = 0;
    EXPECT_EQ(ReadWhole(folder_.Write("large.ose", bytes), reads), bytes);
    EXPECT_EQ(reads, 4u);  // 3 full chunks and 3392 bytes
}

TEST_F(DataFilterStreamTest, WritingReplacesTheFileWhenTheStreamCloses) {
    const std::filesystem::path path = folder_.Write("out.ose", testsupport::Bytes{9, 9});
    const std::vector<std::uint8_t> bytes = Pattern(1000);
    {
        const HostPath file(path);
        DataFilterStream stream(file.Get(), false);
        EXPECT_EQ(stream.IsOpen(), 1);
        EXPECT_EQ(stream.IsReading(), 0);
        EXPECT_EQ(stream.Write(bytes.data(), 600), 600);
        EXPECT_EQ(stream.Write(bytes.data() + 600, 400), 400);
        EXPECT_EQ(FileBytes(path), (std::vector<std::uint8_t>{9, 9}));
    }
    EXPECT_EQ(FileBytes(path), bytes);
    EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
}

TEST_F(DataFilterStreamTest, AStreamForWritingReadsNothing) {
    const HostPath file(folder_.Path() / "out.ose");
    DataFilterStream stream(file.Get(), false);
    std::uint8_t byte = 0;
    EXPECT_EQ(stream.Read(&byte, 1), 0);
    formats::ByteBuffer buffer(1, formats::kReadChunkSize, formats::kReadChunkSize);
    EXPECT_EQ(formats::ReadAll(buffer, stream), 0);
}

TEST_F(DataFilterStreamTest, AFileThatCannotBeOpenedLeavesTheStreamClosedAndNoFilterBehind) {
    const HostPath file(folder_.Path() / "missing.ose");
    {
        DataFilterStream stream(file.Get(), true);
        EXPECT_EQ(stream.IsOpen(), 0);
        std::uint8_t byte = 0;
        EXPECT_EQ(stream.Read(&byte, 1), 0);
        EXPECT_EQ(stream.Write(&byte, 1), 0);
        EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
    }
    EXPECT_EQ(Calls(kFilters, "ReadDataFilter"), 0u);
}

TEST_F(DataFilterStreamTest, AFilterTheHostDoesNotMakeLeavesTheStreamClosed) {
    const HostPath file(folder_.Write("book.ose", Pattern(10)));
    host_.Faults().FailCall({kFilters, "NewFileDataFilter", 1, false, kFault});
    DataFilterStream stream(file.Get(), true);
    EXPECT_EQ(stream.IsOpen(), 0);
    EXPECT_EQ(Calls(kFilters, "LinkDataFilter"), 0u);
}

TEST_F(DataFilterStreamTest, AFilterTheHostDoesNotLinkIsGivenBack) {
    const HostPath file(folder_.Write("book.ose", Pattern(10)));
    host_.Faults().FailCall({kFilters, "LinkDataFilter", 1, false, kFault});
    {
        DataFilterStream stream(file.Get(), true);
        EXPECT_EQ(stream.IsOpen(), 0);
        EXPECT_EQ(host_.LiveObjects().dataFilters, 0u);
    }
    EXPECT_EQ(Calls(kFilters, "UnlinkDataFilter"), 1u);
}

TEST_F(DataFilterStreamTest, AReadOrWriteTheHostFailsMovesNothing) {
    const HostPath in(folder_.Write("book.ose", Pattern(10)));
    DataFilterStream reading(in.Get(), true);
    host_.Faults().FailCall({kFilters, "ReadDataFilter", 1, false, kFault});
    std::uint8_t bytes[10] = {};
    EXPECT_EQ(reading.Read(bytes, 10), 0);
    EXPECT_EQ(reading.Read(bytes, 10), 10);

    const HostPath out(folder_.Path() / "out.ose");
    DataFilterStream writing(out.Get(), false);
    host_.Faults().FailCall({kFilters, "WriteDataFilter", 1, false, kFault});
    EXPECT_EQ(writing.Write(bytes, 10), 0);
}

TEST_F(DataFilterStreamTest, AnUnlinkTheHostFailsDoesNotEscapeTheDestructor) {
    const HostPath file(folder_.Write("book.ose", Pattern(10)));
    auto* stream = new DataFilterStream(file.Get(), true);
    ASSERT_EQ(stream->IsOpen(), 1);
    host_.Faults().FailCall({kFilters, "UnlinkDataFilter", 1, false, kFault});
    EXPECT_NO_THROW(delete stream);
    EXPECT_EQ(Calls(kFilters, "UnlinkDataFilter"), 1u);
}

}  // namespace
