#include <kelvra/StringList.h>

#include "BigEndianReader.h"

namespace kelvra {

StringList ParseStringList(std::span<const std::uint8_t> bytes) {
    BigEndianReader in(bytes, "string list");
    const std::uint16_t count = in.U16();
    StringList list;
    list.reserve(count);
    for (std::uint16_t i = 0; i < count; ++i) list.push_back(in.Text(in.U16()));
    if (in.Left() != 0) in.Fail(std::to_string(in.Left()) + " bytes after the last string");
    return list;
}

}  // namespace kelvra
