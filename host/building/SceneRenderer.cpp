/// @file
#include "building/SceneRenderer.h"

#include <KesVizCore/graph/AGeometryItem.h>
#include <KesVizCore/scene/RenderingOptions.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <memory>

namespace kesview {

bool SceneRenderer::Activate(viz::RenderId& id) {
    viz::AView3DAdapter* const adapter = getView3DAdapter();
    return adapter != nullptr && adapter->Highlight(id, GetRenderingOptions()->GetHighlightColor());
}

bool SceneRenderer::Deactivate(viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Unhighlight(id);
}

bool SceneRenderer::Show(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Show(id);
}

bool SceneRenderer::Hide(const viz::RenderId& id) {
    return getView3DAdapter() != nullptr && getView3DAdapter()->Hide(id);
}

bool SceneRenderer::add(viz::AGeometryItem* item) {
    std::unique_ptr<viz::AGeometryItem> owned(item);
    if (item == nullptr || !getSceneBuilder()->AddGeometry(item)) {
        return false;
    }
    static_cast<void>(owned.release());
    return true;
}

void SceneRenderer::count(std::uint64_t& counter, std::size_t more) {
    counter += GetReportMode() ? more : 0;
}

}  // namespace kesview
