#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class AView3DAdapter;
class AView3DAdapterFactory;
class SceneBuilder;
class SceneBuilderFactory;

/// The one place of a process where a host installs its factories and obtains adapters and
/// builders.
///
/// The order of use: set both factories; create an adapter, then builders for it; build; delete
/// the builders, then the adapter; Terminate at unload.
///
/// @par Ownership
/// Owns both factories. The caller owns adapters and builders.
///
/// @par Errors
/// Null where the factory asked for is not installed. Setting the factory that is installed
/// already destroys it and keeps a dangling pointer: never do so.
///
/// @par Threads
/// Instance() makes the singleton without a lock: call it on one thread before any other uses the
/// library.
class KESVIZCORE_API VizFactories {
public:
    /// Made on the first call and never destroyed.
    static VizFactories& Instance();

    VizFactories(const VizFactories& other) = delete;
    VizFactories& operator=(const VizFactories& other) = delete;

    /// Starts without factories. Instance() has called it; after that it does nothing, also after
    /// Terminate.
    void Init();
    /// Destroys the scene builder factory, then the adapter factory. New ones can be set.
    void Terminate();

    /// Destroys the factory installed before and takes over @p factory, which may be null.
    void SetSceneBuilderFactory(SceneBuilderFactory* factory);
    /// Destroys the factory installed before and takes over @p factory, which may be null.
    void SetView3DAdapterFactory(AView3DAdapterFactory* factory);

    /// See SceneBuilderFactory::MakeSceneBuilder.
    SceneBuilder* CreateSceneBuilder(AView3DAdapter* adapter);
    /// See SceneBuilderFactory::DeleteSceneBuilder; without a factory nothing happens at all.
    void DeleteSceneBuilder(SceneBuilder*& builder);
    /// See AView3DAdapterFactory::MakeView3DAdapter.
    AView3DAdapter* CreateView3DAdapter();

private:
    VizFactories();
    ~VizFactories() = default;

    SceneBuilderFactory* _sceneBuilderFactory;
    AView3DAdapterFactory* _view3DAdapterFactory;
    bool _initialised;
};

}  // namespace KesVizCore
