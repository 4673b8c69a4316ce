#include "ColorValueConversion.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "SwatchbookCodes.h"

namespace swatchbook {

namespace {

constexpr std::int32_t kLabL = 0;

// Toward zero, as the machine's conversion does it: NaN and values outside
// the 32-bit range give INT32_MIN, which the callers' clamps then handle.
std::int32_t Truncate(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) {
        return static_cast<std::int32_t>(value);
    }
    return std::numeric_limits<std::int32_t>::min();
}

// Integer arithmetic after truncation wraps at 32 bits.
std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::uint8_t ClampToByte(std::int32_t n) {
    if (n < 0) {
        return 0;
    }
    return n > 255 ? 255 : static_cast<std::uint8_t>(n);
}

// Anything above 255 goes straight to full scale: the Int16 rule of the
// non-Lab channels and of Lab L.
std::uint16_t SaturateToInt16(std::int32_t n) {
    if (n > 255) {
        return 65535;
    }
    return n < 0 ? 0 : static_cast<std::uint16_t>(n);
}

// Channel access through memcpy: buffers may come straight out of file data.
std::uint8_t LoadInt8(const void* values, std::int32_t channel) {
    return static_cast<const std::uint8_t*>(values)[channel];
}
std::uint16_t LoadInt16(const void* values, std::int32_t channel) {
    std::uint16_t v;
    std::memcpy(&v, static_cast<const std::uint8_t*>(values) + channel * 2, sizeof v);
    return v;
}
double LoadFloat(const void* values, std::int32_t channel) {
    double v;
    std::memcpy(&v, static_cast<const std::uint8_t*>(values) + channel * 8, sizeof v);
    return v;
}
void StoreInt8(void* values, std::int32_t channel, std::uint8_t v) {
    static_cast<std::uint8_t*>(values)[channel] = v;
}
void StoreInt16(void* values, std::int32_t channel, std::uint16_t v) {
    std::memcpy(static_cast<std::uint8_t*>(values) + channel * 2, &v, sizeof v);
}
void StoreFloat(void* values, std::int32_t channel, double v) {
    std::memcpy(static_cast<std::uint8_t*>(values) + channel * 8, &v, sizeof v);
}

std::uint8_t FloatToInt8(bool lab, std::int32_t channel, double v) {
    if (!lab) {
        return ClampToByte(Truncate(v * 255 + 0.5));
    }
    if (channel == kLabL) {
        return ClampToByte(Truncate((v * 255) / 100 + 0.5));
    }
    return ClampToByte(WrappingAdd(Truncate(v + 0.5), 128));
}

std::uint16_t FloatToInt16(bool lab, std::int32_t channel, double v) {
    if (!lab) {
        return SaturateToInt16(Truncate(v * 65535 + 0.5));
    }
    if (channel == kLabL) {
        return SaturateToInt16(Truncate((v * 65535) / 100 + 0.5));
    }
    return DoubleToLabInt16(v);
}

double Int16ToFloat(bool lab, std::int32_t channel, std::uint16_t v) {
    if (!lab) {
        return v / 65535.0;
    }
    if (channel == kLabL) {
        return (v * 100.0) / 65535;
    }
    return v * 0.00390625 - 128;
}

std::uint8_t Int16ToInt8(bool lab, std::int32_t channel, std::uint16_t v) {
    if (!lab || channel == kLabL) {
        return static_cast<std::uint8_t>(v / 257);
    }
    return v >= 65408 ? 255 : static_cast<std::uint8_t>((v + 128) >> 8);
}

std::uint16_t Int8ToInt16(bool lab, std::int32_t channel, std::uint8_t v) {
    if (lab && channel != kLabL) {
        return static_cast<std::uint16_t>(v * 256);
    }
    return static_cast<std::uint16_t>(v * 257);
}

double Int8ToFloat(std::int32_t colorSpace, std::int32_t channel, std::uint8_t v) {
    if (colorSpace == kLabSpace) {
        return channel == kLabL ? (v * 100.0) / 255 : v - 128.0;
    }
    if (colorSpace == kCMYKSpace) {
        // Whole percentages, rounded half away from zero.
        const double percent = (v / 255.0) * 100;
        return (percent > 0 ? std::floor(percent + 0.5) : std::ceil(percent - 0.5)) / 100;
    }
    return v / 255.0;
}

// Every Int8 value's Float by colour space and channel, worked out once by
// the rule above: a look-up is much cheaper than the CMYK rounding's library
// calls, and gives the same doubles bit for bit.
struct Int8ToFloatTables {
    double labL[256];
    double labAB[256];
    double cmyk[256];
    double fraction[256];  // Gray, RGB, XYZ
};

const Int8ToFloatTables kInt8ToFloat = [] {
    Int8ToFloatTables tables{};
    for (int v = 0; v < 256; ++v) {
        const auto byte = static_cast<std::uint8_t>(v);
        tables.labL[v] = Int8ToFloat(kLabSpace, kLabL, byte);
        tables.labAB[v] = Int8ToFloat(kLabSpace, kLabL + 1, byte);
        tables.cmyk[v] = Int8ToFloat(kCMYKSpace, 0, byte);
        tables.fraction[v] = Int8ToFloat(kRGBSpace, 0, byte);
    }
    return tables;
}();

// The tables of a colour space's first channel and of the others.
struct Int8ToFloatTable {
    const double* first;
    const double* others;
};

Int8ToFloatTable Int8ToFloatTableOf(std::int32_t colorSpace) {
    switch (colorSpace) {
        case kLabSpace: return {kInt8ToFloat.labL, kInt8ToFloat.labAB};
        case kCMYKSpace: return {kInt8ToFloat.cmyk, kInt8ToFloat.cmyk};
        default: return {kInt8ToFloat.fraction, kInt8ToFloat.fraction};
    }
}

// Applies `rule` to each channel; the choice of rule is made once per
// swatch, not once per channel.
template <typename Rule>
void EachChannel(std::int32_t channels, Rule rule) {
    for (std::int32_t channel = 0; channel < channels; ++channel) {
        rule(channel);
    }
}

void ConvertChannels(std::int32_t colorSpace, std::int32_t channels, std::int32_t sourceEncoding,
                     const void* source, std::int32_t targetEncoding, void* target) {
    const bool lab = colorSpace == kLabSpace;
    switch (sourceEncoding * 4 + targetEncoding) {
        case kFloatEncoding * 4 + kInt8Encoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreInt8(target, c, FloatToInt8(lab, c, LoadFloat(source, c)));
            });
            break;
        case kFloatEncoding * 4 + kInt16Encoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreInt16(target, c, FloatToInt16(lab, c, LoadFloat(source, c)));
            });
            break;
        case kInt16Encoding * 4 + kFloatEncoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreFloat(target, c, Int16ToFloat(lab, c, LoadInt16(source, c)));
            });
            break;
        case kInt16Encoding * 4 + kInt8Encoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreInt8(target, c, Int16ToInt8(lab, c, LoadInt16(source, c)));
            });
            break;
        case kInt8Encoding * 4 + kInt16Encoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreInt16(target, c, Int8ToInt16(lab, c, LoadInt8(source, c)));
            });
            break;
        case kInt8Encoding * 4 + kFloatEncoding:
            EachChannel(channels, [&](std::int32_t c) {
                StoreFloat(target, c, Int8ToFloat(colorSpace, c, LoadInt8(source, c)));
            });
            break;
    }
}

