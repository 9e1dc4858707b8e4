// What the shared library offers to the linker: the names of its own namespace, and nothing of
// its insides that could meet a name of the host's.

#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

/// The mangled names that the build has listed.
std::vector<std::string> exportedNames() {
    return linesOf(KESVIZCORE_EXPORT_LIST);
}

/// A function or object of namespace KesVizCore, the virtual table or type information of one of
/// its classes, a static of one of its functions or the thunk of one of its operations.
bool isOfOurNamespace(const std::string& name) {
    static const std::regex pattern("_Z(T[VTIS]|GV|Z|Th\\w+_)?N[VK]*10KesVizCore.*");
    return std::regex_match(name, pattern);
}

bool isTheHashOfRenderIds(const std::string& name) {
    return demangled(name) ==
           "std::hash<KesVizCore::RenderId>::operator()(KesVizCore::RenderId const&) const";
}

TEST(ExportedSymbolsTest, AreOfOurNamespace) {
    const std::vector<std::string> names = exportedNames();
    ASSERT_FALSE(names.empty());
    std::vector<std::string> strangers;
    for (const std::string& name : names) {
        if (!isOfOurNamespace(name) && !isTheHashOfRenderIds(name)) {
            strangers.push_back(demangled(name));
        }
    }
    EXPECT_EQ(asLines(strangers), "");
}

TEST(ExportedSymbolsTest, HoldTheHashOfRenderIds) {
    const std::vector<std::string> names = exportedNames();
    EXPECT_EQ(std::count_if(names.begin(), names.end(), isTheHashOfRenderIds), 1);
}

/// The last name of an exported function or class of ours with what follows it in a declaration:
/// "GetNode(", "debugger_streambuf". Empty for operators, destructors and objects.
std::string declaredName(const std::string& name) {
    static const std::regex function("KesVizCore::(?:\\w+::)*(\\w+)(?:\\[abi:cxx11\\])?(\\().*");
    static const std::regex ofAClass("(?:vtable|typeinfo) for KesVizCore::(?:\\w+::)*(\\w+)()");
    const std::string text = demangled(name);
    std::smatch match;
    const bool found =
        std::regex_match(text, match, function) || std::regex_match(text, match, ofAClass);
    return found ? match[1].str() + match[2].str() : "";
}

// Helpers of one source file belong into an unnamed namespace, those of several stay hidden.
TEST(ExportedSymbolsTest, AreDeclaredInThePublicHeaders) {
    std::string headers;
    for (const SourceFile& file : filesBelow("include")) {
        headers += asLines(file.Lines);
    }
    std::vector<std::string> undeclared;
    for (const std::string& name : exportedNames()) {
        if (headers.find(declaredName(name)) == std::string::npos) {
            undeclared.push_back(demangled(name));
        }
    }
    EXPECT_EQ(asLines(undeclared), "");
}

}  // namespace
}  // namespace KesVizCore::Structure
