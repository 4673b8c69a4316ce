// Writes the seed corpora of the fuzz targets: make-fuzz-seeds OUTPUT_DIR
// creates OUTPUT_DIR/<target less "fuzz-">/ with the seeds of each target.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "fuzz/inputs/FuzzSeeds.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_DIR\n", argv[0]);
        return 2;
    }
    const std::filesystem::path root = argv[1];
    for (const fuzzinputs::Corpus& corpus : fuzzinputs::AllCorpora()) {
        const std::filesystem::path dir = root / corpus.target;
        std::filesystem::create_directories(dir);
        for (const fuzzinputs::Seed& seed : corpus.seeds) {
            std::ofstream out(dir / seed.name, std::ios::binary);
            out.write(reinterpret_cast<const char*>(seed.bytes.data()), std::streamsize(seed.bytes.size()));
            if (!out) {
                std::fprintf(stderr, "make-fuzz-seeds: cannot write %s\n", (dir / seed.name).c_str());
                return 1;
            }
        }
    }
    return 0;
}
