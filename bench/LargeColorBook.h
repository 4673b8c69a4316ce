// The colour book the file benchmarks read: 65,535 CMYK spot colours named
// "Colour N" with catalogue codes, built once per program.
#pragma once

#include "tests/support/ColorBookBuilder.h"

inline constexpr int kLargeColorBookColors = 65535;

inline const testsupport::Bytes& LargeColorBook() {
    static const testsupport::Bytes file =
        testsupport::BuildColorBook(testsupport::NumberedSpotColorBook("Benchmark book", kLargeColorBookColors));
    return file;
}
