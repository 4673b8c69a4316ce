// tintora convert: library files and plain palettes into one swatch
// exchange file.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

struct ConvertOptions {
    std::vector<std::string> inputs;
    std::string output;
    std::string format = "auto";
    std::string kind;  // empty: each swatch keeps its own, palettes process
    bool groupPerFile = false;
    std::string name;
    bool cutNames = false;
    bool renameDuplicates = false;
};

// The subcommand with its options and help.
CLI::App* AddConvertCommand(CLI::App& app, ConvertOptions& options);

// 0 when the file was written; 1, with the reasons on `err` and the output
// file left as it was, when anything failed.
int RunConvert(const ConvertOptions& options, std::ostream& out, std::ostream& err);

}  // namespace tool
