#include <KesVizCore/model/VizElement.h>

#include <limits>

namespace KesVizCore {

VizElement::VizElement()
    : _hasColor(false),
      _hidden(false),
      _hiddenSet(false),
      _id(std::numeric_limits<std::uint64_t>::max()) {}

VizElement::VizElement(const VizElement& other) = default;
VizElement& VizElement::operator=(const VizElement& other) = default;
VizElement::~VizElement() = default;

void VizElement::ApplyTransform(float /*targetFromSource*/[4][4]) {}

void VizElement::SetVisualID(const std::wstring& visualId) {
    _visualId = visualId;
}

std::wstring VizElement::GetVisualID() const {
    return _visualId;
}

std::uint64_t VizElement::GetID() const {
    return _id;
}

void VizElement::setID(const std::uint64_t& id) {
    _id = id;
}

void VizElement::SetEntityID(const EntityId& entityId) {
    _entityId = entityId;
}

bool VizElement::GetEntityID(EntityId& out) const {
    out = _entityId;
    return _entityId.Type != InvalidType;
}

void VizElement::Set3DRenderID(const RenderId& renderId) {
    _renderId3D = renderId;
}

bool VizElement::Get3DRenderID(RenderId& out) const {
    out = _renderId3D;
    return !_renderId3D.IsEmpty();
}

void VizElement::SetTreeRenderID(const RenderId& renderId) {
    _treeRenderId = renderId;
}

bool VizElement::GetTreeRenderID(RenderId& out) const {
    out = _treeRenderId;
    return !_treeRenderId.IsEmpty();
}

void VizElement::SetColor(const RGBAColor& color) {
    _color = color;
    _hasColor = true;
}

RGBAColor VizElement::GetColor() const {
    return _color;
}

bool VizElement::HasColor() const {
    return _hasColor;
}

void VizElement::makeColorOpaque() {
    _color = RGBAColor(_color.GetRed(), _color.GetGreen(), _color.GetBlue(), 255);
}

void VizElement::SetHidden(const bool& hidden) {
    _hidden = hidden;
    _hiddenSet = true;
}

bool VizElement::GetHidden(bool& hidden) const {
    hidden = _hidden;
    return _hiddenSet;
}

}  // namespace KesVizCore
