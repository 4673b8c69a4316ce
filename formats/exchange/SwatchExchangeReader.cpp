#include "SwatchExchangeReader.h"

#include <cstring>
#include <string>
#include <vector>

#include "SwatchExchangeLayout.h"
#include "formats/ReaderResult.h"
#include "formats/streams/ByteBuffer.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "swatchbook/ReferenceBook.h"

namespace formats {

namespace {

using namespace exchange;

std::uint16_t UnitAsStored(const std::uint8_t* units, std::size_t i) {
    return std::uint16_t(units[2 * i] | (units[2 * i + 1] << 8));
}

// How many leading units a localisation key prefix "$$$...=" takes. The
// units are compared as they lie in the buffer, before swapping, on purpose:
// a key written in the file's own big-endian order never matches and is
// kept whole, as files in circulation expect.
std::size_t KeyPrefixUnits(const std::uint8_t* units, std::size_t count) {
    if (count < 3) return 0;
    for (std::size_t i = 0; i < 3; ++i) {
        if (UnitAsStored(units, i) != 0x0024) return 0;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t unit = UnitAsStored(units, i);
        if (unit == 0) break;
        if (unit == 0x003D) return i + 1;
    }
    return 0;
}

// A unit count including the terminator, then the units; the name is the
// zero-terminated text at their start. Units are swapped where they lie.
bool ReadName(ByteCursor& in, bool keepKeys, std::u16string& name) {
    name.clear();
    if (!in.Has(2)) return false;
    const std::size_t count = in.ReadU16();
    if (count == 0) return true;
    if (!in.Has(2 * std::uint64_t(count))) return false;
    std::uint8_t* units = in.Take(2 * count);
    const std::size_t skipped = keepKeys ? 0 : KeyPrefixUnits(units, count);
    std::uint8_t* kept = units + 2 * skipped;
    const std::size_t keptCount = count - skipped;
    // One pass: every kept unit swapped where it lies (later blocks may be
    // read from these bytes) and copied into the name, which ends at the
    // first zero unit.
    name.resize(keptCount);
    char16_t* out = name.data();
    std::size_t length = keptCount;
    for (std::size_t i = 0; i < keptCount; ++i) {
        const std::uint16_t unit = LoadU16(kept + 2 * i);
        std::memcpy(kept + 2 * i, &unit, 2);
        out[i] = char16_t(unit);
        if (unit == 0 && length == keptCount) length = i;
    }
    name.resize(length);
    return true;
}

struct ImportedModel {
    const std::uint8_t* code;
    std::int32_t colorSpace;
};

constexpr ImportedModel kImportedModels[] = {
    {kLabModel, swatchbook::kLabSpace},
    {kGrayModel, swatchbook::kGraySpace},
    {kRGBModel, swatchbook::kRGBSpace},
    {kCMYKModel, swatchbook::kCMYKSpace},
};
constexpr std::size_t kModelCount = sizeof(kImportedModels) / sizeof(kImportedModels[0]);

// Comparisons as written: NaN passes unchanged, -0.0 stays.
double Clamp(double value, double low, double high) {
    if (value > high) value = high;
    if (value < low) value = low;
    return value;
}

std::int32_t KindOfColorType(std::uint16_t colorType) {
    if (colorType & kSpotColorType) return swatchbook::kSpotKind;
    if (colorType & kProcessColorType) return swatchbook::kProcessKind;
    return swatchbook::kGlobalKind;
}

// A template, so that a ReferenceBook is filled through direct calls.
template <typename Book>
class Reader {
public:
    Reader(ByteCursor& in, Book& book, bool keepKeys) : in_(in), book_(book), keepKeys_(keepKeys) {}

    std::int32_t ReadBlocks(std::uint32_t count) {
        for (std::uint32_t index = 0; index < count; ++index) {
            BlockHeader block;
            if (!ReadBlockHeader(in_, block)) return kReadTruncated;
            std::int32_t result = kReadOK;
            switch (block.type) {
                case kGroupStartBlock: result = ReadGroupStart(); break;
                case kGroupEndBlock:
                    book_.EndGroup(kGroupEndBlock, std::int64_t(block.position), std::int32_t(index));
                    break;
                case kColorBlock: result = ReadColorEntry(false); break;
                case kTintedColorBlock: result = ReadColorEntry(true); break;
                default: break;
            }
            if (result != kReadOK) return result;
            // The declared length decides where the next block starts, however
            // much of the block was read.
            if (!in_.Seek(block.End())) return kReadTruncated;
        }
        return kReadOK;
    }

private:
    std::int32_t ReadGroupStart() {
        if (!ReadName(in_, keepKeys_, name_)) return kReadTruncated;
        const std::int32_t group = book_.AddGroup();
        if (group != -1 && book_.SelectGroup(group)) book_.SetGroupName(name_);
        return kReadOK;
    }

