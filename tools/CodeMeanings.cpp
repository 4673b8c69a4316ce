#include "CodeMeanings.h"

#include "formats/ReaderResult.h"
#include "swatchbook/SwatchbookCodes.h"

namespace tool {

namespace {

constexpr CodeMeaning kReaderResults[] = {
    {formats::kReadOK, "read completely"},
    {formats::kReadStreamNotOpen, "the file could not be opened or read"},
    {formats::kReadXmlParseError, "not well-formed XML"},
    {formats::kReadBadMagic, "not a file of this format"},
    {formats::kReadBadVersion, "a version of the format the reader does not know"},
    {formats::kReadTruncated, "the data ended early"},
    {formats::kReadTooManyBlocks, "more blocks than the reader takes"},
    {formats::kReadUnknownColorSpace, "an unknown colour space"},
};

// A reference book keeps kinds 1 to 3 only; an empty place stays kind 0.
constexpr CodeMeaning kSwatchKinds[] = {
    {0, "no kind (an empty place)"},
    {swatchbook::kSpotKind, "spot"},
    {swatchbook::kGlobalKind, "global"},
    {swatchbook::kProcessKind, "process"},
};

constexpr CodeMeaning kColorSpaces[] = {
    {0, "none"},
    {swatchbook::kCustomSpace, "custom"},
    {swatchbook::kGraySpace, "gray"},
    {swatchbook::kLabSpace, "Lab"},
    {swatchbook::kRGBSpace, "RGB"},
    {swatchbook::kCMYKSpace, "CMYK"},
    {swatchbook::kXYZSpace, "XYZ"},
};

constexpr CodeMeaning kEncodings[] = {
    {0, "none"},
    {swatchbook::kInt8Encoding, "Int8"},
    {swatchbook::kInt16Encoding, "Int16"},
    {swatchbook::kFloatEncoding, "Float"},
};

}  // namespace

std::span<const CodeMeaning> ReaderResults() { return kReaderResults; }
std::span<const CodeMeaning> SwatchKinds() { return kSwatchKinds; }
std::span<const CodeMeaning> ColorSpaces() { return kColorSpaces; }
std::span<const CodeMeaning> Encodings() { return kEncodings; }

std::string_view MeaningOf(std::span<const CodeMeaning> meanings, std::int32_t code) {
    for (const CodeMeaning& meaning : meanings) {
        if (meaning.code == code) return meaning.meaning;
    }
    return "unknown";
}

std::string MeaningsHelp(std::span<const CodeMeaning> meanings) {
    std::string help;
    for (const CodeMeaning& meaning : meanings) {
        if (!help.empty()) help += ", ";
        help += std::to_string(meaning.code) + " " + std::string(meaning.meaning);
    }
    return help;
}

}  // namespace tool
