// A book that holds one colour library in memory: filled once by a reader,
// then asked for colours by full swatch name. One flat list of swatches (no
// groups, no tints), every value kept as a double whatever the file used.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "GrowableRows.h"
#include "OrvikSwatchbookFormat.h"
#include "SwatchbookCodes.h"

// One swatch of a ReferenceBook; a new one is all zero.
struct ReferenceSwatch {
    std::int32_t kind;
    // Zero-terminated; at most 64 bytes (31 units and the terminator) are
    // ever written, so the rest stays zero.
    char16_t name[36];
    // The colour space of the format the values were last set through.
    std::int32_t colorSpace;
    // Float encoding; channels beyond the colour space's count are 0.
    double values[4];
};

// The colour of a named swatch as handed to other plug-ins.
struct ReferenceColor {
    enum Model : std::int32_t { kCMYK = 0, kRGB = 1, kLab = 2 };

    std::int32_t model;
    double values[4];
    std::int16_t spot;  // 1 for a spot swatch, else 0
};

class ReferenceBook : public OrvikSwatchbookFormat {
public:
    ReferenceBook();
    ~ReferenceBook() override;

    std::int32_t GetVersion() const override;
    void SetVersion(std::int32_t version) override;
    std::int32_t GetPageSize() const override;
    void SetPageSize(std::int32_t pageSize) override;
    std::int32_t GetPageKeyOffset() const override;
    void SetPageKeyOffset(std::int32_t offset) override;
    std::u16string GetTitle() const override;
    void SetTitle(const std::u16string& title) override;
    std::int32_t GetBookID() const override;
    void SetBookID(std::int32_t bookId) override;
    std::u16string GetCopyright() const override;
    void SetCopyright(const std::u16string& copyright) override;
    std::u16string GetPrefix() const override;
    void SetPrefix(const std::u16string& prefix) override;
    std::u16string GetPostfix() const override;
    void SetPostfix(const std::u16string& postfix) override;

    std::int32_t CountSwatches() const override;

    // Forgets the swatches (keeping their storage), the name index and the
    // formats.
    void BeginFill() override;
    // Trims the swatch storage to the swatch count.
    void EndFill() override;

    // No groups: these answer -1, 0, false or empty and change nothing.
    std::int32_t AddGroup() override;
    void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) override;
    std::int32_t CountGroups(std::int32_t* ok) const override;
    bool SelectGroup(std::int32_t group) override;
    bool IsDefaultGroup(std::int32_t group) const override;
    std::int32_t CountGroupSwatches() const override;
    bool SetGroupName(const std::u16string& name) override;
    std::u16string GetGroupName() const override;

    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override;
    std::u16string GetSwatchKey(std::int32_t swatch) const override;
    std::int32_t GetSwatchKind(std::int32_t swatch) const override;
    // Values are not read back through the book interface: these answer 0 or
    // false and write nothing.
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override;
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override;
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override;
    // The search of the base, comparing the names where they lie instead of
    // copying each one out through GetSwatchName.
    std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const override;
    using OrvikSwatchbook::FindSwatch;
    // No tints: sets *ok to 1 and answers 0.0.
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override;

    // The writing operations a reader calls per swatch are final and defined
    // below, so that a reader that knows it fills a ReferenceBook calls them
    // directly and in line.
    //
    // Inserts a new swatch before `position`; a position outside 0..count
    // appends. The new swatch's index, or -1 when storage cannot grow.
    std::int32_t AddSwatch(std::int32_t position) final;
    // Kinds outside 1..3 (such as an empty place) leave the swatch as it is.
    // Answers the swatch's kind after the call.
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) final;
    // False for a name that with its terminator needs more than 64 bytes.
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) final;
    // SetSwatchName for a name of `count` UTF-16 units in host order at
    // `units`, which need not be aligned, as a reader finds it in its buffer.
    bool SetSwatchNameUnits(std::int32_t swatch, const std::uint8_t* units, std::size_t count);
    // Catalogue keys and tints are accepted and not kept.
    bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) final;
    bool SetSwatchTint(std::int32_t swatch, double tint) final;
    // Keeps the values as doubles, with the format's colour space.
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override;
    // The base's, with values already in the format's encoding handed to
    // SetSwatchValuesNative in line.
    bool SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding, const void* values) final;
    bool SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) final;
    bool SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) final;

    // Room for `count` more swatches in storage of exactly the size they
    // need, for a reader that knows how many it will add: the swatches then
    // neither grow their storage nor, at EndFill, shrink it. False, changing
    // nothing, without memory.
    bool ReserveSwatches(std::size_t count);

    // The index of the first swatch whose name is `fullName` less Prefix and
    // Postfix; -1 when there is none.
    std::int32_t FindSwatchIndex(const std::u16string& fullName) const;
    // Fills `color` for the swatch of `fullName`; false when there is none.
    // A swatch in a colour space that has no colour model here (Custom, XYZ
    // or never set) answers true and sets only the spot flag.
    bool GetSwatchColor(const std::u16string& fullName, ReferenceColor& color) const;

    // What the book keeps of a swatch, values included; an all-zero record
    // for an index out of range.
    const ReferenceSwatch& GetSwatchRecord(std::int32_t swatch) const;

