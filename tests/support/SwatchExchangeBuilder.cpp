#include "SwatchExchangeBuilder.h"

#include "Utf16Text.h"

namespace testsupport {

Bytes ExchangeTextField(const std::u16string& text) {
    return ByteWriter().U16(std::uint16_t(text.size() + 1)).Units(text).U16(0).Data();
}

ExchangeBlock GroupStartBlock(const std::u16string& name) {
    return {0xC001, ExchangeTextField(name), {}};
}

ExchangeBlock GroupEndBlock() {
    return {0xC002, {}, {}};
}

ExchangeBlock ColorBlock(const ExchangeColor& color) {
    ByteWriter out;
    if (color.tint) out.Float(*color.tint);
    out.Raw(color.nameField.value_or(ExchangeTextField(color.name))).Ascii(color.model);
    for (float value : color.values) out.Float(value);
    out.U16(color.colorType);
    return {std::uint16_t(color.tint ? 0x0002 : 0x0001), out.Data(), {}};
}

Bytes BuildSwatchExchange(const SwatchExchangeDescription& description) {
    ByteWriter out;
    out.Ascii(description.magic).U32(description.version);
    out.U32(description.blockCount.value_or(std::uint32_t(description.blocks.size())));
    for (const ExchangeBlock& block : description.blocks) {
        out.U16(block.type).U32(block.declaredLength.value_or(std::uint32_t(block.data.size()))).Raw(block.data);
    }
    out.Raw(description.trailing);
    return out.Data();
}

SwatchExchangeDescription SampleSwatchExchange() {
    SwatchExchangeDescription file;
    file.blocks = {
        GroupStartBlock(U16("Brand")),
        ColorBlock({0.5f, U16("Signal Red"), {}, "RGB ", {1.0f, 0.25f, 0.0f}, 1}),
        ColorBlock({{}, U16("Ink"), {}, "CMYK", {0.1f, 0.2f, 0.3f, 0.4f}, 2}),
        GroupEndBlock(),
        ColorBlock({{}, U16("Leaf"), {}, "LAB ", {0.5f, -20.0f, 30.0f}, 0}),
        ColorBlock({{}, U16("Shadow"), {}, "Gray", {0.75f}, 0}),
    };
    return file;
}

}  // namespace testsupport
