#include "model/DeleteAll.h"

#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/model/VizFace.h>
#include <KesVizCore/model/VizText.h>
#include <KesVizCore/pmi/VizPMI.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace KesVizCore {

std::string VizPMI::TypeID() {
    return "PMI";
}

VizPMI::VizPMI(const VizPMIType& groupType, const VizPMIType& type)
    : _groupType(groupType), _type(type), _extrema{}, _hidden(false) {}

VizPMI::VizPMI(const VizPMI& other) = default;
VizPMI& VizPMI::operator=(const VizPMI& other) = default;

VizPMI::~VizPMI() {
    deleteAll(_edges);
    deleteAll(_faces);
    deleteAll(_texts);
}

std::string VizPMI::GetElementType() const {
    return TypeID();
}

// --- graphics -----------------------------------------------------------------------------------

const std::vector<VizEdge*>& VizPMI::GetEdges() const {
    return _edges;
}

void VizPMI::SetEdgeCountHint(std::uint64_t count) {
    _edges.reserve(count);
}

void VizPMI::AddEdge(VizEdge* edge) {
    if (edge == nullptr) {
        return;
    }
    _edges.push_back(edge);
    float box[6];
    edge->GetExtrema(box);
    if (_edges.size() == 1) {
        std::copy(box, box + 6, _extrema);
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        _extrema[axis] = std::min(_extrema[axis], box[axis]);
        _extrema[axis + 3] = std::max(_extrema[axis + 3], box[axis + 3]);
    }
}

const std::vector<VizFace*>& VizPMI::GetFaces() const {
    return _faces;
}

void VizPMI::SetFaceCountHint(std::uint64_t count) {
    _faces.reserve(count);
}

void VizPMI::AddFace(VizFace* face) {
    if (face != nullptr) {
        _faces.push_back(face);
    }
}

const std::vector<VizText*>& VizPMI::GetTexts() const {
    return _texts;
}

void VizPMI::SetTextCountHint(std::uint64_t count) {
    _texts.reserve(count);
}

void VizPMI::AddText(VizText* text) {
    if (text == nullptr) {
        return;
    }
    _texts.push_back(text);
    const float* const anchor = text->GetAnchorPoint();
    for (int axis = 0; axis < 3; ++axis) {
        _extrema[axis] = std::min(_extrema[axis], anchor[axis]);
        _extrema[axis + 3] = std::max(_extrema[axis + 3], anchor[axis]);
    }
}

void VizPMI::GetExtrema(float* out) const {
    std::copy(_extrema, _extrema + 6, out);
}

const float* VizPMI::GetExtrema() const {
    return _extrema;
}

// --- identity and links -------------------------------------------------------------------------

VizPMIType VizPMI::GetGroupType() const {
    return _groupType;
}

VizPMIType VizPMI::GetType() const {
    return _type;
}

std::wstring VizPMI::GetName() const {
    return _name;
}

void VizPMI::SetName(const std::wstring& name) {
    _name = name;
}

std::wstring VizPMI::GetMechanicalID() const {
    return _mechanicalId;
}

void VizPMI::SetMechanicalID(const std::wstring& mechanicalId) {
    _mechanicalId = mechanicalId;
}

std::vector<std::wstring> VizPMI::GetLinkedEntityIDs() const {
    return _linkedEntityIds;
}

void VizPMI::SetLinkedEntityIDs(std::vector<std::wstring> visualIds) {
    _linkedEntityIds = std::move(visualIds);
}

void VizPMI::SetLinkedEntityMechIDs(std::vector<std::wstring> mechanicalIds) {
    _linkedEntityMechIds = std::move(mechanicalIds);
}

bool VizPMI::GetHidden() const {
    return _hidden;
}

void VizPMI::SetHidden(bool hidden) {
    _hidden = hidden;
}

std::wstring VizPMI::ToString() const {
    const std::wstring rule = L"--------------\n";
    std::wstring dump = rule + L"Graphical Info:\n\n" + L"Name : " + _name + L"\n" +
                        L"VisualID : " + GetVisualID() + L"\n" + L"MechID : " + _mechanicalId +
                        L"\n" + L"Links (" + std::to_wstring(_linkedEntityIds.size()) + L") : \n";
    const bool paired = _linkedEntityIds.size() == _linkedEntityMechIds.size();
    for (std::size_t link = 0; link < _linkedEntityIds.size(); ++link) {
        dump += L"    VisualID : " + _linkedEntityIds[link] + L"    MechID : " +
                (paired ? _linkedEntityMechIds[link] : L"-1") + L"\n";
    }
    return dump + L"\n" + rule;
}

}  // namespace KesVizCore
