#include "RecordingSwatchbook.h"

#include <functional>
#include <type_traits>

#include "JsonText.h"
#include "swatchbook/SwatchbookCodes.h"

namespace tool {
namespace {

std::string ToJson(bool value) { return JsonBool(value); }
std::string ToJson(std::int32_t value) { return JsonInt(value); }
std::string ToJson(std::int64_t value) { return JsonInt(value); }
std::string ToJson(double value) { return JsonDouble(value); }
std::string ToJson(const std::u16string& value) { return JsonString(value); }

void WriteOpAndArgs(std::ostream& out, std::string_view op, std::initializer_list<std::string> args) {
    out << "{\"op\": \"" << op << "\", \"args\": [";
    const char* separator = "";
    for (const std::string& arg : args) {
        out << separator << arg;
        separator = ", ";
    }
    out << "]";
}

}  // namespace

template <typename Operation, typename... Args>
auto RecordingSwatchbook::Forward(std::string_view op, Operation operation, const Args&... args) const {
    if constexpr (std::is_void_v<std::invoke_result_t<Operation, OrvikSwatchbook&, const Args&...>>) {
        std::invoke(operation, inner_, args...);
        WriteCall(op, {ToJson(args)...});
    } else {
        const auto result = std::invoke(operation, inner_, args...);
        WriteCall(op, {ToJson(args)...}, ToJson(result));
        return result;
    }
}

void RecordingSwatchbook::WriteCall(std::string_view op, std::initializer_list<std::string> args) const {
    WriteOpAndArgs(out_, op, args);
    out_ << "}\n";
}

void RecordingSwatchbook::WriteCall(std::string_view op, std::initializer_list<std::string> args,
                                    const std::string& ret) const {
    WriteOpAndArgs(out_, op, args);
    out_ << ", \"ret\": " << ret << "}\n";
}

std::string RecordingSwatchbook::ValuesJson(std::int32_t format, std::int32_t encoding, const void* values) const {
    const std::int32_t channels = values == nullptr ? 0 : inner_.GetFormatChannels(format);
    std::string json = "[";
    for (std::int32_t i = 0; i < channels; ++i) {
        if (i > 0) json += ", ";
        switch (encoding) {
        case swatchbook::kInt8Encoding: json += JsonInt(static_cast<const std::uint8_t*>(values)[i]); break;
        case swatchbook::kInt16Encoding: json += JsonInt(static_cast<const std::uint16_t*>(values)[i]); break;
        default: json += JsonDouble(static_cast<const double*>(values)[i]); break;
        }
    }
    return json + "]";
}

// Book properties.
std::int32_t RecordingSwatchbook::GetVersion() const { return Forward("GetVersion", &OrvikSwatchbook::GetVersion); }
void RecordingSwatchbook::SetVersion(std::int32_t version) {
    Forward("SetVersion", &OrvikSwatchbook::SetVersion, version);
}
std::int32_t RecordingSwatchbook::GetPageSize() const { return Forward("GetPageSize", &OrvikSwatchbook::GetPageSize); }
void RecordingSwatchbook::SetPageSize(std::int32_t pageSize) {
    Forward("SetPageSize", &OrvikSwatchbook::SetPageSize, pageSize);
}
std::int32_t RecordingSwatchbook::GetPageKeyOffset() const {
    return Forward("GetPageKeyOffset", &OrvikSwatchbook::GetPageKeyOffset);
}
void RecordingSwatchbook::SetPageKeyOffset(std::int32_t offset) {
    Forward("SetPageKeyOffset", &OrvikSwatchbook::SetPageKeyOffset, offset);
}
std::u16string RecordingSwatchbook::GetTitle() const { return Forward("GetTitle", &OrvikSwatchbook::GetTitle); }
void RecordingSwatchbook::SetTitle(const std::u16string& title) {
    Forward("SetTitle", &OrvikSwatchbook::SetTitle, title);
}
std::int32_t RecordingSwatchbook::GetBookID() const { return Forward("GetBookID", &OrvikSwatchbook::GetBookID); }
void RecordingSwatchbook::SetBookID(std::int32_t bookId) { Forward("SetBookID", &OrvikSwatchbook::SetBookID, bookId); }
std::u16string RecordingSwatchbook::GetCopyright() const {
    return Forward("GetCopyright", &OrvikSwatchbook::GetCopyright);
}
void RecordingSwatchbook::SetCopyright(const std::u16string& copyright) {
    Forward("SetCopyright", &OrvikSwatchbook::SetCopyright, copyright);
}
std::u16string RecordingSwatchbook::GetPrefix() const { return Forward("GetPrefix", &OrvikSwatchbook::GetPrefix); }
void RecordingSwatchbook::SetPrefix(const std::u16string& prefix) {
    Forward("SetPrefix", &OrvikSwatchbook::SetPrefix, prefix);
}
std::u16string RecordingSwatchbook::GetPostfix() const { return Forward("GetPostfix", &OrvikSwatchbook::GetPostfix); }
void RecordingSwatchbook::SetPostfix(const std::u16string& postfix) {
    Forward("SetPostfix", &OrvikSwatchbook::SetPostfix, postfix);
}

std::int32_t RecordingSwatchbook::CountSwatches() const {
    return Forward("CountSwatches", &OrvikSwatchbook::CountSwatches);
}
void RecordingSwatchbook::BeginFill() { Forward("BeginFill", &OrvikSwatchbook::BeginFill); }
void RecordingSwatchbook::EndFill() { Forward("EndFill", &OrvikSwatchbook::EndFill); }

// The format table.
std::int32_t RecordingSwatchbook::CountFormats() const {
    return Forward("CountFormats", &OrvikSwatchbook::CountFormats);
}
std::int32_t RecordingSwatchbook::GetFormatColorSpace(std::int32_t format) const {
    return Forward("GetFormatColorSpace", &OrvikSwatchbook::GetFormatColorSpace, format);
}
std::int32_t RecordingSwatchbook::GetFormatEncoding(std::int32_t format) const {
    return Forward("GetFormatEncoding", &OrvikSwatchbook::GetFormatEncoding, format);
}
std::u16string RecordingSwatchbook::GetFormatCondition(std::int32_t format) const {
    return Forward("GetFormatCondition", &OrvikSwatchbook::GetFormatCondition, format);
}
std::int32_t RecordingSwatchbook::GetFormatChannels(std::int32_t format) const {
    return Forward("GetFormatChannels", &OrvikSwatchbook::GetFormatChannels, format);
}
std::u16string RecordingSwatchbook::GetFormatColorSpaceName(std::int32_t format, bool useDefault) const {
    return Forward("GetFormatColorSpaceName", &OrvikSwatchbook::GetFormatColorSpaceName, format, useDefault);
}
std::u16string RecordingSwatchbook::GetFormatID(std::int32_t format, bool useDefault) const {
    return Forward("GetFormatID", &OrvikSwatchbook::GetFormatID, format, useDefault);
}
std::int32_t RecordingSwatchbook::AddFormat() { return Forward("AddFormat", &OrvikSwatchbook::AddFormat); }
bool RecordingSwatchbook::SetFormatColorSpace(std::int32_t format, std::int32_t colorSpace) {
    return Forward("SetFormatColorSpace", &OrvikSwatchbook::SetFormatColorSpace, format, colorSpace);
}
bool RecordingSwatchbook::SetFormatEncoding(std::int32_t format, std::int32_t encoding) {
    return Forward("SetFormatEncoding", &OrvikSwatchbook::SetFormatEncoding, format, encoding);
}
bool RecordingSwatchbook::SetFormatCondition(std::int32_t format, const std::u16string& condition) {
    return Forward("SetFormatCondition", &OrvikSwatchbook::SetFormatCondition, format, condition);
}
bool RecordingSwatchbook::SetFormatColorSpaceName(std::int32_t format, const std::u16string& name) {
    return Forward("SetFormatColorSpaceName", &OrvikSwatchbook::SetFormatColorSpaceName, format, name);
}
bool RecordingSwatchbook::SetFormatChannels(std::int32_t format, std::int32_t channels) {
    return Forward("SetFormatChannels", &OrvikSwatchbook::SetFormatChannels, format, channels);
}
bool RecordingSwatchbook::SetFormatID(std::int32_t format, const std::u16string& id) {
    return Forward("SetFormatID", &OrvikSwatchbook::SetFormatID, format, id);
}
std::int32_t RecordingSwatchbook::FindFormat(const std::u16string& id) const {
    return Forward("FindFormat", &OrvikSwatchbook::FindFormat, id);
}

// Groups.
std::int32_t RecordingSwatchbook::AddGroup() { return Forward("AddGroup", &OrvikSwatchbook::AddGroup); }
void RecordingSwatchbook::EndGroup(std::int32_t blockType, std::int64_t position, std::int32_t index) {
    Forward("EndGroup", &OrvikSwatchbook::EndGroup, blockType, position, index);
}
std::int32_t RecordingSwatchbook::CountGroups(std::int32_t* ok) const {
    const std::int32_t result = inner_.CountGroups(ok);
    WriteCall("CountGroups", {}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::SelectGroup(std::int32_t group) {
    return Forward("SelectGroup", &OrvikSwatchbook::SelectGroup, group);
}
bool RecordingSwatchbook::IsDefaultGroup(std::int32_t group) const {
    return Forward("IsDefaultGroup", &OrvikSwatchbook::IsDefaultGroup, group);
}
std::int32_t RecordingSwatchbook::CountGroupSwatches() const {
    return Forward("CountGroupSwatches", &OrvikSwatchbook::CountGroupSwatches);
}
bool RecordingSwatchbook::SetGroupName(const std::u16string& name) {
    return Forward("SetGroupName", &OrvikSwatchbook::SetGroupName, name);
}
std::u16string RecordingSwatchbook::GetGroupName() const {
    return Forward("GetGroupName", &OrvikSwatchbook::GetGroupName);
}

// Reading swatches.
std::u16string RecordingSwatchbook::GetSwatchName(std::int32_t swatch, bool withAffixes) const {
    return Forward("GetSwatchName", &OrvikSwatchbook::GetSwatchName, swatch, withAffixes);
}
std::u16string RecordingSwatchbook::GetSwatchKey(std::int32_t swatch) const {
    return Forward("GetSwatchKey", &OrvikSwatchbook::GetSwatchKey, swatch);
}
std::int32_t RecordingSwatchbook::GetSwatchKind(std::int32_t swatch) const {
    return Forward("GetSwatchKind", &OrvikSwatchbook::GetSwatchKind, swatch);
}
std::int32_t RecordingSwatchbook::GetSwatchColorSpace(std::int32_t swatch) const {
    return Forward("GetSwatchColorSpace", &OrvikSwatchbook::GetSwatchColorSpace, swatch);
}
double RecordingSwatchbook::GetSwatchTint(std::int32_t swatch, std::int32_t* ok) const {
    const double result = inner_.GetSwatchTint(swatch, ok);
    WriteCall("GetSwatchTint", {ToJson(swatch)}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::GetSwatchValuesNative(std::int32_t swatch, std::int32_t format, void* values) const {
    const bool result = inner_.GetSwatchValuesNative(swatch, format, values);
    WriteCall("GetSwatchValuesNative", {ToJson(swatch), ToJson(format)}, ToJson(result));
    return result;
}
std::int32_t RecordingSwatchbook::GetValueFormats(std::int32_t swatch, std::int32_t* formats) const {
    const std::int32_t result = inner_.GetValueFormats(swatch, formats);
    WriteCall("GetValueFormats", {ToJson(swatch)}, ToJson(result));
    return result;
}
std::int32_t RecordingSwatchbook::FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const {
    const std::int32_t result = inner_.FindSwatch(name, stripAffixes, bookQuirks);
    WriteCall("FindSwatch", {ToJson(name), ToJson(stripAffixes), ToJson(bookQuirks)}, ToJson(result));
    return result;
}
std::u16string RecordingSwatchbook::StripAffixes(const std::u16string& fullName) const {
    return Forward("StripAffixes", &OrvikSwatchbook::StripAffixes, fullName);
}

// Writing swatches.
std::int32_t RecordingSwatchbook::AddSwatch(std::int32_t position) {
    return Forward("AddSwatch", &OrvikSwatchbook::AddSwatch, position);
}
std::int32_t RecordingSwatchbook::SetSwatchKind(std::int32_t swatch, std::int32_t kind) {
    const std::int32_t result = inner_.SetSwatchKind(swatch, kind);
    WriteCall("SetSwatchKind", {ToJson(swatch), ToJson(kind)});
    return result;
}
bool RecordingSwatchbook::SetSwatchName(std::int32_t swatch, const std::u16string& name) {
    return Forward("SetSwatchName", &OrvikSwatchbook::SetSwatchName, swatch, name);
}
bool RecordingSwatchbook::SetSwatchKey(std::int32_t swatch, const std::u16string& key) {
    return Forward("SetSwatchKey", &OrvikSwatchbook::SetSwatchKey, swatch, key);
}
bool RecordingSwatchbook::SetSwatchTint(std::int32_t swatch, double tint) {
    return Forward("SetSwatchTint", &OrvikSwatchbook::SetSwatchTint, swatch, tint);
}
bool RecordingSwatchbook::SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format,
                                               const std::uint16_t* values) {
    const std::string logged = ValuesJson(format, swatchbook::kInt16Encoding, values);
    const bool result = inner_.SetSwatchValuesInt16(swatch, format, values);
    WriteCall("SetSwatchValuesInt16", {ToJson(swatch), ToJson(format), logged}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) {
    const std::string logged = ValuesJson(format, swatchbook::kInt8Encoding, values);
    const bool result = inner_.SetSwatchValuesInt8(swatch, format, values);
    WriteCall("SetSwatchValuesInt8", {ToJson(swatch), ToJson(format), logged}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) {
    const std::string logged = ValuesJson(format, swatchbook::kFloatEncoding, values);
    const bool result = inner_.SetSwatchValuesFloat(swatch, format, values);
    WriteCall("SetSwatchValuesFloat", {ToJson(swatch), ToJson(format), logged}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                          const void* values) {
    const std::string logged = ValuesJson(format, encoding, values);
    const bool result = inner_.SetSwatchValues(swatch, format, encoding, values);
    WriteCall("SetSwatchValues", {ToJson(swatch), ToJson(format), ToJson(encoding), logged}, ToJson(result));
    return result;
}
bool RecordingSwatchbook::SetSwatchValuesNative(std::int32_t swatch, std::int32_t format, const void* values) {
    const std::string logged = ValuesJson(format, inner_.GetFormatEncoding(format), values);
    const bool result = inner_.SetSwatchValuesNative(swatch, format, values);
    WriteCall("SetSwatchValuesNative", {ToJson(swatch), ToJson(format), logged}, ToJson(result));
    return result;
}

}  // namespace tool
