// Reads clang's record layouts (-fdump-record-layouts): one line for each part of a class, the
// parts of a part indented by two more blanks, and the sizes behind.

#include "structure/LayoutDump.h"

#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <regex>

namespace KesVizCore::Structure {
namespace {

void addPart(Layout& layout, int offset, const std::string& part) {
    static const std::regex virtualTablePointer("\\(.* vtable pointer\\)");
    static const std::regex base("(.*) \\((?:primary )?base\\).*");
    static const std::regex field("(.*) (\\w+)(?: \\(empty\\))?");
    std::smatch match;
    if (std::regex_match(part, virtualTablePointer)) {
        return;
    }
    if (std::regex_match(part, match, base)) {
        layout.Bases.push_back(inHouseSpelling(match[1]));
    } else if (std::regex_match(part, match, field)) {
        layout.Fields.push_back({offset, inHouseSpelling(match[1]), match[2]});
    } else {
        layout.Fields.push_back({offset, part, "(not understood)"});
    }
}

}  // namespace

std::map<std::string, Layout> readLayouts(const std::string& file) {
    static const std::regex head(
        " *0 \\| (?:class|struct|union) KesVizCore::([\\w:]+(?:<.*>)?)(?: .*)?");
    static const std::regex part(" *(\\d+)[\\d:-]* \\|   (\\S.*)");
    static const std::regex size(" *\\| \\[sizeof=(\\d+),.* align=(\\d+).*");

    std::map<std::string, Layout> layouts;
    Layout* open = nullptr;
    std::smatch match;
    for (const std::string& line : linesOf(file)) {
        if (std::regex_match(line, match, head)) {
            open = &layouts[inHouseSpelling(match[1])];
            *open = Layout();
        } else if (open != nullptr && std::regex_match(line, match, part)) {
            addPart(*open, std::stoi(match[1]), match[2]);
        } else if (open != nullptr && std::regex_match(line, match, size)) {
            open->Size = std::stoi(match[1]);
            open->Alignment = std::stoi(match[2]);
            open = nullptr;
        }
    }
    return layouts;
}

}  // namespace KesVizCore::Structure
