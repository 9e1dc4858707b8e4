#include "core/Allocation.h"
#include "model/ElementAccess.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/model/VizEdge.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace KesVizCore {

namespace {

/// A copy of a cache of @p size floats; null for null.
float* copyOf(const float* cache, std::size_t size) {
    if (cache == nullptr) {
        return nullptr;
    }
    auto* const copy = new float[size];
    std::copy(cache, cache + size, copy);
    return copy;
}

float* newCache(std::size_t size) {
    return nullWhenExhausted([size] { return new float[size]; });
}

constexpr std::size_t kExtremaSize = 6;
constexpr std::size_t kExtentsSize = 4;
constexpr std::size_t kRectangleSize = 15;

}  // namespace

VizPMICollection::VizPMICollection()
    : _origin{},
      _uAxis{1.0F, 0.0F, 0.0F},
      _vAxis{0.0F, 1.0F, 0.0F},
      _viewOriented(false),
      _extrema(nullptr),
      _extents(nullptr),
      _rectangle(nullptr),
      _spare(nullptr),
      _hidden(false),
      _active(false),
      _name(L"unnamed"),
      _elements(nullptr) {}

VizPMICollection::VizPMICollection(const VizPMICollection& other) : VizPMICollection() {
    *this = other;
}

// cppcheck-suppress operatorEqVarError ; _spare is always null
VizPMICollection& VizPMICollection::operator=(const VizPMICollection& other) {
    if (this == &other) {
        return *this;
    }
    // Members and their index stay those of one another when memory runs out.
    std::vector<std::wstring> members = other._members;
    std::unordered_set<std::wstring> memberIndex = other._memberIndex;
    VizElement::operator=(other);
    std::copy(other._origin, other._origin + 3, _origin);
    std::copy(other._uAxis, other._uAxis + 3, _uAxis);
    std::copy(other._vAxis, other._vAxis + 3, _vAxis);
    _viewOriented = other._viewOriented;
    delete[] std::exchange(_extrema, copyOf(other._extrema, kExtremaSize));
    delete[] std::exchange(_extents, copyOf(other._extents, kExtentsSize));
    delete[] std::exchange(_rectangle, copyOf(other._rectangle, kRectangleSize));
    _hidden = other._hidden;
    _active = other._active;
    _name = other._name;
    _mechanicalId = other._mechanicalId;
    _visualId = other._visualId;
    _members.swap(members);
    _memberIndex.swap(memberIndex);
    _elements = other._elements;
    return *this;
}

VizPMICollection::~VizPMICollection() {
    delete[] _extrema;
    delete[] _extents;
    delete[] _rectangle;
    delete[] _spare;
}

bool VizPMICollection::IsViewOriented() const {
    return _viewOriented;
}

std::wstring VizPMICollection::GetName() const {
    return _name;
}

void VizPMICollection::SetName(const std::wstring& name) {
    _name = name;
}

std::wstring VizPMICollection::GetMechanicalID() const {
    return _mechanicalId;
}

void VizPMICollection::SetMechanicalID(const std::wstring& mechanicalId) {
    _mechanicalId = mechanicalId;
}

std::wstring VizPMICollection::GetVisualID() const {
    return _visualId;
}

void VizPMICollection::SetVisualID(const std::wstring& visualId) {
    _visualId = visualId;
}

bool VizPMICollection::GetHidden() const {
    return _hidden;
}

void VizPMICollection::SetHidden(bool hidden) {
    _hidden = hidden;
}

bool VizPMICollection::GetActive() const {
    return _active;
}

void VizPMICollection::SetActive(bool active) {
    _active = active;
}

// --- members ------------------------------------------------------------------------------------

void VizPMICollection::AddMember(std::wstring name) {
    _members.push_back(name);
    try {
        _memberIndex.insert(std::move(name));
    } catch (...) {
        _members.pop_back();
        throw;
    }
}

void VizPMICollection::SetMemberCountHint(int count) {
    if (count > 0) {
        _members.reserve(static_cast<std::size_t>(count));
    }
}

