// Helpers of the tool tests: library files written to a fresh folder, and
// the tintora command run in-process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "TintoraCommand.h"

namespace tooltesting {

// A fresh folder, removed with everything in it at the end of the test.
class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tintora-tool-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder() { std::filesystem::remove_all(path_); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    template <typename Bytes>
    std::string Write(const std::string& name, const Bytes& bytes) const {
        const std::string file = (path_ / name).string();
        std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()),
                                                    static_cast<std::streamsize>(bytes.size()));
        return file;
    }
    std::string Path() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

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
