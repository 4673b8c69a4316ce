// The differential target's input: the leading byte picks the reader and its
// flags, 32 bytes of colour values follow, then the file.
#include "fuzz/inputs/FastPathInput.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using fuzzinputs::BookFormat;
using fuzzinputs::DecodeFastPathInput;
using fuzzinputs::EncodeFastPathInput;
using fuzzinputs::FastPathInput;

FastPathInput Decode(const std::vector<std::uint8_t>& bytes) { return DecodeFastPathInput(bytes.data(), bytes.size()); }

std::vector<std::uint8_t> Values(const FastPathInput& input) {
    return std::vector<std::uint8_t>(std::begin(input.values), std::end(input.values));
}

TEST(FastPathInputTest, TheLeadingByteIsTheReaderPlusThreeTimesItsFlags) {
    std::vector<std::uint8_t> bytes(33, 0);
    bytes[0] = 2 + 3 * 17;
    EXPECT_EQ(Decode(bytes).format, BookFormat::kXml);
    EXPECT_EQ(Decode(bytes).flags, 17u);
    bytes[0] = 1 + 3 * 1;
    EXPECT_EQ(Decode(bytes).format, BookFormat::kExchange);
    EXPECT_EQ(Decode(bytes).flags, 1u);
    bytes[0] = 0 + 3 * 31;
    EXPECT_EQ(Decode(bytes).format, BookFormat::kColorBook);
    EXPECT_EQ(Decode(bytes).flags, 31u);
}

TEST(FastPathInputTest, FlagsTheReaderDoesNotTakeAreDropped) {
    std::vector<std::uint8_t> bytes(33, 0);
    bytes[0] = 255;  // the colour book with 85: 1010101
    EXPECT_EQ(Decode(bytes).format, BookFormat::kColorBook);
    EXPECT_EQ(Decode(bytes).flags, 21u);
    bytes[0] = 254;  // the XML reader with 84: 1010100
    EXPECT_EQ(Decode(bytes).format, BookFormat::kXml);
    EXPECT_EQ(Decode(bytes).flags, 16u);
    bytes[0] = 253;  // the exchange reader with 84
    EXPECT_EQ(Decode(bytes).flags, 0u);
}

TEST(FastPathInputTest, ValuesAreTheNext32BytesAndTheFileTheRest) {
    std::vector<std::uint8_t> bytes = {1};
    for (int i = 0; i < 40; ++i) bytes.push_back(std::uint8_t(100 + i));
    const FastPathInput input = Decode(bytes);
    EXPECT_EQ(Values(input), std::vector<std::uint8_t>(bytes.begin() + 1, bytes.begin() + 33));
    EXPECT_EQ(input.file, (std::vector<std::uint8_t>{132, 133, 134, 135, 136, 137, 138, 139}));
}

TEST(FastPathInputTest, AShortInputReadsAsIfPaddedWithZeros) {
    const FastPathInput input = Decode({2, 7, 8});
    EXPECT_EQ(input.format, BookFormat::kXml);
    std::vector<std::uint8_t> values(32, 0);
    values[0] = 7;
    values[1] = 8;
    EXPECT_EQ(Values(input), values);
    EXPECT_TRUE(input.file.empty());

    const FastPathInput empty = DecodeFastPathInput(nullptr, 0);
    EXPECT_EQ(empty.format, BookFormat::kColorBook);
    EXPECT_EQ(empty.flags, 0u);
    EXPECT_EQ(Values(empty), std::vector<std::uint8_t>(32, 0));
}

TEST(FastPathInputTest, EncodedInputsDecodeToWhatWasEncoded) {
    for (const auto& [format, flags] : {std::pair{BookFormat::kColorBook, 31u}, std::pair{BookFormat::kExchange, 1u},
                                        std::pair{BookFormat::kXml, 16u}, std::pair{BookFormat::kXml, 0u}}) {
        FastPathInput input;
        input.format = format;
        input.flags = flags;
        for (std::size_t i = 0; i < 32; ++i) input.values[i] = std::uint8_t(255 - i);
        input.file = {'<', 'a', '/', '>'};
        const std::vector<std::uint8_t> bytes = EncodeFastPathInput(input);
        ASSERT_EQ(bytes.size(), 37u);
        const FastPathInput decoded = Decode(bytes);
        EXPECT_EQ(decoded.format, format);
        EXPECT_EQ(decoded.flags, flags);
        EXPECT_EQ(Values(decoded), Values(input));
        EXPECT_EQ(decoded.file, input.file);
    }
}

TEST(FastPathInputTest, EncodingDropsFlagsTheReaderDoesNotTake) {
    FastPathInput input;
    input.format = BookFormat::kExchange;
    input.flags = 3;
    EXPECT_EQ(EncodeFastPathInput(input)[0], 1 + 3 * 1);
}

}  // namespace
