// tintora sheet: a library file or palette as a swatch sheet, HTML or SVG.
#pragma once

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace tool {

struct SheetOptions {
    std::string input;
    std::string output;
    std::string format = "auto";
};

// The subcommand with its options and help.
CLI::App* AddSheetCommand(CLI::App& app, SheetOptions& options);

// 0 when the sheet was written; 1, with the reason on `err` and the output
// file left as it was, when anything failed.
int RunSheet(const SheetOptions& options, std::ostream& out, std::ostream& err);

}  // namespace tool
