// Sequential big-endian reading of resource data with a reason for the first
// read that runs past the end.
#pragma once

#include <kelvra/HostError.h>

#include <cstdint>
#include <span>
#include <string>

namespace kelvra {

class BigEndianReader {
public:
    // `what` names the data in error messages ("property list").
    BigEndianReader(std::span<const std::uint8_t> bytes, std::string what)
        : bytes_(bytes), what_(std::move(what)) {}

    std::uint32_t U32() { return std::uint32_t(Take(4)); }
    std::uint16_t U16() { return std::uint16_t(Take(2)); }
    std::string Text(std::size_t length) {
        Need(length);
        std::string text(reinterpret_cast<const char*>(bytes_.data() + at_), length);
        at_ += length;
        return text;
    }
    std::size_t Left() const { return bytes_.size() - at_; }

    [[noreturn]] void Fail(const std::string& reason) const { throw HostError(what_ + ": " + reason); }

private:
    void Need(std::size_t count) const {
        if (count > Left()) Fail("data ends early at byte " + std::to_string(bytes_.size()));
    }
    std::uint64_t Take(std::size_t count) {
        Need(count);
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < count; ++i) value = (value << 8) | bytes_[at_++];
        return value;
    }

    std::span<const std::uint8_t> bytes_;
    std::string what_;
    std::size_t at_ = 0;
};

}  // namespace kelvra
