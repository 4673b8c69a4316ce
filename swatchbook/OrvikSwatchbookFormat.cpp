#include "OrvikSwatchbookFormat.h"

#include <iterator>
#include <limits>
#include <string_view>

#include "SwatchbookCodes.h"

using namespace swatchbook;

namespace {

// What a format's colour space is called when the book names none.
std::u16string DefaultColorSpaceName(std::int32_t colorSpace) {
    switch (colorSpace) {
        case kLabSpace: return u"LAB";
        case kRGBSpace: return u"RGB";
        case kCMYKSpace: return u"CMYK";
        case kXYZSpace: return u"XYZ";
        default: return {};
    }
}

// The digits of `value` in decimal, written at the end of `buffer`.
std::u16string_view Decimal(std::size_t value, char16_t (&buffer)[20]) {
    std::size_t first = std::size(buffer);
    do {
        buffer[--first] = static_cast<char16_t>(u'0' + value % 10);
        value /= 10;
    } while (value != 0);
    return {buffer + first, std::size(buffer) - first};
}

}  // namespace

OrvikSwatchbookFormat::~OrvikSwatchbookFormat() = default;

void OrvikSwatchbookFormat::BeginFill() {
    formats_.Release();
}

void OrvikSwatchbookFormat::EndFill() {
    strings_.Compact();
    formats_.ShrinkToFit();
}

std::int32_t OrvikSwatchbookFormat::CountFormats() const {
    return static_cast<std::int32_t>(formats_.Count());
}

std::int32_t OrvikSwatchbookFormat::GetFormatChannels(std::int32_t format) const {
    return IsValidFormat(format) ? formats_[static_cast<std::size_t>(format)].channels : 0;
}

std::u16string OrvikSwatchbookFormat::GetFormatString(std::int32_t format, StringField field) const {
    return IsValidFormat(format) ? strings_.Lookup(formats_[static_cast<std::size_t>(format)].*field)
                                 : std::u16string();
}

std::u16string OrvikSwatchbookFormat::GetFormatCondition(std::int32_t format) const {
    return GetFormatString(format, &FormatRecord::conditionId);
}

std::u16string OrvikSwatchbookFormat::GetFormatColorSpaceName(std::int32_t format, bool useDefault) const {
    std::u16string name = GetFormatString(format, &FormatRecord::colorSpaceNameId);
    if (name.empty() && useDefault) {
        return DefaultColorSpaceName(GetFormatColorSpace(format));
    }
    return name;
}

std::u16string OrvikSwatchbookFormat::GetFormatID(std::int32_t format, bool useDefault) const {
    std::u16string id = GetFormatString(format, &FormatRecord::idId);
    if (id.empty() && useDefault && IsValidFormat(format)) {
        char16_t digits[20];
        return std::u16string(Decimal(static_cast<std::size_t>(format), digits));
    }
    return id;
}

std::int32_t OrvikSwatchbookFormat::AddFormat() {
    // Indices are 32-bit: the table stops growing where they would overflow.
    if (formats_.Count() >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) ||
        !formats_.Append()) {
        return -1;
    }
    return CountFormats() - 1;
}

bool OrvikSwatchbookFormat::SetFormatColorSpace(std::int32_t format, std::int32_t colorSpace) {
    if (!IsValidFormat(format) || colorSpace < kCustomSpace || colorSpace > kXYZSpace) {
        return false;
    }
    FormatRecord& row = formats_[static_cast<std::size_t>(format)];
    row.colorSpace = colorSpace;
    // A Custom space keeps whatever channel count it was given.
    if (DefaultChannelCount(colorSpace) >= 1) {
        row.channels = DefaultChannelCount(colorSpace);
    }
    return true;
}

bool OrvikSwatchbookFormat::SetFormatEncoding(std::int32_t format, std::int32_t encoding) {
    if (!IsValidFormat(format) || BytesPerChannel(encoding) == 0) {
        return false;
    }
    formats_[static_cast<std::size_t>(format)].encoding = encoding;
    return true;
}

bool OrvikSwatchbookFormat::SetFormatChannels(std::int32_t format, std::int32_t channels) {
    // Only a Custom or not yet set colour space takes an explicit count.
    if (!IsValidFormat(format) || channels < 0 || DefaultChannelCount(GetFormatColorSpace(format)) > 0) {
        return false;
    }
    formats_[static_cast<std::size_t>(format)].channels = channels;
    return true;
}

bool OrvikSwatchbookFormat::SetFormatString(std::int32_t format, StringField field, const std::u16string& text) {
    if (!IsValidFormat(format)) {
        return false;
    }
    std::uint32_t& id = formats_[static_cast<std::size_t>(format)].*field;
    strings_.Release(id);
    id = strings_.Store(text);
    return true;
}

bool OrvikSwatchbookFormat::SetFormatCondition(std::int32_t format, const std::u16string& condition) {
    return SetFormatString(format, &FormatRecord::conditionId, condition);
}

bool OrvikSwatchbookFormat::SetFormatColorSpaceName(std::int32_t format, const std::u16string& name) {
    return SetFormatString(format, &FormatRecord::colorSpaceNameId, name);
}

bool OrvikSwatchbookFormat::SetFormatID(std::int32_t format, const std::u16string& id) {
    return SetFormatString(format, &FormatRecord::idId, id);
}

std::int32_t OrvikSwatchbookFormat::FindFormat(const std::u16string& id) const {
    const std::int32_t count = CountFormats();
    // Only a text of digits can be an index.
    const bool digits = !id.empty() && id.front() >= u'0' && id.front() <= u'9';
    for (std::int32_t format = 0; format < count; ++format) {
        const std::uint32_t stored = formats_[static_cast<std::size_t>(format)].idId;
        // An identifier that is not empty matches itself; a format without
        // one is known by its index.
        if (!id.empty() && strings_.Holds(stored, id)) {
            return format;
        }
        char16_t decimal[20];
        if (digits && id == Decimal(static_cast<std::size_t>(format), decimal) && strings_.Holds(stored, u"")) {
            return format;
        }
    }
    return -1;
}
