#include "OrvikSwatchbook.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "ColorValueConversion.h"

using namespace swatchbook;

namespace {

// Channel values between two encodings. Every colour space fits the fixed
// part (4 doubles); only a format with more channels costs an allocation.
class ConversionBuffer {
public:
    explicit ConversionBuffer(std::int64_t bytes) {
        if (bytes > kFixedBytes) {
            allocated_ = ::operator new(static_cast<std::size_t>(bytes), std::nothrow);
            data_ = allocated_;
            if (allocated_ != nullptr) {
                std::memset(allocated_, 0, static_cast<std::size_t>(bytes));
            }
        }
    }
    ~ConversionBuffer() { ::operator delete(allocated_); }
    ConversionBuffer(const ConversionBuffer&) = delete;
    ConversionBuffer& operator=(const ConversionBuffer&) = delete;

    // Null when the allocation it needed failed.
    void* Data() { return data_; }

private:
    static constexpr std::int64_t kFixedBytes = 32;
    alignas(double) unsigned char fixed_[kFixedBytes] = {};
    void* allocated_ = nullptr;
    void* data_ = fixed_;
};

// The bytes of one swatch's values in a format's own encoding.
std::int64_t NativeValueBytes(const OrvikSwatchbook& book, std::int32_t format) {
    return std::int64_t{book.GetFormatChannels(format)} * BytesPerChannel(book.GetFormatEncoding(format));
}

bool EndsWith(const std::u16string& text, const std::u16string& suffix) {
    return text.size() >= suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int ColorSpaceRank(std::int32_t colorSpace) {
    switch (colorSpace) {
        case kLabSpace: return 3;
        case kRGBSpace: return 2;
        case kCMYKSpace: return 1;
        default: return 0;
    }
}

int EncodingRank(std::int32_t encoding) {
    switch (encoding) {
        case kFloatEncoding: return 3;
        case kInt16Encoding: return 2;
        case kInt8Encoding: return 1;
        default: return 0;
    }
}

}  // namespace

OrvikSwatchbook::~OrvikSwatchbook() = default;

std::int32_t OrvikSwatchbook::FindFormat(const std::u16string& id) const {
    const std::int32_t count = CountFormats();
    for (std::int32_t format = 0; format < count; ++format) {
        if (GetFormatID(format, true) == id) {
            return format;
        }
    }
    return -1;
}

std::u16string OrvikSwatchbook::StripAffixes(const std::u16string& fullName) const {
    const std::u16string prefix = GetPrefix();
    const std::u16string postfix = GetPostfix();
    if (fullName.size() <= prefix.size() + postfix.size()) {
        return {};
    }
    if (fullName.compare(0, prefix.size(), prefix) != 0 || !EndsWith(fullName, postfix)) {
        return {};
    }
    return fullName.substr(prefix.size(), fullName.size() - prefix.size() - postfix.size());
}

std::int32_t OrvikSwatchbook::FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks) const {
    return FindSwatch(name, stripAffixes, bookQuirks, 0);
}

bool OrvikSwatchbook::FindSwatchKey(const std::u16string& name, bool stripAffixes, bool bookQuirks,
                                    std::u16string& key) const {
    key.clear();
    if (!stripAffixes) {
        key = name;
        return true;
    }
    // Two books list their coated and uncoated variants under one name
    // with a single letter where a full name carries a three-letter code.
    if (bookQuirks) {
        const std::int32_t bookId = GetBookID();
        const std::u16string stem = name.substr(0, name.size() < 3 ? 0 : name.size() - 3);
        if (bookId == 3002 && EndsWith(name, u"CVC")) {
            key = StripAffixes(stem + u"C");
        } else if (bookId == 3005 && EndsWith(name, u"CVU")) {
            key = StripAffixes(stem + u"U");
        }
    }
    if (key.empty()) {
        key = StripAffixes(name);
    }
    return !key.empty();
}

std::int32_t OrvikSwatchbook::FindSwatch(const std::u16string& name, bool stripAffixes, bool bookQuirks,
                                         std::int32_t start) const {
    std::u16string key;
    if (!FindSwatchKey(name, stripAffixes, bookQuirks, key)) {
        return -1;
    }
    const std::int32_t count = CountSwatches();
    const std::int32_t first = start >= 0 && start < count ? start : 0;
    for (std::int32_t i = first; i < count; ++i) {
        if (GetSwatchName(i, false) == key) {
            return i;
        }
    }
    for (std::int32_t i = 0; i < first; ++i) {
        if (GetSwatchName(i, false) == key) {
            return i;
        }
    }
    return -1;
}

