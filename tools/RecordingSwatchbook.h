// A swatch book that forwards every call to another book and writes one JSON
// line per call: {"op": name, "args": [...], "ret": result}. It shows what a
// reader asks of a book, getters included, in order.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>

#include "swatchbook/OrvikSwatchbook.h"

namespace tool {

class RecordingSwatchbook final : public OrvikSwatchbook {
public:
    RecordingSwatchbook(OrvikSwatchbook& inner, std::ostream& out) : inner_(inner), out_(out) {}

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
    void BeginFill() override;
    void EndFill() override;

    std::int32_t CountFormats() const override;
    std::int32_t GetFormatColorSpace(std::int32_t format) const override;
    std::int32_t GetFormatEncoding(std::int32_t format) const override;
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
    std::int32_t FindFormat(const std::u16string& id) const override;

    std::int32_t AddGroup() override;
    void EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) override;
    // Out-arguments are not logged: CountGroups logs [], GetSwatchTint and
    // GetValueFormats [swatch], GetSwatchValuesNative [swatch, format].
    std::int32_t CountGroups(std::int32_t* ok) const override;
    bool SelectGroup(std::int32_t group) override;
    bool IsDefaultGroup(std::int32_t group) const override;
    std::int32_t CountGroupSwatches() const override;
    bool SetGroupName(const std::u16string& name) override;
    std::u16string GetGroupName() const override;

    std::u16string GetSwatchName(std::int32_t swatch, bool withAffixes) const override;
    std::u16string GetSwatchKey(std::int32_t swatch) const override;
    std::int32_t GetSwatchKind(std::int32_t swatch) const override;
    std::int32_t GetSwatchColorSpace(std::int32_t swatch) const override;
    double GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const override;
    bool GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const override;
    std::int32_t GetValueFormats(std::int32_t swatch, std::int32_t* formats) const override;
    std::int32_t FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const override;
    std::u16string StripAffixes(const std::u16string& fullName) const override;

    std::int32_t AddSwatch(std::int32_t position) override;
    // Logged without "ret": its result carries no meaning.
    std::int32_t SetSwatchKind(std::int32_t swatch, std::int32_t kind) override;
    bool SetSwatchName(std::int32_t swatch, const std::u16string& name) override;
    bool SetSwatchKey(std::int32_t swatch, const std::u16string& key) override;
    bool SetSwatchTint(std::int32_t swatch, double tint) override;
    // A values buffer is logged with as many entries as the inner book's
    // GetFormatChannels(format) at the time of the call.
    bool SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format, const std::uint16_t* values) override;
    bool SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) override;
    bool SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) override;
    bool SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                         const void* values) override;
    bool SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) override;

private:
    // Calls the inner book's operation and logs the call with its result
    // (none for an operation that returns nothing).
    template <typename Operation, typename... Args>
    auto Forward(std::string_view op, Operation operation, const Args&... args) const;

    // Logs a call, with or without its result.
    void WriteCall(std::string_view op, std::initializer_list<std::string> args) const;
    void WriteCall(std::string_view op, std::initializer_list<std::string> args, const std::string& ret) const;

    // `values` in `encoding` (1 bytes, 2 16-bit numbers, anything else
    // doubles) as a JSON array of the format's channel count.
    std::string ValuesJson(std::int32_t format, std::int32_t encoding, const void* values) const;

    OrvikSwatchbook& inner_;
    std::ostream& out_;
};

}  // namespace tool
