// What the shared library offers to the linker: the names of its own namespace, and nothing of
// its insides that could meet a name of the host's.

#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <regex>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

struct Symbol {
    char Kind = ' ';   ///< nm's letter
    std::string Name;  ///< mangled
};

std::string outputOf(const std::string& command) {
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return "";
    }
    std::string output;
    std::array<char, 4096> part{};
    while (std::fgets(part.data(), static_cast<int>(part.size()), pipe) != nullptr) {
        output += part.data();
    }
    return pclose(pipe) == 0 ? output : "";
}

std::vector<Symbol> exportedSymbols() {
    static const std::regex line("[0-9a-f]* +(\\w) ([^@\\n]+).*\\n?");
    const std::string output =
        outputOf(std::string(KESVIZCORE_NM) + " -D --defined-only '" + KESVIZCORE_LIBRARY_FILE "'");
    std::vector<Symbol> symbols;
    for (std::sregex_iterator match(output.begin(), output.end(), line), end; match != end;
         ++match) {
        symbols.push_back({(*match)[1].str()[0], (*match)[2]});
    }
    return symbols;
}

/// A function or object of namespace KesVizCore, the virtual table or type information of one of
/// its classes, a static of one of its functions or the thunk of one of its operations.
bool isOfOurNamespace(const Symbol& symbol) {
    static const std::regex pattern("_Z(T[VTIS]|GV|Z|Th\\w+_)?N[VK]*10KesVizCore.*");
    return std::regex_match(symbol.Name, pattern);
}

bool isTheHashOfRenderIds(const Symbol& symbol) {
    return demangled(symbol.Name) ==
           "std::hash<KesVizCore::RenderId>::operator()(KesVizCore::RenderId const&) const";
}

/// The standard library gives its templates default visibility, which the library's own hidden
/// visibility does not override: what is instantiated and not inlined is exported weakly.
bool isWeakStandardTemplate(const Symbol& symbol) {
    static const std::regex pattern("_Z(T[VTIS]|GV|Z)?(N[VK]*)?(S[tabsiod]|9__gnu_cxx).*");
    static const std::string weakKinds = "WVu";
    return weakKinds.find(symbol.Kind) != std::string::npos &&
           std::regex_match(symbol.Name, pattern);
}

/// What the compiler adds when it instruments the library for sanitizers or coverage.
bool isInstrumentation(const Symbol& symbol) {
#ifdef KESVIZCORE_INSTRUMENTED
    static const std::regex pattern(
        "__odr_asan(_gen_|\\.)_Z.*10KesVizCore.*|__gcov_\\w+|mangle_path");
    return std::regex_match(symbol.Name, pattern);
#else
    static_cast<void>(symbol);
    return false;
#endif
}

TEST(ExportedSymbolsTest, AreOfOurNamespace) {
    const std::vector<Symbol> symbols = exportedSymbols();
    ASSERT_FALSE(symbols.empty());
    std::vector<std::string> strangers;
    for (const Symbol& symbol : symbols) {
        if (!isOfOurNamespace(symbol) && !isTheHashOfRenderIds(symbol) &&
            !isWeakStandardTemplate(symbol) && !isInstrumentation(symbol)) {
            strangers.push_back(std::string(1, symbol.Kind) + ' ' + demangled(symbol.Name));
        }
    }
    EXPECT_EQ(asLines(strangers), "");
}

TEST(ExportedSymbolsTest, HoldTheHashOfRenderIds) {
    const std::vector<Symbol> symbols = exportedSymbols();
    EXPECT_EQ(std::count_if(symbols.begin(), symbols.end(), isTheHashOfRenderIds), 1);
}

/// The last name of an exported function or class of ours with what follows it in a declaration:
/// "GetNode(", "debugger_streambuf". Empty for operators, destructors and objects.
std::string declaredName(const Symbol& symbol) {
    static const std::regex function("KesVizCore::(?:\\w+::)*(\\w+)(?:\\[abi:cxx11\\])?(\\().*");
    static const std::regex ofAClass("(?:vtable|typeinfo) for KesVizCore::(?:\\w+::)*(\\w+)()");
    const std::string text = demangled(symbol.Name);
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
    for (const Symbol& symbol : exportedSymbols()) {
        if (headers.find(declaredName(symbol)) == std::string::npos) {
            undeclared.push_back(demangled(symbol.Name));
        }
    }
    EXPECT_EQ(asLines(undeclared), "");
}

}  // namespace
}  // namespace KesVizCore::Structure
