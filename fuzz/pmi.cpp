/// @file
/// PMI containers and collections beside plain structs that hold the same: who is kept, refused,
/// deleted and destroyed, extrema, frames and extents exact to the bit, and the render ids that
/// the four operations of a collection answer.

#include "Elements.h"
#include "Input.h"
#include "MathReference.h"
#include "Numbers.h"
#include "PickingAdapter.h"

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace KesVizCore;
using Fuzz::AnyPath;
using Fuzz::Check;
using Fuzz::CheckSame;
using Fuzz::Input;
using Fuzz::Living;
using Fuzz::Numbers;
using Fuzz::Same;

using Names = std::vector<std::wstring>;

/// Few names, the empty one among them, so that they often meet.
std::wstring AnyName(Input& input) {
    static const wchar_t* const names[] = {L"", L"A", L"B", L"C", L"AB"};
    const unsigned choice = input.Below(6);
    return choice < 5 ? names[choice] : input.Text(3);
}

// --- a collection -------------------------------------------------------------------------------

/// An annotation as far as its container and collections look at it.
struct PlainPMI {
    VizPMI* pmi = nullptr;
    std::wstring visualId;
    std::wstring mechanicalId;
    std::wstring name;
    std::vector<VizElement*> parts;  ///< edges, faces and texts, which it owns
    std::vector<std::vector<float>> edges;
    float extrema[6] = {};
    Names links;
    Names mechanicalLinks;
};

/// What a collection does with its members, step by step.
struct PlainCollection {
    float origin[3] = {0, 0, 0};
    float u[3] = {1, 0, 0};
    float v[3] = {0, 1, 0};
    bool oriented = false;
    std::optional<std::vector<float>> extrema;
    std::optional<std::vector<float>> extents;
    std::optional<std::vector<float>> rectangle;
    Names members;
    RenderId own;

    void Merge(const float* box);
    void Fabricate(const PlainPMI& pmi);
    void FindExtents();
    void FindRectangle();
};

void PlainCollection::Merge(const float* box) {
    if (!extrema) {
        extrema.emplace(box, box + 6);
        return;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float& low = (*extrema)[axis];
        float& high = (*extrema)[axis + 3];
        low = low > box[axis] ? box[axis] : low;
        high = high < box[axis + 3] ? box[axis + 3] : high;
    }
}

/// The frame of the first edge whose first three points form a corner.
void PlainCollection::Fabricate(const PlainPMI& pmi) {
    if (oriented) {
        return;
    }
    for (const std::vector<float>& p : pmi.edges) {
        if (p.size() < 9) {
            continue;
        }
        float a[3];
        float b[3];
        float n[3];
        for (std::size_t i = 0; i < 3; ++i) {
            a[i] = p[i] - p[3 + i];
            b[i] = p[6 + i] - p[3 + i];
        }
        Reference::CrossProduct(a, b, n);
        const auto isLong = [](const float* vector) {
            return double{Reference::Length(vector)} >= 1e-6;
        };
        if (!isLong(a) || !isLong(b) || !isLong(n)) {
            continue;
        }
        Reference::Normalize(a);
        Reference::Normalize(n);
        Reference::CrossProduct(a, n, b);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (std::fabs(1.0 - std::fabs(double{n[axis]})) < 1e-6) {
                for (std::size_t i = 0; i < 3; ++i) {
                    a[i] = i == (axis + 1) % 3 ? 1.0F : 0.0F;
                    b[i] = i == (axis + 2) % 3 ? 1.0F : 0.0F;
                }
                break;
            }
        }
        std::copy(p.begin(), p.begin() + 3, origin);
        std::copy(a, a + 3, u);
        std::copy(b, b + 3, v);
        oriented = true;
        return;
    }
}

void PlainCollection::FindExtents() {
    if (extents || !oriented || !extrema) {
        return;
    }
    for (unsigned corner = 0; corner < 8; ++corner) {
        float from[3];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const bool high = (corner >> axis) % 2 == 1;
            from[axis] = (*extrema)[high ? axis + 3 : axis] - origin[axis];
        }
        const float along[2] = {Reference::DotProduct(u, from), Reference::DotProduct(v, from)};
        if (corner == 0) {
            extents = {along[0], along[1], along[0], along[1]};
        }
        for (std::size_t i = 0; i < 2; ++i) {
            float& low = (*extents)[i];
            float& high = (*extents)[i + 2];
            low = along[i] < low ? along[i] : low;
            high = along[i] > high ? along[i] : high;
        }
    }
    for (float& extent : *extents) {
        extent = extent * 1.1F;
    }
}

