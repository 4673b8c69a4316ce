#include <kelvra/DocumentJson.h>
#include <kelvra/HostError.h>

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

using nlohmann::json;

// Every key written out, so it is also what ToJson gives back.
const json kColours = json::parse(R"({
  "name": "Colours",
  "groups": [
    {"name": "", "swatches": [
      {"name": "Paper", "kind": "gray", "values": [0.2]},
      {"name": "Red", "kind": "rgb", "values": [1, 0, 0]},
      {"name": "Ink", "kind": "cmyk", "values": [1, 0.5, 0, 0.25]},
      {"name": "Gold 50%", "kind": "custom", "customColor": "Gold", "tint": 0.5},
      {"name": "Stripes", "kind": "pattern"},
      {"name": "Fade", "kind": "gradient"},
      {"name": "Nothing", "kind": "none"}]},
    {"name": "Grüne", "swatches": [
      {"name": "Leaf", "kind": "custom", "customColor": "Leaf", "tint": 0}]},
    {"name": "Empty", "swatches": []}],
  "customColors": [
    {"name": "Gold", "kind": "lab", "values": [80, 5, 60], "flags": 1, "bookId": 3000},
    {"name": "Leaf", "kind": "rgb", "values": [0.1, 0.7, 0.2], "flags": 0, "bookId": 0},
    {"name": "Registration", "kind": "cmyk", "values": [1, 1, 1, 1], "flags": 2, "bookId": -1}]
})");

std::string Refusal(const json& document) {
    try {
        kelvra::DocumentFromJson(document);
    } catch (const kelvra::HostError& error) {
        return error.what();
    }
    return "accepted";
}

json WithSwatch(const json& swatch) { return {{"name", "d"}, {"groups", {{{"swatches", {swatch}}}}}}; }

TEST(DocumentJsonTest, ADocumentComesBackAsItWasWritten) {
    const auto document = kelvra::DocumentFromJson(kColours);
    EXPECT_EQ(kelvra::ToJson(*document), kColours);
}

TEST(DocumentJsonTest, TheBuiltDocumentHoldsWhatTheJsonSays) {
    const auto document = kelvra::DocumentFromJson(kColours);
    EXPECT_EQ(document->Name(), "Colours");
    ASSERT_EQ(document->Groups().size(), 3u);
    EXPECT_EQ(document->Groups()[1]->name, u"Gr\u00FCne");
    const auto& swatches = document->Groups()[0]->swatches;
    ASSERT_EQ(swatches.size(), 7u);
    EXPECT_EQ(swatches[0]->color.kind, kKVGrayColor);
    EXPECT_EQ(swatches[0]->color.c.gray.gray, 0.2f);
    EXPECT_EQ(swatches[1]->color.kind, kKVThreeColor);
    EXPECT_EQ(swatches[1]->color.c.three.red, 1.0f);
    EXPECT_EQ(swatches[2]->color.kind, kKVFourColor);
    EXPECT_EQ(swatches[2]->color.c.four.black, 0.25f);
    EXPECT_EQ(swatches[3]->color.kind, kKVCustomColor);
    const kelvra::CustomColor* gold = document->FindCustomColor(u"Gold");
    ASSERT_NE(gold, nullptr);
    EXPECT_EQ(swatches[3]->color.c.custom.color, kelvra::HandleOf(*gold));
    EXPECT_EQ(swatches[3]->color.c.custom.tint, 0.5f);
    EXPECT_EQ(swatches[4]->color.kind, kKVPatternColor);
    EXPECT_EQ(swatches[5]->color.kind, kKVGradientColor);
    EXPECT_EQ(swatches[6]->color.kind, kKVNoneColor);
    EXPECT_EQ(gold->definition.kind, kKVCustomLabColor);
    EXPECT_EQ(gold->definition.c.lab.l, 80.0f);
    EXPECT_EQ(gold->definition.flags, kKVCustomSpotColor);
    EXPECT_EQ(gold->bookId, 3000);
    EXPECT_EQ(document->FindCustomColor(u"Registration")->definition.flags, kKVCustomRegistrationColor);
}

TEST(DocumentJsonTest, LeftOutPartsTakeTheirDefaults) {
    const auto bare = kelvra::DocumentFromJson({{"name", "Bare"}});
    EXPECT_EQ(kelvra::ToJson(*bare), json::parse(R"({"name": "Bare", "groups": [{"name": "", "swatches": []}],
                                                      "customColors": []})"));
    const auto sparse = kelvra::DocumentFromJson(json::parse(R"({"name": "d",
        "groups": [{"swatches": [{"name": "s", "kind": "custom", "customColor": "C"}]}, {"name": "G"}],
        "customColors": [{"name": "C", "kind": "rgb", "values": [0, 0, 1]}]})"));
    EXPECT_EQ(kelvra::ToJson(*sparse), json::parse(R"({"name": "d",
        "groups": [{"name": "", "swatches": [{"name": "s", "kind": "custom", "customColor": "C", "tint": 0}]},
                   {"name": "G", "swatches": []}],
        "customColors": [{"name": "C", "kind": "rgb", "values": [0, 0, 1], "flags": 0, "bookId": 0}]})"));
}

