// The swatch book interface: the in-memory form of one colour library.
// Readers fill a book through it, the writer and the library code read one
// through it, and neither knows which concrete book it talks to.
//
// The order of the virtual operations is part of the interface; keep it.
// Indices are 0-based; an operation that fails returns false, 0, -1 or an
// empty string as stated and changes nothing. No operation of the model
// throws; a book over a host document throws kv::Error when a host call fails.
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
    virtual std::int32_t FindFormat(const std::u16string& id) const = 0;

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
    virtual std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const = 0;
    virtual std::u16string StripAffixes(const std::u16string& fullName) const = 0;

    // Writing swatches.
    virtual std::int32_t AddSwatch(std::int32_t position) = 0;
    virtual std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) = 0;
    virtual bool SetSwatchName(std::int32_t swatch, const std::u16string& name) = 0;
    virtual bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) = 0;
    virtual bool SetSwatchTint(std::int32_t swatch, double tint) = 0;
    virtual bool SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format, const std::uint16_t* values) = 0;
    virtual bool SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) = 0;
    virtual bool SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) = 0;
    virtual bool SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                 const void* values) = 0;
    virtual bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) = 0;

    // Non-virtual helpers of the writer; implemented on top of the above.
    bool GetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding, void* values) const;
    bool GetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, double* values) const;
    std::int32_t ChooseValueFormat(std::int32_t swatch, std::int32_t wantedColorSpace) const;
};
