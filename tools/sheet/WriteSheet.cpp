#include <algorithm>
#include <cctype>
#include <filesystem>

#include "ReplaceFile.h"
#include "SwatchSheet.h"

namespace sheet {

std::string WriteSheet(const Sheet& sheet, const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    if (extension == ".svg") return ReplaceFile(path, SheetSvg(sheet));
    if (extension == ".html" || extension == ".htm") return ReplaceFile(path, SheetHtml(sheet));
    return path + ": a sheet's name must end in .html or .svg";
}

}  // namespace sheet