void PlainCollection::FindRectangle() {
    if (rectangle || !oriented) {
        return;
    }
    FindExtents();
    if (!extents) {
        return;
    }
    float m[16] = {u[0], u[1], u[2], 0, v[0], v[1], v[2], 0};
    Reference::CrossProduct(u, v, m + 8);
    m[11] = 0;
    std::copy(origin, origin + 3, m + 12);
    m[15] = 1;
    const std::vector<float>& e = *extents;
    const float corners[5][3] = {
        {e[0], e[1], 0}, {e[2], e[1], 0}, {e[2], e[3], 0}, {e[0], e[3], 0}, {e[0], e[1], 0}};
    rectangle.emplace(15);
    for (std::size_t i = 0; i < 5; ++i) {
        Reference::MatrixMultiplyPoint(corners[i], m, rectangle->data() + 3 * i);
    }
}

/// A collection that lets its frame be seen and set.
class OpenView : public VizView {
public:
    OpenView() = default;

    using VizPMICollection::_origin;
    using VizPMICollection::_uAxis;
    using VizPMICollection::_vAxis;
    using VizPMICollection::FabricateAxis;
    using VizPMICollection::MergeExtrema;
    using VizPMICollection::Recenter;
};

using EntityMap = std::map<EntityId, const VizElement*>;

// --- the model ----------------------------------------------------------------------------------

class Model {
public:
    explicit Model(Input& input)
        : _input(input),
          _numbers(input),
          _container(std::make_unique<VizPMIContainer>(input.Any<std::int32_t>())) {}

    void Run() {
        while (!_input.IsAtEnd()) {
            Step();
        }
        CheckContainer();
        Destroy();
    }

private:
    void Step();
    void AddPMI();
    void AddPart(PlainPMI& plain);
    void CheckPMI(const PlainPMI& plain) const;
    void AddRecord();
    void ChangeRecord();
    void AddGroup();
    void Delete();
    void Clear();
    void SetMatrix();
    void Ask();
    void Pick();
    void CheckContainer() const;
    void Destroy();

    void ChangeMap();
    void UseCollection();
    void Accumulate();
    void CheckCollection(OpenView& view, PlainCollection& plain);
    void CheckCopy();
    void CheckIds();
    const VizElement* Resolved(const std::wstring& name) const;

    PlainPMI* AnyPMI() { return _pmis.empty() ? nullptr : &_pmis[_input.Byte() % _pmis.size()]; }
    void Forget(VizPMI* pmi);

    Input& _input;
    Numbers<float> _numbers;
    Living _living;

    std::unique_ptr<VizPMIContainer> _container;
    std::vector<PlainPMI> _pmis;  ///< all that live, kept by the container or not
    std::vector<VizPMI*> _list;   ///< in the container's list
    std::map<std::wstring, VizPMI*> _map;
    std::map<std::wstring, SemanticPMI*> _records;
    std::vector<VizElement*> _groups[5];  ///< meshes, wires, point sets, views, captures
    std::optional<std::vector<double>> _matrix;
    double _scale = 1.0;

    EntityMap _elements;
    bool _hasMap = false;
    OpenView _view;
    PlainCollection _plain;
    Fuzz::PickingAdapter _adapter;
};

// --- annotations --------------------------------------------------------------------------------

void Model::AddPMI() {
    PlainPMI plain;
    Fuzz::PMILoader loader(_living);
    VizPMIType type;
    type.Name = _input.Flag() ? "type" : "";
    loader.setGroupAndType(VizPMIType(), type);
    plain.pmi = loader.LoadOne();
    plain.pmi->SetVisualID(plain.visualId = AnyName(_input));
    plain.pmi->SetMechanicalID(plain.mechanicalId = AnyName(_input));
    plain.pmi->SetName(plain.name = AnyName(_input));
    plain.pmi->SetEntityID(EntityId(1, DimensionType, _input.Byte()));
    plain.pmi->Set3DRenderID(AnyPath(_input));
    _pmis.push_back(plain);
    for (unsigned left = _input.Below(4); left > 0; --left) {
        AddPart(_pmis.back());
    }
    if (_input.Below(8) == 0) {
        _container->AddVizPMI(nullptr);
    }
    _container->AddVizPMI(plain.pmi);
    if (plain.mechanicalId.empty() || _map.count(plain.mechanicalId) == 0) {
        _list.push_back(plain.pmi);
        _map[plain.mechanicalId] = plain.pmi;
        return;
    }
    // Refused, and still the host's to destroy.
    Check(_living.Has(plain.pmi), "a refused annotation lives");
    VizPMI* const pmi = plain.pmi;
    delete pmi;
    Forget(pmi);
}

