// Palettes of 256 colours in each plain layout, converted by tintora convert
// and imported through the real module: every name and every 8-bit value
// arrives exact, as process colours or as global custom colours.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "ModuleImport.h"
#include "TintoraCommand.h"
#include "tests/support/Utf16Text.h"

namespace {

struct Entry {
    std::string name;
    std::array<int, 3> rgb;
};

// 256 colours, every byte value in every channel, and names with non-ASCII
// letters, blanks and a surrogate pair, none longer than 31 UTF-16 units.
std::vector<Entry> Colours() {
    std::vector<Entry> colours;
    for (int i = 0; i < 256; ++i) {
        const std::string name = i % 3 == 0 ? "Grün " + std::to_string(i) : i % 3 == 1 ? "Sea  blue № " + std::to_string(i)
                                                                                         : "🌊 wave " + std::to_string(i);
        colours.push_back({name, {i, 255 - i, (i * 37) % 256}});
    }
    return colours;
}

std::string Hex(const std::array<int, 3>& rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02X%02x", rgb[0], rgb[1], rgb[2]);
    return text;
}

std::string Headed(const std::vector<Entry>& colours) {
    std::ostringstream text;
    text << "GIMP Palette\nName: Test palette\nColumns: 16\n#\n";
    for (const Entry& e : colours) text << e.rgb[0] << ' ' << e.rgb[1] << ' ' << e.rgb[2] << '\t' << e.name << '\n';
    return text.str();
}

std::string Numbers(const std::vector<Entry>& colours) {
    std::ostringstream text;
    text << "! three numbers and a name\n";
    for (const Entry& e : colours) text << e.rgb[0] << "  " << e.rgb[1] << "  " << e.rgb[2] << "\t\t" << e.name << '\n';
    return text.str();
}

std::string HexList(const std::vector<Entry>& colours) {
    std::ostringstream text;
    for (const Entry& e : colours) text << Hex(e.rgb) << ' ' << e.name << "\r\n";
    return text.str();
}

int Byte(float fraction) { return int(std::lround(fraction * 255.0f)); }

class PaletteImportTest : public import_testing::ModuleImportTest {
protected:
    std::string Convert(const std::string& palette, const std::vector<std::string>& options) {
        const std::string out = (folder_.Path() / "palette.ose").string();
        std::vector<std::string> args = {"tintora", "convert", palette, "-o", out};
        args.insert(args.end(), options.begin(), options.end());
        std::vector<const char*> argv;
        for (const std::string& arg : args) argv.push_back(arg.c_str());
        std::ostringstream said, complained;
        EXPECT_EQ(tool::RunTintora(int(argv.size()), argv.data(), said, complained), 0) << complained.str();
        EXPECT_EQ(complained.str(), "");
        return out;
    }

    const kelvra::Document& Import(const std::string& file) {
        kelvra::Document& document = host_.Documents().New("palette");
        EXPECT_EQ(Check(swatchExchange_, file), kZPNoErr);
        EXPECT_EQ(Go(swatchExchange_, file, document), kZPNoErr);
        return document;
    }
};

TEST_F(PaletteImportTest, EveryLayoutArrivesWithExactNamesAndBytes) {
    const std::vector<Entry> colours = Colours();
    const std::vector<std::pair<std::string, std::string>> layouts = {
        {"headed.txt", Headed(colours)}, {"numbers.txt", Numbers(colours)}, {"hex.txt", HexList(colours)}};
    for (const auto& [name, text] : layouts) {
        SCOPED_TRACE(name);
        const kelvra::Document& document = Import(Convert(folder_.Write(name, text), {}));
        ASSERT_EQ(document.Groups().size(), 1u);
        const auto& swatches = document.Groups()[0]->swatches;
        ASSERT_EQ(swatches.size(), colours.size());
        for (std::size_t i = 0; i < colours.size(); ++i) {
            EXPECT_EQ(swatches[i]->name, testsupport::U16(colours[i].name));
            ASSERT_EQ(swatches[i]->color.kind, kKVThreeColor);
            const KVThreeColorStyle& rgb = swatches[i]->color.c.three;
            EXPECT_EQ((std::array<int, 3>{Byte(rgb.red), Byte(rgb.green), Byte(rgb.blue)}), colours[i].rgb) << i;
        }
    }
}

TEST_F(PaletteImportTest, GlobalColoursArriveAsCustomColoursOfTheSameBytes) {
    const std::vector<Entry> colours = Colours();
    const kelvra::Document& document =
        Import(Convert(folder_.Write("hex.txt", HexList(colours)), {"--kind", "global", "--name", "Test"}));
    ASSERT_EQ(document.Groups().size(), 2u);
    EXPECT_EQ(document.Groups()[1]->name, u"Test");
    ASSERT_EQ(document.CustomColors().size(), colours.size());
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const kelvra::CustomColor& color = *document.CustomColors()[i];
        EXPECT_EQ(color.name, testsupport::U16(colours[i].name));
        ASSERT_EQ(color.definition.kind, kKVCustomThreeColor);
        EXPECT_EQ(color.definition.flags & 1, 0u);  // global, not spot
        const KVThreeColorStyle& rgb = color.definition.c.three;
        EXPECT_EQ((std::array<int, 3>{Byte(rgb.red), Byte(rgb.green), Byte(rgb.blue)}), colours[i].rgb) << i;
    }
}

}  // namespace
