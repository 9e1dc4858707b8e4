#pragma once

/// @file
/// One document as a scene: loaded, described to the library, and seen by a view.

#include "building/SceneIndex.h"
#include "commands/Console.h"
#include "document/Document.h"
#include "loading/Load.h"
#include "view/Picker.h"
#include "view/SceneAdapter.h"
#include "view/SceneView.h"

#include <memory>
#include <string>

namespace KesVizCore {
class SceneBuilder;
}

namespace kesview {

class ModelRenderer;
class PmiRenderer;

/// Builds everything in its constructor, telling progress and times. One at a time: the library's
/// factories belong to the whole process.
///
/// @par Errors
/// The constructor throws std::runtime_error where the library refuses a part of the scene, and
/// what SceneIndex throws.
class Session {
public:
    Session(Document document, Console& console, const MakePicker& makePicker = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Without points: they are in the model.
    const Document& GetDocument() const { return _document; }
    const SceneIndex& Index() const { return _index; }
    LoadedModel& Model() { return *_model; }
    SceneAdapter& Adapter() { return *_adapter; }
    SceneView& View() { return _view; }

    /// Face, edge, body, instance or annotation at a path of the scene, through any of its uses;
    /// none where the path leads to none.
    std::optional<viz::EntityId> EntityAt(const viz::RenderId& path) const;

private:
    class Factories;

    void build(Console& console, const MakePicker& makePicker);

    Document _document;
    std::unique_ptr<LoadedModel> _model;
    SceneIndex _index;
    SceneView _view;
    std::unique_ptr<Factories> _factories;
    std::unique_ptr<SceneAdapter> _adapter;
    std::unique_ptr<ModelRenderer> _modelRenderer;  // owns the builder
    std::unique_ptr<PmiRenderer> _pmiRenderer;
};

/// The id of the whole scene.
viz::RenderId sceneRoot();

}  // namespace kesview
