// A stream for long output written piece by piece through std::ostream:
// the pieces gather in 64 KiB before they go to the stream underneath,
// so that a line per swatch costs a copy rather than several calls into
// the standard output. What is gathered goes on flush and at the end.
#pragma once

#include <ostream>
#include <streambuf>

namespace commandline {

class BufferedStream final : public std::ostream {
public:
    explicit BufferedStream(std::ostream& out) : std::ostream(&buffer_), buffer_(out) {}
    ~BufferedStream() override { buffer_.pubsync(); }

private:
    class Buffer final : public std::streambuf {
    public:
        explicit Buffer(std::ostream& out) : out_(out) { setp(text_, text_ + kSize); }

    protected:
        int_type overflow(int_type c) override {
            if (sync() != 0) return traits_type::eof();
            if (!traits_type::eq_int_type(c, traits_type::eof())) sputc(traits_type::to_char_type(c));
            return traits_type::not_eof(c);
        }
        int sync() override {
            out_.write(pbase(), pptr() - pbase());
            setp(text_, text_ + kSize);
            return out_ ? 0 : -1;
        }

    private:
        static constexpr std::streamsize kSize = 64 * 1024;
        std::ostream& out_;
        char text_[kSize];
    };

    Buffer buffer_;
};

}  // namespace commandline
