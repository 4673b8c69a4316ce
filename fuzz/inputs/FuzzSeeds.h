// The seed corpora of the fuzz targets, made from the test builders. Beside
// small files of each kind, every reader gets files larger than the pieces
// it reads in, so that fuzzing starts past the growth of the whole-file read
// (65,536-byte chunks) and into the XML reader's second and third
// 256,000-byte pieces.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/ByteWriter.h"

namespace fuzzinputs {

// The -max_len the fuzz commands pass: every seed fits in it whole.
inline constexpr std::size_t kFuzzMaxLen = 600000;

struct Seed {
    std::string name;
    testsupport::Bytes bytes;
};

struct Corpus {
    std::string target;  // the fuzz target's name less "fuzz-"
    std::vector<Seed> seeds;
};

std::vector<Seed> ColorBookSeeds();
std::vector<Seed> ExchangeSeeds();
std::vector<Seed> XmlSeeds();
// The small seeds of the three readers behind a byte choosing the reader,
// with flags and colour values varying from seed to seed. No large ones:
// the target checks only a sample of a large book's swatches, at up to a
// second an input, so they would slow it a hundredfold and reach no more.
std::vector<Seed> FastPathSeeds();

// Every target's corpus.
std::vector<Corpus> AllCorpora();

}  // namespace fuzzinputs