TEST(DocumentJsonTest, ValuesAreWrittenAsTheShortestDecimalOfTheirFloat) {
    kelvra::Document document("d");
    kelvra::Swatch& swatch = document.InsertSwatch(*document.Groups()[0], -1);
    swatch.color.kind = kKVThreeColor;
    swatch.color.c.three = {0.8f, 1.0f / 3.0f, 0.1f};
    EXPECT_EQ(kelvra::ToJson(document)["groups"][0]["swatches"][0]["values"].dump(), "[0.8,0.33333334,0.1]");
}

TEST(DocumentJsonTest, NotANumberAndTheInfinitiesAreNamed) {
    const auto document = kelvra::DocumentFromJson(
        WithSwatch({{"name", "odd"}, {"kind", "rgb"}, {"values", {"NaN", "Infinity", "-Infinity"}}}));
    const KVThreeColorStyle& rgb = document->Groups()[0]->swatches[0]->color.c.three;
    EXPECT_TRUE(std::isnan(rgb.red));
    EXPECT_EQ(rgb.green, INFINITY);
    EXPECT_EQ(rgb.blue, -INFINITY);
    EXPECT_EQ(kelvra::ToJson(*document)["groups"][0]["swatches"][0]["values"],
              json({"NaN", "Infinity", "-Infinity"}));
}

// What a reader of the JSON text gets: the float's shortest decimal, read
// by another parser than the host's.
float ReadBackThroughText(float value) {
    char text[48];
    *std::to_chars(std::begin(text), std::end(text) - 1, value).ptr = '\0';
    return float(std::strtod(text, nullptr));
}

TEST(DocumentJsonTest, AFloatReadsBackAsItsShortestDecimalReadAsADouble) {
    std::size_t checked = 0;
    // Bit patterns spread over every sign, exponent and mantissa.
    for (std::uint64_t bits = 0; bits <= 0xFFFFFFFFu; bits += 65521) {
        const float value = std::bit_cast<float>(std::uint32_t(bits));
        if (!std::isfinite(value)) continue;
        ASSERT_EQ(std::bit_cast<std::uint32_t>(kelvra::JsonReadBack(value)),
                  std::bit_cast<std::uint32_t>(ReadBackThroughText(value)))
            << std::hex << bits;
        ++checked;
    }
    EXPECT_GT(checked, 60000u);
}

TEST(DocumentJsonTest, OneMagnitudeReadsBackAsItsUpperNeighbour) {
    for (const std::uint32_t sign : {0u, 0x80000000u}) {
        const float value = std::bit_cast<float>(sign | 0x15AE43FDu);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(kelvra::JsonReadBack(value)), sign | 0x15AE43FEu);
        EXPECT_EQ(std::bit_cast<std::uint32_t>(ReadBackThroughText(value)), sign | 0x15AE43FEu);
        // Its neighbours read back as themselves.
        for (const std::uint32_t neighbour : {0x15AE43FCu, 0x15AE43FEu}) {
            const float near = std::bit_cast<float>(sign | neighbour);
            EXPECT_EQ(std::bit_cast<std::uint32_t>(kelvra::JsonReadBack(near)), sign | neighbour);
        }
    }
}

TEST(DocumentJsonTest, NotANumberReadsBackQuietAndTheInfinitiesAsThemselves) {
    const float signalling = std::numeric_limits<float>::signaling_NaN();
    EXPECT_TRUE(std::isnan(kelvra::JsonReadBack(signalling)));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(kelvra::JsonReadBack(-signalling)),
              std::bit_cast<std::uint32_t>(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(kelvra::JsonReadBack(INFINITY), INFINITY);
    EXPECT_EQ(kelvra::JsonReadBack(-INFINITY), -INFINITY);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(kelvra::JsonReadBack(-0.0f)), 0x80000000u);
}

TEST(DocumentJsonTest, ADocumentFilledThroughTheSuitesShowsItsCustomColoursByName) {
    kelvra::Document document("d");
    KVCustomColor definition{};
    definition.kind = kKVCustomFourColor;
    definition.c.four = {0, 0, 0, 0.8f};
    definition.flags = kKVCustomSpotColor;
    kelvra::CustomColor& black = *document.NewCustomColor(u"Black 80", definition);
    black.bookId = 12;
    kelvra::Swatch& swatch = document.InsertSwatch(document.InsertGroup(-1), -1);
    swatch.name = u"Shadow";
    swatch.color.kind = kKVCustomColor;
    swatch.color.c.custom = {kelvra::HandleOf(black), 0.1f};
    EXPECT_EQ(kelvra::ToJson(document), json::parse(R"({"name": "d",
        "groups": [{"name": "", "swatches": []},
                   {"name": "", "swatches": [{"name": "Shadow", "kind": "custom", "customColor": "Black 80",
                                               "tint": 0.1}]}],
        "customColors": [{"name": "Black 80", "kind": "cmyk", "values": [0, 0, 0, 0.8], "flags": 1,
                          "bookId": 12}]})"));
}

