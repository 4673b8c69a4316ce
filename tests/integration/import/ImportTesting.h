// What the import tests share: files written into a scratch folder, the
// colours of a host document in readable form, and the host's Lab to sRGB
// conversion worked out independently of the host.
#pragma once

#include <kelvra/Document.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace import_testing {

// A folder of its own under the test's temporary folder, removed at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // Writes `bytes` into the file `name` of the folder; its path.
    std::filesystem::path Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const;
    std::filesystem::path Path(const std::string& name) const { return folder_ / name; }

private:
    std::filesystem::path folder_;
};

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