private:
    // With its terminator a name fills at most 64 bytes of its record.
    static constexpr std::size_t kMaxNameUnits = 64 / sizeof(char16_t) - 1;

    bool IsValidSwatch(std::int32_t swatch) const {
        return swatch >= 0 && static_cast<std::size_t>(swatch) < swatches_.Count();
    }
    std::u16string_view NameOf(std::int32_t swatch) const;
    // Sorts the swatch indices by name, equal names in index order; false
    // without memory for it.
    bool BuildNameIndex() const;

    std::u16string title_;
    std::u16string copyright_;
    std::u16string prefix_;
    std::u16string postfix_;
    std::int32_t version_ = 0;
    std::int32_t pageSize_ = 0;
    std::int32_t pageKeyOffset_ = 0;
    std::int32_t bookId_ = 0;
    swatchbook::GrowableRows<ReferenceSwatch> swatches_{swatchbook::RowGrowth::kGeometric};
    // Built on the first lookup; dropped whenever the swatches or their names
    // change, so it never refers to a record that moved.
    mutable swatchbook::GrowableRows<std::int32_t> nameIndex_;
};

inline std::int32_t ReferenceBook::AddSwatch(std::int32_t position) {
    const std::size_t count = swatches_.Count();
    if (count == static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return -1;
    }
    if (position < 0 || static_cast<std::size_t>(position) > count) {
        position = static_cast<std::int32_t>(count);
    }
    if (!swatches_.Insert(static_cast<std::size_t>(position))) {
        return -1;
    }
    nameIndex_.Release();
    return position;
}

inline std::int32_t ReferenceBook::SetSwatchKind(std::int32_t swatch, std::int32_t kind) {
    if (!IsValidSwatch(swatch)) {
        return 0;
    }
    ReferenceSwatch& record = swatches_[static_cast<std::size_t>(swatch)];
    if (kind >= swatchbook::kSpotKind && kind <= swatchbook::kProcessKind) {
        record.kind = kind;
    }
    return record.kind;
}

inline bool ReferenceBook::SetSwatchName(std::int32_t swatch, const std::u16string& name) {
    return SetSwatchNameUnits(swatch, reinterpret_cast<const std::uint8_t*>(name.data()), name.size());
}

inline bool ReferenceBook::SetSwatchNameUnits(std::int32_t swatch, const std::uint8_t* units, std::size_t count) {
    if (count > kMaxNameUnits || !IsValidSwatch(swatch)) {
        return false;
    }
    char16_t* stored = swatches_[static_cast<std::size_t>(swatch)].name;
    if (count != 0) {
        std::memcpy(stored, units, count * sizeof(char16_t));
    }
    stored[count] = u'\0';
    nameIndex_.Release();
    return true;
}

inline bool ReferenceBook::SetSwatchKey(std::int32_t, const std::u16string&) { return true; }
inline bool ReferenceBook::SetSwatchTint(std::int32_t, double) { return true; }

inline bool ReferenceBook::SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                           const void* values) {
    if (GetFormatEncoding(format) == encoding) {
        return SetSwatchValuesNative(swatch, format, values);
    }
    return OrvikSwatchbook::SetSwatchValues(swatch, format, encoding, values);
}

inline bool ReferenceBook::SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) {
    return SetSwatchValues(swatch, format, swatchbook::kInt8Encoding, values);
}

inline bool ReferenceBook::SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) {
    return SetSwatchValues(swatch, format, swatchbook::kFloatEncoding, values);
}
