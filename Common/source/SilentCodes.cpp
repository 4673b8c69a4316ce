#include "SilentCodes.h"

namespace kv {

namespace {

// In the order of lookup; the two plain numbers are kept as they stand.
constexpr ResultCode kSilentCodes[] = {
    FourCC("FMT?"), FourCC("RFSE"), FourCC("AFTR"), FourCC("VALD"), FourCC("MOOT"), FourCC("TRSH"),
    FourCC("CHEK"), FourCC("CHIT"), FourCC("TLTK"), FourCC("pFls"), FourCC("S!Fd"), FourCC("!Acq"),
    FourCC("Bchn"), FourCC("dsRP"), FourCC("skpE"), FourCC("DONE"), FourCC("ASTR"), 2139,
    FourCC("STOP"), FourCC("CLP?"), 361, kNoErr,
};

}  // namespace

bool IsSilentCode(ResultCode code) noexcept {
    for (ResultCode silent : kSilentCodes) {
        if (silent == code) return true;
    }
    return false;
}

}  // namespace kv
