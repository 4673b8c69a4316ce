#include "ColorText.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "swatchbook/SwatchbookCodes.h"

namespace formats::xml {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The powers a number's digits are divided by, worked out once by the same
// library call that any other power still goes through.
const std::array<double, 23> kPowersOfTen = [] {
    std::array<double, 23> powers{};
    for (std::size_t k = 0; k < powers.size(); ++k) powers[k] = std::pow(10.0, double(k));
    return powers;
}();

double PowerOfTen(std::size_t exponent) {
    return exponent < kPowersOfTen.size() ? kPowersOfTen[exponent] : std::pow(10.0, double(exponent));
}

// Any 15 decimal digits are below 2^53, the doubles' limit of exact integers.
constexpr std::size_t kExactDigits = 15;

class NumberReader {
public:
    explicit NumberReader(std::string_view text) : text_(text) {}

    // Digits and minus signs; a minus anywhere makes the number negative.
    // Modulo 2^32 here, which keeps the low 8 or 16 bits the caller wants.
    std::uint32_t NextInteger() {
        SkipSpaces();
        std::uint32_t value = 0;
        bool negative = false;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (IsDigit(c)) {
                value = value * 10 + std::uint32_t(c - '0');
            } else if (c == '-') {
                negative = true;
            } else {
                break;
            }
        }
        return negative ? 0 - value : value;
    }

    // Digits, minus signs and points. The digits after the first point are
    // counted and the whole digit string divided once by ten to that power,
    // so "1.2.3" reads as 1.23.
    //
    // The digits are accumulated as v * 10 + d in double. Up to
    // kExactDigits digits every step of that is an exact integer, so they
    // are gathered in an integer first, which is quicker, and handed over
    // to the double accumulation when more follow.
    double NextFloat() {
        SkipSpaces();
        std::uint64_t exactDigits = 0;
        std::size_t digitCount = 0;
        double digits = 0;
        bool negative = false;
        bool afterPoint = false;
        std::size_t fractionDigits = 0;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (IsDigit(c)) {
                if (digitCount < kExactDigits) {
                    exactDigits = exactDigits * 10 + std::uint64_t(c - '0');
                } else {
                    if (digitCount == kExactDigits) digits = double(exactDigits);
                    digits = digits * 10 + (c - '0');
                }
                ++digitCount;
                if (afterPoint) ++fractionDigits;
            } else if (c == '-') {
                negative = true;
            } else if (c == '.') {
                afterPoint = true;
            } else {
                break;
            }
        }
        if (digitCount <= kExactDigits) digits = double(exactDigits);
        const double value = digits / PowerOfTen(fractionDigits);
        return negative ? -value : value;
    }

private:
    void SkipSpaces() {
        while (at_ < text_.size() && text_[at_] == ' ') ++at_;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

void ParseColorText(std::string_view text, std::int32_t encoding, std::int32_t count, void* values) {
    NumberReader reader(text);
    switch (encoding) {
    case swatchbook::kInt8Encoding:
        for (std::int32_t i = 0; i < count; ++i) {
            static_cast<std::uint8_t*>(values)[i] = static_cast<std::uint8_t>(reader.NextInteger());
        }
        break;
    case swatchbook::kInt16Encoding:
        for (std::int32_t i = 0; i < count; ++i) {
            static_cast<std::uint16_t*>(values)[i] = static_cast<std::uint16_t>(reader.NextInteger());
        }
        break;
    default:
        for (std::int32_t i = 0; i < count; ++i) static_cast<double*>(values)[i] = reader.NextFloat();
        break;
    }
}

}  // namespace formats::xml