TEST(DocumentJsonTest, WhatIsWrongIsNamedWithItsPlace) {
    const auto refused = [](const char* what) { return std::string("document JSON: ") + what; };
    EXPECT_EQ(Refusal(json::array()), refused("document: not an object"));
    EXPECT_EQ(Refusal({{"groups", json::array()}}), refused("name: missing"));
    EXPECT_EQ(Refusal({{"name", 1}}), refused("name: not a string"));
    EXPECT_EQ(Refusal({{"name", "d"}, {"colours", 1}}), refused("colours: unknown key"));
    EXPECT_EQ(Refusal({{"name", "d"}, {"groups", 1}}), refused("groups: not an array"));
    EXPECT_EQ(Refusal({{"name", "d"}, {"groups", {{{"name", "Named"}}}}}),
              refused("groups[0].name: the default group has no name"));
    EXPECT_EQ(Refusal({{"name", "d"}, {"groups", {json::object(), {{"swatches", 3}}}}}),
              refused("groups[1].swatches: not an array"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "grey"}, {"values", {0.5}}})),
              refused("groups[0].swatches[0].kind: unknown kind \"grey\""));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"values", {0.5}}})), refused("groups[0].swatches[0].kind: missing"));
    EXPECT_EQ(Refusal(WithSwatch({{"kind", "gray"}, {"values", {0.5}}})), refused("groups[0].swatches[0].name: missing"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "rgb"}, {"values", {1, 0}}})),
              refused("groups[0].swatches[0].values: a rgb colour has 3 values"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "cmyk"}})), refused("groups[0].swatches[0].values: missing"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "gray"}, {"values", {"half"}}})),
              refused("groups[0].swatches[0].values[0]: not a number"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "pattern"}, {"values", {1}}})),
              refused("groups[0].swatches[0].values: a pattern colour has no values"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "rgb"}, {"values", {1, 0, 0}}, {"tint", 0.5}})),
              refused("groups[0].swatches[0]: a rgb colour has no custom colour or tint"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "custom"}})),
              refused("groups[0].swatches[0].customColor: missing"));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "custom"}, {"customColor", "Gold"}})),
              refused("groups[0].swatches[0].customColor: no custom colour named \"Gold\""));
    EXPECT_EQ(Refusal(WithSwatch({{"name", "s"}, {"kind", "gray"}, {"values", {1}}, {"color", 1}})),
              refused("groups[0].swatches[0].color: unknown key"));
}

TEST(DocumentJsonTest, CustomColoursAreCheckedToo) {
    const auto refused = [](const char* what) { return std::string("document JSON: ") + what; };
    const auto with = [](const json& color) { return json{{"name", "d"}, {"customColors", {color}}}; };
    EXPECT_EQ(Refusal({{"name", "d"}, {"customColors", {{{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0}}},
                                                         {{"name", "C"}, {"kind", "rgb"}, {"values", {0, 0, 0}}}}}}),
              refused("customColors[1].name: a second custom colour named \"C\""));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "gray"}, {"values", {0}}})),
              refused("customColors[0].kind: unknown kind \"gray\""));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0, 0}}})),
              refused("customColors[0].values: a lab colour has 3 values"));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0}}, {"flags", -1}})),
              refused("customColors[0].flags: not a 32-bit integer of this kind"));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0}}, {"bookId", 2147483648LL}})),
              refused("customColors[0].bookId: not a 32-bit integer of this kind"));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0}}, {"bookId", 1.5}})),
              refused("customColors[0].bookId: not a 32-bit integer of this kind"));
    EXPECT_EQ(Refusal(with({{"name", "C"}, {"kind", "lab"}, {"values", {50, 0, 0}}, {"spot", true}})),
              refused("customColors[0].spot: unknown key"));
    EXPECT_EQ(Refusal({{"name", "d"}, {"customColors", {{"name", "C"}}}}), refused("customColors: not an array"));
}

TEST(DocumentJsonTest, ADocumentFileIsReadOrRefusedWithItsPath) {
    testsupport::TemporaryFolder folder;
    const std::string good = folder.Write("good.kv", kColours.dump());
    EXPECT_EQ(kelvra::ToJson(*kelvra::ReadDocumentFile(good)), kColours);
    const std::string notJson = folder.Write("bad.kv", "{\"name\": ");
    const std::string wrong = folder.Write("wrong.kv", R"({"name": 7})");
    const std::string missing = (folder.Path() / "missing.kv").string();
    const auto refusal = [](const std::string& file) {
        try {
            kelvra::ReadDocumentFile(file);
        } catch (const kelvra::HostError& error) {
            return std::string(error.what());
        }
        return std::string("read");
    };
    EXPECT_EQ(refusal(notJson), notJson + ": not JSON");
    EXPECT_EQ(refusal(missing), missing + ": cannot be read");
    EXPECT_EQ(refusal(wrong).rfind(wrong + ": document JSON: name: ", 0), 0u) << refusal(wrong);
}

}  // namespace
