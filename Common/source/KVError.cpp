#include "KVError.h"

namespace kv {

const char* Error::what() const noexcept {
    return message_ != nullptr ? message_ : "KV Exception ";
}

void ThrowIfError(ResultCode code) {
    if (code != kNoErr) throw Error(code, nullptr);
}

}  // namespace kv
