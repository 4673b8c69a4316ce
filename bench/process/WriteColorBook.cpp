// Writes the benchmark colour book (bench/LargeColorBook.h) to the file
// named on the command line, for the whole-process comparisons of measure.
#include <cstdio>
#include <fstream>
#include <iostream>

#include "bench/LargeColorBook.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_color_book FILE\n";
        return 2;
    }
    const testsupport::Bytes& book = LargeColorBook();
    std::ofstream out(argv[1], std::ios::binary);
    out.write(reinterpret_cast<const char*>(book.data()), std::streamsize(book.size()));
    out.close();
    if (!out) {
        std::cerr << "write_color_book: cannot write " << argv[1] << "\n";
        return 1;
    }
    return 0;
}
