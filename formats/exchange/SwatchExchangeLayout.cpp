#include "SwatchExchangeLayout.h"

#include <cstring>

#include "formats/ReaderResult.h"

namespace formats::exchange {

std::int32_t ReadHeader(ByteCursor& in, std::uint32_t& blockCount) {
    if (!in.Has(4)) return kReadTruncated;
    if (std::memcmp(in.Take(4), kMagic, 4) != 0) return kReadBadMagic;
    if (!in.Has(4)) return kReadTruncated;
    // Only the major version counts; the minor one is not checked.
    if ((in.ReadU32() >> 16) != 1) return kReadBadVersion;
    if (!in.Has(4)) return kReadTruncated;
    blockCount = in.ReadU32();
    return blockCount > kMaxBlocks ? kReadTooManyBlocks : kReadOK;
}

bool ReadBlockHeader(ByteCursor& in, BlockHeader& block) {
    block.position = in.Position();
    if (!in.Has(2)) return false;
    block.type = in.ReadU16();
    if (!in.Has(4)) return false;
    block.length = in.ReadU32();
    block.dataStart = in.Position();
    return true;
}

}  // namespace formats::exchange
