#include "core/Allocation.h"
#include "graph/RenderIdOf.h"

#include <KesVizCore/core/RGBAColor.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeLineStyle.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>
#include <KesVizCore/report/Utils.h>
#include <KesVizCore/scene/SceneBuilder.h>
#include <KesVizCore/view/AView3DAdapter.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace KesVizCore {

namespace {

std::uint64_t asNumber(EntityType type) {
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(type));
}

/// Sets @p attribute on the node and tells the adapter; null, where memory ran out, is passed on.
void setAndApply(AView3DAdapter& adapter, GeoNode& node, Attribute* attribute) {
    std::unique_ptr<Attribute> unset(attribute);  // the node's list may find no room
    node.SetAttribute(attribute);
    adapter.ApplyAttribute(unset.release());
}

/// Runs what a Begin does to the level that it has opened. Where that throws the level is closed
/// again, since nobody calls the End of a Begin that threw.
template <typename Finish>
void finishBegin(AView3DAdapter& adapter, const Finish& finish) {
    try {
        finish();
    } catch (...) {
        adapter.CloseNode();
        throw;
    }
}

/// What follows the scene in a render id, listed before room is made for it.
class Tail {
public:
    explicit Tail(const std::vector<std::uint64_t>& containers) {
        if (!containers.empty()) {
            Add(containers.back());
        }
    }

    void Add(std::uint64_t value) { _values[static_cast<std::size_t>(_count++)] = value; }

    void AddEntity(const EntityId& entity) {
        if (entity.Type == InvalidType) {
            return;
        }
        if (!entity.IsBody()) {
            Add(entity.OwnerID);
            Add(asNumber(entity.Type));
        }
        Add(entity.ID);
    }

    /// Has @p out be @p scene with this behind it. Allocates once at most, and only where @p out
    /// has no room.
    void WriteBehind(const RenderId& scene, RenderId& out) const {
        const int before = scene.Length();
        out.SetLength(before + _count);
        out.SetOrigin(scene.GetOrigin());
        for (int place = 0; place < before; ++place) {
            out[place] = scene[place];
        }
        for (int place = 0; place < _count; ++place) {
            out[before + place] = _values[static_cast<std::size_t>(place)];
        }
    }

private:
    int _count = 0;
    std::array<std::uint64_t, 5> _values{};  // container, leading type, owner, type, entity
};

}  // namespace

SceneBuilder::SceneBuilder() : _view3DAdapter(nullptr), _hasContent(false) {
    _sceneRenderId.SetOrigin(View3D);
}

SceneBuilder::~SceneBuilder() {
    _view3DAdapter = nullptr;
}

AView3DAdapter* SceneBuilder::GetView3DAdapter() const {
    return _view3DAdapter;
}

bool SceneBuilder::HasContent() const {
    return _hasContent;
}

RenderingOptions* SceneBuilder::GetRenderingOptions() {
    return _view3DAdapter != nullptr ? _view3DAdapter->GetRenderingOptions() : nullptr;
}

// --- building -----------------------------------------------------------------------------------

bool SceneBuilder::openOrCreateNode(const std::uint64_t& id, const std::wstring& name) {
    if (_view3DAdapter == nullptr) {
        return false;
    }
    return _view3DAdapter->OpenNode(id, name) || _view3DAdapter->CreateNode(id, name);
}

void SceneBuilder::closeNode() {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->CloseNode();
    }
}

bool SceneBuilder::ConstructionBegin() {
    if (_view3DAdapter == nullptr) {
        return false;
    }
    _view3DAdapter->StartConstruction(nullptr);
    try {
        _view3DAdapter->OpenTopNode();
    } catch (...) {
        _view3DAdapter->EndConstruction();
        throw;
    }
    _sceneRenderId.Clear();
    _sceneRenderId.SetOrigin(View3D);
    return true;
}

void SceneBuilder::ConstructionEnd() {
    if (_view3DAdapter == nullptr) {
        return;
    }
    _view3DAdapter->CloseTopNode();
    _view3DAdapter->EndConstruction();
}

