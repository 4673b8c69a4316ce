// What `tintora dump FILE` does before it writes anything: the reader the
// file's name or magic chooses, through a plain file stream, into a plain
// ReferenceBook. The whole-process comparison (measure) runs it beside the
// dump to tell what the output costs. Exit status 0 when the reader's
// result is 0.
#include <iostream>

#include "LibraryFormat.h"
#include "swatchbook/ReferenceBook.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read_book_only FILE\n";
        return 2;
    }
    ReferenceBook book;
    const std::int32_t result = tool::ReadLibraryFile(tool::DetectLibraryFormat(argv[1]), argv[1], book, 0);
    return result == 0 && book.CountSwatches() > 0 ? 0 : 1;
}
