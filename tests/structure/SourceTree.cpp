#include "structure/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <stdexcept>

namespace KesVizCore::Structure {

std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("cannot read " + file.string());
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<SourceFile> filesBelow(const std::string& folder) {
    const std::filesystem::path project(KESVIZCORE_SOURCE_FOLDER);
    std::vector<SourceFile> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project / folder)) {
        const std::filesystem::path& path = entry.path();
        if (path.extension() == ".h" || path.extension() == ".cpp") {
            files.push_back({path.lexically_relative(project).generic_string(), linesOf(path)});
        }
    }
    std::sort(files.begin(), files.end(),
              [](const SourceFile& a, const SourceFile& b) { return a.Path < b.Path; });
    return files;
}

std::vector<Include> includesOf(const SourceFile& file) {
    static const std::regex pattern("\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"].*");
    std::vector<Include> includes;
    std::smatch match;
    for (std::size_t i = 0; i < file.Lines.size(); ++i) {
        if (std::regex_match(file.Lines[i], match, pattern)) {
            includes.push_back({match[2], match[1] == "\"", i + 1});
        }
    }
    return includes;
}

std::string asLines(const std::vector<std::string>& texts) {
    std::string lines;
    for (const std::string& text : texts) {
        lines += text + '\n';
    }
    return lines;
}

}  // namespace KesVizCore::Structure
