// The input of the differential target fuzz-fast-paths: one byte choosing
// the reader and its flags, 32 bytes of colour values, then the file the
// reader reads. An input too short for the values reads as if padded with
// zeros, so every input means something.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/support/ByteWriter.h"

namespace fuzzinputs {

enum class BookFormat : std::uint8_t { kColorBook = 0, kExchange = 1, kXml = 2 };

// Enough for four doubles, the most channels of any colour space.
inline constexpr std::size_t kColorValueBytes = 32;

struct FastPathInput {
    BookFormat format = BookFormat::kColorBook;
    // Only the reader's own flags: 0..31, 0..1 and 0, 1, 16, 17.
    std::uint32_t flags = 0;
    std::uint8_t values[kColorValueBytes] = {};
    testsupport::Bytes file;
};

FastPathInput DecodeFastPathInput(const std::uint8_t* data, std::size_t size);

// The bytes that decode to `input`; flags the reader does not take are dropped.
testsupport::Bytes EncodeFastPathInput(const FastPathInput& input);

}  // namespace fuzzinputs
