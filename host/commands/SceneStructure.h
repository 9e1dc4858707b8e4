#pragma once

/// @file
/// kesview tree --scene: the library's own dump of the scene.

#include "commands/Console.h"
#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <string>

namespace kesview {

struct SceneStructure {
    std::string file;
    std::string lines;  ///< a node on each, indented by its depth
};

std::string toText(const SceneStructure& result);
std::string toJson(const SceneStructure& result);

ExitCode printSceneStructure(const TreeOptions& options, const Tools& tools, Console& console,
                             Streams& streams);

}  // namespace kesview
