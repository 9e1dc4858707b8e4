#include "model/DeleteAll.h"

#include <KesVizCore/model/VizPointSet.h>
#include <KesVizCore/model/VizPoints.h>

namespace KesVizCore {

std::string VizPointSet::TypeID() {
    return "PointSet";
}

VizPointSet::VizPointSet() = default;

VizPointSet::VizPointSet(const VizPointSet& other) = default;
VizPointSet& VizPointSet::operator=(const VizPointSet& other) = default;

VizPointSet::~VizPointSet() {
    deleteAll(_pointSets);
}

std::string VizPointSet::GetElementType() const {
    return TypeID();
}

const std::vector<VizPoints*>& VizPointSet::GetPointSets() const {
    return _pointSets;
}

void VizPointSet::SetPointsCountHint(std::size_t count) {
    _pointSets.reserve(count);
}

void VizPointSet::AddPoints(VizPoints* points) {
    _pointSets.push_back(points);
}

}  // namespace KesVizCore
