#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace KesVizCore::Structure {

/// The lines of a text file without their ends. Throws when the file cannot be read.
std::vector<std::string> linesOf(const std::filesystem::path& file);

/// A header or source of the library.
struct SourceFile {
    std::string Path;  ///< relative to the project's folder, with '/' between its parts
    std::vector<std::string> Lines;
};

/// Every .h and .cpp file below @p folder ("include", "src") of the project, ordered by path.
std::vector<SourceFile> filesBelow(const std::string& folder);

/// One include directive.
struct Include {
    std::string Target;  ///< what stands between the quotes or angle brackets
    bool Quoted = false;
    std::size_t Line = 0;  ///< counted from 1
};

std::vector<Include> includesOf(const SourceFile& file);

/// The texts under each other, for comparison with a text that is empty when all is well.
std::string asLines(const std::vector<std::string>& texts);

}  // namespace KesVizCore::Structure
