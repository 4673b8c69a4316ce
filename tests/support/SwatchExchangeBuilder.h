// Writes swatch exchange files from readable descriptions: a header and
// blocks, each of which can carry hostile lengths, counts and fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ByteWriter.h"

namespace testsupport {

struct ExchangeBlock {
    std::uint16_t type = 0;
    Bytes data;
    std::optional<std::uint32_t> declaredLength;  // default: data.size()
};

struct ExchangeColor {
    std::optional<float> tint;  // present: a tinted entry (type 2)
    std::u16string name;
    std::optional<Bytes> nameField;  // replaces the encoded name field as it stands
    std::string model = "RGB ";
    std::vector<float> values;
    std::uint16_t colorType = 0;
};

struct SwatchExchangeDescription {
    std::string magic = "OSEF";
    std::uint32_t version = 0x00010000;
    std::optional<std::uint32_t> blockCount;  // default: blocks.size()
    std::vector<ExchangeBlock> blocks;
    Bytes trailing;  // raw bytes behind the last block
};

// A name field: unit count with terminator, units, terminator.
Bytes ExchangeTextField(const std::u16string& text);

ExchangeBlock GroupStartBlock(const std::u16string& name);
ExchangeBlock GroupEndBlock();
ExchangeBlock ColorBlock(const ExchangeColor& color);

Bytes BuildSwatchExchange(const SwatchExchangeDescription& description);

// A small valid file: a named group holding a tinted spot RGB colour and a
// process CMYK colour, then a global Lab and a Gray colour outside it.
SwatchExchangeDescription SampleSwatchExchange();

}  // namespace testsupport
