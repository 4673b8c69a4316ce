// The book the swatch book benchmarks work on: 65,535 CMYK swatches with
// names such as "Tone 40503", in an order that is not the names' sort order,
// behind the prefix "ORV " and the postfix " C".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "swatchbook/ReferenceBook.h"

inline constexpr std::int32_t kBenchmarkSwatches = 65535;

struct BenchmarkSwatch {
    std::u16string name;
    std::uint8_t values[4];
};

// The swatches, in book order.
const std::vector<BenchmarkSwatch>& BenchmarkSwatches();

// Prefix + name + postfix.
std::u16string FullName(const std::u16string& name);

// Fills a book with BenchmarkSwatches() the way a reader does.
void FillBenchmarkBook(ReferenceBook& book);

// `count` swatch indices spread over the book in no particular order.
std::vector<std::int32_t> LookupOrder(std::size_t count);
