// The format table shared by every concrete book: the colour formats in
// which a book's swatch values are given, with their strings in a pool.
#pragma once

#include <cstdint>
#include <string>

#include "GrowableRows.h"
#include "OrvikSwatchbook.h"
#include "StringPool.h"

// One row of the format table; a new row is all zero (nothing set yet).
struct FormatRecord {
    std::int32_t colorSpace;
    std::int32_t encoding;
    std::int32_t channels;
    std::uint32_t conditionId;       // ids in the book's StringPool, 0 = none
    std::uint32_t colorSpaceNameId;
    std::uint32_t idId;
};

class OrvikSwatchbookFormat : public OrvikSwatchbook {
public:
    ~OrvikSwatchbookFormat() override;

    // Empties the format table and frees its storage; the strings stay.
    void BeginFill() override;
    // Compacts the strings and trims the table and pool to their size.
    void EndFill() override;

    std::int32_t CountFormats() const override;
    // Final and in line: the books' per-swatch writers read them.
    std::int32_t GetFormatColorSpace(std::int32_t format) const final {
        return IsValidFormat(format) ? FormatRow(format).colorSpace : 0;
    }
    std::int32_t GetFormatEncoding(std::int32_t format) const final {
        return IsValidFormat(format) ? FormatRow(format).encoding : 0;
    }
    std::u16string GetFormatCondition(std::int32_t format) const override;
    std::int32_t GetFormatChannels(std::int32_t format) const override;
    std::u16string GetFormatColorSpaceName(std::int32_t format, bool useDefault) const override;
    std::u16string GetFormatID(std::int32_t format, bool useDefault) const override;
    std::int32_t AddFormat() override;
    bool SetFormatColorSpace(std::int32_t format, std::int32_t colorSpace) override;
    bool SetFormatEncoding(std::int32_t format, std::int32_t encoding) override;
    bool SetFormatCondition(std::int32_t format, const std::u16string& condition) override;
    bool SetFormatColorSpaceName(std::int32_t format, const std::u16string& name) override;
    bool SetFormatChannels(std::int32_t format, std::int32_t channels) override;
    bool SetFormatID(std::int32_t format, const std::u16string& id) override;
    // The search of the base, comparing the identifiers where they lie
    // instead of copying each one out through GetFormatID. Final: the XML
    // reader keeps a reference book's answers while the table stands.
    std::int32_t FindFormat(const std::u16string& id) const final;

protected:
    OrvikSwatchbookFormat() = default;

    // 0 <= format < CountFormats().
    bool IsValidFormat(std::int32_t format) const {
        return format >= 0 && static_cast<std::size_t>(format) < formats_.Count();
    }
    // The row of a valid format, read without a virtual call.
    const FormatRecord& FormatRow(std::int32_t format) const { return formats_[static_cast<std::size_t>(format)]; }

private:
    using StringField = std::uint32_t FormatRecord::*;

    // The field takes the id of a new copy of `text`, 0 when the pool cannot
    // grow; the string it had is released.
    bool SetFormatString(std::int32_t format, StringField field, const std::u16string& text);
    std::u16string GetFormatString(std::int32_t format, StringField field) const;

    swatchbook::GrowableRows<FormatRecord> formats_;
    swatchbook::StringPool strings_;
};