/// A new edge, face or text.
void Model::AddPart(PlainPMI& plain) {
    VizPMI& pmi = *plain.pmi;
    const unsigned choice = _input.Below(6);
    if (choice == 0) {
        pmi.AddEdge(nullptr);
        pmi.AddFace(nullptr);
        return pmi.AddText(nullptr);
    }
    if (choice == 1) {
        Fuzz::FaceLoader loader(_living);
        plain.parts.push_back(loader.LoadOne());
        return pmi.AddFace(static_cast<VizFace*>(plain.parts.back()));
    }
    float* const extrema = plain.extrema;
    const auto widen = [extrema](std::size_t axis, float low, float high) {
        extrema[axis] = extrema[axis] > low ? low : extrema[axis];
        extrema[axis + 3] = high > extrema[axis + 3] ? high : extrema[axis + 3];
    };
    if (choice == 2) {
        Fuzz::TextLoader loader(_living);
        VizText* const text = loader.LoadOne();
        plain.parts.push_back(text);
        float anchor[3];
        _numbers.Fill(anchor, 3);
        text->SetAnchorPoint(anchor);
        pmi.AddText(text);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            widen(axis, anchor[axis], anchor[axis]);
        }
        return;
    }
    Fuzz::EdgeLoader loader(_living);
    VizEdge* const edge = loader.LoadOne();
    plain.parts.push_back(edge);
    std::vector<float> points(_input.Below(13));
    _numbers.Fill(points.data(), points.size());
    edge->SetVertices(points);
    float own[6];
    edge->GetExtrema(own);
    pmi.AddEdge(edge);
    plain.edges.push_back(edge->GetVertices());
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (plain.edges.size() == 1) {
            extrema[axis] = own[axis];
            extrema[axis + 3] = own[axis + 3];
        } else {
            widen(axis, own[axis], own[axis + 3]);
        }
    }
}

void Model::CheckPMI(const PlainPMI& plain) const {
    const VizPMI& pmi = *plain.pmi;
    float extrema[6];
    pmi.GetExtrema(extrema);
    CheckSame(extrema, plain.extrema, 6, "extrema of an annotation");
    CheckSame(pmi.GetExtrema(), plain.extrema, 6, "extrema by pointer");
    Check(
        pmi.GetEdges().size() + pmi.GetFaces().size() + pmi.GetTexts().size() == plain.parts.size(),
        "parts of an annotation");
    Check(pmi.GetLinkedEntityIDs() == plain.links, "links of an annotation");
    std::wstring text = L"--------------\nGraphical Info:\n\nName : " + plain.name +
                        L"\nVisualID : " + plain.visualId + L"\nMechID : " + plain.mechanicalId +
                        L"\nLinks (" + std::to_wstring(plain.links.size()) + L") : \n";
    const bool parallel = plain.links.size() == plain.mechanicalLinks.size();
    for (std::size_t i = 0; i < plain.links.size(); ++i) {
        text += L"    VisualID : " + plain.links[i] + L"    MechID : " +
                (parallel ? plain.mechanicalLinks[i] : L"-1") + L"\n";
    }
    Check(pmi.ToString() == text + L"\n--------------\n", "text of an annotation");
}

/// An annotation that was destroyed took all its parts along, and nobody else.
void Model::Forget(VizPMI* pmi) {
    const auto place = std::find_if(_pmis.begin(), _pmis.end(),
                                    [pmi](const PlainPMI& one) { return one.pmi == pmi; });
    Check(!_living.Has(pmi), "an annotation is destroyed");
    for (VizElement* const part : place->parts) {
        Check(!_living.Has(part), "an annotation destroys its parts");
    }
    for (auto entry = _elements.begin(); entry != _elements.end();) {
        entry = entry->second == pmi ? _elements.erase(entry) : std::next(entry);
    }
    _pmis.erase(place);
}

// --- records and lookups ------------------------------------------------------------------------

/// The pieces between commas with a blank behind them, the empty ones too.
bool LinksOf(const SemanticPMI& record, Names& links) {
    const auto entry = record.Attributes.find(L"DatumRefDatas");
    if (entry == record.Attributes.end()) {
        return false;
    }
    links.clear();
    std::wstring rest = entry->second;
    for (auto place = rest.find(L", "); place != std::wstring::npos; place = rest.find(L", ")) {
        links.push_back(rest.substr(0, place));
        rest = rest.substr(place + 2);
    }
    links.push_back(rest);
    return true;
}

