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

// A document of every kind of swatch (gray, RGB, CMYK, custom colours spot,
// global and registration, pattern, gradient, none) in the default group,
// a named group and an empty group, in the host's JSON form.
inline constexpr const char* kMixedSwatchesDocument = R"({
        "name": "Source",
        "groups": [
          {"name": "", "swatches": [
             {"name": "Paper", "kind": "gray", "values": [0.25]},
             {"name": "Stripes", "kind": "pattern"},
             {"name": "Sky", "kind": "rgb", "values": [0.25, 0.5, 1]}]},
          {"name": "Brand", "swatches": [
             {"name": "Ink", "kind": "cmyk", "values": [0.1, 0.2, 0.3, 0.4]},
             {"name": "Gold", "kind": "custom", "customColor": "Gold", "tint": 0.5},
             {"name": "Leaf", "kind": "custom", "customColor": "Leaf"},
             {"name": "Registration", "kind": "custom", "customColor": "Registration"},
             {"name": "Wave", "kind": "gradient"},
             {"name": "Nothing", "kind": "none"}]},
          {"name": "Empty", "swatches": []}],
        "customColors": [
          {"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1, "bookId": 3000},
          {"name": "Leaf", "kind": "rgb", "values": [0, 0.5, 0.25]},
          {"name": "Registration", "kind": "cmyk", "values": [1, 1, 1, 1], "flags": 3}]})";

// CIE Lab (D50) to sRGB, each channel clamped to 0..1, from the published
// Bradford and sRGB matrices.
std::array<double, 3> LabToSRGB(double l, double a, double b);

}  // namespace import_testing
