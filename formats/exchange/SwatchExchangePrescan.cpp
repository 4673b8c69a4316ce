#include "SwatchExchangePrescan.h"

#include "SwatchExchangeLayout.h"
#include "formats/ReaderResult.h"
#include "formats/streams/ByteBuffer.h"
#include "formats/streams/OrvikSwatchbookStream.h"

namespace formats {

namespace {

// Types from 0x8000 up are markers the reader knows or may skip silently.
bool IsUnsupported(std::uint16_t type) {
    return type == 0 || (type >= 3 && type <= 0x7FFF);
}

}  // namespace

std::int32_t CountUnsupportedSwatchExchangeEntries(OrvikSwatchbookStream& stream, std::int32_t& count) {
    count = 0;
    if (!stream.IsOpen()) return 0;
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    if (!ReadAll(buffer, stream)) return 0;
    ByteCursor in(buffer.Data(), std::size_t(buffer.Count()));

    std::uint32_t blockCount = 0;
    if (exchange::ReadHeader(in, blockCount) != kReadOK) return 0;
    for (std::uint32_t index = 0; index < blockCount; ++index) {
        exchange::BlockHeader block;
        if (!exchange::ReadBlockHeader(in, block)) return 0;
        if (IsUnsupported(block.type)) ++count;
        if (!in.Seek(block.End())) return 0;
    }
    return 1;
}

}  // namespace formats
