#include "PathText.h"

namespace kelvra {

std::string FileName(const std::string& path) {
    std::size_t end = path.size();
    while (end > 1 && path[end - 1] == '/') --end;
    const std::size_t slash = path.rfind('/', end - 1);
    if (slash == std::string::npos) return path.substr(0, end);
    if (slash == 0 && end == 1) return "/";
    return path.substr(slash + 1, end - slash - 1);
}

std::string Extension(const std::string& path) {
    const std::string name = FileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

}  // namespace kelvra
