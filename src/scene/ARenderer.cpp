#include <KesVizCore/scene/ARenderer.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/scene/VizFactories.h>
#include <KesVizCore/view/AView3DAdapter.h>
#include <KesVizCore/view/IView3D.h>

#include <limits>
#include <stdexcept>

namespace KesVizCore {

namespace {

constexpr std::uint64_t kLargestSigned = std::numeric_limits<std::int64_t>::max();

bool isNegative(std::uint64_t id) {
    return id > kLargestSigned;
}

}  // namespace

std::map<std::uint64_t, std::uint64_t> ARenderer::signedIds;
std::unordered_set<std::uint64_t> ARenderer::signedIdSet;

ARenderer::ARenderer(SceneBuilder* builder, RenderId* renderId)
    : _flag(false),
      _backFacesVisible(false),
      _reportMode(false),
      _sceneBuilder(builder),
      _builderOwnership(true),
      _progressCallback(nullptr) {
    if (renderId != nullptr) {
        _renderId = *renderId;
    }
    AView3DAdapter* const adapter = getView3DAdapter();
    const IView3D* const view = adapter != nullptr ? adapter->GetView3D() : nullptr;
    _backFacesVisible = view != nullptr && view->IsBackFacesVisible();
    init();
}

ARenderer::~ARenderer() {
    if (_sceneBuilder != nullptr && _builderOwnership) {
        VizFactories::Instance().DeleteSceneBuilder(_sceneBuilder);
    }
    _sceneBuilder = nullptr;
    signedIds.clear();
    signedIdSet.clear();
}

void ARenderer::init() {
    _report = RendererReport();
}

void ARenderer::SetReportMode(const bool& on) {
    _reportMode = on;
}

bool ARenderer::GetReportMode() {
    return _reportMode;
}

void ARenderer::ClearReport() {
    init();
}

RendererReport& ARenderer::GetReport() {
    return _report;
}

bool ARenderer::Activate(RenderId& /*id*/) {
    return true;
}

std::wstring ARenderer::GetToolTip(const RenderId& /*id*/) {
    return std::wstring();
}

RenderId ARenderer::GetRenderId() {
    return _renderId;
}

RenderingOptions* ARenderer::GetRenderingOptions() {
    return _sceneBuilder != nullptr ? _sceneBuilder->GetRenderingOptions() : nullptr;
}

void ARenderer::SetProgressCallback(ProgressCallback callback) {
    _progressCallback = callback;
}

void ARenderer::SetBuilderOwnership(const bool& owned) {
    _builderOwnership = owned;
}

SceneBuilder* ARenderer::getSceneBuilder() const {
    return _sceneBuilder;
}

AView3DAdapter* ARenderer::getView3DAdapter() const {
    return _sceneBuilder != nullptr ? _sceneBuilder->GetView3DAdapter() : nullptr;
}

AGeometryItemFactory* ARenderer::getGeometryItemFactory() const {
    AView3DAdapter* const adapter = getView3DAdapter();
    return adapter != nullptr ? adapter->GetGeometryItemFactory() : nullptr;
}

// --- signed ids ---------------------------------------------------------------------------------

void ARenderer::addSignedId(const std::uint64_t& id, const std::uint64_t& signedId) {
    signedIdSet.insert(signedId);  // first: the set may hold more than the map, but not less
    signedIds[id] = signedId;
}

/// @p candidate, or where it is handed out already the highest number that is free. Above the
/// largest signed number when there is none.
std::uint64_t ARenderer::freeSignedId(std::uint64_t candidate) {
    // The set holds every number ever handed out, so what it lacks is free without a walk.
    if (signedIdSet.count(candidate) == 0) {
        return candidate;
    }
    std::unordered_set<std::uint64_t> taken;
    for (const auto& entry : signedIds) {
        taken.insert(entry.second);
    }
    if (taken.count(candidate) == 0) {
        return candidate;
    }
    candidate = kLargestSigned;
    while (!isNegative(candidate) && taken.count(candidate) != 0) {
        --candidate;  // below 0 it wraps to a negative number
    }
    return candidate;
}

std::uint64_t ARenderer::getSignedId(const std::uint64_t& id) {
    const auto known = signedIds.find(id);
    if (known != signedIds.end()) {
        return known->second;
    }
    std::uint64_t candidate = id;
    if (isNegative(id)) {
        candidate = id + kLargestSigned;  // wraps around, but for 2^63 itself
        if (!isNegative(candidate)) {
            candidate = freeSignedId(candidate);
        }
    }
    if (isNegative(candidate)) {
        const std::string number = std::to_string(id);
        throw std::runtime_error(
            "ARenderer::getLegalSignedId() could not compute a positive, unique id. Input was " +
            number + ":" + number);
    }
    addSignedId(id, candidate);
    return candidate;
}

}  // namespace KesVizCore
