#pragma once

/// @file
/// The walk behind SceneIndex.

#include "building/SceneIndex.h"

namespace kesview {

/// Goes through all nodes of a scene, with one node that changes as it goes.
class IndexWalk {
public:
    /// Borrows both.
    IndexWalk(const SceneIndex& index, const SceneIndex::Callback& callback);
    void Run();

private:
    void visitComponents(const std::vector<Component>& components);
    void visitComponent(const Component& component, const std::string& name);
    void visitBodies();
    void visitElements();
    void visitAnnotations();
    template <typename Below>
    void visit(Id id, const std::string& name, const Below& below);

    const SceneIndex& _index;
    const SceneIndex::Callback& _callback;
    SceneNode _node;
    bool _stopped = false;
};

}  // namespace kesview
