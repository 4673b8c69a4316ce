#include "ColorBookReader.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>

#include "formats/ReaderResult.h"
#include "formats/streams/ByteBuffer.h"
#include "formats/streams/ByteCursor.h"
#include "formats/streams/OrvikSwatchbookStream.h"
#include "swatchbook/ReferenceBook.h"

namespace formats {

namespace {

constexpr std::uint8_t kMagic[4] = {'7', 'K', 'C', 'B'};
constexpr std::uint8_t kTrailerMark[4] = {'s', 'p', 'f', 'l'};
constexpr std::uint8_t kSpotMark[4] = {'s', 'p', 'o', 't'};
constexpr std::size_t kCodeBytes = 6;

// UTF-16 units in the read buffer.
struct Text {
    std::uint8_t* units = nullptr;
    std::size_t count = 0;

    char16_t At(std::size_t i) const { return char16_t(units[2 * i] | (units[2 * i + 1] << 8)); }
    std::u16string ToString() const { return CopyUtf16(units, count); }
    // Into `text`, whose storage is reused: no allocation per swatch.
    void CopyTo(std::u16string& text) const { CopyUtf16(units, count, text); }
};

// A localisation key "$$$/path=default" stands for its default text.
Text CutLocalisationKey(Text text) {
    if (text.count < 3 || text.At(0) != u'$' || text.At(1) != u'$' || text.At(2) != u'$') return text;
    for (std::size_t i = 0; i < text.count; ++i) {
        if (text.At(i) == u'=') return {text.units + 2 * (i + 1), text.count - i - 1};
    }
    return text;
}

// A text field, header text or name: a count of units, then the units as
// they lie. The whole field; swapping and the key rule are the caller's.
bool ReadText(ByteCursor& in, Text& text) {
    if (!in.Has(4)) return false;
    const std::uint64_t count = in.ReadU32();
    if (!in.Has(2 * count)) return false;
    text = {in.Take(std::size_t(2 * count)), std::size_t(count)};
    return true;
}

struct Header {
    std::uint16_t bookId = 0;
    Text title, prefix, postfix, copyright;
    std::uint16_t colorCount = 0;
    std::uint16_t pageSize = 0;
    std::uint16_t pageKeyOffset = 0;
    std::uint16_t colorSpace = 0;
};

std::int32_t ReadHeader(ByteCursor& in, bool keepKeys, Header& header) {
    if (!in.Has(4)) return kReadTruncated;
    if (std::memcmp(in.Take(4), kMagic, 4) != 0) return kReadBadMagic;
    if (!in.Has(2)) return kReadTruncated;
    if (in.ReadU16() != 1) return kReadBadVersion;
    if (!in.Has(2)) return kReadTruncated;
    header.bookId = in.ReadU16();
    for (Text* text : {&header.title, &header.prefix, &header.postfix, &header.copyright}) {
        if (!ReadText(in, *text)) return kReadTruncated;
        SwapUtf16InPlace(text->units, text->count);
        if (!keepKeys) *text = CutLocalisationKey(*text);
    }
    for (std::uint16_t* value : {&header.colorCount, &header.pageSize, &header.pageKeyOffset, &header.colorSpace}) {
        if (!in.Has(2)) return kReadTruncated;
        *value = in.ReadU16();
    }
    return kReadOK;
}

// The book's colour space for the file's identifier; 0 for an unknown one.
std::int32_t MapColorSpace(std::uint16_t identifier) {
    switch (identifier) {
        case 0: return swatchbook::kRGBSpace;
        case 2: return swatchbook::kCMYKSpace;
        case 7: return swatchbook::kLabSpace;
        default: return 0;
    }
}

std::int32_t KindFromFlags(std::uint32_t flags, std::int32_t colorSpace) {
    if (flags & kColorBookSpotKind) return swatchbook::kSpotKind;
    if (flags & kColorBookGlobalKind) return swatchbook::kGlobalKind;
    return colorSpace == swatchbook::kLabSpace ? swatchbook::kSpotKind : swatchbook::kGlobalKind;
}

// Where a record's fields lie in the read buffer.
struct Record {
    Text name;
    const std::uint8_t* code = nullptr;
    std::size_t codeLength = 0;
    std::uint8_t* components = nullptr;

