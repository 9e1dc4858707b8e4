// Reads what g++ writes: the class dump (-fdump-lang-class) and the virtual tables of an
// assembly file. Both follow the Itanium ABI: two entries (the offset to the whole object and
// the type information) stand before the first slot.

#include "structure/ClassDump.h"

#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <regex>

namespace KesVizCore::Structure {
namespace {

constexpr std::size_t entriesBeforeTheSlots = 2;
const std::string tableHead = "Vtable for ";
const std::string classHead = "Class ";
const std::string tableLabel = "_ZTV";

/// What stands in @p line behind @p head; empty when the line does not begin with it.
std::string behind(const std::string& head, const std::string& line) {
    return line.compare(0, head.size(), head) == 0 ? line.substr(head.size()) : "";
}

std::vector<std::string> slotsOf(const std::vector<std::string>& entries) {
    if (entries.size() < entriesBeforeTheSlots) {
        return {};
    }
    return {entries.begin() + entriesBeforeTheSlots, entries.end()};
}

/// The entries that match @p pattern from line @p next on; @p next is then the line behind them.
std::vector<std::string> entriesFrom(const std::vector<std::string>& lines, std::size_t& next,
                                     const std::regex& pattern) {
    std::vector<std::string> entries;
    std::smatch match;
    while (next < lines.size() && std::regex_match(lines[next], match, pattern)) {
        entries.push_back(match[1]);
        ++next;
    }
    return entries;
}

}  // namespace

std::map<std::string, DumpedClass> readClassDump(const std::string& file) {
    static const std::regex entry("\\d+ +(?:\\(int \\(\\*\\)\\(\\.\\.\\.\\)\\))?(.*)");
    static const std::regex size("   size=(\\d+) align=(\\d+)");

    std::map<std::string, DumpedClass> classes;
    const std::vector<std::string> lines = linesOf(file);
    std::smatch match;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        if (const std::string name = behind(tableHead, lines[i]); !name.empty()) {
            std::size_t next = i + 2;  // past the line that counts the entries
            classes[name].Slots = slotsOf(entriesFrom(lines, next, entry));
        } else if (const std::string sized = behind(classHead, lines[i]);
                   !sized.empty() && std::regex_match(lines[i + 1], match, size)) {
            classes[sized].Size = std::stoi(match[1]);
            classes[sized].Alignment = std::stoi(match[2]);
        }
    }
    return classes;
}

std::map<std::string, std::vector<std::string>> readVirtualTables(const std::string& file) {
    static const std::regex entry("\\s+\\.(?:quad|xword|8byte|dword)\\s+(\\S+)");

    std::map<std::string, std::vector<std::string>> tables;
    const std::vector<std::string> lines = linesOf(file);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!behind(tableLabel, lines[i]).empty() && lines[i].back() == ':') {
            std::size_t next = i + 1;
            const std::string label = lines[i].substr(0, lines[i].size() - 1);
            tables[demangled(label)] = slotsOf(entriesFrom(lines, next, entry));
        }
    }
    return tables;
}

}  // namespace KesVizCore::Structure
