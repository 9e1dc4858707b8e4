#pragma once

/// @file
/// Care for nodes that hang under several parents.

namespace KesVizCore {
class Node;
}

namespace kesview {

namespace viz = KesVizCore;

/// Takes away links below @p top until every node there has one parent left, so that what is left
/// is a tree, which destroys itself from the top; a node that also hangs elsewhere lives on there.
/// Without this a shared node would outlive its parents and keep pointers to them.
void unlinkSharedNodes(viz::Node& top);

}  // namespace kesview
