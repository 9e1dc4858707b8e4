#pragma once

/// @file
/// What the nodes of a scene are called, so that a path of names leads to one node as far as can
/// be.

#include "document/Document.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kesview {

/// The names of the instances and bodies of a document. Those without a name are called after their
/// product, or else "Instance" or "Body"; of several of one name in the same product the second is
/// "Bolt:2", and so on. Where the file uses that very name, the next free number is taken.
class SceneNames {
public:
    /// Keeps no reference.
    explicit SceneNames(const Document& document);

    const std::string& Root(std::size_t index) const { return _roots[index]; }
    const std::string& Component(std::size_t product, std::size_t index) const {
        return _components[product][index];
    }
    const std::string& Body(std::size_t product, std::size_t index) const {
        return _bodies[product][index];
    }

private:
    std::vector<std::string> _roots;
    std::vector<std::vector<std::string>> _components;
    std::vector<std::vector<std::string>> _bodies;
};

/// "face 12", or the name that the file gives it. Faces of one name are not told apart.
std::string sceneNameOf(const Face& face);
/// "edge 12", or its name.
std::string sceneNameOf(const Edge& edge);
/// The first that is not empty of name, label, text and key.
std::string sceneNameOf(const Annotation& annotation);

/// What the node that holds all annotations is called.
constexpr const char* annotationsName = "PMI";

}  // namespace kesview
