#pragma once

#include <map>
#include <string>
#include <vector>

namespace KesVizCore::Structure {

/// A data member as clang lays it out.
struct LaidOutField {
    int Offset = 0;  ///< bytes from the beginning of the object
    std::string Type;
    std::string Name;
};

/// What clang's record layout tells of one class; types are spelled as our headers spell them.
struct Layout {
    int Size = 0;
    int Alignment = 0;
    std::vector<std::string> Bases;    ///< in the order of the dump
    std::vector<LaidOutField> Fields;  ///< its own, not those of its bases
};

/// The layouts of the classes of namespace KesVizCore, by their names without the namespace.
std::map<std::string, Layout> readLayouts(const std::string& file);

}  // namespace KesVizCore::Structure
