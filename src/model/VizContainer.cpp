#include "model/DeleteAll.h"
#include "model/ElementAccess.h"
#include "model/PickedIn.h"

#include <KesVizCore/model/VizContainer.h>
#include <KesVizCore/model/VizMesh.h>
#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizWire.h>

namespace KesVizCore {

std::string VizContainer::TypeID() {
    return "GeometryContainer";
}

VizContainer::VizContainer(const int& refId) : AVizContainer(refId), _scaleFactor(1.0F) {}

VizContainer::VizContainer(const VizContainer& other) = default;
VizContainer& VizContainer::operator=(const VizContainer& other) = default;

VizContainer::~VizContainer() {
    deleteAll(_meshes);
    deleteAll(_wires);
    deleteAll(_pointSets);
    deleteAll(_cgMeshes);
    deleteAll(_cgWires);
    deleteAll(_cgPointSets);
}

std::string VizContainer::GetTypeName() {
    return TypeID();
}

bool VizContainer::PickVisual(AView3DAdapter* adapter, const Ray& ray, VizElement*& out) {
    return pickedIn(adapter, ray, out, _meshes, _wires, _pointSets, _cgMeshes, _cgWires,
                    _cgPointSets);
}

const std::vector<VizMesh*>& VizContainer::GetMeshes() const {
    return _meshes;
}

void VizContainer::AddMesh(VizMesh* mesh) {
    _meshes.push_back(mesh);
}

void VizContainer::SetMeshCountHint(std::size_t count) {
    _meshes.reserve(count);
}

const std::vector<VizWire*>& VizContainer::GetWires() const {
    return _wires;
}

void VizContainer::AddWire(VizWire* wire) {
    _wires.push_back(wire);
}

void VizContainer::SetWireCountHint(std::size_t count) {
    _wires.reserve(count);
}

const std::vector<VizPointSet*>& VizContainer::GetPointSets() const {
    return _pointSets;
}

void VizContainer::AddPointSet(VizPointSet* pointSet) {
    _pointSets.push_back(pointSet);
}

void VizContainer::SetPointSetCountHint(std::size_t count) {
    _pointSets.reserve(count);
}

const std::vector<VizMesh*>& VizContainer::GetCGMeshes() const {
    return _cgMeshes;
}

void VizContainer::AddCGMesh(VizMesh* mesh) {
    _cgMeshes.push_back(mesh);
}

void VizContainer::SetCGMeshCountHint(std::size_t count) {
    _cgMeshes.reserve(count);
}

const std::vector<VizWire*>& VizContainer::GetCGWires() const {
    return _cgWires;
}

void VizContainer::AddCGWire(VizWire* wire) {
    _cgWires.push_back(wire);
}

void VizContainer::SetCGWireCountHint(std::size_t count) {
    _cgWires.reserve(count);
}

const std::vector<VizPointSet*>& VizContainer::GetCGPointSets() const {
    return _cgPointSets;
}

void VizContainer::AddCGPointSet(VizPointSet* pointSet) {
    _cgPointSets.push_back(pointSet);
}

void VizContainer::SetCGPointSetCountHint(std::size_t count) {
    _cgPointSets.reserve(count);
}

float VizContainer::GetScaleFactor() const {
    return _scaleFactor;
}

void VizContainer::SetScaleFactor(float factor) {
    _scaleFactor = factor;
}

}  // namespace KesVizCore
