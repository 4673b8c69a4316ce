// Colour conversion: Lab (D50) to sRGB only.
#include "../SuiteCall.h"
#include "HostSuites.h"

#include "color/ColorConversion.h"

#include <KVSwatchSuites.h>

namespace kelvra {

namespace {

constexpr SuiteName kSuite{kKVColorConversionSuite};

ZPErr ConvertColor(HostState&, std::int32_t sourceSpace, const float* source, std::int32_t targetSpace,
                   float* target) {
    if (source == nullptr || target == nullptr || sourceSpace != kKVLabSpace || targetSpace != kKVRGBSpace)
        return kZPBadParameterErr;
    const std::array<float, 3> rgb = color::LabD50ToSrgb(source[0], source[1], source[2]);
    std::copy(rgb.begin(), rgb.end(), target);
    return kZPNoErr;
}

const KVColorConversionSuite table = {
    HostFunction<kSuite, "ConvertColor", &ConvertColor>::Call,
};

}  // namespace

const void* KVColorConversionSuiteTable() { return &table; }

}  // namespace kelvra