const std::vector<std::wstring>& VizPMICollection::GetMemberList() const {
    return _members;
}

int VizPMICollection::GetMemberCount() const {
    return static_cast<int>(_members.size());
}

bool VizPMICollection::IsMember(const VizElement& element) const {
    return _memberIndex.count(ElementAccess::visualId(element)) != 0;
}

void VizPMICollection::SetEntityMap(const EntityMap* elements) {
    _elements = elements;
}

// --- render ids ---------------------------------------------------------------------------------

namespace {

using ElementsByName = std::unordered_map<std::wstring_view, const VizElement*>;

/// The first element of each of the names, in the order of the map, among those that @p qualifies
/// lets through: one walk for all names, which ends with the last that is found.
template <typename Qualifies>
ElementsByName firstElements(const VizPMICollection::EntityMap& elements,
                             const std::vector<std::wstring>& names, const Qualifies& qualifies) {
    ElementsByName byName;
    byName.reserve(names.size());
    for (const std::wstring& name : names) {
        byName.emplace(name, nullptr);
    }
    std::size_t missing = byName.size();
    for (auto entry = elements.begin(); entry != elements.end() && missing > 0; ++entry) {
        const VizElement* const element = entry->second;
        if (element == nullptr) {
            continue;
        }
        const auto place = byName.find(ElementAccess::visualId(*element));
        if (place != byName.end() && place->second == nullptr && qualifies(*element)) {
            place->second = element;
            --missing;
        }
    }
    return byName;
}

}  // namespace

/// Fills an array with the 3D render ids of the named elements and, unless it is null or empty,
/// with @p own behind them. There is a map.
bool VizPMICollection::fillRenderIds(RenderId*& out, int& count,
                                     const std::vector<std::wstring>& names,
                                     const RenderId* own) const {
    count = 0;
    out = nullptr;
    std::size_t found = 0;
    RenderId* ids = nullWhenExhausted([&] {
        auto slots = std::make_unique<RenderId[]>(names.size() + (own != nullptr ? 1 : 0));
        const ElementsByName byName =
            firstElements(*_elements, names, [](const VizElement&) { return true; });
        for (const std::wstring& name : names) {
            const VizElement* const element = byName.find(name)->second;
            if (element != nullptr && element->Get3DRenderID(slots[found])) {
                ++found;
            }
        }
        if (found != 0 && own != nullptr && !own->IsEmpty()) {
            slots[found] = *own;
            ++found;
        }
        return slots.release();
    });
    if (ids == nullptr) {
        return false;
    }
    if (found == 0) {
        RenderId::DeleteRenderIdArr(ids);
        return true;
    }
    out = ids;
    count = static_cast<int>(found);
    return true;
}

bool VizPMICollection::GetMemberRenderIds(RenderId*& out, int& count, bool withOwn) const {
    if (_elements == nullptr) {
        return false;
    }
    return fillRenderIds(out, count, _members,
                         withOwn ? &ElementAccess::renderId3D(*this) : nullptr);
}

// The interface takes the names by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
bool VizPMICollection::GetRenderIdsFromList(RenderId*& out, int& count,
                                            // cppcheck-suppress passedByValue
                                            std::vector<std::wstring> names) const {
    if (_elements == nullptr || names.empty()) {
        return false;
    }
    return fillRenderIds(out, count, names, nullptr);
}
// NOLINTEND(performance-unnecessary-value-param)

bool VizPMICollection::GetNonmemberRenderIds(RenderId*& out, int& count) const {
    if (_elements == nullptr) {
        return false;
    }
    count = 0;
    out = nullptr;
    if (_members.size() > _elements->size()) {
        return false;
    }
    const std::size_t room = _elements->size() - _members.size();
    std::size_t found = 0;
    bool fits = true;
    out = nullWhenExhausted([&] {
        auto slots = std::make_unique<RenderId[]>(room);
        for (const auto& entry : *_elements) {
            if (entry.second == nullptr || IsMember(*entry.second)) {
                continue;
            }
            fits = found < room;
            if (!fits) {
                break;
            }
            slots[found] = ElementAccess::renderId3D(*entry.second);
            ++found;
        }
        return slots.release();
    });
    count = out != nullptr ? static_cast<int>(found) : 0;
    return out != nullptr && fits;
}

