// The colour book the file benchmarks read: 65,535 CMYK spot colours named
// "Colour N" with catalogue codes, built once per program.
#pragma once

#include <cstdint>
#include <string>

#include "tests/support/ColorBookBuilder.h"
#include "tests/support/Utf16Text.h"

inline constexpr int kLargeColorBookColors = 65535;

inline const testsupport::Bytes& LargeColorBook() {
    static const testsupport::Bytes file = [] {
        testsupport::ColorBookDescription book;
        book.title = testsupport::U16("Benchmark book");
        book.bookId = 3100;
        book.colorSpace = testsupport::kColorBookCMYK;
        for (int i = 0; i < kLargeColorBookColors; ++i) {
            book.records.push_back({testsupport::U16("Colour " + std::to_string(i)), std::to_string(i),
                                    {std::uint8_t(i), std::uint8_t(i >> 8), std::uint8_t(i * 3), 7}, {}});
        }
        book.trailer = testsupport::ColorBookTrailer("spot");
        return testsupport::BuildColorBook(book);
    }();
    return file;
}
