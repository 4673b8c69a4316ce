#include "NumberedXmlSwatchbook.h"

namespace testsupport {

std::string NumberedXmlSwatchbook(int swatches) {
    std::string text =
        R"(<?xml version="1.0" encoding="UTF-8"?>)"
        "\n<OrvikSwatchbook Version=\"1\" Title=\"Benchmark book\" BookID=\"42\" Copyright=\"Tintora\">\n"
        "<Formats>\n"
        "  <Format ID=\"rgb\" ColorSpace=\"RGB\" Encoding=\"Int8\"/>\n"
        "  <Format ID=\"cmyk\" ColorSpace=\"CMYK\" Encoding=\"Float\"/>\n"
        "  <Format ID=\"lab\" ColorSpace=\"LAB\" Encoding=\"Int16\"/>\n"
        "</Formats>\n<Swatches>\n";
    const char* kinds[] = {"Sp", "Pr", "Pl"};
    const char* colors[] = {R"(<C F="rgb">12 200 255</C>)", R"(<C F="cmyk">0.1 0.25 0.5 0.75</C>)",
                            R"(<C F="lab">32768 20000 45000</C>)"};
    for (int i = 0; i < swatches; ++i) {
        const std::string kind = kinds[i % 3];
        text += "  <" + kind + " N=\"Swatch " + std::to_string(i) + "\" ID=\"" + std::to_string(1000 + i) + "\">" +
                colors[(i / 3) % 3] + "</" + kind + ">\n";
    }
    return text + "</Swatches>\n</OrvikSwatchbook>\n";
}

}  // namespace testsupport
