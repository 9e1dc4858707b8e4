// The order of the layers of the library, and what else holds for every header and source.

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

/// The order, written down once: core -> math, report -> graph -> view -> scene and
/// core, math, report -> model -> pmi. For each layer, those that it may include besides itself.
const std::map<std::string, std::set<std::string>> layers = {
    {"platform", {}},
    {"core", {"platform"}},
    {"math", {"core", "platform"}},
    {"report", {"core", "platform"}},
    {"graph", {"core", "math", "report"}},
    {"view", {"platform", "core", "math", "report", "graph"}},
    {"scene", {"core", "math", "report", "graph", "view"}},
    {"model", {"core", "math", "report"}},
    {"pmi", {"core", "math", "report", "model"}},
};

struct Exception {
    std::string File;
    std::string Include;
    std::string Reason;
};

/// What the interface itself forces.
const std::vector<Exception> exceptions = {
    {"src/view/AView3DAdapter.cpp", "KesVizCore/scene/SceneBuilder.h",
     "AView3DAdapter::Convert asks the scene builders that are registered with the adapter"},
    {"src/model/PickedIn.h", "KesVizCore/view/AView3DAdapter.h",
     "picking in a container asks the view adapter what the ray hits"},
    {"include/KesVizCore/model/VizView.h", "KesVizCore/pmi/VizPMICollection.h",
     "a view is an element of the model and derives from the collection of annotations"},
    {"include/KesVizCore/model/VizCapture.h", "KesVizCore/pmi/VizPMICollection.h",
     "a capture is an element of the model and derives from the collection of annotations"},
};

/// "graph" of "src/graph/Node.cpp", "include/KesVizCore/graph/Node.h", "graph/RenderIdOf.h" and
/// "KesVizCore/graph/Node.h"; empty for the headers that stand above all layers.
std::string layerOf(const std::string& path) {
    static const std::regex pattern("(?:src/|(?:include/)?KesVizCore/)?(\\w+)/[^/]+");
    std::smatch match;
    return std::regex_match(path, match, pattern) && match[1] != "KesVizCore" ? match[1].str() : "";
}

bool isStandardHeader(const std::string& target) {
    static const std::regex pattern("[a-z][a-z0-9_]*");
    return std::regex_match(target, pattern);
}

bool isOurs(const Include& include) {
    return include.Quoted || include.Target.rfind("KesVizCore/", 0) == 0;
}

bool isAllowed(const std::string& file, const Include& include) {
    static const std::set<std::string> aboveAllLayers = {"include/KesVizCore/KesVizCore.h"};
    if (include.Target == "KesVizCore/Export.h" || aboveAllLayers.count(file) == 1) {
        return true;
    }
    const auto from = layers.find(layerOf(file));
    const std::string to = layerOf(include.Target);
    return from != layers.end() && (to == from->first || from->second.count(to) == 1);
}

bool isException(const std::string& file, const Include& include) {
    return std::any_of(exceptions.begin(), exceptions.end(), [&](const Exception& exception) {
        return exception.File == file && exception.Include == include.Target;
    });
}

std::vector<SourceFile> allFiles() {
    std::vector<SourceFile> files = filesBelow("include");
    const std::vector<SourceFile> sources = filesBelow("src");
    files.insert(files.end(), sources.begin(), sources.end());
    return files;
}

std::string placeOf(const SourceFile& file, const Include& include) {
    return file.Path + ':' + std::to_string(include.Line) + " includes " + include.Target;
}

/// The places in @p files where the code, comments left out, holds @p pattern.
std::vector<std::string> placesOf(const std::regex& pattern, const std::vector<SourceFile>& files) {
    static const std::regex comment("//.*");
    std::vector<std::string> places;
    for (const SourceFile& file : files) {
        for (std::size_t i = 0; i < file.Lines.size(); ++i) {
            const std::string code = std::regex_replace(file.Lines[i], comment, "");
            if (std::regex_search(code, pattern)) {
                places.push_back(file.Path + ':' + std::to_string(i + 1) + ": " + code);
            }
        }
    }
    return places;
}