    bool IsGap() const { return name.count == 0; }
};

// The next record, its fields as they lie; false when it runs past the end.
bool ReadRecord(ByteCursor& in, std::size_t channels, Record& record) {
    if (!ReadText(in, record.name)) return false;
    if (!in.Has(std::uint64_t(channels) + kCodeBytes)) return false;
    record.code = in.Take(kCodeBytes);
    record.codeLength = 0;
    while (record.codeLength < kCodeBytes && record.code[record.codeLength] != 0) ++record.codeLength;
    record.components = in.Take(channels);
    return true;
}

// The first pass over the records, before the book sees any, so that a
// damaged file adds no swatch at all: checks that every record lies within
// the data, turns names and components into what the book is given, where
// they lie, and counts the swatches the records make.
bool PrepareRecords(ByteCursor& in, std::uint16_t count, std::size_t channels, bool inverted, bool keepGaps,
                    std::size_t& swatches) {
    swatches = 0;
    Record record;
    for (std::uint16_t i = 0; i < count; ++i) {
        if (!ReadRecord(in, channels, record)) return false;
        SwapUtf16InPlace(record.name.units, record.name.count);
        // Ink is stored inverted: 0 in the file is full ink.
        if (inverted) {
            for (std::size_t c = 0; c < channels; ++c) record.components[c] = std::uint8_t(255 - record.components[c]);
        }
        if (!record.IsGap() || keepGaps) ++swatches;
    }
    return true;
}

// The second pass, over records that PrepareRecords has checked and turned.
// A template, so that a ReferenceBook is filled through direct calls.
template <typename Book>
void AddRecords(ByteCursor in, Book& book, std::uint16_t count, std::size_t channels, std::uint32_t flags,
                std::int32_t format, std::int32_t kind) {
    std::u16string name;
    std::u16string code;
    Record record;
    for (std::uint16_t i = 0; i < count; ++i) {
        ReadRecord(in, channels, record);
        if (record.IsGap()) {
            if (flags & kColorBookKeepGaps) book.SetSwatchKind(book.AddSwatch(-1), swatchbook::kEmptyPlaceKind);
            continue;
        }
        if ((flags & kColorBookKeepKeys) == 0) record.name = CutLocalisationKey(record.name);
        const std::int32_t swatch = book.AddSwatch(-1);
        book.SetSwatchKind(swatch, kind);
        // A reference book takes the name from where it lies, without a
        // string in between.
        if constexpr (std::is_same_v<Book, ReferenceBook>) {
            book.SetSwatchNameUnits(swatch, record.name.units, record.name.count);
        } else {
            record.name.CopyTo(name);
            book.SetSwatchName(swatch, name);
        }
        // A reference book keeps no keys (its SetSwatchKey is final and
        // stores nothing), so for it the code is not made into one.
        if (!std::is_same_v<Book, ReferenceBook> && (flags & kColorBookWithCodes)) {
            // Catalogue code bytes are characters of their byte value.
            // (resize and copy: assigning from byte iterators builds a temporary string)
            code.resize(record.codeLength);
            std::copy(record.code, record.code + record.codeLength, code.begin());
            book.SetSwatchKey(swatch, code);
        }
        book.SetSwatchValuesInt8(swatch, format, record.components);
    }
}

}  // namespace

std::int32_t IsColorBook(OrvikSwatchbookStream& stream) {
    if (!stream.IsOpen()) return 0;
    std::uint8_t magic[4] = {};
    return stream.Read(magic, 4) == 4 && std::memcmp(magic, kMagic, 4) == 0 ? 1 : 0;
}

std::int32_t ReadColorBook(OrvikSwatchbookStream& stream, OrvikSwatchbook& book, std::uint32_t flags) {
    if (!stream.IsOpen()) return kReadStreamNotOpen;
    ByteBuffer buffer(1, kReadChunkSize, kReadChunkSize);
    if (!ReadAll(buffer, stream)) return kReadStreamNotOpen;
    ByteCursor in(buffer.Data(), std::size_t(buffer.Count()));

    Header header;
    if (const std::int32_t result = ReadHeader(in, (flags & kColorBookKeepKeys) != 0, header); result != kReadOK) {
        return result;
    }

    book.BeginFill();
    book.SetTitle(header.title.ToString());
    book.SetPrefix(header.prefix.ToString());
    book.SetPostfix(header.postfix.ToString());
    book.SetCopyright(header.copyright.ToString());
    book.SetPageSize(header.pageSize);
    book.SetPageKeyOffset(header.pageKeyOffset);
    book.SetBookID(header.bookId);

    const std::int32_t format = book.AddFormat();
    // A book with no room for the format could not take the colours' bytes.
    if (format == -1) return kReadStreamNotOpen;
    book.SetFormatEncoding(format, swatchbook::kInt8Encoding);
    const std::int32_t colorSpace = MapColorSpace(header.colorSpace);
    if (colorSpace == 0) return kReadUnknownColorSpace;
    book.SetFormatColorSpace(format, colorSpace);
    const std::int32_t channels = book.GetFormatChannels(format);

    std::int32_t kind = KindFromFlags(flags, colorSpace);
    const std::size_t componentCount = std::size_t(channels > 0 ? channels : 0);
    const ByteCursor firstRecord = in;
    std::size_t swatches = 0;
    if (!PrepareRecords(in, header.colorCount, componentCount, colorSpace == swatchbook::kCMYKSpace,
                        (flags & kColorBookKeepGaps) != 0, swatches)) {
        return kReadTruncated;
    }
    // The optional trailer says whether the book holds spot colours.
    if (in.Has(8) && std::memcmp(in.Take(4), kTrailerMark, 4) == 0) {
        kind = std::memcmp(in.Take(4), kSpotMark, 4) == 0 ? swatchbook::kSpotKind : swatchbook::kGlobalKind;
    }

    if (auto* reference = dynamic_cast<ReferenceBook*>(&book)) {
        // Storage of the exact size up front: no growth, and no copy at EndFill
        // to shrink it. Without memory for it the swatches grow as they come.
        reference->ReserveSwatches(swatches);
        AddRecords(firstRecord, *reference, header.colorCount, componentCount, flags, format, kind);
    } else {
        AddRecords(firstRecord, book, header.colorCount, componentCount, flags, format, kind);
    }
    book.EndFill();
    return kReadOK;
}

}  // namespace formats
