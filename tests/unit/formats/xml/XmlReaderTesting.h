// Helpers of the XML swatchbook reader tests: documents as text, a read from
// memory, and matchers for the values buffers the reader hands to the book.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/xml/XmlSwatchbookReader.h"
#include "tests/support/MemoryStream.h"
#include "tests/support/MockSwatchbook.h"

namespace xmltesting {

inline std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

// A document with the given root attributes and content.
inline std::string Book(std::string_view content, std::string_view rootAttributes = "") {
    std::string document = "<OrvikSwatchbook";
    if (!rootAttributes.empty()) document.append(" ").append(rootAttributes);
    return document.append(">").append(content).append("</OrvikSwatchbook>");
}

inline std::int32_t Read(std::string_view document, OrvikSwatchbook& book, std::uint32_t flags = 0) {
    auto stream = testsupport::MemoryStream::Reading(Bytes(document));
    return formats::ReadXmlSwatchbook(stream, book, flags);
}

// The buffer argument holds exactly these values.
MATCHER_P(HoldsDoubles, expected, "") {
    const auto* values = static_cast<const double*>(arg);
    return std::vector<double>(values, values + expected.size()) == expected;
}
MATCHER_P(HoldsBytes, expected, "") {
    const auto* values = static_cast<const std::uint8_t*>(arg);
    return std::vector<std::uint8_t>(values, values + expected.size()) == expected;
}
MATCHER_P(HoldsUint16s, expected, "") {
    const auto* values = static_cast<const std::uint16_t*>(arg);
    return std::vector<std::uint16_t>(values, values + expected.size()) == expected;
}

// A book whose AddSwatch and AddFormat answer 0, 1, 2, ... like a real one.
class CountingBook : public testing::NiceMock<testsupport::MockSwatchbook> {
public:
    CountingBook() {
        ON_CALL(*this, AddSwatch).WillByDefault([this](std::int32_t) { return swatches_++; });
        ON_CALL(*this, AddFormat).WillByDefault([this] { return formats_++; });
    }

private:
    std::int32_t swatches_ = 0;
    std::int32_t formats_ = 0;
};

}  // namespace xmltesting