// --- extrema ------------------------------------------------------------------------------------

bool VizPMICollection::MergeExtrema(const float* box) {
    if (box == nullptr) {
        return false;
    }
    if (_extrema == nullptr) {
        _extrema = newCache(kExtremaSize);
        if (_extrema == nullptr) {
            return false;
        }
        std::copy(box, box + kExtremaSize, _extrema);
        return true;
    }
    for (int axis = 0; axis < 3; ++axis) {
        _extrema[axis] = std::min(_extrema[axis], box[axis]);
        _extrema[axis + 3] = std::max(_extrema[axis + 3], box[axis + 3]);
    }
    return true;
}

bool VizPMICollection::Recenter() {
    if (_extrema == nullptr) {
        return false;
    }
    for (int axis = 0; axis < 3; ++axis) {
        _origin[axis] = (_extrema[axis] + _extrema[axis + 3]) / 2.0F;
    }
    return true;
}

/// Merges the extrema of every member annotation, and makes a frame of the first that has one.
void VizPMICollection::mergeMembers() {
    const ElementsByName annotations = firstElements(
        *_elements, _members,
        [](const VizElement& element) { return element.GetElementType() == VizPMI::TypeID(); });
    for (const std::wstring& name : _members) {
        const auto* const pmi = dynamic_cast<const VizPMI*>(annotations.find(name)->second);
        if (pmi == nullptr) {
            continue;
        }
        MergeExtrema(pmi->GetExtrema());
        if (!_viewOriented) {
            FabricateAxis(pmi);
        }
    }
}

/// Has the extrema hold the origin and be at least 10 long on every axis. There are extrema.
void VizPMICollection::growAroundOrigin() {
    constexpr float shortest = 10.0F;
    const float point[6] = {_origin[0], _origin[1], _origin[2], _origin[0], _origin[1], _origin[2]};
    MergeExtrema(point);
    for (int axis = 0; axis < 3; ++axis) {
        float& low = _extrema[axis];
        float& high = _extrema[axis + 3];
        if (std::fabs(high - low) < shortest) {
            const float center = (low + high) / 2.0F;
            low = center - shortest / 2.0F;
            high = center + shortest / 2.0F;
        }
    }
}

bool VizPMICollection::AccumulatePMIExtrema() {
    const bool hadFrame = _viewOriented;
    if (_elements != nullptr && !_members.empty()) {
        mergeMembers();
    }
    if (_elements != nullptr && !_members.empty() && _extrema != nullptr) {
        growAroundOrigin();
    } else if (_extrema == nullptr) {
        constexpr float half = 10.0F;
        const float cube[6] = {_origin[0] - half, _origin[1] - half, _origin[2] - half,
                               _origin[0] + half, _origin[1] + half, _origin[2] + half};
        MergeExtrema(cube);
    } else {
        return true;
    }
    if (!hadFrame) {
        Recenter();
    }
    return true;
}

// --- frame --------------------------------------------------------------------------------------

namespace {

constexpr double kFrameTolerance = 1e-6;

/// Two sides of the first corner of an edge, and what is perpendicular to both.
struct Corner {
    float a[3];
    float normal[3];
};

/// False where the edge is too short or its first three points form no corner.
bool cornerOf(const VizEdge* edge, Corner& corner) {
    if (edge == nullptr || edge->GetVertices().size() < 9) {
        return false;
    }
    const float* const p = edge->GetVertices().data();
    float b[3];
    Subtract(p, p + 3, corner.a);
    Subtract(p + 6, p + 3, b);
    CrossProduct(corner.a, b, corner.normal);
    const auto isLong = [](const float* v) { return double{Length(v)} >= kFrameTolerance; };
    return isLong(corner.a) && isLong(b) && isLong(corner.normal);
}

bool isAlong(const float* unit, int axis) {
    return std::fabs(1.0 - std::fabs(double{unit[axis]})) < kFrameTolerance;
}

void setUnit(float* vector, int axis) {
    ClearVector(vector);
    vector[axis] = 1.0F;
}

}  // namespace