const wchar_t* const printedKeys[] = {L"Value",
                                      L"LowerVal",
                                      L"UpperVal",
                                      L"Precision",
                                      L"MainType",
                                      L"SubType",
                                      L"Tolerance Value",
                                      L"Tolerance Type",
                                      L"Value Type",
                                      L"TolNote",
                                      L"AllAround",
                                      L"IsComposite",
                                      L"ProjTolZoneLength",
                                      L"RateUnit1",
                                      L"RateUnit2",
                                      L"RefineTolerance",
                                      L"ShiftValue",
                                      L"ApplicabilityType",
                                      L"ObtentionType",
                                      L"Manages_Geometry",
                                      L"Hidden"};

std::wstring RecordText(const SemanticPMI& record) {
    std::wstring text = L"--------------\nSemantic Info:\n\nID : " + record.Id + L"\nName : " +
                        record.Name + L"\nLabel : " + record.Label +
                        L"\nUnits : millimeters, radians\n";
    for (const wchar_t* const key : printedKeys) {
        const auto entry = record.Attributes.find(key);
        if (entry != record.Attributes.end() && !entry->second.empty()) {
            text += key + (L" : " + entry->second) + L"\n";
        }
    }
    Names links;
    LinksOf(record, links);
    const std::size_t count = record.LinkedEntities.size() + links.size();
    if (count > 0) {
        text += L"Links (" + std::to_wstring(count) + L") : \n";
    }
    for (const EntityId& entity : record.LinkedEntities) {
        text += L"    " + std::to_wstring(entity.ID) +
                (entity.Type == BodyType     ? L" (Body)\n"
                 : entity.Type == FaceType   ? L" (Face)\n"
                 : entity.Type == EdgeType   ? L" (Edge)\n"
                 : entity.Type == VertexType ? L" (Vertex)\n"
                                             : L" (Other)\n");
    }
    for (const std::wstring& link : links) {
        text += link + L" (PMI)\n";
    }
    return text + L"--------------\n";
}

void Model::AddRecord() {
    auto record = std::make_unique<SemanticPMI>();
    record->Id = AnyName(_input);
    record->Name = AnyName(_input);
    record->Label = AnyName(_input);
    if (_input.Flag()) {
        record->Attributes[L"DatumRefDatas"] = AnyName(_input) + (_input.Flag() ? L", B" : L", ");
    }
    for (unsigned left = _input.Below(4); left > 0; --left) {
        const wchar_t* const key = printedKeys[_input.Below(std::size(printedKeys))];
        record->Attributes[_input.Below(8) == 0 ? AnyName(_input) : key] = AnyName(_input);
    }
    static const EntityType types[] = {BodyType, FaceType, EdgeType, VertexType, PartType};
    for (unsigned left = _input.Below(3); left > 0; --left) {
        record->LinkedEntities.emplace_back(1, types[_input.Below(5)], _input.Byte());
    }
    _container->AddSemanticPMI(nullptr);
    _container->AddSemanticPMI(record.get());
    if (_records.emplace(record->Id, record.get()).second) {
        record.release();  // otherwise refused, and destroyed here
    }
}

/// Names and labels of a record may change where it stands.
void Model::ChangeRecord() {
    if (_records.empty()) {
        return;
    }
    SemanticPMI& record = *_records.begin()->second;
    record.Name = AnyName(_input);
    record.Label = AnyName(_input);
}

void Model::Ask() {
    const std::wstring key = AnyName(_input);
    const auto annotation = _map.find(key);
    const auto entry = _records.find(key);
    VizPMI* const pmi = annotation != _map.end() ? annotation->second : nullptr;
    SemanticPMI* const record = entry != _records.end() ? entry->second : nullptr;
    Check(_container->GetVizPMI(key) == pmi, "GetVizPMI");

    SemanticPMI other;
    SemanticPMI* found = &other;
    Check(_container->GetSemanticPMI(key, found) == (record != nullptr), "GetSemanticPMI");
    Check(found == (record != nullptr ? record : &other), "record of GetSemanticPMI");
    std::wstring text = L"before";
    Check(_container->GetSemanticPMIAsString(key, text) == (record != nullptr), "record as text");
    Check(text == (record != nullptr ? RecordText(*record) : L"Semantic PMI not found."),
          "text of a record");

    std::vector<EntityId> entities(_input.Below(2));
    std::vector<EntityId> expectedEntities = entities;
    if (record != nullptr) {
        expectedEntities.insert(expectedEntities.end(), record->LinkedEntities.begin(),
                                record->LinkedEntities.end());
    }
    Check(
        _container->GetBREPLinks(key, entities) == (record != nullptr && !expectedEntities.empty()),
        "GetBREPLinks");
    Check(entities == expectedEntities, "links to entities");

    Names links = {L"kept"};
    Names expectedLinks = links;
    const bool linked = record != nullptr && LinksOf(*record, expectedLinks);
    Check(_container->GetPMILinks(key, links) == linked && links == expectedLinks, "GetPMILinks");

    std::wstring display = L"before";
    std::wstring expected = pmi == nullptr && record == nullptr ? display : std::wstring();
    if (record != nullptr) {
        expected = !record->Name.empty() ? record->Name : record->Label;
    }
    if (expected.empty() && pmi != nullptr) {
        expected = pmi->GetName();
        if (expected.empty()) {
            const std::string type = pmi->GetType().Name;
            expected.assign(type.begin(), type.end());
        }
    }
    Check(_container->GetDisplayName(key, display) == (pmi != nullptr || record != nullptr),
          "GetDisplayName");
    Check(display == expected, "display name");
}

