// What a host finds below include/: every header is installed, stands in the umbrella header and
// is named after the class it declares.

#include "structure/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

const std::string includeFolder = "include/";
const std::string umbrella = "KesVizCore/KesVizCore.h";
const std::string exportMacro = "KesVizCore/Export.h";

/// Small types that share the header of the class they belong to, and classes whose header is
/// named after more than the class.
const std::map<std::string, std::string> satellites = {
    {"BodyContext", "ASceneBuilderContext"},
    {"ConstructionContext", "ASceneBuilderContext"},
    {"ContainerContext", "ASceneBuilderContext"},
    {"EntityContext", "ASceneBuilderContext"},
    {"EntityType", "EntityId"},
    {"EntityTypeContext", "ASceneBuilderContext"},
    {"OriginEnum", "RenderId"},
    {"RendererReport", "IRendererReportProvider"},
    {"SceneContext", "ASceneBuilderContext"},
    {"SceneLevelContext", "ASceneBuilderContext"},
    {"debugger_streambuf", "DebugStream"},
};

/// The public headers as a host includes them, ordered by name.
std::vector<std::string> publicHeaders() {
    std::vector<std::string> headers;
    for (const SourceFile& file : filesBelow("include")) {
        headers.push_back(file.Path.substr(includeFolder.size()));
    }
    return headers;
}

/// The classes, structures and enumerations that @p file defines outside other classes.
std::vector<std::string> typesDefinedIn(const SourceFile& file) {
    static const std::regex definition(
        "(?:class|struct|enum|enum class) (?:KESVIZCORE_API )?(\\w+)(?: final)?(?: :.*)? \\{.*");
    std::vector<std::string> types;
    std::smatch match;
    for (const std::string& line : file.Lines) {
        if (std::regex_match(line, match, definition)) {
            types.push_back(match[1]);
        }
    }
    return types;
}

/// "Node" of "include/KesVizCore/graph/Node.h".
std::string stemOf(const std::string& path) {
    return std::filesystem::path(path).stem().string();
}

TEST(UmbrellaHeaderTest, IncludesEveryPublicHeaderInOrder) {
    std::vector<std::string> expected = publicHeaders();
    ASSERT_GT(expected.size(), 2U);
    expected.erase(std::remove_if(expected.begin(), expected.end(),
                                  [](const std::string& header) {
                                      return header == umbrella || header == exportMacro;
                                  }),
                   expected.end());

    std::vector<std::string> included;
    for (const SourceFile& file : filesBelow("include")) {
        if (file.Path == includeFolder + umbrella) {
            for (const Include& include : includesOf(file)) {
                included.push_back(include.Target);
            }
        }
    }
    EXPECT_EQ(asLines(included), asLines(expected));
}

// The header set is what is installed, and what is compiled header by header.
TEST(PublicHeaderSetTest, HoldsEveryFileBelowInclude) {
    const std::string root = std::string(KESVIZCORE_SOURCE_FOLDER) + '/' + includeFolder;
    std::vector<std::string> listed;
    for (const std::string& line : linesOf(KESVIZCORE_HEADER_LIST)) {
        EXPECT_EQ(line.rfind(root, 0), 0U) << line;
        listed.push_back(line.substr(std::min(root.size(), line.size())));
    }
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(asLines(listed), asLines(publicHeaders()));
}

TEST(PublicHeaderSetTest, NothingButHeadersStandsBelowInclude) {
    const std::filesystem::path folder =
        std::filesystem::path(KESVIZCORE_SOURCE_FOLDER) / includeFolder;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        EXPECT_TRUE(entry.is_directory() || entry.path().extension() == ".h") << entry.path();
    }
}

TEST(PublicHeaderTest, BeginsWithPragmaOnce) {
    for (const SourceFile& file : filesBelow("include")) {
        EXPECT_EQ(file.Lines.empty() ? "" : file.Lines.front(), "#pragma once") << file.Path;
    }
}

TEST(PublicHeaderTest, IsNamedAfterEveryTypeItDefinesButSatellites) {
    std::size_t count = 0;
    for (const SourceFile& file : filesBelow("include")) {
        for (const std::string& type : typesDefinedIn(file)) {
            const auto satellite = satellites.find(type);
            const std::string home = satellite == satellites.end() ? type : satellite->second;
            EXPECT_EQ(stemOf(file.Path), home) << type << " is defined in " << file.Path;
            ++count;
        }
    }
    EXPECT_GT(count, 0U);
}

TEST(PublicHeaderTest, EverySatelliteStillExists) {
    std::set<std::string> types;
    for (const SourceFile& file : filesBelow("include")) {
        for (const std::string& type : typesDefinedIn(file)) {
            types.insert(type);
        }
    }
    for (const auto& [type, header] : satellites) {
        EXPECT_EQ(types.count(type), 1U) << type << " in " << header;
    }
}

}  // namespace
}  // namespace KesVizCore::Structure
