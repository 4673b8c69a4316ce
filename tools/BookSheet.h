// A library file's complete book as a swatch sheet: its pages, groups and
// swatches with their values as stored and their colours in sRGB.
#pragma once

#include <string>

#include "SwatchSheet.h"

class CompleteBook;

namespace tool {

// `untitled` names a book that has no title of its own.
sheet::Book BookSheet(const CompleteBook& book, const std::string& untitled);

}  // namespace tool
