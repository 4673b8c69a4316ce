// Helpers of the tool tests: the tintora command run in-process.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "TintoraCommand.h"

namespace tooltesting {

struct Run {
    int status;
    std::string out;
    std::string err;
};

inline Run RunTool(std::vector<std::string> args) {
    args.insert(args.begin(), "tintora");
    std::vector<const char*> argv;
    for (const std::string& arg : args) argv.push_back(arg.c_str());
    std::ostringstream out, err;
    const int status = tool::RunTintora(static_cast<int>(argv.size()), argv.data(), out, err);
    return {status, out.str(), err.str()};
}

}  // namespace tooltesting
