#include "ByteWriter.h"

#include <bit>

namespace testsupport {

ByteWriter& ByteWriter::U8(std::uint8_t value) {
    bytes_.push_back(value);
    return *this;
}

ByteWriter& ByteWriter::U16(std::uint16_t value) {
    return U8(std::uint8_t(value >> 8)).U8(std::uint8_t(value));
}

ByteWriter& ByteWriter::U32(std::uint32_t value) {
    return U16(std::uint16_t(value >> 16)).U16(std::uint16_t(value));
}

ByteWriter& ByteWriter::Float(float value) {
    return U32(std::bit_cast<std::uint32_t>(value));
}

ByteWriter& ByteWriter::Ascii(std::string_view text) {
    for (char c : text) U8(std::uint8_t(c));
    return *this;
}

ByteWriter& ByteWriter::Units(const std::u16string& text) {
    for (char16_t unit : text) U16(unit);
    return *this;
}

ByteWriter& ByteWriter::Raw(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

void PatchU32(Bytes& bytes, std::size_t offset, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes.at(offset + i) = std::uint8_t(value >> (24 - 8 * i));
}

}  // namespace testsupport
