#include "MemoryStream.h"

#include <algorithm>
#include <cstring>

namespace testsupport {

std::int64_t MemoryStream::Read(void* destination, std::size_t count) {
    ++readCalls_;
    if (!open_ || !reading_) return 0;
    const std::size_t n = std::min(count, bytes_.size() - position_);
    if (n != 0) std::memcpy(destination, bytes_.data() + position_, n);
    position_ += n;
    return std::int64_t(n);
}

std::int64_t MemoryStream::Write(const void* source, std::size_t count) {
    if (!open_ || reading_) return 0;
    const std::size_t n = std::min(count, writeLimit_ - std::min(writeLimit_, bytes_.size()));
    const auto* bytes = static_cast<const std::uint8_t*>(source);
    bytes_.insert(bytes_.end(), bytes, bytes + n);
    return std::int64_t(n);
}

}  // namespace testsupport
