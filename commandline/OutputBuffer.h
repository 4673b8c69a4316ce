// Long output gathered in pieces of 64 KiB before it goes to its stream, so
// that a command printing a line per swatch makes a few stream calls rather
// than several per line. Text, characters and integers are appended with
// <<, as to a stream; the rest goes to the stream when the buffer is
// destroyed or flushed.
#pragma once

#include <charconv>
#include <concepts>
#include <ostream>
#include <string_view>

namespace commandline {

class OutputBuffer {
public:
    explicit OutputBuffer(std::ostream& out) : out_(out) {}
    OutputBuffer(const OutputBuffer&) = delete;
    OutputBuffer& operator=(const OutputBuffer&) = delete;
    ~OutputBuffer() { Flush(); }

    OutputBuffer& operator<<(std::string_view text) {
        if (text.size() > kSize - used_) {
            Flush();
            if (text.size() > kSize) {
                out_.write(text.data(), std::streamsize(text.size()));
                return *this;
            }
        }
        text.copy(buffer_ + used_, text.size());
        used_ += text.size();
        return *this;
    }
    OutputBuffer& operator<<(const char* text) { return *this << std::string_view(text); }
    OutputBuffer& operator<<(char c) {
        if (used_ == kSize) Flush();
        buffer_[used_++] = c;
        return *this;
    }
    template <std::integral Integer>
        requires(!std::same_as<Integer, char> && !std::same_as<Integer, bool>)
    OutputBuffer& operator<<(Integer value) {
        char digits[24];
        return *this << std::string_view(digits, std::to_chars(digits, std::end(digits), value).ptr);
    }

    // Lets `write` put up to `most` characters straight into the buffer: it
    // gets where to start and answers where it stopped. Saves a check per
    // character for short pieces; `most` must not exceed Capacity().
    template <typename Write>
    void WriteAtMost(std::size_t most, Write&& write) {
        if (most > kSize - used_) Flush();
        char* const start = buffer_ + used_;
        used_ += std::size_t(write(start) - start);
    }
    static constexpr std::size_t Capacity() { return kSize; }

    // Hands what is gathered to the stream.
    // Out of line: it is rare, and inlined it made every append save
    // registers for the stream call.
    [[gnu::noinline]] void Flush() {
        out_.write(buffer_, std::streamsize(used_));
        used_ = 0;
    }

private:
    static constexpr std::size_t kSize = 64 * 1024;

    std::ostream& out_;
    std::size_t used_ = 0;
    char buffer_[kSize];
};

}  // namespace commandline
