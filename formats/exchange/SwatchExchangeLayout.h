// The swatch exchange file: a header, then blocks of (type, length, data).
// What the reader, the pre-scan and the writer share.
#pragma once

#include <cstdint>

#include "formats/streams/ByteCursor.h"

namespace formats::exchange {

inline constexpr std::uint8_t kMagic[4] = {'O', 'S', 'E', 'F'};
inline constexpr std::uint32_t kVersionWord = 0x00010000;  // major 1, minor 0
inline constexpr std::uint32_t kMaxBlocks = 10000;

inline constexpr std::uint16_t kGroupStartBlock = 0xC001;
inline constexpr std::uint16_t kGroupEndBlock = 0xC002;
inline constexpr std::uint16_t kColorBlock = 0x0001;
inline constexpr std::uint16_t kTintedColorBlock = 0x0002;

// Bits of an entry's colour type.
inline constexpr std::uint16_t kSpotColorType = 1;
inline constexpr std::uint16_t kProcessColorType = 2;

// Colour model codes, four bytes each.
inline constexpr std::uint8_t kGrayModel[4] = {'G', 'r', 'a', 'y'};
inline constexpr std::uint8_t kRGBModel[4] = {'R', 'G', 'B', ' '};
inline constexpr std::uint8_t kCMYKModel[4] = {'C', 'M', 'Y', 'K'};
inline constexpr std::uint8_t kLabModel[4] = {'L', 'A', 'B', ' '};
inline constexpr std::uint8_t kXYZModel[4] = {'X', 'Y', 'Z', ' '};

// Checks magic, major version and block count; answers a reader result and,
// on success, the declared block count.
std::int32_t ReadHeader(ByteCursor& in, std::uint32_t& blockCount);

struct BlockHeader {
    std::size_t position = 0;  // of the type field, from the start of the file
    std::uint16_t type = 0;
    std::uint32_t length = 0;
    std::size_t dataStart = 0;

    std::uint64_t End() const { return std::uint64_t(dataStart) + length; }
};

// Reads a block's type and length; false when the data end first.
bool ReadBlockHeader(ByteCursor& in, BlockHeader& block);

}  // namespace formats::exchange