void Model::Delete() {
    std::wstring id = AnyName(_input);
    const auto annotation = _map.find(id);
    const auto record = _records.find(id);
    VizPMI* const pmi = annotation != _map.end() ? annotation->second : nullptr;
    const bool expected = pmi != nullptr || record != _records.end();
    if (pmi != nullptr) {
        _map.erase(annotation);
        const auto place = std::find(_list.begin(), _list.end(), pmi);
        if (place != _list.end()) {
            _list.erase(place);
        }
    }
    if (record != _records.end()) {
        _records.erase(record);
    }
    Check(_container->DeletePMI(id) == expected, "DeletePMI");
    if (pmi != nullptr) {
        Forget(pmi);
    }
}

/// Whoever empties the list takes over those annotations of which the container keeps no entry.
void Model::Clear() {
    _container->ClearPMIWithoutDeletingIt();
    for (VizPMI* const pmi : _list) {
        Check(_living.Has(pmi), "ClearPMIWithoutDeletingIt destroys nobody");
    }
    _list.clear();
}

void Model::AddGroup() {
    const unsigned list = _input.Below(5);
    VizElement* element = nullptr;
    switch (list) {
        case 0: {
            Fuzz::MeshLoader loader(_living);
            VizMesh* const mesh = loader.LoadOne();
            _container->AddVizMarkCGMesh(mesh);
            element = mesh;
            break;
        }
        case 1: {
            Fuzz::WireLoader loader(_living);
            VizWire* const wire = loader.LoadOne();
            _container->AddVizMarkCGWire(wire);
            element = wire;
            break;
        }
        case 2: {
            Fuzz::PointSetLoader loader(_living);
            VizPointSet* const set = loader.LoadOne();
            _container->AddVizMarkCGPointSet(set);
            element = set;
            break;
        }
        case 3: {
            Fuzz::ViewLoader loader(_living);
            VizView* const view = loader.LoadOne();
            _container->AddView(view);
            element = view;
            break;
        }
        default: {
            Fuzz::CaptureLoader loader(_living);
            VizCapture* const capture = loader.LoadOne();
            _container->AddCapture(capture);
            element = capture;
            break;
        }
    }
    element->SetVisualID(AnyName(_input));
    element->SetEntityID(EntityId(1, _input.Below(4) == 0 ? InvalidType : BodyType, 3));
    element->Set3DRenderID(AnyPath(_input));
    _groups[list].push_back(element);
}

void Model::SetMatrix() {
    static const int counts[] = {16, 9, 4, 0, 12, -1};
    const int count = counts[_input.Below(6)];
    float floats[16];
    double doubles[16];
    _numbers.Fill(floats, 16);
    std::copy(floats, floats + 16, doubles);
    _input.Flag() ? _container->SetMatrix(floats, count) : _container->SetMatrix(doubles, count);

    _matrix.emplace(16, 0.0);
    for (std::size_t i = 0; i < 16; i += 5) {
        (*_matrix)[i] = 1.0;
    }
    const std::size_t side = count == 16 ? 4 : count == 9 ? 3 : count == 4 ? 2 : 0;
    for (std::size_t i = 0; i < side * side; ++i) {
        (*_matrix)[4 * (i / side) + i % side] = doubles[i];
    }
    _scale = double{_numbers.Next()};
    _container->SetScaleFactor(_scale);
}