    std::int32_t ReadColorEntry(bool tinted) {
        double tint = 0.0;
        if (tinted) {
            if (!in_.Has(4)) return kReadTruncated;
            tint = in_.ReadFloat();
        }
        if (!ReadName(in_, keepKeys_, name_)) return kReadTruncated;
        if (!in_.Has(4)) return kReadTruncated;
        const std::uint8_t* code = in_.Take(4);
        std::size_t model = 0;
        while (model < kModelCount && std::memcmp(code, kImportedModels[model].code, 4) != 0) ++model;
        if (model == kModelCount) return kReadOK;  // a model this book does not take: no swatch

        const std::int32_t format = FormatFor(model);
        // Without its format the entry's values could not be read in step with
        // the file, and the book would take the colour type from a value.
        if (format == -1) return kReadStreamNotOpen;
        const std::int32_t swatch = book_.AddSwatch(-1);
        book_.SetSwatchName(swatch, name_);
        book_.SetSwatchTint(swatch, tint);

        const std::int32_t channels = book_.GetFormatChannels(format);
        const std::size_t count = channels > 0 ? std::size_t(channels) : 0;
        if (!in_.Has(4 * std::uint64_t(count))) return kReadTruncated;
        // Only grown: resizing to each entry's count would zero the values every time.
        if (values_.size() < count) values_.resize(count);
        const bool lab = kImportedModels[model].colorSpace == swatchbook::kLabSpace;
        for (std::size_t i = 0; i < count; ++i) {
            const double value = in_.ReadFloat();
            if (!lab) {
                values_[i] = Clamp(value, 0.0, 1.0);
            } else if (i == 0) {
                values_[i] = Clamp(value * 100.0, 0.0, 100.0);  // L is stored as a fraction
            } else {
                values_[i] = Clamp(value, -128.0, 128.0);
            }
        }
        book_.SetSwatchValuesFloat(swatch, format, values_.data());

        if (!in_.Has(2)) return kReadTruncated;
        book_.SetSwatchKind(swatch, KindOfColorType(in_.ReadU16()));
        return kReadOK;
    }

    // One format per model and read, made on the model's first use; -1 when
    // the book has no room for it.
    std::int32_t FormatFor(std::size_t model) {
        if (formats_[model] == -1) {
            const std::int32_t format = book_.AddFormat();
            if (format == -1) return -1;
            book_.SetFormatEncoding(format, swatchbook::kFloatEncoding);
            book_.SetFormatColorSpace(format, kImportedModels[model].colorSpace);
            formats_[model] = format;
        }
        return formats_[model];
    }

    ByteCursor& in_;
    Book& book_;
    bool keepKeys_;
    std::int32_t formats_[kModelCount] = {-1, -1, -1, -1};
    // Kept from one entry to the next, so that reading allocates nothing per swatch.
    std::u16string name_;
    std::vector<double> values_;
};

}  // namespace

std::int32_t ReadSwatchExchange(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags) {
    if (!stream.IsOpen()) return kReadStreamNotOpen;
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    if (!ReadAll(buffer, stream)) return kReadStreamNotOpen;
    ByteCursor in(buffer.Data(), std::size_t(buffer.Count()));

    std::uint32_t blockCount = 0;
    if (const std::int32_t result = ReadHeader(in, blockCount); result != kReadOK) return result;
    book.BeginFill();
    const bool keepKeys = (flags & kSwatchExchangeKeepKeys) != 0;
    if (auto* reference = dynamic_cast<ReferenceBook*>(&book)) return Reader(in, *reference, keepKeys).ReadBlocks(blockCount);
    return Reader(in, book, keepKeys).ReadBlocks(blockCount);
}

}  // namespace formats
