// Writes the seed corpora of the fuzz targets, built from the test builders:
// make-fuzz-seeds OUTPUT_DIR creates OUTPUT_DIR/<target>/ with a few files each.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace {

using namespace testsupport;

void Write(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

void Write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

void ColorBookSeeds(const std::filesystem::path& dir) {
    ColorBookDescription sample = SampleColorBook();
    Write(dir / "sample.ocb", BuildColorBook(sample));
    ColorBookDescription cmyk = sample;
    cmyk.colorSpace = kColorBookCMYK;
    for (auto& record : cmyk.records) record.components.push_back(0x40);
    cmyk.trailer = ColorBookTrailer("proc");
    Write(dir / "cmyk.ocb", BuildColorBook(cmyk));
    ColorBookDescription lab = sample;
    lab.colorSpace = kColorBookLab;
    lab.title = U16("$$$/Book/Title=Pastels");
    lab.trailer.clear();
    Write(dir / "lab.ocb", BuildColorBook(lab));
    Write(dir / "empty.ocb", BuildColorBook({}));
}

void ExchangeSeeds(const std::filesystem::path& dir) {
    SwatchExchangeDescription sample = SampleSwatchExchange();
    Write(dir / "sample.ose", BuildSwatchExchange(sample));
    SwatchExchangeDescription odd = sample;
    odd.blocks.push_back({0x0003, {1, 2, 3, 4}, {}});
    odd.blocks.push_back(ColorBlock({{}, U16("Xyz 😀"), {}, "XYZ ", {0.1f, 0.2f, 0.3f}, 3}));
    odd.blocks.push_back(GroupStartBlock(U16("$$$/Group/Name=Named")));
    odd.blocks.push_back(GroupEndBlock());
    Write(dir / "unsupported.ose", BuildSwatchExchange(odd));
    Write(dir / "empty.ose", BuildSwatchExchange({}));
}

void XmlSeeds(const std::filesystem::path& dir) {
    Write(dir / "book.xml", std::string(R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvikSwatchbook Version="1" Title="$$$/Book/Title=Pastels" BookID="3002" Prefix="P " Postfix=" C" Copyright="us">
  <Formats>
    <Format ID="lab" ColorSpace="LAB" Encoding="Float" Condition="D50"/>
    <Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
    <Format ID="custom" ColorSpace="Hexa" Encoding="Int16" Channels="6"/>
  </Formats>
  <Swatches>
    <Sp N="Red 032" ID="RED"><C F="lab">53.2 80.1 67.2</C><C F="cmyk">0 255 255 0</C></Sp>
    <Pr N="Leaf"><C F="cmyk">128 0 255 64</C><A>ignored</A></Pr>
    <Spacer/>
    <Pl N="Wide"><C F="custom">1 2 3 4 5 70000</C></Pl>
  </Swatches>
  <PrefixPostfixPairs>
    <PrefixPostfixPair Prefix="P " Postfix=" U"/>
  </PrefixPostfixPairs>
</OrvikSwatchbook>
)"));
    Write(dir / "minimal.xml", std::string("<OrvikSwatchbook/>"));
    Write(dir / "entities.xml", std::string(R"(<!DOCTYPE a [<!ENTITY e "&#x41;&#x20;">]>
<OrvikSwatchbook Title="&e;&e;"><Swatches><Sp N="A&amp;B"><C><![CDATA[0.5 0.25]]> 1</C></Sp></Swatches></OrvikSwatchbook>
)"));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_DIR\n", argv[0]);
        return 2;
    }
    const std::filesystem::path root = argv[1];
    for (const char* target : {"colorbook", "exchange", "exchange-prescan", "xml"}) {
        std::filesystem::create_directories(root / target);
    }
    ColorBookSeeds(root / "colorbook");
    ExchangeSeeds(root / "exchange");
    ExchangeSeeds(root / "exchange-prescan");
    XmlSeeds(root / "xml");
    return 0;
}