bool IsEncoding(std::int32_t encoding) {
    return BytesPerChannel(encoding) > 0;
}

bool ConvertByRule(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
                   std::int32_t targetEncoding, void* target) {
    const std::int32_t channels = DefaultChannelCount(colorSpace);
    if (channels == 0) {
        return false;
    }
    if (!IsEncoding(sourceEncoding) || !IsEncoding(targetEncoding)) {
        return true;
    }
    if (source == nullptr || target == nullptr) {
        return false;
    }
    if (sourceEncoding == targetEncoding) {
        std::memmove(target, source, static_cast<std::size_t>(channels * BytesPerChannel(sourceEncoding)));
        return true;
    }
    ConvertChannels(colorSpace, channels, sourceEncoding, source, targetEncoding, target);
    return true;
}

// One swatch's conversion with the colour space and both encodings fixed
// when it is compiled, so that none of the choices is made per swatch.
template <std::int32_t kSpace, std::int32_t kFrom, std::int32_t kTo>
void ConvertSwatch(const void* source, void* target) {
    constexpr std::int32_t kChannels = DefaultChannelCount(kSpace);
    if constexpr (kFrom == kTo) {
        std::memmove(target, source, static_cast<std::size_t>(kChannels * BytesPerChannel(kFrom)));
    } else if constexpr (kFrom == kInt8Encoding && kTo == kFloatEncoding) {
        const Int8ToFloatTable table = Int8ToFloatTableOf(kSpace);
        StoreFloat(target, 0, table.first[LoadInt8(source, 0)]);
        for (std::int32_t channel = 1; channel < kChannels; ++channel) {
            StoreFloat(target, channel, table.others[LoadInt8(source, channel)]);
        }
    } else {
        ConvertChannels(kSpace, kChannels, kFrom, source, kTo, target);
    }
}

