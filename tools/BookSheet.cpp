#include "BookSheet.h"

#include <charconv>
#include <cstring>

#include "color/ColorConversion.h"
#include "color/ScreenColor.h"
#include "swatchbook/ColorValueConversion.h"
#include "swatchbook/CompleteBook.h"
#include "swatchbook/SwatchbookCodes.h"
#include "text/Utf8.h"

namespace tool {
namespace {

using namespace swatchbook;

std::string SpaceName(std::int32_t colorSpace) {
    switch (colorSpace) {
        case kGraySpace: return "Gray";
        case kLabSpace: return "Lab";
        case kRGBSpace: return "RGB";
        case kCMYKSpace: return "CMYK";
        case kXYZSpace: return "XYZ";
        default: return "Custom";
    }
}

std::string EncodingName(std::int32_t encoding) {
    switch (encoding) {
        case kInt8Encoding: return "8-bit";
        case kInt16Encoding: return "16-bit";
        default: return "float";
    }
}

// "Lab 8-bit 102 128 88": the stored numbers as they are.
std::string ValuesLine(const CompleteBook& book, const CompleteBook::Values& values) {
    const std::int32_t encoding = book.GetFormatEncoding(values.format);
    std::string line = SpaceName(book.GetFormatColorSpace(values.format)) + " " + EncodingName(encoding);
    const std::size_t size = std::size_t(BytesPerChannel(encoding));
    for (std::size_t at = 0; size > 0 && at + size <= values.bytes.size(); at += size) {
        line += " ";
        if (encoding == kInt8Encoding) {
            line += std::to_string(values.bytes[at]);
        } else if (encoding == kInt16Encoding) {
            std::uint16_t v;
            std::memcpy(&v, &values.bytes[at], 2);
            line += std::to_string(v);
        } else {
            double v;
            std::memcpy(&v, &values.bytes[at], 8);
            char text[32];
            // A value that came in single precision reads best in it: 0.95, not 0.949999988079071.
            const bool single = double(float(v)) == v;
            line.append(text, single ? std::to_chars(text, text + sizeof text, float(v)).ptr
                                     : std::to_chars(text, text + sizeof text, v).ptr);
        }
    }
    return line;
}

// The colour of the values given last, which a host takes: gray as a
// lightness, as the host shows a reader's gray.
void SetPreview(const CompleteBook& book, const CompleteBook::Swatch& swatch, sheet::Swatch& shown) {
    for (const CompleteBook::Values& values : swatch.values) {
        if (values.format != swatch.lastFormat) continue;
        const std::int32_t colorSpace = book.GetFormatColorSpace(values.format);
        double v[kMaxChannels] = {};
        if (DefaultChannelCount(colorSpace) == 0 ||
            values.bytes.size() != std::size_t(DefaultChannelCount(colorSpace)) *
                                       std::size_t(BytesPerChannel(book.GetFormatEncoding(values.format))) ||
            !ConvertColorValues(colorSpace, book.GetFormatEncoding(values.format), values.bytes.data(),
                                kFloatEncoding, v)) {
            return;
        }
        const float f[4] = {float(v[0]), float(v[1]), float(v[2]), float(v[3])};
        switch (colorSpace) {
            case kGraySpace: shown.srgb = color::Srgb{f[0], f[0], f[0]}; break;
            case kRGBSpace: shown.srgb = color::Srgb{f[0], f[1], f[2]}; break;
            case kLabSpace:
                shown.srgb = color::LabD50ToSrgb(f[0], f[1], f[2]);
                shown.preview = sheet::Preview::kLab;
                break;
            case kCMYKSpace:
                shown.srgb = color::CmykToSrgbApproximation(f[0], f[1], f[2], f[3]);
                shown.preview = sheet::Preview::kCmykApproximation;
                break;
            default: break;  // XYZ: no rule of the host's
        }
    }
}

std::string KindName(std::int32_t kind) {
    switch (kind) {
        case kSpotKind: return "spot";
        case kGlobalKind: return "global";
        case kProcessKind: return "process";
        default: return "no kind";
    }
}

}  // namespace

sheet::Book BookSheet(const CompleteBook& book, const std::string& untitled) {
    sheet::Book shown;
    shown.title = book.GetTitle().empty() ? untitled : kv::Utf16ToUtf8(book.GetTitle());
    shown.copyright = kv::Utf16ToUtf8(book.GetCopyright());
    if (book.GetBookID() != 0) shown.bookId = book.GetBookID();
    shown.pageSize = book.GetPageSize();
    shown.pageKeyOffset = book.GetPageKeyOffset();
    for (const CompleteBook::Group& group : book.Groups()) {
        sheet::Group& into = shown.groups.emplace_back();
        into.name = kv::Utf16ToUtf8(group.name);
        for (const CompleteBook::Swatch& swatch : group.swatches) {
            sheet::Swatch& s = into.swatches.emplace_back();
            if (swatch.kind == kEmptyPlaceKind) {
                s.emptyPlace = true;
                continue;
            }
            s.name = kv::Utf16ToUtf8(book.GetPrefix() + swatch.name + book.GetPostfix());
            s.kind = KindName(swatch.kind);
            s.tint = swatch.tint;
            for (const CompleteBook::Values& values : swatch.values) s.values.push_back(ValuesLine(book, values));
            SetPreview(book, swatch, s);
        }
    }
    return shown;
}

}  // namespace tool
