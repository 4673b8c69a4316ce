#include "JsonWriter.h"

namespace tool {

void JsonWriter::NewLine(std::size_t depth) {
    out_ << '\n';
    for (std::size_t i = 0; i < depth; ++i) out_ << "  ";
}

}  // namespace tool
