// The swatch book interface: the in-memory form of one colour library.
// Readers fill a book through it, the writer and the library code read one
// through it, and neither knows which concrete book it talks to.
//
// The order of the virtual operations is part of the interface; keep it.
// Indices are 0-based; an operation that fails returns false, 0, -1 or an
// empty string as stated and changes nothing. No operation of the model
// throws; a book over a host document throws kv::Error when a host call fails,
// and the tools' complete book std::bad_alloc when memory runs out.
#pragma once

#include <cstdint>
#include <string>

#include "SwatchbookCodes.h"

class OrvikSwatchbook {
public:
    virtual ~OrvikSwatchbook();

    // Book properties.
    virtual std::int32_t GetVersion() const = 0;
    virtual void SetVersion(std::int32_t version) = 0;
    virtual std::int32_t GetPageSize() const = 0;
    virtual void SetPageSize(std::int32_t pageSize) = 0;
    virtual std::int32_t GetPageKeyOffset() const = 0;
    virtual void SetPageKeyOffset(std::int32_t offset) = 0;
    virtual std::u16string GetTitle() const = 0;
    virtual void SetTitle(const std::u16string& title) = 0;
    virtual std::int32_t GetBookID() const = 0;
    virtual void SetBookID(std::int32_t bookId) = 0;
    virtual std::u16string GetCopyright() const = 0;
    virtual void SetCopyright(const std::u16string& copyright) = 0;
    virtual std::u16string GetPrefix() const = 0;
    virtual void SetPrefix(const std::u16string& prefix) = 0;
    virtual std::u16string GetPostfix() const = 0;
    virtual void SetPostfix(const std::u16string& postfix) = 0;

    virtual std::int32_t CountSwatches() const = 0;

    // A reader is about to fill the book / has finished filling it.
    virtual void BeginFill() = 0;
    virtual void EndFill() = 0;

    // The format table.
    virtual std::int32_t CountFormats() const = 0;
    virtual std::int32_t GetFormatColorSpace(std::int32_t format) const = 0;
    virtual std::int32_t GetFormatEncoding(std::int32_t format) const = 0;
    virtual std::u16string GetFormatCondition(std::int32_t format) const = 0;
    virtual std::int32_t GetFormatChannels(std::int32_t format) const = 0;
    virtual std::u16string GetFormatColorSpaceName(std::int32_t format, bool useDefault) const = 0;
    virtual std::u16string GetFormatID(std::int32_t format, bool useDefault) const = 0;
    virtual std::int32_t AddFormat() = 0;
    virtual bool SetFormatColorSpace(std::int32_t format, std::int32_t colorSpace) = 0;
    virtual bool SetFormatEncoding(std::int32_t format, std::int32_t encoding) = 0;
    virtual bool SetFormatCondition(std::int32_t format, const std::u16string& condition) = 0;
    virtual bool SetFormatColorSpaceName(std::int32_t format, const std::u16string& name) = 0;
    virtual bool SetFormatChannels(std::int32_t format, std::int32_t channels) = 0;
    virtual bool SetFormatID(std::int32_t format, const std::u16string& id) = 0;
    // The first format whose GetFormatID(format, true) is `id`; -1 if none.
    virtual std::int32_t FindFormat(const std::u16string& id) const;

    // Groups.
    virtual std::int32_t AddGroup() = 0;
    virtual void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) = 0;
    virtual std::int32_t CountGroups(std::int32_t* ok) const = 0;
    virtual bool SelectGroup(std::int32_t group) = 0;
    virtual bool IsDefaultGroup(std::int32_t group) const = 0;
    virtual std::int32_t CountGroupSwatches() const = 0;
    virtual bool SetGroupName(const std::u16string& name) = 0;
    virtual std::u16string GetGroupName() const = 0;

    // Reading swatches.
    virtual std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const = 0;
    virtual std::u16string GetSwatchKey(std::int32_t swatch) const = 0;
    virtual std::int32_t GetSwatchKind(std::int32_t swatch) const = 0;
    virtual std::int32_t GetSwatchColorSpace(std::int32_t swatch) const = 0;
    virtual double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const = 0;
    virtual bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const = 0;
    virtual std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const = 0;
    // The first swatch whose name equals `name` (or, with stripAffixes, the
    // name less Prefix and Postfix); bookQuirks adds the name rules of books
    // 3002 and 3005. -1 when none matches.
    virtual std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const;
    // The middle of a full name that starts with Prefix and ends with Postfix
    // and has something between them; else empty.
    virtual std::u16string StripAffixes(const std::u16string& fullName) const;

    // Writing swatches.
    virtual std::int32_t AddSwatch(std::int32_t position) = 0;
    virtual std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) = 0;
    virtual bool SetSwatchName(std::int32_t swatch, const std::u16string& name) = 0;
    virtual bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) = 0;
    virtual bool SetSwatchTint(std::int32_t swatch, double tint) = 0;
    virtual bool SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format, const std::uint16_t* values);
    virtual bool SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values);
    virtual bool SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values);
    // Values given in `encoding` are converted to the format's own encoding
    // and passed to SetSwatchValuesNative; false when they cannot be.
    virtual bool SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                 const void* values);
    virtual bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) = 0;

    // FindSwatch beginning at `start` and wrapping around; a start at or
    // beyond the count searches from 0.
    std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks,
                            std::int32_t start) const;

    // Non-virtual helpers of the writer; implemented on top of the above.
    // The mirror of SetSwatchValues: native values converted to `encoding`.
    bool GetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding, void* values) const;
    bool GetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, double* values) const;
    // The format to read a swatch's values in: of the swatch's formats, those
    // of the wanted colour space (0 = any), preferring Lab over RGB over CMYK,
    // then Float over Int16 over Int8, the earliest on a tie. -1 when none
    // fits; 0 for a swatch index out of range.
    std::int32_t ChooseValueFormat(std::int32_t swatch, std::int32_t wantedColorSpace) const;

protected:
    // The name FindSwatch compares swatch names with, into `key`; false when
    // the name strips to nothing and nothing can match.
    bool FindSwatchKey(const std::u16string& name, bool stripAffixes, bool bookQuirks, std::u16string& key) const;
};