bool SceneBuilder::SceneBegin(const std::uint64_t& id, const std::wstring& name) {
    if (!openOrCreateNode(id, name)) {
        return false;
    }
    finishBegin(*_view3DAdapter, [&] { _sceneRenderId.AddValue(id); });
    return true;
}

void SceneBuilder::SceneEnd() {
    if (_view3DAdapter != nullptr) {
        _hasContent = true;
    }
}

bool SceneBuilder::SceneLevelBegin(const std::uint64_t& id, const std::wstring& name) {
    return openOrCreateNode(id, name);
}

void SceneBuilder::SceneLevelEnd() {
    closeNode();
}

bool SceneBuilder::ContainerBegin(const std::uint64_t& id, const std::wstring& name,
                                  const ContainerType& type) {
    if (!openOrCreateNode(id, name)) {
        return false;
    }
    if (type == AddressedContainer) {
        finishBegin(*_view3DAdapter, [&] { _containers.push_back(id); });
    }
    return true;
}

void SceneBuilder::ContainerEnd() {
    closeNode();
}

bool SceneBuilder::BodyBegin(const std::uint64_t& id, const std::wstring& name) {
    return openOrCreateNode(id, name);
}

bool SceneBuilder::BodyBegin(const std::uint64_t& id, const std::wstring& name,
                             const RGBAColor& color) {
    if (!openOrCreateNode(id, name)) {
        return false;
    }
    finishBegin(*_view3DAdapter, [&] { SetColor(color, false); });
    return true;
}

void SceneBuilder::BodyEnd() {
    closeNode();
}

bool SceneBuilder::EntityTypeBegin(const EntityType& type, const std::wstring& name) {
    if (!openOrCreateNode(asNumber(type), name)) {
        return false;
    }
    finishBegin(*_view3DAdapter, [&] { SetFilter(type); });
    return true;
}

void SceneBuilder::EntityTypeEnd() {
    closeNode();
}

bool SceneBuilder::EntityBegin(const std::uint64_t& id, const std::wstring& name) {
    return openOrCreateNode(id, name);
}

bool SceneBuilder::EntityBegin(const std::uint64_t& id, const std::wstring& name,
                               const RGBAColor& color) {
    if (!openOrCreateNode(id, name)) {
        return false;
    }
    finishBegin(*_view3DAdapter, [&] { SetColor(color, false); });
    return true;
}

void SceneBuilder::EntityEnd() {
    closeNode();
}

// --- the open node ------------------------------------------------------------------------------

bool SceneBuilder::AddGeometry(AGeometryItem* item) {
    if (_view3DAdapter == nullptr) {
        return false;
    }
    _view3DAdapter->AddGeometryItem(item);
    return true;
}

GeoNode* SceneBuilder::currentOpenNode() const {
    return _view3DAdapter != nullptr ? _view3DAdapter->GetCurrentOpenNode() : nullptr;
}

void SceneBuilder::SetColor(const RGBAColor& color, const bool& flag) {
    if (GeoNode* const open = currentOpenNode()) {
        setAndApply(*_view3DAdapter, *open,
                    nullWhenExhausted([&] { return new AttributeColor(color, flag); }));
    }
}

void SceneBuilder::SetLineStyle(const std::string& style, const float& width) {
    if (GeoNode* const open = currentOpenNode()) {
        setAndApply(*_view3DAdapter, *open,
                    nullWhenExhausted([&] { return new AttributeLineStyle(width, style); }));
    }
}

void SceneBuilder::SetTransformation(double* const matrix) {
    if (_view3DAdapter == nullptr || matrix == nullptr) {
        return;
    }
    _view3DAdapter->ApplyAttribute(
        nullWhenExhausted([&] { return new AttributeTransform(matrix); }));
}

bool SceneBuilder::SetVisibility(const bool& visible) {
    if (_view3DAdapter == nullptr) {
        return false;
    }
    _view3DAdapter->ApplyAttribute(
        nullWhenExhausted([&] { return new AttributeVisibility(visible); }));
    return true;
}

void SceneBuilder::SetFilter(const int& filterId) {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->SetFilterId(filterId);
    }
}

