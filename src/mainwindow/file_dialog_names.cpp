#include "mainwindow/file_dialog_names.h"

#include "engine/paths.h"

namespace tidemark {

std::vector<std::string> PathsFromFileDialog(std::string_view names) {
    std::vector<std::string> parts;
    while (!names.empty() && names.front() != '\0') {
        const std::size_t end = names.find('\0');
        parts.emplace_back(names.substr(0, end));
        names.remove_prefix(end == std::string_view::npos ? names.size() : end + 1);
    }
    if (parts.size() < 2) {
        return parts;
    }
    const std::string folder = AddBackslash(parts.front());
    std::vector<std::string> paths;
    paths.reserve(parts.size() - 1);
    for (std::size_t i = 1; i < parts.size(); ++i) {
        paths.push_back(folder + parts[i]);
    }
    return paths;
}

}  // namespace tidemark