void Model::Pick() {
    const Ray ray;
    _adapter.asked = &ray;
    _adapter.picked = AnyPath(_input);
    _adapter.hits = _input.Below(8) != 0;
    std::vector<VizElement*> order(_list.begin(), _list.end());
    for (const auto& group : _groups) {
        order.insert(order.end(), group.begin(), group.end());
    }
    const auto found = std::find_if(order.begin(), order.end(), [this](VizElement* element) {
        return _adapter.hits && Fuzz::IsPicked(*element, _adapter.picked);
    });
    VizElement* picked = nullptr;
    Check(_container->PickVisual(&_adapter, ray, picked) == (found != order.end()), "PickVisual");
    Check(picked == (found != order.end() ? *found : nullptr), "what is picked");
    Check(!_container->PickVisual(nullptr, ray, picked), "no adapter picks nothing");
}

template <typename Element>
bool IsList(const std::vector<Element*>& answered, const std::vector<VizElement*>& expected) {
    return std::equal(answered.begin(), answered.end(), expected.begin(), expected.end());
}

void Model::CheckContainer() const {
    const VizPMIContainer& container = *_container;
    Check(container.GetVizPMIs() == _list, "list of annotations");
    Check(container.GetVizPMIMap() == _map, "map of annotations");
    Check(container.GetSemanticPMIs() == _records, "records");
    Check(container.HasSemanticPMI() == !_records.empty(), "HasSemanticPMI");
    Check(IsList(container.GetVizMarkCGMeshes(), _groups[0]) &&
              IsList(container.GetVizMarkCGWires(), _groups[1]) &&
              IsList(container.GetVizMarkCGPointSets(), _groups[2]) &&
              IsList(container.GetViews(), _groups[3]) &&
              IsList(container.GetCaptures(), _groups[4]),
          "other lists");
    Check(container.IsEmpty() == (_list.empty() && _records.empty() && _groups[0].empty() &&
                                  _groups[1].empty() && _groups[2].empty()),
          "IsEmpty");
    Check((container.GetMatrix() != nullptr) == _matrix.has_value(), "there is a matrix");
    Check(!_matrix || Same(container.GetMatrix(), _matrix->data(), 16), "matrix");
    Check(Same(container.GetScaleFactor(), _scale), "scale");
    for (const PlainPMI& plain : _pmis) {
        CheckPMI(plain);
    }
}

/// The container destroys what stands in its lists; what a host took out of them is the host's.
void Model::Destroy() {
    std::set<VizPMI*> owned(_list.begin(), _list.end());
    _container.reset();
    std::vector<VizPMI*> left;
    for (const PlainPMI& plain : _pmis) {
        Check(_living.Has(plain.pmi) == (owned.count(plain.pmi) == 0), "who is destroyed");
        if (owned.count(plain.pmi) == 0) {
            left.push_back(plain.pmi);
        }
    }
    for (VizPMI* const pmi : left) {
        delete pmi;
    }
    Check(_living.Count() == 0, "nobody is left");
}

// --- collections --------------------------------------------------------------------------------

void Model::ChangeMap() {
    const EntityId key(0, FaceType, _input.Below(8));
    const unsigned choice = _input.Below(4);
    if (choice == 0) {
        _elements[key] = nullptr;
    } else if (choice == 1) {
        const auto& group = _groups[_input.Below(5)];
        if (!group.empty()) {
            _elements[key] = group[_input.Byte() % group.size()];
        }
    } else if (PlainPMI* const plain = AnyPMI()) {
        _elements[key] = plain->pmi;
    }
    _hasMap = _input.Below(8) != 0;
    _view.SetEntityMap(_hasMap ? &_elements : nullptr);
}

/// The first element of the map with that visual id.
const VizElement* Model::Resolved(const std::wstring& name) const {
    for (const auto& [key, element] : _elements) {
        if (element != nullptr && element->GetVisualID() == name) {
            return element;
        }
    }
    return nullptr;
}

void CheckArray(RenderId*& ids, int count, const std::vector<RenderId>& expected,
                const char* what) {
    Check(count == static_cast<int>(expected.size()), what);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        Check(ids[i] == expected[i], what);
    }
    RenderId::DeleteRenderIdArr(ids);
}