bool SceneBuilder::GetCurrentRenderId(RenderId& out) {
    const GeoNode* const open = currentOpenNode();
    if (open == nullptr) {
        return false;
    }
    out = renderIdOf(*open);
    return true;
}

// --- render ids of entities ---------------------------------------------------------------------

RenderId SceneBuilder::GetContainerRenderId() const {
    RenderId id;
    Tail(_containers).WriteBehind(_sceneRenderId, id);
    return id;
}

void SceneBuilder::BuildRenderId(RenderId& out, const EntityType& type, const EntityId& entity,
                                 const RGBAColor& /*color1*/, const RGBAColor& /*color2*/) const {
    if (_view3DAdapter == nullptr) {
        return;
    }
    Tail tail(_containers);
    tail.Add(asNumber(type));
    tail.AddEntity(entity);
    tail.WriteBehind(_sceneRenderId, out);
}

void SceneBuilder::BuildRenderId(RenderId& out, const EntityId& entity, const RGBAColor& /*color1*/,
                                 const RGBAColor& /*color2*/) const {
    if (_view3DAdapter == nullptr) {
        return;
    }
    Tail tail(_containers);
    tail.AddEntity(entity);
    tail.WriteBehind(_sceneRenderId, out);
}

void SceneBuilder::ExtractEntityId(const RenderId& id, EntityId& out) const {
    if (_view3DAdapter == nullptr) {
        return;
    }
    const int container = _sceneRenderId.Length() + (_containers.empty() ? 0 : 1);
    out.Clear();
    if (id.Length() == 3) {
        out.ID = id[2];
        return;
    }
    if (id.IsEmpty() || id.Length() < container + 2) {
        return;
    }
    out.OwnerID = id[container];
    out.Type = EntityId::GetTypeFromInt(id[container + 1]);
    // The bound is two ids more than the place read needs, and hosts rely on it.
    if (out.Type != InvalidType && id.Length() >= container + 5) {
        out.ID = id[container + 2];
    }
}

// --- editing ------------------------------------------------------------------------------------

bool SceneBuilder::Delete(const RenderId& id) {
    if (_view3DAdapter != nullptr) {
        _view3DAdapter->DeleteNode(id);
    }
    return false;
}

bool SceneBuilder::AddReference(const RenderId& id) {
    if (_view3DAdapter != nullptr && _view3DAdapter->AddReference(id)) {
        _view3DAdapter->CloseNode();
    }
    return false;
}

bool SceneBuilder::MoveGeometryFrom(const RenderId& id) {
    if (_view3DAdapter == nullptr) {
        return false;
    }
    _view3DAdapter->GetCurrentOpenNode();
    GeoNode* const source = _view3DAdapter->GetNode(id);
    if (source == nullptr) {
        return false;
    }
    _view3DAdapter->CopyNodeAttributesFrom(*source);
    _view3DAdapter->TransferNodeGeometryFrom(*source);
    return true;
}

void SceneBuilder::Clear(const RenderId& id) {
    if (_view3DAdapter == nullptr) {
        return;
    }
    if (id.Length() == 1) {
        _view3DAdapter->ClearScene(id);
    } else {
        _view3DAdapter->Clear(id);
    }
    _hasContent = false;
    _containers.clear();
}

// --- texts for tracing a build ------------------------------------------------------------------

std::string SceneBuilder::getIdAndNameString(std::uint64_t id, const std::wstring& name) {
    return std::to_string(id) + " " + convertToString(name);
}

std::string SceneBuilder::getIdAndNameString(GeoNode* node) {
    return node != nullptr ? getIdAndNameString(node->Id(), node->Name()) : "NULL";
}

std::string SceneBuilder::convertToString(const std::wstring& text) {
    char buffer[256] = {};
    std::wcstombs(buffer, text.c_str(), std::min(text.size(), sizeof buffer - 1));
    return buffer;
}

std::string SceneBuilder::getHexPointer(void* pointer) {
    return Utils::PointerToHexString(pointer);
}

}  // namespace KesVizCore