using SwatchConverter = void (*)(const void* source, void* target);
using EncodingConverters = std::array<std::array<SwatchConverter, 3>, 3>;  // [from - 1][to - 1]

template <std::int32_t kSpace>
constexpr EncodingConverters ConvertersOf() {
    return {{{&ConvertSwatch<kSpace, 1, 1>, &ConvertSwatch<kSpace, 1, 2>, &ConvertSwatch<kSpace, 1, 3>},
             {&ConvertSwatch<kSpace, 2, 1>, &ConvertSwatch<kSpace, 2, 2>, &ConvertSwatch<kSpace, 2, 3>},
             {&ConvertSwatch<kSpace, 3, 1>, &ConvertSwatch<kSpace, 3, 2>, &ConvertSwatch<kSpace, 3, 3>}}};
}

// By colour space from Gray on.
constexpr std::array<EncodingConverters, 5> kConverters = {ConvertersOf<kGraySpace>(), ConvertersOf<kLabSpace>(),
                                                           ConvertersOf<kRGBSpace>(), ConvertersOf<kCMYKSpace>(),
                                                           ConvertersOf<kXYZSpace>()};

bool IsIn(std::int32_t value, std::int32_t low, std::int32_t high) {
    return value >= low && value <= high;
}

}  // namespace

bool ConvertColorValues(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
                        std::int32_t targetEncoding, void* target) {
    if (IsIn(colorSpace, kGraySpace, kXYZSpace) && IsIn(sourceEncoding, kInt8Encoding, kFloatEncoding) &&
        IsIn(targetEncoding, kInt8Encoding, kFloatEncoding) && source != nullptr && target != nullptr) {
        const EncodingConverters& converters = kConverters[static_cast<std::size_t>(colorSpace - kGraySpace)];
        converters[static_cast<std::size_t>(sourceEncoding - 1)][static_cast<std::size_t>(targetEncoding - 1)](
            source, target);
        return true;
    }
    return ConvertByRule(colorSpace, sourceEncoding, source, targetEncoding, target);
}

bool ConvertColorValuesByRule(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
                              std::int32_t targetEncoding, void* target) {
    return ConvertByRule(colorSpace, sourceEncoding, source, targetEncoding, target);
}

std::uint16_t DoubleToLabInt16(double value) {
    const std::int32_t n = WrappingAdd(Truncate(value * 256 + 0.5), 128);
    if (n < 0) {
        return 0;
    }
    return n > 65535 ? 65535 : static_cast<std::uint16_t>(n);
}

}  // namespace swatchbook