void Model::CheckIds() {
    RenderId untouched;
    RenderId* ids = &untouched;
    int count = 77;
    const bool withOwn = _input.Flag();
    Names names;
    for (unsigned left = _input.Below(4); left > 0; --left) {
        names.push_back(AnyName(_input));
    }
    if (!_hasMap) {
        Check(!_view.GetMemberRenderIds(ids, count, withOwn) &&
                  !_view.GetNonmemberRenderIds(ids, count) &&
                  !_view.GetRenderIdsFromList(ids, count, names) && ids == &untouched &&
                  count == 77,
              "without a map there is no answer");
        return;
    }
    const auto idsOf = [this](const Names& asked) {
        std::vector<RenderId> found;
        for (const std::wstring& name : asked) {
            const VizElement* const element = Resolved(name);
            RenderId id;
            if (element != nullptr && element->Get3DRenderID(id)) {
                found.push_back(id);
            }
        }
        return found;
    };
    std::vector<RenderId> expected = idsOf(_plain.members);
    if (!expected.empty() && withOwn && _plain.own.Length() > 0) {
        expected.push_back(_plain.own);
    }
    Check(_view.GetMemberRenderIds(ids, count, withOwn), "GetMemberRenderIds");
    Check((ids == nullptr) == expected.empty(), "an array where there is an id");
    CheckArray(ids, count, expected, "render ids of members");

    ids = &untouched;
    const bool listed = _view.GetRenderIdsFromList(ids, count, names);
    Check(listed == !names.empty(), "GetRenderIdsFromList");
    if (listed) {
        CheckArray(ids, count, idsOf(names), "render ids of a list");
    }

    ids = &untouched;
    const auto isMember = [this](const VizElement& element) {
        const auto& members = _plain.members;
        return std::find(members.begin(), members.end(), element.GetVisualID()) != members.end();
    };
    expected.clear();
    bool fits = _plain.members.size() <= _elements.size();
    const std::size_t room = fits ? _elements.size() - _plain.members.size() : 0;
    for (const auto& [key, element] : _elements) {
        if (element == nullptr) {
            continue;
        }
        Check(_view.IsMember(*element) == isMember(*element), "IsMember");
        if (!isMember(*element) && fits) {
            fits = expected.size() < room;
            RenderId id;
            element->Get3DRenderID(id);
            if (fits) {
                expected.push_back(id);
            }
        }
    }
    Check(_view.GetNonmemberRenderIds(ids, count) == fits, "GetNonmemberRenderIds");
    Check((ids == nullptr) == (_plain.members.size() > _elements.size()), "array of nonmembers");
    CheckArray(ids, count, expected, "render ids of nonmembers");
}

void Model::Accumulate() {
    const bool hadFrame = _plain.oriented;
    if (_hasMap) {
        for (const std::wstring& name : _plain.members) {
            for (const auto& entry : _elements) {
                const VizElement* const element = entry.second;
                if (element == nullptr || element->GetElementType() != "PMI" ||
                    element->GetVisualID() != name) {
                    continue;
                }
                const auto plain =
                    std::find_if(_pmis.begin(), _pmis.end(),
                                 [&](const PlainPMI& one) { return one.pmi == element; });
                _plain.Merge(plain->extrema);
                _plain.Fabricate(*plain);
                break;
            }
        }
    }
    bool changed = false;
    if (_hasMap && !_plain.members.empty() && _plain.extrema) {
        const float point[6] = {_plain.origin[0], _plain.origin[1], _plain.origin[2],
                                _plain.origin[0], _plain.origin[1], _plain.origin[2]};
        _plain.Merge(point);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            float& low = (*_plain.extrema)[axis];
            float& high = (*_plain.extrema)[axis + 3];
            if (std::fabs(high - low) < 10.0F) {
                const float center = (low + high) / 2.0F;
                low = center - 5.0F;
                high = center + 5.0F;
            }
        }
        changed = true;
    } else if (!_plain.extrema) {
        float cube[6];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            cube[axis] = _plain.origin[axis] - 10.0F;
            cube[axis + 3] = _plain.origin[axis] + 10.0F;
        }
        _plain.Merge(cube);
        changed = true;
    }
    for (std::size_t axis = 0; axis < 3 && changed && !hadFrame; ++axis) {
        _plain.origin[axis] = ((*_plain.extrema)[axis] + (*_plain.extrema)[axis + 3]) / 2.0F;
    }
    Check(_view.AccumulatePMIExtrema(), "AccumulatePMIExtrema");
}

