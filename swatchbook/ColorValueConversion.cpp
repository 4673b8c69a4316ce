#include "ColorValueConversion.h"

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

void ConvertChannel(std::int32_t colorSpace, std::int32_t channel, std::int32_t sourceEncoding,
                    const void* source, std::int32_t targetEncoding, void* target) {
    const bool lab = colorSpace == kLabSpace;
    switch (sourceEncoding * 4 + targetEncoding) {
        case kFloatEncoding * 4 + kInt8Encoding:
            StoreInt8(target, channel, FloatToInt8(lab, channel, LoadFloat(source, channel)));
            break;
        case kFloatEncoding * 4 + kInt16Encoding:
            StoreInt16(target, channel, FloatToInt16(lab, channel, LoadFloat(source, channel)));
            break;
        case kInt16Encoding * 4 + kFloatEncoding:
            StoreFloat(target, channel, Int16ToFloat(lab, channel, LoadInt16(source, channel)));
            break;
        case kInt16Encoding * 4 + kInt8Encoding:
            StoreInt8(target, channel, Int16ToInt8(lab, channel, LoadInt16(source, channel)));
            break;
        case kInt8Encoding * 4 + kInt16Encoding:
            StoreInt16(target, channel, Int8ToInt16(lab, channel, LoadInt8(source, channel)));
            break;
        case kInt8Encoding * 4 + kFloatEncoding:
            StoreFloat(target, channel, Int8ToFloat(colorSpace, channel, LoadInt8(source, channel)));
            break;
    }
}

bool IsEncoding(std::int32_t encoding) {
    return BytesPerChannel(encoding) > 0;
}

}  // namespace

bool ConvertColorValues(std::int32_t colorSpace, std::int32_t sourceEncoding, const void* source,
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
    for (std::int32_t channel = 0; channel < channels; ++channel) {
        ConvertChannel(colorSpace, channel, sourceEncoding, source, targetEncoding, target);
    }
    return true;
}

std::uint16_t DoubleToLabInt16(double value) {
    const std::int32_t n = WrappingAdd(Truncate(value * 256 + 0.5), 128);
    if (n < 0) {
        return 0;
    }
    return n > 65535 ? 65535 : static_cast<std::uint16_t>(n);
}

}  // namespace swatchbook
