#pragma once

#include <KesVizCore/Export.h>

namespace KesVizCore {

class AView3DAdapter;
class SceneBuilder;

/// Makes scene builders and ties each to its adapter.
///
/// A host whose builders are of a class of its own derives from it and overrides
/// makeSceneBuilderImpl.
///
/// @par Ownership
/// VizFactories owns the installed factory and destroys it. The caller of MakeSceneBuilder owns
/// the builder until DeleteSceneBuilder of the same factory.
///
/// @par Errors
/// Null when memory runs out; what a makeSceneBuilderImpl of a host throws passes through.
///
/// @par Threads
/// Those of the adapter.
class KESVIZCORE_API SceneBuilderFactory {
public:
    SceneBuilderFactory() = default;
    SceneBuilderFactory(const SceneBuilderFactory& other) = default;  ///< nothing to copy
    /// Nothing to copy.
    SceneBuilderFactory& operator=(const SceneBuilderFactory& other) = default;

    /// A builder for @p adapter, entered as the last in the adapter's list. With null a builder
    /// on which every Begin answers false.
    SceneBuilder* MakeSceneBuilder(AView3DAdapter* adapter);
    /// Takes the builder out of its adapter's list, destroys it and sets the pointer to null. The
    /// adapter must still live. A null pointer is left alone.
    void DeleteSceneBuilder(SceneBuilder*& builder);

protected:
    /// A new builder without an adapter, or null; here a plain SceneBuilder.
    virtual SceneBuilder* makeSceneBuilderImpl();

public:
    virtual ~SceneBuilderFactory();
};

}  // namespace KesVizCore
