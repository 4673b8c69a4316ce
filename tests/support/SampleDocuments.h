// What the module makes of the sample files (SampleSwatchExchange(),
// SampleColorBook()) read into a document named after the file, in the
// host's document JSON form; worked out by hand.
#pragma once

namespace testsupport {

// The group "Brand" holds every colour: the Lab and Gray colours stay in the
// last group the file selected. Lab 50 -20 30 (D50) is sRGB 0.38057253,
// 0.50133234, 0.25614503; gray 0.75 is stored as black ink 0.25.
inline constexpr const char* kSampleSwatchExchangeDocument = R"({"name": "sample.ose",
  "groups": [
    {"name": "", "swatches": []},
    {"name": "Brand", "swatches": [
      {"name": "Signal Red", "kind": "custom", "customColor": "Signal Red", "tint": 0.5},
      {"name": "Ink", "kind": "cmyk", "values": [0.1, 0.2, 0.3, 0.4]},
      {"name": "Leaf", "kind": "custom", "customColor": "Leaf", "tint": 0},
      {"name": "Shadow", "kind": "custom", "customColor": "Shadow", "tint": 0}]}],
  "customColors": [
    {"name": "Signal Red", "kind": "rgb", "values": [1, 0.25, 0], "flags": 1, "bookId": 0},
    {"name": "Leaf", "kind": "rgb", "values": [0.38057253, 0.50133234, 0.25614503], "flags": 0, "bookId": 0},
    {"name": "Shadow", "kind": "cmyk", "values": [0, 0, 0, 0.25], "flags": 0, "bookId": 0}]})";

// Three spot colours of book 3002; components 160 and 64 of 255 are
// 0.627451 and 0.2509804, 90 is 0.3529412.
inline constexpr const char* kSampleColorBookDocument = R"({"name": "sample.ocb",
  "groups": [{"name": "", "swatches": [
    {"name": "P Red 032 C", "kind": "custom", "customColor": "P Red 032 C", "tint": 0},
    {"name": "P Gr\u00fcn C", "kind": "custom", "customColor": "P Gr\u00fcn C", "tint": 0},
    {"name": "P Sky C", "kind": "custom", "customColor": "P Sky C", "tint": 0}]}],
  "customColors": [
    {"name": "P Red 032 C", "kind": "rgb", "values": [1, 0, 0], "flags": 1, "bookId": 3002},
    {"name": "P Gr\u00fcn C", "kind": "rgb", "values": [0, 0.627451, 0.2509804], "flags": 1, "bookId": 3002},
    {"name": "P Sky C", "kind": "rgb", "values": [0.3529412, 0.627451, 1], "flags": 1, "bookId": 3002}]})";

}  // namespace testsupport
