#include <KesVizCore/scene/ARenderer.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/scene/VizFactories.h>
#include <KesVizCore/view/AView3DAdapter.h>
#include <KesVizCore/view/IView3D.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <stdexcept>
#include <unordered_map>

namespace KesVizCore {

namespace {

constexpr std::uint64_t kLargestSigned = std::numeric_limits<std::int64_t>::max();

bool isNegative(std::uint64_t id) {
    return id > kLargestSigned;
}

using NumberSet = std::unordered_set<std::uint64_t>;

/// Tells, with the set of all numbers ever handed out, which are free: those that are not in it,
/// and those of it that no id has any more. No number is passed twice, however many ids collide.
struct Numbers {
    /// Counts one more id that has @p number. Where memory runs out, nothing has changed.
    void Take(std::uint64_t number, NumberSet& handedOut) {
        if (!handedOut.insert(number).second && released.erase(number) == 0) {
            ++furtherIds[number];
        }
    }

    /// Counts one id less that has the one number in @p only, which is moved from there where it
    /// was the last. Needs no memory.
    void Release(std::set<std::uint64_t>& only) {
        const auto shared = furtherIds.find(*only.begin());
        if (shared == furtherIds.end()) {
            released.merge(only);
        } else if (--shared->second == 0) {
            furtherIds.erase(shared);
        }
    }

    /// The highest number below 2^63 that is free. There always is one: no memory lists so many.
    std::uint64_t HighestFree(const NumberSet& handedOut) {
        while (handedOut.count(highestUnused) != 0) {
            --highestUnused;
        }
        const auto behind = released.upper_bound(kLargestSigned);
        return behind == released.begin() ? highestUnused
                                          : std::max(highestUnused, *std::prev(behind));
    }

    void Forget() {
        highestUnused = kLargestSigned;
        released.clear();
        furtherIds.clear();
    }

    std::uint64_t highestUnused = kLargestSigned;  ///< all above it were handed out
    std::set<std::uint64_t> released;              ///< handed out, but no id has it now
    std::unordered_map<std::uint64_t, std::uint64_t> furtherIds;  ///< of a number with several ids
};

Numbers numbers;

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
    numbers.Forget();
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

/// Where memory runs out, nothing has changed.
void ARenderer::addSignedId(const std::uint64_t& id, const std::uint64_t& signedId) {
    const auto [entry, isNew] = signedIds.try_emplace(id, signedId);
    if (isNew) {
        try {
            numbers.Take(signedId, signedIdSet);
        } catch (...) {
            signedIds.erase(entry);
            throw;
        }
    } else if (entry->second != signedId) {
        std::set<std::uint64_t> before{entry->second};
        numbers.Take(signedId, signedIdSet);
        numbers.Release(before);
        entry->second = signedId;
    }
}

/// @p candidate, or where it is taken the highest number that is free.
std::uint64_t ARenderer::freeSignedId(std::uint64_t candidate) {
    if (signedIdSet.count(candidate) == 0 || numbers.released.count(candidate) != 0) {
        return candidate;
    }
    return numbers.HighestFree(signedIdSet);
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
