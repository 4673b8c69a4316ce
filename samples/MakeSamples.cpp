// Writes the sample files of samples/ from the descriptions below: one
// colour book, one swatch exchange file, one XML swatchbook and one palette.
//
//   make_samples DIR          writes the files into DIR
//   make_samples --check DIR  exits 1 when a file in DIR differs from them
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using testsupport::Bytes;
using testsupport::U16;

struct Sample {
    const char* name;
    Bytes bytes;
};

// A Lab colour book of spot colours, two to a page. Lab bytes: L is
// v * 100 / 255, a and b are v - 128.
Bytes HarbourBook() {
    testsupport::ColorBookDescription book;
    book.bookId = 4100;
    book.title = U16("Harbour Colours");
    book.prefix = U16("HB ");
    book.copyright = U16("Sample book of the Tintora project");
    book.pageSize = 2;
    book.pageKeyOffset = 1;
    book.colorSpace = testsupport::kColorBookLab;
    book.records = {
        {U16("Sea Blue"), "HB-100", {102, 128, 88}, {}},   // L 40, a 0, b -40
        {U16("Buoy Red"), "HB-101", {140, 188, 168}, {}},  // L 54.9, a 60, b 40
        {U16("Sand"), "HB-102", {204, 133, 158}, {}},      // L 80, a 5, b 30
        {U16("Fog"), "HB-103", {230, 128, 128}, {}},       // L 90.2, a 0, b 0
    };
    return testsupport::BuildColorBook(book);
}

// Process colours, a group of tinted and untinted custom colours, and one
// block of a type the reader leaves out, so that the import asks first.
Bytes StudioPalette() {
    using testsupport::ColorBlock;
    testsupport::SwatchExchangeDescription file;
    file.blocks = {
        ColorBlock({{}, U16("Paper"), {}, "Gray", {0.95f}, 2}),
        ColorBlock({{}, U16("Sky"), {}, "RGB ", {0.25f, 0.5f, 1.0f}, 2}),
        testsupport::GroupStartBlock(U16("Brand")),
        ColorBlock({{}, U16("Signal"), {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 1}),
        ColorBlock({0.5f, U16("Signal Light"), {}, "CMYK", {0.0f, 0.8f, 0.9f, 0.0f}, 1}),
        ColorBlock({{}, U16("Leaf"), {}, "LAB ", {0.5f, -40.0f, 35.0f}, 0}),
        ColorBlock({{}, U16("Ink"), {}, "LAB ", {0.2f, 10.0f, -30.0f}, 1}),
        testsupport::GroupEndBlock(),
        {3, {0, 0, 0, 0}, {}},
    };
    return testsupport::BuildSwatchExchange(file);
}

Bytes LegacyInks() {
    const std::string text = R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvikSwatchbook Version="1" Title="Legacy Inks" BookID="4200" Copyright="Sample book of the Tintora project">
  <PrefixPostfixPairs>
    <PrefixPostfixPair Prefix="LI " Postfix=" C"/>
  </PrefixPostfixPairs>
  <Formats>
    <Format ID="lab" ColorSpace="LAB" Encoding="Float"/>
    <Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
  </Formats>
  <Swatches>
    <Sp N="Warm Gray"><C F="lab">60 2 8</C><A><C F="cmyk">0 15 25 40</C></A></Sp>
    <Sp N="Deep Green"><C F="lab">35 -45 20</C></Sp>
    <Spacer/>
    <Pr N="Copper"><C F="cmyk">0 128 200 60</C></Pr>
    <Pl N="Black"><C F="cmyk">0 0 0 255</C></Pl>
  </Swatches>
</OrvikSwatchbook>
)";
    return Bytes(text.begin(), text.end());
}

// A plain-text palette with a header, for tintora convert and sheet.
Bytes PierPalette() {
    const std::string text = R"(GIMP Palette
Name: Pier
Columns: 4
# Sample palette of the Tintora project
 18  52  86	Deep Water
 46 139 192	Harbour Blue
214  69  65	Buoy Red
242 196  90	Rope
 94 130  70	Kelp
236 234 226	Sail
 64  64  64	Tar
255 255 255	White
)";
    return Bytes(text.begin(), text.end());
}

std::vector<Sample> Samples() {
    return {{"harbour.ocb", HarbourBook()},
            {"studio.ose", StudioPalette()},
            {"legacy.xml", LegacyInks()},
            {"pier.txt", PierPalette()}};
}

Bytes FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

int main(int argc, char** argv) {
    const bool check = argc == 3 && std::strcmp(argv[1], "--check") == 0;
    if (argc != 2 && !check) {
        std::fprintf(stderr, "usage: make_samples DIR | make_samples --check DIR\n");
        return 2;
    }
    const std::filesystem::path folder = argv[argc - 1];
    int status = 0;
    for (const Sample& sample : Samples()) {
        const std::filesystem::path path = folder / sample.name;
        if (check) {
            if (FileBytes(path) != sample.bytes) {
                std::fprintf(stderr, "%s differs from its description; run make_samples %s\n", path.c_str(),
                             folder.c_str());
                status = 1;
            }
            continue;
        }
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(sample.bytes.data()), std::streamsize(sample.bytes.size()));
        if (!out) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            status = 1;
        }
    }
    return status;
}
