#pragma once

/// @file
/// The whole host put together, and the order in which it goes up and comes down.

#include "Bracket.h"
#include "BracketRenderer.h"
#include "Listeners.h"
#include "View.h"

#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>

namespace host {

/// Owns view, adapter and renderer. One at a time: the factories belong to the whole process.
class Host {
public:
    /// Throws std::runtime_error where the library makes no adapter or builder.
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    viz::AView3DAdapter& GetAdapter() { return *_adapter; }
    View& GetView() { return _view; }
    BracketRenderer& GetRenderer() { return *_renderer; }
    /// The renderer's own.
    viz::SceneBuilder& GetBuilder() { return *_builder; }

private:
    // In the order in which one needs the other; they go in the reverse one.
    Model _model;
    View _view;
    PickPrinter _pickPrinter;
    std::unique_ptr<viz::AView3DAdapter> _adapter;
    std::unique_ptr<OptionsListener> _optionsListener;
    viz::SceneBuilder* _builder = nullptr;
    std::unique_ptr<BracketRenderer> _renderer;
};

}  // namespace host
