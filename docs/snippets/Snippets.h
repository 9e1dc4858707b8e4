#pragma once

/// @file
/// The C++ of the pages: one function for each page, which prints what the page shows.

#include "Adapter.h"
#include "View.h"

#include <KesVizCore/KesVizCore.h>

#include <memory>

namespace snippets {

namespace viz = KesVizCore;

/// An adapter of the minimal host with a view and a builder, as the pages take for granted.
class Stage {
public:
    Stage() {
        viz::VizFactories& factories = viz::VizFactories::Instance();
        factories.SetView3DAdapterFactory(new host::AdapterFactory());
        factories.SetSceneBuilderFactory(new viz::SceneBuilderFactory());
        adapter.reset(factories.CreateView3DAdapter());
        adapter->SetView3D(&view);
        builder = factories.CreateSceneBuilder(adapter.get());
    }
    ~Stage() {
        viz::VizFactories::Instance().DeleteSceneBuilder(builder);
        adapter.reset();
        viz::VizFactories::Instance().Terminate();
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    host::View view;
    std::unique_ptr<viz::AView3DAdapter> adapter;
    viz::SceneBuilder* builder = nullptr;
};

/// The scene of scene-protocol.md.
void describePlate(viz::SceneBuilder* builder);

void conventions();
void sceneProtocol();
void idsAndPaths();
void ownership();
void picking();

}  // namespace snippets
