#include <algorithm>
#include <cctype>
#include <filesystem>

#include "ReplaceFile.h"
#include "SwatchSheet.h"

namespace sheet {

namespace {

std::string LowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return extension;
}

}  // namespace

std::string SheetNameProblem(const std::string& path) {
    const std::string extension = LowerExtension(path);
    if (extension == ".svg" || extension == ".html" || extension == ".htm") return {};
    return path + ": a sheet's name must end in .html or .svg";
}

std::string WriteSheet(const Sheet& sheet, const std::string& path) {
    if (std::string problem = SheetNameProblem(path); !problem.empty()) return problem;
    return ReplaceFile(path, LowerExtension(path) == ".svg" ? SheetSvg(sheet) : SheetHtml(sheet));
}

}  // namespace sheet