bool OrvikSwatchbook::SetSwatchValuesInt16(std::int32_t swatch, std::int32_t format, const std::uint16_t* values) {
    return SetSwatchValues(swatch, format, kInt16Encoding, values);
}

bool OrvikSwatchbook::SetSwatchValuesInt8(std::int32_t swatch, std::int32_t format, const std::uint8_t* values) {
    return SetSwatchValues(swatch, format, kInt8Encoding, values);
}

bool OrvikSwatchbook::SetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, const double* values) {
    return SetSwatchValues(swatch, format, kFloatEncoding, values);
}

bool OrvikSwatchbook::SetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                      const void* values) {
    const std::int32_t nativeEncoding = GetFormatEncoding(format);
    if (nativeEncoding == encoding) {
        return SetSwatchValuesNative(swatch, format, values);
    }
    const std::int32_t colorSpace = GetFormatColorSpace(format);
    // The conversion would fail anyway; do not size a buffer for it.
    if (DefaultChannelCount(colorSpace) == 0) {
        return false;
    }
    ConversionBuffer converted(NativeValueBytes(*this, format));
    if (converted.Data() == nullptr ||
        !ConvertColorValues(colorSpace, encoding, values, nativeEncoding, converted.Data())) {
        return false;
    }
    return SetSwatchValuesNative(swatch, format, converted.Data());
}

bool OrvikSwatchbook::GetSwatchValues(std::int32_t swatch, std::int32_t format, std::int32_t encoding,
                                      void* values) const {
    const std::int32_t nativeEncoding = GetFormatEncoding(format);
    if (nativeEncoding == encoding) {
        return GetSwatchValuesNative(swatch, format, values);
    }
    const std::int32_t colorSpace = GetFormatColorSpace(format);
    if (DefaultChannelCount(colorSpace) == 0) {
        return false;
    }
    ConversionBuffer native(NativeValueBytes(*this, format));
    if (native.Data() == nullptr || !GetSwatchValuesNative(swatch, format, native.Data())) {
        return false;
    }
    return ConvertColorValues(colorSpace, nativeEncoding, native.Data(), encoding, values);
}

bool OrvikSwatchbook::GetSwatchValuesFloat(std::int32_t swatch, std::int32_t format, double* values) const {
    return GetSwatchValues(swatch, format, kFloatEncoding, values);
}

std::int32_t OrvikSwatchbook::ChooseValueFormat(std::int32_t swatch, std::int32_t wantedColorSpace) const {
    if (swatch < 0 || swatch >= CountSwatches()) {
        return 0;
    }
    const std::int32_t listed = GetValueFormats(swatch, nullptr);
    if (listed < 1) {
        return -1;
    }
    const std::unique_ptr<std::int32_t[]> formats(new (std::nothrow) std::int32_t[static_cast<std::size_t>(listed)]);
    if (formats == nullptr) {
        return -1;
    }
    const std::int32_t count = std::min(listed, GetValueFormats(swatch, formats.get()));
    std::int32_t best = -1;
    std::int32_t bestColorSpace = 0;
    std::int32_t bestEncoding = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t format = formats[static_cast<std::size_t>(i)];
        const std::int32_t colorSpace = GetFormatColorSpace(format);
        const std::int32_t encoding = GetFormatEncoding(format);
        if (wantedColorSpace != 0 && colorSpace != wantedColorSpace) {
            continue;
        }
        bool replace = best < 0;
        if (!replace && wantedColorSpace == 0 && colorSpace != bestColorSpace &&
            ColorSpaceRank(colorSpace) != ColorSpaceRank(bestColorSpace)) {
            replace = ColorSpaceRank(colorSpace) > ColorSpaceRank(bestColorSpace);
            if (!replace) {
                continue;
            }
        }
        if (!replace && (encoding == bestEncoding || EncodingRank(encoding) <= EncodingRank(bestEncoding))) {
            continue;
        }
        best = format;
        bestColorSpace = colorSpace;
        bestEncoding = encoding;
    }
    return best;
}
