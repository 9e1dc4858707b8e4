#pragma once

/// @file
/// kesview tree: the assembly with names, kinds, instance paths and render ids.

#include "commands/ExitCode.h"
#include "commands/Options.h"
#include "commands/Streams.h"
#include "commands/Tools.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kesview {

struct TreeNode {
    std::string name;      ///< as it stands in a path: no two of one parent have the same
    std::string kind;      ///< "assembly", "part", "solid", "sheet", …, "face", "edge"
    std::string path;      ///< "Gearbox/Shaft/Bolt"; a selector that names it begins with '/'
    std::string renderId;  ///< "1/12/44"
    std::string entity;    ///< "instance:12", "body:5", "face:7"
    std::string product;   ///< of an instance that is named otherwise; may be empty
    bool hidden = false;
    std::uint64_t faces = 0;  ///< of a body
    std::uint64_t edges = 0;
    bool cut = false;  ///< there is more below than was asked for
    std::vector<TreeNode> children;
};

struct TreeResult {
    std::string file;
    std::vector<TreeNode> roots;
};

/// Down to @p options.depth levels of instances, and to faces and edges where it says so. Throws
/// LimitError beyond 500,000 nodes.
TreeResult treeOf(const Document& document, const TreeOptions& options);

std::string toText(const TreeResult& result);
std::string toJson(const TreeResult& result);

ExitCode tree(const TreeOptions& options, const Tools& tools, Streams& streams);

}  // namespace kesview
