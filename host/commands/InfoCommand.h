#pragma once

/// @file
/// kesview info: what a file holds, in numbers.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"
#include "view/Vectors.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kesview {

/// Counted once for each description, or once for each use.
struct ShapeCounts {
    std::uint64_t solids = 0;
    std::uint64_t sheets = 0;
    std::uint64_t wires = 0;
    std::uint64_t pointSets = 0;
    std::uint64_t meshes = 0;
    std::uint64_t faces = 0;
    std::uint64_t edges = 0;
    std::uint64_t triangles = 0;
};

struct ColorUse {
    Color color = {0, 0, 0, 255};
    std::uint64_t uses = 0;  ///< products, instances, bodies, faces and edges that bear it
};

struct LayerUse {
    std::string name;
    std::uint64_t uses = 0;  ///< products, instances and bodies on it
};

struct InfoResult {
    std::string file;
    std::string format;
    std::string schema;
    std::string unit;
    double millimetresPerUnit = 1;
    std::string author;
    std::string originatingSystem;
    std::string timeStamp;
    Box box;  ///< millimetres, in the world; empty where nothing has points
    std::uint64_t products = 0;
    std::uint64_t instances = 0;  ///< uses of products, each where it stands
    std::uint64_t leaves = 0;     ///< those of them without instances below
    std::uint64_t levels = 0;     ///< of the assembly; 1 for a part alone
    ShapeCounts unique;
    ShapeCounts expanded;
    std::vector<ColorUse> colors;  ///< used most first
    std::vector<LayerUse> layers;  ///< by name
    std::map<AnnotationKind, std::uint64_t> annotations;
    std::uint64_t annotationCount = 0;
    std::uint64_t semanticAnnotations = 0;
    std::uint64_t drawnAnnotations = 0;    ///< with a drawing that could be read
    std::uint64_t undrawnAnnotations = 0;  ///< the file holds a drawing that could not be read
    std::uint64_t views = 0;
    std::uint64_t clippedViews = 0;
    std::vector<Finding> findings;  ///< worst first
};

InfoResult infoOf(const Document& document);

std::string toText(const InfoResult& result);
std::string toJson(const InfoResult& result);

ExitCode info(const InfoOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
