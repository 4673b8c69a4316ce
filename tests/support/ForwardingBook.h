// A swatch book that only forwards every call to another book, so that a
// reader cannot tell which book it fills: what a reader does through the
// interface alone, for comparing with a path that knows the book's type.
#pragma once

#include "swatchbook/OrvikSwatchbook.h"

namespace testsupport {

class ForwardingBook final : public OrvikSwatchbook {
public:
    explicit ForwardingBook(OrvikSwatchbook& inner) : inner_(inner) {}

    std::int32_t GetVersion() const override { return inner_.GetVersion(); }
    void SetVersion(std::int32_t version) override { inner_.SetVersion(version); }
    std::int32_t GetPageSize() const override { return inner_.GetPageSize(); }
    void SetPageSize(std::int32_t pageSize) override { inner_.SetPageSize(pageSize); }
    std::int32_t GetPageKeyOffset() const override { return inner_.GetPageKeyOffset(); }
    void SetPageKeyOffset(std::int32_t offset) override { inner_.SetPageKeyOffset(offset); }
    std::u16string GetTitle() const override { return inner_.GetTitle(); }
    void SetTitle(const std::u16string& title) override { inner_.SetTitle(title); }
    std::int32_t GetBookID() const override { return inner_.GetBookID(); }
    void SetBookID(std::int32_t bookId) override { inner_.SetBookID(bookId); }
    std::u16string GetCopyright() const override { return inner_.GetCopyright(); }
    void SetCopyright(const std::u16string& copyright) override { inner_.SetCopyright(copyright); }
    std::u16string GetPrefix() const override { return inner_.GetPrefix(); }
    void SetPrefix(const std::u16string& prefix) override { inner_.SetPrefix(prefix); }
    std::u16string GetPostfix() const override { return inner_.GetPostfix(); }
    void SetPostfix(const std::u16string& postfix) override { inner_.SetPostfix(postfix); }
    std::int32_t CountSwatches() const override { return inner_.CountSwatches(); }
    void BeginFill() override { inner_.BeginFill(); }
    void EndFill() override { inner_.EndFill(); }
    std::int32_t CountFormats() const override { return inner_.CountFormats(); }
    std::int32_t GetFormatColorSpace(std::int32_t format) const override { return inner_.GetFormatColorSpace(format); }
    std::int32_t GetFormatEncoding(std::int32_t format) const override { return inner_.GetFormatEncoding(format); }
    std::u16string GetFormatCondition(std::int32_t format) const override { return inner_.GetFormatCondition(format); }
    std::int32_t GetFormatChannels(std::int32_t format) const override { return inner_.GetFormatChannels(format); }
    std::u16string GetFormatColorSpaceName(std::int32_t format, bool useDefault) const override {
        return inner_.GetFormatColorSpaceName(format, useDefault);
    }
    std::u16string GetFormatID(std::int32_t format, bool useDefault) const override {
        return inner_.GetFormatID(format, useDefault);
    }
    std::int32_t AddFormat() override { return inner_.AddFormat(); }
    bool SetFormatColorSpace(std::int32_t format, std::int32_t colorSpace) override {
        return inner_.SetFormatColorSpace(format, colorSpace);
    }
    bool SetFormatEncoding(std::int32_t format, std::int32_t encoding) override {
        return inner_.SetFormatEncoding(format, encoding);
    }
    bool SetFormatCondition(std::int32_t format, const std::u16string& condition) override {
        return inner_.SetFormatCondition(format, condition);
    }
    bool SetFormatColorSpaceName(std::int32_t format, const std::u16string& name) override {
        return inner_.SetFormatColorSpaceName(format, name);
    }
    bool SetFormatChannels(std::int32_t format, std::int32_t channels) override {
        return inner_.SetFormatChannels(format, channels);
    }
    bool SetFormatID(std::int32_t format, const std::u16string& id) override { return inner_.SetFormatID(format, id); }
    std::int32_t FindFormat(const std::u16string& id) const override { return inner_.FindFormat(id); }
    std::int32_t AddGroup() override { return inner_.AddGroup(); }
    void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) override {
        inner_.EndGroup(blockType, position, index);
    }
    std::int32_t CountGroups(std::int32_t* ok) const override { return inner_.CountGroups(ok); }
    bool SelectGroup(std::int32_t group) override { return inner_.SelectGroup(group); }
    bool IsDefaultGroup(std::int32_t group) const override { return inner_.IsDefaultGroup(group); }
    std::int32_t CountGroupSwatches() const override { return inner_.CountGroupSwatches(); }
    bool SetGroupName(const std::u16string& name) override { return inner_.SetGroupName(name); }
    std::u16string GetGroupName() const override { return inner_.GetGroupName(); }
    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override {
        return inner_.GetSwatchName(swatch, withAffixes);
    }
    std::u16string GetSwatchKey(std::int32_t swatch) const override { return inner_.GetSwatchKey(swatch); }
    std::int32_t GetSwatchKind(std::int32_t swatch) const override { return inner_.GetSwatchKind(swatch); }
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override { return inner_.GetSwatchColorSpace(swatch); }
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override {
        return inner_.GetSwatchTint(swatch, ok);
    }
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override {
        return inner_.GetSwatchValuesNative(swatch, format, values);
    }
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override {
        return inner_.GetValueFormats(swatch, formats);
    }
    std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const override {
        return inner_.FindSwatch(name, stripAffixes, bookQuirks);
    }
    std::u16string StripAffixes(const std::u16string& fullName) const override { return inner_.StripAffixes(fullName); }
    std::int32_t AddSwatch(std::int32_t position) override { return inner_.AddSwatch(position); }
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) override {
        return inner_.SetSwatchKind(swatch, kind);
    }
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) override {
        return inner_.SetSwatchName(swatch, name);
    }
    bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) override {
        return inner_.SetSwatchKey(swatch, key);
    }
    bool SetSwatchTint(std::int32_t swatch, double tint) override { return inner_.SetSwatchTint(swatch, tint); }
    bool SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format, const std::uint16_t* values) override {
        return inner_.SetSwatchValuesInt16(swatch, format, values);
    }
    bool SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) override {
        return inner_.SetSwatchValuesInt8(swatch, format, values);
    }
    bool SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) override {
        return inner_.SetSwatchValuesFloat(swatch, format, values);
    }
    bool SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding, const void* values) override {
        return inner_.SetSwatchValues(swatch, format, encoding, values);
    }
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override {
        return inner_.SetSwatchValuesNative(swatch, format, values);
    }

private:
    OrvikSwatchbook& inner_;
};

}  // namespace testsupport