TEST(LayerOrderTest, EveryFileStandsInALayer) {
    const std::vector<SourceFile> files = allFiles();
    ASSERT_FALSE(files.empty());
    for (const SourceFile& file : files) {
        const bool above = file.Path == "include/KesVizCore/KesVizCore.h" ||
                           file.Path == "include/KesVizCore/Export.h";
        EXPECT_TRUE(above || layers.count(layerOf(file.Path)) == 1) << file.Path;
    }
}

TEST(LayerOrderTest, IncludesFollowTheOrderOfLayers) {
    std::vector<std::string> violations;
    for (const SourceFile& file : allFiles()) {
        for (const Include& include : includesOf(file)) {
            if (isOurs(include) && !isAllowed(file.Path, include) &&
                !isException(file.Path, include)) {
                violations.push_back(placeOf(file, include));
            }
        }
    }
    EXPECT_EQ(asLines(violations), "");
}

TEST(LayerOrderTest, EveryExceptionIsStillNeeded) {
    for (const Exception& exception : exceptions) {
        bool needed = false;
        for (const SourceFile& file : allFiles()) {
            for (const Include& include : includesOf(file)) {
                needed =
                    needed || (file.Path == exception.File && include.Target == exception.Include &&
                               !isAllowed(file.Path, include));
            }
        }
        EXPECT_TRUE(needed) << exception.File << " no longer needs " << exception.Include;
        EXPECT_NE(exception.Reason, "");
    }
}

TEST(LayerOrderTest, ThePlatformIsReachedThroughItsOneHeader) {
    std::vector<std::string> violations;
    for (const SourceFile& file : allFiles()) {
        for (const Include& include : includesOf(file)) {
            if (layerOf(include.Target) == "platform" && include.Target != "platform/Platform.h") {
                violations.push_back(placeOf(file, include));
            }
        }
    }
    EXPECT_EQ(asLines(violations), "");
}

TEST(PublicHeadersTest, IncludeOnlyPublicAndStandardHeaders) {
    std::vector<std::string> violations;
    for (const SourceFile& file : filesBelow("include")) {
        for (const Include& include : includesOf(file)) {
            const bool ours = include.Target.rfind("KesVizCore/", 0) == 0;
            if (include.Quoted || !(ours || isStandardHeader(include.Target))) {
                violations.push_back(placeOf(file, include));
            }
        }
    }
    EXPECT_EQ(asLines(violations), "");
}

// Only the platform's calls need more than the standard library.
TEST(SourcesTest, IncludeOnlyOurOwnAndStandardHeaders) {
    std::vector<std::string> violations;
    for (const SourceFile& file : filesBelow("src")) {
        for (const Include& include : includesOf(file)) {
            if (!isOurs(include) && !isStandardHeader(include.Target) &&
                layerOf(file.Path) != "platform") {
                violations.push_back(placeOf(file, include));
            }
        }
    }
    EXPECT_EQ(asLines(violations), "");
}

TEST(SourcesTest, NoFileIncludesIostream) {
    std::vector<std::string> violations;
    for (const SourceFile& file : allFiles()) {
        for (const Include& include : includesOf(file)) {
            if (include.Target == "iostream") {
                violations.push_back(placeOf(file, include));
            }
        }
    }
    EXPECT_EQ(asLines(violations), "");
}

TEST(SourcesTest, NoFileUsesAWholeNamespace) {
    EXPECT_EQ(asLines(placesOf(std::regex("\\busing\\s+namespace\\b"), allFiles())), "");
}

TEST(SourcesTest, OnlyThePlatformFolderAndTheExportMacroAskForWindows) {
    std::vector<SourceFile> files;
    for (const SourceFile& file : allFiles()) {
        if (layerOf(file.Path) != "platform" && file.Path != "include/KesVizCore/Export.h") {
            files.push_back(file);
        }
    }
    EXPECT_EQ(asLines(placesOf(std::regex("\\b_?(WIN32|WIN64|MSC_VER)\\b"), files)), "");
}

}  // namespace
}  // namespace KesVizCore::Structure
