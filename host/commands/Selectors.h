#pragma once

/// @file
/// The one way in which every verb names parts of a document.
///
/// What SceneIndex understands (a name or a path with wildcards, a render id, an entity id, the key
/// of an annotation), and saved views by name, key or "view:9".

#include "building/SceneIndex.h"

#include <string>
#include <vector>

namespace kesview {

struct Selection {
    std::vector<SceneNode> nodes;
    std::vector<const SavedView*> views;
};

/// All that @p selector names. Throws UsageError, with names that are near, where that is nothing.
Selection select(const SceneIndex& index, const std::string& selector);

/// The nodes of all of @p selectors, for a saved view its members; throws UsageError where one
/// names nothing.
std::vector<SceneNode> selectNodes(const SceneIndex& index,
                                   const std::vector<std::string>& selectors);

/// The saved view of that name (the first of several), key or entity id; null without one.
const SavedView* findView(const Document& document, const std::string& selector);

/// "No view is named …", with names that are near.
std::string noSuchView(const Document& document, const std::string& selector);

/// "assembly", "part", "solid", …, "face", "edge", "annotations", "annotation".
std::string kindOf(const SceneNode& node);

/// The last name of the path, without the '\' that lead some letters there.
std::string lastName(const std::string& path);

}  // namespace kesview
