// An XML swatchbook of many swatches, as the reader's speed benchmark and
// its work-per-swatch guard read it.
#pragma once

#include <string>

namespace testsupport {

// Three formats (RGB bytes, CMYK doubles, Lab 16-bit), then `swatches`
// swatches of the three kinds, "Swatch 0", "Swatch 1" …, each with a
// catalogue key and one colour.
std::string NumberedXmlSwatchbook(int swatches);

}  // namespace testsupport
