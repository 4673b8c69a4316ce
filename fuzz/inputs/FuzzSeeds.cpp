#include "FuzzSeeds.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

#include "FastPathInput.h"
#include "formats/streams/ByteBuffer.h"
#include "formats/xml/XmlSwatchbookReader.h"
#include "tests/support/ColorBookBuilder.h"
#include "tests/support/SwatchExchangeBuilder.h"
#include "tests/support/Utf16Text.h"

namespace fuzzinputs {

namespace {

using namespace testsupport;

constexpr std::size_t kChunk = formats::kReadChunkSize;
constexpr std::size_t kPiece = formats::kXmlFeedChunkSize;

// Room left before a piece boundary for the swatches placed across it.
constexpr std::size_t kRoomBeforeABoundary = 2048;

// Builds a file of exactly `size` bytes: adds entries (each at most
// kMaxEntryBytes, groups included) until another might not fit, then pads
// with zeros, which the readers skip behind the last entry.
constexpr std::size_t kMaxEntryBytes = 128;

template <typename Add, typename Build>
Bytes BuildOfSize(std::size_t size, Add add, Build build) {
    Bytes bytes = build();
    while (bytes.size() + kMaxEntryBytes < size) {
        for (std::size_t n = std::max<std::size_t>(1, (size - bytes.size()) / kMaxEntryBytes - 1); n > 0; --n) add();
        bytes = build();
    }
    bytes.resize(size, 0);
    return bytes;
}

Bytes ToBytes(const std::string& text) { return Bytes(text.begin(), text.end()); }

// "Shade 00042": names of one length, so that every entry has one size.
std::string Numbered(const char* stem, std::size_t i) {
    std::string digits = std::to_string(i);
    return stem + std::string(5 - std::min<std::size_t>(5, digits.size()), '0') + digits;
}

// --- Colour books

ColorBookRecord ShadeRecord(std::size_t i, std::size_t channels) {
    ColorBookRecord record{U16(Numbered("Shade ", i)), Numbered("", i), {}, {}};
    // Now and then a gap, which a flag turns into an empty place.
    if (i % 97 == 96) record.name.clear();
    for (std::size_t c = 0; c < channels; ++c) record.components.push_back(std::uint8_t(i * 7 + c * 61));
    return record;
}

// A book of exactly `size` bytes: records up to its last hundred bytes or
// so, its trailer, zeros.
Bytes ColorBookOfSize(std::uint16_t colorSpace, std::size_t size) {
    ColorBookDescription book = SampleColorBook();
    book.bookId = 3005;
    book.prefix = U16("ORV ");
    book.postfix = U16(" U");
    book.colorSpace = colorSpace;
    book.records.clear();
    const std::size_t channels = colorSpace == kColorBookCMYK ? 4 : 3;
    return BuildOfSize(
        size, [&] { book.records.push_back(ShadeRecord(book.records.size(), channels)); },
        [&] { return BuildColorBook(book); });
}

std::vector<Seed> SmallColorBooks() {
    ColorBookDescription sample = SampleColorBook();
    ColorBookDescription cmyk = sample;
    cmyk.colorSpace = kColorBookCMYK;
    for (auto& record : cmyk.records) record.components.push_back(0x40);
    cmyk.trailer = ColorBookTrailer("proc");
    ColorBookDescription lab = sample;
    lab.colorSpace = kColorBookLab;
    lab.title = U16("$$$/Book/Title=Pastels");
    lab.trailer.clear();
    return {{"sample.ocb", BuildColorBook(sample)},
            {"cmyk.ocb", BuildColorBook(cmyk)},
            {"lab.ocb", BuildColorBook(lab)},
            {"empty.ocb", BuildColorBook({})}};
}

// --- Swatch exchange files

// Colours in groups of 50, in each model in turn, some tinted.
ExchangeBlock ShadeBlock(std::size_t i) {
    static const struct {
        const char* model;
        std::size_t channels;
    } kModels[] = {{"RGB ", 3}, {"CMYK", 4}, {"LAB ", 3}, {"Gray", 1}};
    const auto& model = kModels[i % std::size(kModels)];
    ExchangeColor color{{}, U16(Numbered("Shade ", i)), {}, model.model, {}, std::uint16_t(i % 3)};
    if (i % 5 == 0) color.tint = float(i % 100) / 100.0f;
    for (std::size_t c = 0; c < model.channels; ++c) color.values.push_back(float((i * 7 + c * 61) % 256) / 255.0f);
    return ColorBlock(color);
}

Bytes ExchangeOfSize(std::size_t size) {
    SwatchExchangeDescription file;
    std::size_t colors = 0;
    return BuildOfSize(
        size,
        [&] {
            if (colors % 50 == 0) file.blocks.push_back(GroupStartBlock(U16(Numbered("Group ", colors / 50))));
            file.blocks.push_back(ShadeBlock(colors));
            if (colors % 50 == 49) file.blocks.push_back(GroupEndBlock());
            ++colors;
        },
        [&] { return BuildSwatchExchange(file); });
}

std::vector<Seed> SmallExchangeFiles() {
    SwatchExchangeDescription sample = SampleSwatchExchange();
    SwatchExchangeDescription odd = sample;
    odd.blocks.push_back({0x0003, {1, 2, 3, 4}, {}});
    odd.blocks.push_back(ColorBlock({{}, U16("Xyz 😀"), {}, "XYZ ", {0.1f, 0.2f, 0.3f}, 3}));
    odd.blocks.push_back(GroupStartBlock(U16("$$$/Group/Name=Named")));
    odd.blocks.push_back(GroupEndBlock());
    return {{"sample.ose", BuildSwatchExchange(sample)},
            {"unsupported.ose", BuildSwatchExchange(odd)},
            {"empty.ose", BuildSwatchExchange({})}};
}

// --- XML swatchbooks

constexpr char kXmlHead[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<OrvikSwatchbook Version="1" Title="Shades" BookID="3005" Prefix="ORV " Postfix=" U">
  <Formats>
    <Format ID="lab" ColorSpace="LAB" Encoding="Float"/>
    <Format ID="cmyk" ColorSpace="CMYK" Encoding="Int8"/>
    <Format ID="rgb" ColorSpace="RGB" Encoding="Int16"/>
  </Formats>
  <Swatches>
)";
constexpr char kXmlTail[] = "  </Swatches>\n</OrvikSwatchbook>\n";

// Spot, process and global swatches in turn, each with a colour in every
// encoding; a spacer now and then.
std::string XmlSwatch(std::size_t i) {
    if (i % 50 == 49) return "    <Spacer/>\n";
    static const char* const kKinds[] = {"Sp", "Pr", "Pl"};
    const std::string kind = kKinds[i % 3];
    return "    <" + kind + " N=\"" + Numbered("Shade ", i) + "\"><C F=\"lab\">" + std::to_string(i % 101) + ".5 " +
           std::to_string(int(i % 257) - 128) + " -12.25</C><C F=\"cmyk\">" + std::to_string(i % 256) +
           " 0 255 64</C><C F=\"rgb\">" + std::to_string(i * 97 % 65536) + " 1 65535</C></" + kind + ">\n";
}

// A book of exactly `size` bytes; the swatch at each of `boundaries` lies
// across it, the boundary inside its first colour text, so that the parser
// hands that text over in two parts.
std::string XmlBookOfSize(std::size_t size, const std::vector<std::size_t>& boundaries) {
    std::string document = kXmlHead;
    std::size_t swatch = 0;
    for (std::size_t boundary : boundaries) {
        while (document.size() + kRoomBeforeABoundary < boundary) document += XmlSwatch(swatch++);
        std::string across = XmlSwatch(swatch++);
        while (across.find("<C ") == std::string::npos) across = XmlSwatch(swatch++);
        // Two characters into the values, past the tag's closing `">`.
        const std::size_t textAt = across.find("\">", across.find("<C ")) + 2 + 2;
        document.append(boundary - document.size() - textAt, ' ');
        document += across;
    }
    const std::string tail = kXmlTail;
    while (document.size() + kRoomBeforeABoundary + tail.size() < size) document += XmlSwatch(swatch++);
    document.append(size - document.size() - tail.size(), ' ');
    return document + tail;
}

// One colour text longer than a chunk of the buffer the XML reader collects
// colour texts in.
std::string XmlLongColorText() {
    std::string values;
    while (values.size() <= kChunk + kChunk / 2) values += "0.5 ";
    return std::string(kXmlHead) + "    <Sp N=\"Long\"><C F=\"lab\">" + values + "</C></Sp>\n" + kXmlTail;
}

std::vector<Seed> SmallXmlBooks() {
    return {{"book.xml", ToBytes(R"(<?xml version="1.0" encoding="UTF-8"?>
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
)")},
            {"minimal.xml", ToBytes("<OrvikSwatchbook/>")},
            // Formats found by index and by a digit identifier, and numbers of
            // more digits than an integer gathers exactly.
            {"lookups.xml", ToBytes(R"(<OrvikSwatchbook><Formats>
<Format ColorSpace="RGB" Encoding="Float"/><Format ID="0" ColorSpace="CMYK" Encoding="Float"/><Format ColorSpace="LAB" Encoding="Int16"/>
</Formats><Swatches>
<Sp N="Index" ID="$$$/K=k"><C F="2">1 2 3</C></Sp>
<Pr N="Digits" ID="7"><C F="0">0.1234567890123456789 12345678901234567890.5 -.000000000000000001 1</C></Pr>
<Pl N="Unknown"><C F="9">1 2 3</C></Pl>
</Swatches></OrvikSwatchbook>
)")},
            {"entities.xml", ToBytes(R"(<!DOCTYPE a [<!ENTITY e "&#x41;&#x20;">]>
<OrvikSwatchbook Title="&e;&e;"><Swatches><Sp N="A&amp;B"><C><![CDATA[0.5 0.25]]> 1</C></Sp></Swatches></OrvikSwatchbook>
)")}};
}

// --- The differential target

// Colour values as the conversions read them: doubles on the edges of the
// rules, bytes and 16-bit values of every size.
std::vector<std::vector<std::uint8_t>> ColorValueSources() {
    auto doubles = [](std::initializer_list<double> values) {
        std::vector<std::uint8_t> bytes(kColorValueBytes);
        std::memcpy(bytes.data(), std::data(values), std::min(bytes.size(), values.size() * sizeof(double)));
        return bytes;
    };
    std::vector<std::uint8_t> int8(kColorValueBytes);
    for (std::size_t i = 0; i < int8.size(); ++i) int8[i] = std::uint8_t(i * 37);
    std::vector<std::uint8_t> int16(kColorValueBytes);
    for (std::size_t i = 0; i < int16.size() / 2; ++i) {
        const std::uint16_t value = std::uint16_t(i * 4099 + 255);
        std::memcpy(int16.data() + 2 * i, &value, 2);
    }
    return {doubles({0.5, -0.0, 1.0 / 510, 255.5 / 65535}),
            doubles({100.0, -128.0, 127.5, std::numeric_limits<double>::infinity()}),
            doubles({std::nan(""), 1e300, -2147483649.0, 65535.0}),
            int8,
            int16};
}

void AddFastPathSeeds(BookFormat format, const char* stem, const std::vector<Seed>& files,
                      std::initializer_list<std::uint32_t> flagChoices, std::vector<Seed>& seeds) {
    const auto values = ColorValueSources();
    for (const Seed& file : files) {
        FastPathInput input;
        input.format = format;
        input.flags = std::data(flagChoices)[seeds.size() % flagChoices.size()];
        const auto& source = values[seeds.size() % values.size()];
        std::copy(source.begin(), source.end(), input.values);
        input.file = file.bytes;
        seeds.push_back({std::string(stem) + "-" + file.name, EncodeFastPathInput(input)});
    }
}

}  // namespace

std::vector<Seed> ColorBookSeeds() {
    std::vector<Seed> seeds = SmallColorBooks();
    seeds.push_back({"past-one-chunk.ocb", ColorBookOfSize(kColorBookRGB, kChunk + kChunk / 16)});
    seeds.push_back({"two-chunks.ocb", ColorBookOfSize(kColorBookLab, 2 * kChunk)});
    seeds.push_back({"past-two-chunks.ocb", ColorBookOfSize(kColorBookCMYK, 3 * kChunk - kChunk / 4)});
    return seeds;
}

std::vector<Seed> ExchangeSeeds() {
    std::vector<Seed> seeds = SmallExchangeFiles();
    seeds.push_back({"past-one-chunk.ose", ExchangeOfSize(kChunk + kChunk / 16)});
    seeds.push_back({"two-chunks.ose", ExchangeOfSize(2 * kChunk)});
    seeds.push_back({"past-two-chunks.ose", ExchangeOfSize(3 * kChunk - kChunk / 4)});
    return seeds;
}

std::vector<Seed> XmlSeeds() {
    std::vector<Seed> seeds = SmallXmlBooks();
    seeds.push_back({"long-color-text.xml", ToBytes(XmlLongColorText())});
    seeds.push_back({"past-one-piece.xml", ToBytes(XmlBookOfSize(kPiece + kPiece / 8, {kPiece}))});
    seeds.push_back({"two-pieces.xml", ToBytes(XmlBookOfSize(2 * kPiece, {kPiece}))});
    seeds.push_back({"past-two-pieces.xml", ToBytes(XmlBookOfSize(2 * kPiece + kPiece / 8, {kPiece, 2 * kPiece}))});
    return seeds;
}

std::vector<Seed> FastPathSeeds() {
    std::vector<Seed> seeds;
    AddFastPathSeeds(BookFormat::kColorBook, "colorbook", SmallColorBooks(), {0, 31, 16, 2}, seeds);
    AddFastPathSeeds(BookFormat::kExchange, "exchange", SmallExchangeFiles(), {0, 1}, seeds);
    AddFastPathSeeds(BookFormat::kXml, "xml", SmallXmlBooks(), {0, 17, 16}, seeds);
    return seeds;
}

std::vector<Corpus> AllCorpora() {
    return {{"colorbook", ColorBookSeeds()},
            {"exchange", ExchangeSeeds()},
            {"exchange-prescan", ExchangeSeeds()},
            {"xml", XmlSeeds()},
            {"fast-paths", FastPathSeeds()}};
}

}  // namespace fuzzinputs
