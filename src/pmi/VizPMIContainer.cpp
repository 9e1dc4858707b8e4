#include "core/Allocation.h"
#include "model/DeleteAll.h"
#include "model/PickedIn.h"

#include <KesVizCore/model/VizCapture.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizView.h>
#include <KesVizCore/model/VizWire.h>
#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/pmi/VizPMIContainer.h>
#include <KesVizCore/report/Utils.h>

#include <algorithm>

namespace KesVizCore {

namespace {

/// Writes @p size columns of @p size numbers each into the upper left of a 4 by 4 matrix.
template <typename Real>
void copyBlock(const Real* block, int size, double* matrix) {
    for (int column = 0; column < size; ++column) {
        for (int row = 0; row < size; ++row) {
            matrix[4 * column + row] = double{block[size * column + row]};
        }
    }
}

template <typename Real>
void setMatrix(double*& matrix, const Real* values, int count) {
    if (matrix == nullptr) {
        matrix = nullWhenExhausted([] { return new double[16]; });
    }
    if (matrix == nullptr) {
        return;
    }
    // Made apart, since the values may be those of the matrix itself.
    double made[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    if (count == 16) {
        copyBlock(values, 4, made);
    } else if (count == 9) {
        copyBlock(values, 3, made);
    } else if (count == 4) {
        copyBlock(values, 2, made);
    }
    std::copy(made, made + 16, matrix);
}

}  // namespace

std::string VizPMIContainer::TypeID() {
    return "PMIContainer";
}

VizPMIContainer::VizPMIContainer(const int& refId)
    : AVizContainer(refId), _scaleFactor(1.0), _matrix(nullptr) {}

VizPMIContainer::VizPMIContainer(const VizPMIContainer& other) = default;
VizPMIContainer& VizPMIContainer::operator=(const VizPMIContainer& other) = default;

VizPMIContainer::~VizPMIContainer() {
    deleteAll(_pmis);
    _pmiMap.clear();
    deleteAll(_cgMeshes);
    deleteAll(_cgWires);
    deleteAll(_cgPointSets);
    for (const auto& entry : _semanticMap) {
        delete entry.second;
    }
    _semanticMap.clear();
    deleteAll(_views);
    deleteAll(_captures);
    delete[] _matrix;
}

std::string VizPMIContainer::GetTypeName() {
    return TypeID();
}

bool VizPMIContainer::PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out) {
    return pickedIn(adapter, ray, out, _pmis, _cgMeshes, _cgWires, _cgPointSets, _views, _captures);
}

// --- adding -------------------------------------------------------------------------------------

void VizPMIContainer::AddVizPMI(VizPMI* pmi) {
    if (pmi == nullptr) {
        return;
    }
    const std::wstring mechId = pmi->GetMechanicalID();
    if (!mechId.empty() && _pmiMap.count(mechId) != 0) {
        return;
    }
    _pmis.push_back(pmi);
    try {
        _pmiMap[mechId] = pmi;
    } catch (...) {
        _pmis.pop_back();
        throw;
    }
}

void VizPMIContainer::AddSemanticPMI(SemanticPMI* record) {
    if (record != nullptr) {
        _semanticMap.emplace(record->Id, record);
    }
}

void VizPMIContainer::AddVizMarkCGMesh(VizMesh* mesh) {
    _cgMeshes.push_back(mesh);
}

void VizPMIContainer::AddVizMarkCGWire(VizWire* wire) {
    _cgWires.push_back(wire);
}

void VizPMIContainer::AddVizMarkCGPointSet(VizPointSet* pointSet) {
    _cgPointSets.push_back(pointSet);
}

void VizPMIContainer::AddView(VizView* view) {
    _views.push_back(view);
}

void VizPMIContainer::AddCapture(VizCapture* capture) {
    _captures.push_back(capture);
}

// --- lists --------------------------------------------------------------------------------------

const std::vector<VizPMI*>& VizPMIContainer::GetVizPMIs() const {
    return _pmis;
}

const std::vector<VizMesh*>& VizPMIContainer::GetVizMarkCGMeshes() const {
    return _cgMeshes;
}

const std::vector<VizWire*>& VizPMIContainer::GetVizMarkCGWires() const {
    return _cgWires;
}

const std::vector<VizPointSet*>& VizPMIContainer::GetVizMarkCGPointSets() const {
    return _cgPointSets;
}

const std::vector<VizView*>& VizPMIContainer::GetViews() const {
    return _views;
}

const std::vector<VizCapture*>& VizPMIContainer::GetCaptures() const {
    return _captures;
}

const std::map<std::wstring, VizPMI*>& VizPMIContainer::GetVizPMIMap() const {
    return _pmiMap;
}

const std::map<std::wstring, SemanticPMI*>& VizPMIContainer::GetSemanticPMIs() const {
    return _semanticMap;
}

bool VizPMIContainer::HasSemanticPMI() const {
    return !_semanticMap.empty();
}

bool VizPMIContainer::IsEmpty() const {
    return _pmis.empty() && _semanticMap.empty() && _cgMeshes.empty() && _cgWires.empty() &&
           _cgPointSets.empty();
}

// --- asking by mechanical id --------------------------------------------------------------------

VizPMI* VizPMIContainer::GetVizPMI(const std::wstring& mechId) const {
    const auto entry = _pmiMap.find(mechId);
    return entry != _pmiMap.end() ? entry->second : nullptr;
}

bool VizPMIContainer::GetSemanticPMI(const std::wstring& key, SemanticPMI*& out) const {
    const auto entry = _semanticMap.find(key);
    if (entry == _semanticMap.end()) {
        return false;
    }
    out = entry->second;
    return true;
}

bool VizPMIContainer::GetSemanticPMIAsString(const std::wstring& key, std::wstring& out) const {
    SemanticPMI* record = nullptr;
    if (!GetSemanticPMI(key, record)) {
        out = L"Semantic PMI not found.";
        return false;
    }
    out = record->ToString();
    return true;
}

bool VizPMIContainer::GetBREPLinks(const std::wstring& key, std::vector<EntityId>& out) const {
    SemanticPMI* record = nullptr;
    if (!GetSemanticPMI(key, record)) {
        return false;
    }
    out.insert(out.end(), record->LinkedEntities.begin(), record->LinkedEntities.end());
    return !out.empty();
}

bool VizPMIContainer::GetPMILinks(const std::wstring& key, std::vector<std::wstring>& out) const {
    SemanticPMI* record = nullptr;
    return GetSemanticPMI(key, record) && record->GetPMILinks(out);
}

bool VizPMIContainer::GetDisplayName(const std::wstring& mechId, std::wstring& out) const {
    const VizPMI* const pmi = GetVizPMI(mechId);
    SemanticPMI* record = nullptr;
    if (!GetSemanticPMI(mechId, record) && pmi == nullptr) {
        return false;
    }
    std::wstring name;
    if (record != nullptr) {
        name = !record->Name.empty() ? record->Name : record->Label;
    }
    if (name.empty() && pmi != nullptr) {
        name = pmi->GetName();
        if (name.empty()) {
            name = Utils::StringToWstring(pmi->GetType().Name);
        }
    }
    out = name;
    return true;
}

// --- deleting -----------------------------------------------------------------------------------

bool VizPMIContainer::DeletePMI(const std::wstring& mechId) {
    // What is taken out lives to the end, since mechId may be the key of one of the two.
    const auto annotation = _pmiMap.extract(mechId);
    const auto record = _semanticMap.extract(mechId);
    if (!annotation.empty()) {
        const auto place = std::find(_pmis.begin(), _pmis.end(), annotation.mapped());
        if (place != _pmis.end()) {
            _pmis.erase(place);
        }
        delete annotation.mapped();
    }
    if (!record.empty()) {
        delete record.mapped();
    }
    return !annotation.empty() || !record.empty();
}

void VizPMIContainer::ClearPMIWithoutDeletingIt() {
    _pmis.clear();
}

// --- matrix and scale ---------------------------------------------------------------------------

void VizPMIContainer::SetMatrix(const double* matrix, int count) {
    setMatrix(_matrix, matrix, count);
}

void VizPMIContainer::SetMatrix(const float* matrix, int count) {
    setMatrix(_matrix, matrix, count);
}

double* VizPMIContainer::GetMatrix() const {
    return _matrix;
}

double VizPMIContainer::GetScaleFactor() const {
    return _scaleFactor;
}

void VizPMIContainer::SetScaleFactor(const double& factor) {
    _scaleFactor = factor;
}

}  // namespace KesVizCore
