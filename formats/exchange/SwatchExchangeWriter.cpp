#include "SwatchExchangeWriter.h"

#include <bit>
#include <memory>
#include <new>
#include <string>

#include "SwatchExchangeLayout.h"
#include "formats/streams/BigEndian.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "swatchbook/OrvikSwatchbook.h"

namespace formats {

namespace {

using namespace exchange;

const std::uint8_t* ModelCode(std::int32_t colorSpace) {
    static constexpr std::uint8_t kNoModel[4] = {0, 0, 0, 0};
    switch (colorSpace) {
        case swatchbook::kGraySpace: return kGrayModel;
        case swatchbook::kLabSpace: return kLabModel;
        case swatchbook::kRGBSpace: return kRGBModel;
        case swatchbook::kCMYKSpace: return kCMYKModel;
        case swatchbook::kXYZSpace: return kXYZModel;
        default: return kNoModel;
    }
}

std::uint16_t ColorTypeOfKind(std::int32_t kind) {
    if (kind == swatchbook::kSpotKind) return kSpotColorType;
    if (kind == swatchbook::kProcessKind) return kProcessColorType;
    return 0;
}

// Bytes of a name in a text field: its units and the terminator.
std::uint32_t TextBytes(const std::u16string& text) {
    return std::uint32_t(2 * text.size() + 2);
}

class Writer {
public:
    explicit Writer(OrvikSwatchbookStream& stream) : stream_(stream) {}

    bool Bytes(const void* source, std::size_t count) { return stream_.Write(source, count) == std::int64_t(count); }

    bool U16(std::uint16_t value) {
        std::uint8_t bytes[2];
        StoreU16(bytes, value);
        return Bytes(bytes, 2);
    }

    bool U32(std::uint32_t value) {
        std::uint8_t bytes[4];
        StoreU32(bytes, value);
        return Bytes(bytes, 4);
    }

    bool Float(double value) { return U32(std::bit_cast<std::uint32_t>(float(value))); }

    bool BlockHeader(std::uint16_t type, std::uint32_t length) { return U16(type) && U32(length); }

    // The unit count with the terminator, then the units big-endian, written
    // from a swapped copy in one call.
    bool Text(const std::u16string& text) {
        const std::size_t units = text.size() + 1;
        if (!U16(std::uint16_t(units))) return false;
        std::unique_ptr<std::uint8_t[]> swapped(new (std::nothrow) std::uint8_t[2 * units]);
        if (!swapped) return false;
        for (std::size_t i = 0; i < units; ++i) StoreU16(&swapped[2 * i], i < text.size() ? text[i] : 0);
        return Bytes(swapped.get(), 2 * units);
    }

private:
    OrvikSwatchbookStream& stream_;
};

bool WriteGroupStart(Writer& out, const std::u16string& name) {
    if (!out.BlockHeader(kGroupStartBlock, 2 + TextBytes(name))) return false;
    // An empty name is a unit count of 0 and a lone terminator.
    return name.empty() ? out.U16(0) && out.U16(0) : out.Text(name);
}

// Answers false only for a failed write or allocation; a swatch that is not
// written is a success.
bool WriteSwatch(Writer& out, OrvikSwatchbook& book, std::int32_t swatch) {
    const std::int32_t kind = book.GetSwatchKind(swatch);
    if (kind == 0) return true;
    std::int32_t ok = 0;
    const double tint = book.GetSwatchTint(swatch, &ok);
    const std::u16string name = book.GetSwatchName(swatch, true);
    if (tint > 0 && kind == swatchbook::kProcessKind) return true;  // a tinted process colour has no entry
    const bool tinted = tint > 0;

    // A book that offers every swatch in several formats (one over a host
    // document) names the swatch's own colour space; the others answer 0: any.
    const std::int32_t format = book.ChooseValueFormat(swatch, book.GetSwatchColorSpace(swatch));
    const std::int32_t colorSpace = book.GetFormatColorSpace(format);
    const std::int32_t channels = book.GetFormatChannels(format);
    const std::size_t count = channels > 0 ? std::size_t(channels) : 0;
    double fixed[swatchbook::kMaxChannels] = {};
    std::unique_ptr<double[]> allocated;
    double* values = fixed;
    if (count > swatchbook::kMaxChannels) {
        allocated.reset(new (std::nothrow) double[count]());
        if (!allocated) return false;
        values = allocated.get();
    }
    book.GetSwatchValuesFloat(swatch, format, values);
    if (colorSpace == swatchbook::kLabSpace && count > 0) values[0] /= 100.0;  // L is stored as a fraction
    if (colorSpace == swatchbook::kGraySpace) {
        for (std::size_t i = 0; i < count; ++i) values[i] = 1.0 - values[i];  // the file's gray is ink
    }

    const std::uint32_t length = (tinted ? 4 : 0) + TextBytes(name) + std::uint32_t((count + 2) * 4);
    if (!out.BlockHeader(tinted ? kTintedColorBlock : kColorBlock, length)) return false;
    if (tinted && !out.Float(tint)) return false;
    if (!out.Text(name) || !out.Bytes(ModelCode(colorSpace), 4)) return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!out.Float(values[i])) return false;
    }
    return out.U16(ColorTypeOfKind(kind));
}

bool WriteGroups(Writer& out, OrvikSwatchbook& book) {
    std::int32_t defaultGroups = 0;
    const std::int32_t groups = book.CountGroups(&defaultGroups);
    // Every named group adds a start and an end block.
    const std::int64_t blocks = std::int64_t(book.CountSwatches()) + 2 * (std::int64_t(groups) - defaultGroups);
    if (!out.U32(std::uint32_t(blocks))) return false;
    for (std::int32_t group = 0; group < groups; ++group) {
        book.SelectGroup(group);
        const bool named = !book.IsDefaultGroup(group);
        if (named && !WriteGroupStart(out, book.GetGroupName())) return false;
        const std::int32_t swatches = book.CountGroupSwatches();
        for (std::int32_t swatch = 0; swatch < swatches; ++swatch) {
            if (!WriteSwatch(out, book, swatch)) return false;
        }
        if (named && !out.BlockHeader(kGroupEndBlock, 0)) return false;
    }
    return true;
}

}  // namespace

std::int32_t WriteSwatchExchange(OrvikSwatchbookStream& stream, OrvikSwatchbook& book) {
    if (!stream.IsOpen() || stream.IsReading() == 1) return 0;
    Writer out(stream);
    if (!out.Bytes(kMagic, 4) || !out.U32(kVersionWord)) return 0;
    return WriteGroups(out, book) ? 1 : 0;
}

}  // namespace formats
