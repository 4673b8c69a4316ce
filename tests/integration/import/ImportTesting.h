// What the import tests share: the colours of a host document in readable
// form, and the host's Lab to sRGB conversion worked out independently of
// the host.
#pragma once

#include <kelvra/Document.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace import_testing {

// A swatch as a line: `name: <colour>`, where the colour is `gray 0.8`,
// `rgb 1 0.25 0`, `cmyk ...`, `custom "<name>" tint 0.5`, `pattern`,
// `gradient` or `none`; values as the shortest text of the float.
std::string Describe(const kelvra::Document& document, const kelvra::Swatch& swatch);
// A custom colour as a line: `<name>: cmyk|rgb|lab <values> spot|global book <id>`.
std::string Describe(const kelvra::CustomColor& color);
// Every group of the document: its name and the lines of its swatches.
std::vector<std::string> DescribeSwatches(const kelvra::Document& document);
std::vector<std::string> DescribeCustomColors(const kelvra::Document& document);

// The shortest decimal text that reads back as the same float.
std::string FloatText(float value);

// CIE Lab (D50) to sRGB, each channel clamped to 0..1, from the published
// Bradford and sRGB matrices.
std::array<double, 3> LabToSRGB(double l, double a, double b);

}  // namespace import_testing