void Model::UseCollection() {
    switch (_input.Below(10)) {
        case 0: {
            const std::wstring name = AnyName(_input);
            _view.AddMember(name);
            _plain.members.push_back(name);
            break;
        }
        case 1:
            _view.Set3DRenderID(_plain.own = AnyPath(_input));
            break;
        case 2:
        case 3:
            Accumulate();
            break;
        case 4: {
            float box[6];
            _numbers.Fill(box, 6);
            Check(_view.MergeExtrema(box) && !_view.MergeExtrema(nullptr), "MergeExtrema");
            _plain.Merge(box);
            break;
        }
        case 5:
            Check(_view.Recenter() == _plain.extrema.has_value(), "Recenter");
            for (std::size_t axis = 0; axis < 3 && _plain.extrema; ++axis) {
                _plain.origin[axis] =
                    ((*_plain.extrema)[axis] + (*_plain.extrema)[axis + 3]) / 2.0F;
            }
            break;
        case 6: {
            PlainPMI* const plain = AnyPMI();
            const bool null = plain == nullptr;
            Check(_view.FabricateAxis(null ? nullptr : plain->pmi) == (_plain.oriented || !null),
                  "FabricateAxis");
            if (!null) {
                _plain.Fabricate(*plain);
            }
            break;
        }
        case 7: {
            float plane[9];
            _numbers.Fill(plane, 9);
            _view.SetPlane(plane, plane + 3, plane + 6);
            std::copy(plane, plane + 3, _plain.origin);
            std::copy(plane + 3, plane + 6, _plain.u);
            std::copy(plane + 6, plane + 9, _plain.v);
            _plain.oriented = true;
            break;
        }
        case 8:
            CheckIds();
            break;
        default:
            CheckCopy();
            break;
    }
    if (_input.Flag()) {
        CheckCollection(_view, _plain);
    }
}

/// Asks for the extents and the rectangle, which are made once and stay.
void Model::CheckCollection(OpenView& view, PlainCollection& plain) {
    CheckSame(view._origin, plain.origin, 3, "origin of a frame");
    CheckSame(view._uAxis, plain.u, 3, "U axis of a frame");
    CheckSame(view._vAxis, plain.v, 3, "V axis of a frame");
    Check(view.IsViewOriented() == plain.oriented, "IsViewOriented");
    Check(view.GetMemberList() == plain.members &&
              view.GetMemberCount() == static_cast<int>(plain.members.size()),
          "members");
    if (_input.Flag()) {
        const float* extents = nullptr;
        plain.FindExtents();
        Check(view.GetExtents(extents) == plain.extents.has_value(), "GetExtents");
        Check((extents != nullptr) == plain.extents.has_value(), "extents");
        Check(!plain.extents || Same(extents, plain.extents->data(), 4), "numbers of the extents");
    }
    if (_input.Flag()) {
        plain.FindRectangle();
        const float* const rectangle = view.GetRectangle();
        Check((rectangle != nullptr) == plain.rectangle.has_value(), "GetRectangle");
        Check(rectangle == nullptr || Same(rectangle, plain.rectangle->data(), 15),
              "numbers of the rectangle");
        Check(view.GetRectangle() == rectangle, "a rectangle stays");
    }
}

/// A copy answers the same and goes its own way; so does a collection that it is assigned to.
void Model::CheckCopy() {
    OpenView copy(_view);
    PlainCollection plain = _plain;
    CheckCollection(copy, plain);
    OpenView assigned;
    assigned.AddMember(L"gone");
    const float box[6] = {1, 2, 3, 4, 5, 6};
    assigned.MergeExtrema(box);
    assigned = copy;
    assigned = *&assigned;
    CheckCollection(assigned, plain);
    copy.AddMember(L"new");
    copy.MergeExtrema(box);
    CheckCollection(_view, _plain);
}

void Model::Step() {
    switch (_input.Below(16)) {
        case 0:
        case 1:
        case 2:
            if (_pmis.size() < 32) {
                AddPMI();
            }
            break;
        case 3:
            if (PlainPMI* const plain = AnyPMI()) {
                AddPart(*plain);
                CheckPMI(*plain);
            }
            break;
        case 4:
            if (PlainPMI* const plain = AnyPMI()) {
                plain->links.assign(_input.Below(3), AnyName(_input));
                plain->mechanicalLinks.assign(_input.Below(3), L"M");
                plain->pmi->SetLinkedEntityIDs(plain->links);
                plain->pmi->SetLinkedEntityMechIDs(plain->mechanicalLinks);
            }
            break;
        case 5:
            AddRecord();
            break;
        case 6:
            AddGroup();
            break;
        case 7:
            Delete();
            break;
        case 8:
            _input.Below(8) == 0 ? Clear() : SetMatrix();
            break;
        case 9:
            Ask();
            ChangeRecord();
            break;
        case 10:
            Pick();
            break;
        case 11:
            ChangeMap();
            break;
        default:
            UseCollection();
            break;
    }
    if (_input.Below(4) == 0) {
        CheckContainer();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Model(input).Run();
    return 0;
}