bool VizPMICollection::FabricateAxis(const VizPMI* pmi) {
    if (_viewOriented) {
        return true;
    }
    if (pmi == nullptr) {
        return false;
    }
    Corner corner;
    const auto& edges = pmi->GetEdges();
    const auto edge = std::find_if(edges.begin(), edges.end(), [&corner](const VizEdge* candidate) {
        return cornerOf(candidate, corner);
    });
    if (edge == edges.end()) {
        return true;
    }

    Normalize(corner.a);
    Normalize(corner.normal);
    std::copy(corner.a, corner.a + 3, _uAxis);
    CrossProduct(corner.a, corner.normal, _vAxis);

    // In a principal plane the axes are that plane's own.
    for (int axis = 0; axis < 3; ++axis) {
        if (isAlong(corner.normal, axis)) {
            setUnit(_uAxis, (axis + 1) % 3);
            setUnit(_vAxis, (axis + 2) % 3);
            break;
        }
    }
    const float* const start = (*edge)->GetVertices().data();
    std::copy(start, start + 3, _origin);
    _viewOriented = true;
    return true;
}

bool VizPMICollection::FindExtents() {
    if (_extents != nullptr || !_viewOriented || _extrema == nullptr) {
        return _extents != nullptr;
    }
    _extents = newCache(kExtentsSize);
    if (_extents == nullptr) {
        return false;
    }
    for (int corner = 0; corner < 8; ++corner) {
        float fromOrigin[3];
        for (int axis = 0; axis < 3; ++axis) {
            const bool high = (corner >> axis & 1) != 0;
            fromOrigin[axis] = _extrema[high ? axis + 3 : axis] - _origin[axis];
        }
        const float u = DotProduct(_uAxis, fromOrigin);
        const float v = DotProduct(_vAxis, fromOrigin);
        _extents[0] = corner == 0 ? u : std::min(_extents[0], u);
        _extents[1] = corner == 0 ? v : std::min(_extents[1], v);
        _extents[2] = corner == 0 ? u : std::max(_extents[2], u);
        _extents[3] = corner == 0 ? v : std::max(_extents[3], v);
    }
    for (std::size_t place = 0; place < kExtentsSize; ++place) {
        _extents[place] *= 1.1F;  // about the frame's origin, not about the centre
    }
    return true;
}

bool VizPMICollection::GetExtents(const float*& out) {
    FindExtents();
    out = _extents;
    return _extents != nullptr;
}

float* VizPMICollection::GetRectangle() {
    if (_rectangle != nullptr || !_viewOriented || !FindExtents()) {
        return _rectangle;
    }
    _rectangle = newCache(kRectangleSize);
    if (_rectangle == nullptr) {
        return nullptr;
    }
    float normal[3];
    CrossProduct(_uAxis, _vAxis, normal);
    float modelFromFrame[16] = {_uAxis[0],  _uAxis[1],  _uAxis[2],  0.0F,      _vAxis[0], _vAxis[1],
                                _vAxis[2],  0.0F,       normal[0],  normal[1], normal[2], 0.0F,
                                _origin[0], _origin[1], _origin[2], 1.0F};
    const float minU = _extents[0];
    const float minV = _extents[1];
    const float maxU = _extents[2];
    const float maxV = _extents[3];
    float corners[5][3] = {{minU, minV, 0.0F},
                           {maxU, minV, 0.0F},
                           {maxU, maxV, 0.0F},
                           {minU, maxV, 0.0F},
                           {minU, minV, 0.0F}};
    for (std::size_t corner = 0; corner < 5; ++corner) {
        MatrixMultiplyPoint(corners[corner], modelFromFrame, _rectangle + 3 * corner);
    }
    return _rectangle;
}

}  // namespace KesVizCore
