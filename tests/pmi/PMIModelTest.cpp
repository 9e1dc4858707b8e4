// Random operations on a PMI container and on collections, each checked against a small model that
// works out the answers by walking everything for everything.

#include "pmi/PMITestKit.h"

#include <KesVizCore/pmi/SemanticPMI.h>
#include <KesVizCore/pmi/VizPMICollection.h>
#include <KesVizCore/pmi/VizPMIContainer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::Box;
using support::Deaths;
using support::OpenCollection;
using support::Triple;

using Names = std::vector<std::wstring>;

/// Whole numbers at random, the same on every platform.
class Dice {
public:
    explicit Dice(unsigned seed) : _random(seed) {}
    /// 0 .. sides - 1.
    int Roll(int sides) { return static_cast<int>(_random() % static_cast<unsigned>(sides)); }
    bool OneIn(int sides) { return Roll(sides) == 0; }
    std::wstring NameOf(const Names& names) {
        return names[static_cast<std::size_t>(Roll(static_cast<int>(names.size())))];
    }

private:
    std::mt19937 _random;
};

// --- the container ------------------------------------------------------------------------------

struct ModelPMI {
    std::string tag;
    std::wstring mechId;
    std::wstring name;
    std::string typeName;
    VizPMI* real;
};

struct ModelRecord {
    std::wstring id;
    std::wstring name;
    std::wstring label;
    bool hasReferences;
    Names references;
    std::vector<EntityId> entities;
};

/// A container of indices into a register of all annotations that ever were.
struct ContainerModel {
    std::vector<ModelPMI> annotations;
    std::vector<std::size_t> list;
    std::vector<std::pair<std::wstring, std::size_t>> named;  // in no order, each id once
    std::vector<ModelRecord> records;
    std::vector<std::size_t> callers;  // refused or cleared: the test's to destroy
    Deaths deaths;

    int placeNamed(const std::wstring& id) const {
        for (std::size_t place = 0; place < named.size(); ++place) {
            if (named[place].first == id) {
                return static_cast<int>(place);
            }
        }
        return -1;
    }
    int placeOfRecord(const std::wstring& id) const {
        for (std::size_t place = 0; place < records.size(); ++place) {
            if (records[place].id == id) {
                return static_cast<int>(place);
            }
        }
        return -1;
    }
    const ModelPMI* annotation(const std::wstring& id) const {
        const int place = placeNamed(id);
        return place < 0 ? nullptr : &annotations[named[static_cast<std::size_t>(place)].second];
    }
    const ModelRecord* record(const std::wstring& id) const {
        const int place = placeOfRecord(id);
        return place < 0 ? nullptr : &records[static_cast<std::size_t>(place)];
    }

    void add(const ModelPMI& pmi) {
        annotations.push_back(pmi);
        const std::size_t index = annotations.size() - 1;
        const int place = placeNamed(pmi.mechId);
        if (place >= 0 && !pmi.mechId.empty()) {
            callers.push_back(index);
            return;
        }
        list.push_back(index);
        if (place >= 0) {
            named[static_cast<std::size_t>(place)].second = index;
        } else {
            named.emplace_back(pmi.mechId, index);
        }
    }
    /// Whether the record was taken.
    bool add(const ModelRecord& record) {
        if (placeOfRecord(record.id) >= 0) {
            return false;
        }
        records.push_back(record);
        return true;
    }
    bool remove(const std::wstring& id) {
        const int pmi = placeNamed(id);
        const int record = placeOfRecord(id);
        if (pmi >= 0) {
            const std::size_t index = named[static_cast<std::size_t>(pmi)].second;
            named.erase(named.begin() + pmi);
            list.erase(std::remove(list.begin(), list.end(), index), list.end());
            callers.erase(std::remove(callers.begin(), callers.end(), index), callers.end());
            deaths.push_back(annotations[index].tag);
        }
        if (record >= 0) {
            records.erase(records.begin() + record);
        }
        return pmi >= 0 || record >= 0;
    }
    void clear() {
        callers.insert(callers.end(), list.begin(), list.end());
        list.clear();
    }

    /// The display name, or "none".
    std::wstring displayName(const std::wstring& id) const {
        const ModelPMI* const pmi = annotation(id);
        const ModelRecord* const found = record(id);
        if (pmi == nullptr && found == nullptr) {
            return L"none";
        }
        Names candidates;
        if (found != nullptr) {
            candidates.push_back(found->name);
            candidates.push_back(found->label);
        }
        if (pmi != nullptr) {
            candidates.push_back(pmi->name);
            candidates.push_back(std::wstring(pmi->typeName.begin(), pmi->typeName.end()));
        }
        for (const std::wstring& candidate : candidates) {
            if (!candidate.empty()) {
                return candidate;
            }
        }
        return L"";
    }
};

/// The container and the model, side by side.
class ContainerRun {
public:
    explicit ContainerRun(unsigned seed) : _dice(seed) {}
    ~ContainerRun() {
        for (const std::size_t index : _model.callers) {
            delete _model.annotations[index].real;
        }
    }
    ContainerRun(const ContainerRun&) = delete;
    ContainerRun& operator=(const ContainerRun&) = delete;

    void Step() {
        switch (_dice.Roll(8)) {
            case 0:
            case 1:
            case 2:
                addPMI();
                break;
            case 3:
            case 4:
                addRecord();
                break;
            case 5:
            case 6: {
                const std::wstring id = anId();
                EXPECT_EQ(_container.DeletePMI(id), _model.remove(id));
                break;
            }
            default:
                if (_dice.OneIn(5)) {
                    _container.ClearPMIWithoutDeletingIt();
                    _model.clear();
                }
        }
        expectAlike();
    }

private:
    std::wstring anId() { return _dice.NameOf({L"", L"a", L"b", L"c", L"d"}); }
    std::wstring aText() { return _dice.NameOf({L"", L"", L"some", L"other"}); }

    void addPMI() {
        const std::string tag = std::to_string(_model.annotations.size());
        ModelPMI pmi{tag, anId(), aText(), _dice.OneIn(2) ? "type" : "", nullptr};
        const auto original = support::loadPMI({}, {0, pmi.typeName, 0});
        pmi.real = new support::Telling<VizPMI>(*original, tag, _deaths);
        pmi.real->SetMechanicalID(pmi.mechId);
        pmi.real->SetName(pmi.name);
        _container.AddVizPMI(pmi.real);
        _model.add(pmi);
    }
    void addRecord() {
        ModelRecord model{anId(), aText(), aText(), _dice.OneIn(2), {}, {}};
        auto record = std::make_unique<SemanticPMI>();
        record->Id = model.id;
        record->Name = model.name;
        record->Label = model.label;
        for (int link = _dice.Roll(3); link >= 0; --link) {
            model.references.push_back(aText());
        }
        if (model.hasReferences) {
            std::wstring& joined = record->Attributes[L"DatumRefDatas"];
            for (std::size_t link = 0; link < model.references.size(); ++link) {
                joined += (link != 0 ? L", " : L"") + model.references[link];
            }
        }
        for (int entity = _dice.Roll(3); entity > 0; --entity) {
            model.entities.emplace_back(0, FaceType, static_cast<std::uint64_t>(_dice.Roll(9)));
        }
        record->LinkedEntities = model.entities;
        _container.AddSemanticPMI(record.get());
        if (_model.add(model)) {
            record.release();
        }
    }

    void expectAlike() {
        std::vector<VizPMI*> list;
        for (const std::size_t index : _model.list) {
            list.push_back(_model.annotations[index].real);
        }
        EXPECT_EQ(_container.GetVizPMIs(), list);
        EXPECT_EQ(_container.GetVizPMIMap().size(), _model.named.size());
        EXPECT_EQ(_container.GetSemanticPMIs().size(), _model.records.size());
        EXPECT_EQ(_container.HasSemanticPMI(), !_model.records.empty());
        EXPECT_EQ(_container.IsEmpty(), _model.list.empty() && _model.records.empty());
        EXPECT_EQ(_deaths, _model.deaths);
        for (const wchar_t* id : {L"", L"a", L"b", L"c", L"d", L"e"}) {
            expectAlike(id);
        }
    }
    void expectAlike(const std::wstring& id) {
        const ModelPMI* const pmi = _model.annotation(id);
        EXPECT_EQ(_container.GetVizPMI(id), pmi != nullptr ? pmi->real : nullptr);
        std::wstring name = L"none";
        EXPECT_EQ(_container.GetDisplayName(id, name), _model.displayName(id) != L"none");
        EXPECT_EQ(name, _model.displayName(id));

        const ModelRecord* const record = _model.record(id);
        const bool linked = record != nullptr && record->hasReferences;
        Names links{L"before"};
        EXPECT_EQ(_container.GetPMILinks(id, links), linked);
        // cppcheck-suppress nullPointerRedundantCheck ; where it is null, linked is false
        EXPECT_EQ(links, linked ? record->references : Names{L"before"});
        std::vector<EntityId> entities;
        EXPECT_EQ(_container.GetBREPLinks(id, entities),
                  record != nullptr && !record->entities.empty());
        EXPECT_EQ(entities, record != nullptr ? record->entities : std::vector<EntityId>());
    }

    Dice _dice;
    Deaths _deaths;
    ContainerModel _model;
    VizPMIContainer _container{1};
};

TEST(PMIModelTest, ContainersAgreeWithTheModel) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        ContainerRun run(seed);
        for (int step = 0; step < 60; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            run.Step();
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

// --- collections --------------------------------------------------------------------------------

/// What the model knows of an element.
struct ModelElement {
    bool isNull = false;
    bool isPMI = false;
    std::wstring visualId;
    RenderId renderId;
    std::vector<std::array<double, 9>> corners;  // of edges with three points
    std::array<double, 6> box{};
};

/// Elements by entity number: the order of the map.
using Elements = std::map<std::uint64_t, ModelElement>;

struct IdsAnswer {
    bool result;
    bool hasArray;
    std::vector<RenderId> ids;
};

bool operator==(const IdsAnswer& one, const IdsAnswer& other) {
    return one.result == other.result && one.hasArray == other.hasArray && one.ids == other.ids;
}

/// For messages of the test framework.
void PrintTo(const IdsAnswer& answer, std::ostream* out) {
    *out << (answer.result ? "true" : "false") << (answer.hasArray ? "" : ", null");
    for (const RenderId& id : answer.ids) {
        *out << ' ' << id.ToString();
    }
}

/// The collection as the text of its answers has it: each name walks all elements.
struct CollectionModel {
    const Elements* elements;
    Names members;
    RenderId own;
    std::array<double, 3> origin{};
    std::array<double, 3> u{1, 0, 0};
    std::array<double, 3> v{0, 1, 0};
    bool oriented = false;
    bool hasExtrema = false;
    std::array<double, 6> extrema{};

    const ModelElement* first(const std::wstring& name, bool onlyPMI) const {
        for (const auto& entry : *elements) {
            const ModelElement& element = entry.second;
            if (!element.isNull && element.visualId == name && (element.isPMI || !onlyPMI)) {
                return &element;
            }
        }
        return nullptr;
    }
    IdsAnswer idsOf(const Names& names, bool withOwn) const {
        std::vector<RenderId> ids;
        for (const std::wstring& name : names) {
            const ModelElement* const element = first(name, false);
            if (element != nullptr && element->renderId.Length() > 0) {
                ids.push_back(element->renderId);
            }
        }
        if (!ids.empty() && withOwn && own.Length() > 0) {
            ids.push_back(own);
        }
        return {true, !ids.empty(), ids};
    }
    bool isMember(const std::wstring& visualId) const {
        return std::find(members.begin(), members.end(), visualId) != members.end();
    }
    IdsAnswer others() const {
        const int room = static_cast<int>(elements->size()) - static_cast<int>(members.size());
        if (room < 0) {
            return {false, false, {}};
        }
        std::vector<RenderId> ids;
        for (const auto& entry : *elements) {
            if (entry.second.isNull || isMember(entry.second.visualId)) {
                continue;
            }
            if (static_cast<int>(ids.size()) == room) {
                return {false, true, ids};
            }
            ids.push_back(entry.second.renderId);
        }
        return {true, true, ids};
    }

    void merge(const std::array<double, 6>& box) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const bool fresh = !hasExtrema;
            extrema[axis] = fresh ? box[axis] : std::min(extrema[axis], box[axis]);
            extrema[axis + 3] = fresh ? box[axis + 3] : std::max(extrema[axis + 3], box[axis + 3]);
        }
        hasExtrema = true;
    }
    void mergeAboutOrigin(double half) {
        merge({origin[0] - half, origin[1] - half, origin[2] - half, origin[0] + half,
               origin[1] + half, origin[2] + half});
    }
    void fabricate(const ModelElement& pmi) {
        using Vector = std::array<double, 3>;
        const auto cross = [](const Vector& a, const Vector& b) {
            return Vector{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
                          a[0] * b[1] - a[1] * b[0]};
        };
        const auto unit = [](const Vector& a) {
            const double length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
            return Vector{a[0] / length, a[1] / length, a[2] / length};
        };
        for (const auto& p : pmi.corners) {
            const Vector a{p[0] - p[3], p[1] - p[4], p[2] - p[5]};
            const Vector n = cross(a, {p[6] - p[3], p[7] - p[4], p[8] - p[5]});
            if (n == Vector{0, 0, 0}) {
                continue;  // coordinates are whole: without a normal a side is null, or both align
            }
            u = unit(a);
            v = cross(u, unit(n));
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const std::size_t next = (axis + 1) % 3;
                const std::size_t last = (axis + 2) % 3;
                if (n[next] == 0 && n[last] == 0) {
                    u = v = Vector{0, 0, 0};
                    u[next] = v[last] = 1;
                }
            }
            origin = {p[0], p[1], p[2]};
            oriented = true;
            return;
        }
    }
    void accumulate() {
        const bool orientedBefore = oriented;
        for (const std::wstring& name : members) {
            const ModelElement* const pmi = first(name, true);
            if (pmi == nullptr) {
                continue;
            }
            merge(pmi->box);
            if (!oriented) {
                fabricate(*pmi);
            }
        }
        if (!members.empty() && hasExtrema) {
            mergeAboutOrigin(0);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const double missing = 10 - std::fabs(extrema[axis + 3] - extrema[axis]);
                extrema[axis] -= std::max(0.0, missing / 2);
                extrema[axis + 3] += std::max(0.0, missing / 2);
            }
        } else if (!hasExtrema) {
            mergeAboutOrigin(10);
        } else {
            return;
        }
        for (std::size_t axis = 0; axis < 3 && !orientedBefore; ++axis) {
            origin[axis] = (extrema[axis] + extrema[axis + 3]) / 2;
        }
    }
};

/// Elements, a collection of some of them, and the model of both.
class CollectionRun {
public:
    explicit CollectionRun(unsigned seed) : _dice(seed) {
        for (int element = _dice.Roll(12); element > 0; --element) {
            addElement();
        }
        _model.elements = &_elements;
        _collection.SetEntityMap(_map.Map());
        if (_dice.OneIn(2)) {
            _model.own = anId();
            _collection.Set3DRenderID(_model.own);
        }
        if (_dice.OneIn(3)) {
            _model.origin = {3, -4, 5};
            _model.u = {0, 0, 1};
            _model.v = {1, 0, 0};
            _model.oriented = true;
            _collection.SetFrame({3, -4, 5}, {0, 0, 1}, {1, 0, 0});
        }
    }

    void Step() {
        switch (_dice.Roll(4)) {
            case 0:
                addElement();
                break;
            case 1:
            case 2: {
                const std::wstring name = aName();
                _collection.AddMember(name);
                _model.members.push_back(name);
                break;
            }
            default:
                EXPECT_TRUE(_collection.AccumulatePMIExtrema());
                _model.accumulate();
        }
        expectAlike();
    }

private:
    std::wstring aName() { return _dice.NameOf({L"", L"a", L"b", L"c", L"d", L"e", L"f"}); }
    RenderId anId() {
        RenderId id({}, _dice.OneIn(2) ? View3D : ViewTree);
        for (int value = _dice.Roll(3); value > 0; --value) {
            id.AddValue(static_cast<std::uint64_t>(_dice.Roll(100)));
        }
        return id;
    }
    float aCoordinate() { return static_cast<float>(_dice.Roll(9) - 4); }

    void addElement() {
        const auto number = static_cast<std::uint64_t>(_dice.Roll(40));
        ModelElement element;
        if (_dice.OneIn(6)) {
            element.isNull = true;
            _map.AddNull(number);
        } else {
            element.visualId = aName();
            element.renderId = anId();
            element.isPMI = _dice.OneIn(2);
            if (element.isPMI) {
                addAnnotation(number, element);
            } else {
                _map.AddMesh(number, element.visualId, element.renderId);
            }
        }
        _elements[number] = element;
    }
    void addAnnotation(std::uint64_t number, ModelElement& element) {
        VizPMI& pmi = _map.Add(number, support::loadPMI());
        pmi.SetVisualID(element.visualId);
        pmi.Set3DRenderID(element.renderId);
        for (int edge = _dice.Roll(3); edge >= 0; --edge) {
            std::vector<float> points;
            for (int value = 3 * (2 + _dice.Roll(2)); value > 0; --value) {
                points.push_back(aCoordinate());
            }
            if (points.size() == 9) {
                element.corners.emplace_back();
                std::copy(points.begin(), points.end(), element.corners.back().begin());
            }
            pmi.AddEdge(support::edgeThrough(points).release());
        }
        const Box box = support::extremaOf(pmi);
        std::copy(box.begin(), box.end(), element.box.begin());
    }

    template <typename Ask>
    static IdsAnswer answerOf(Ask ask) {
        RenderId* out = nullptr;
        int count = -1;
        IdsAnswer answer{ask(out, count), out != nullptr, {}};
        answer.ids.assign(out, out + count);
        RenderId::DeleteRenderIdArr(out);
        return answer;
    }
    void expectAlike() {
        for (const bool withOwn : {false, true}) {
            EXPECT_EQ(answerOf([&](RenderId*& out, int& count) {
                          return _collection.GetMemberRenderIds(out, count, withOwn);
                      }),
                      _model.idsOf(_model.members, withOwn));
        }
        EXPECT_EQ(answerOf([&](RenderId*& out, int& count) {
                      return _collection.GetNonmemberRenderIds(out, count);
                  }),
                  _model.others());
        const Names names{aName(), aName(), aName()};
        EXPECT_EQ(answerOf([&](RenderId*& out, int& count) {
                      return _collection.GetRenderIdsFromList(out, count, names);
                  }),
                  _model.idsOf(names, false));
        for (const auto& entry : *_map.Map()) {
            if (entry.second != nullptr) {
                EXPECT_EQ(_collection.IsMember(*entry.second),
                          _model.isMember(entry.second->GetVisualID()));
            }
        }
        expectSameFrame();
    }
    void expectSameFrame() {
        EXPECT_EQ(_collection.IsViewOriented(), _model.oriented);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(double{_collection.Origin()[axis]}, _model.origin[axis]);
            EXPECT_NEAR(_collection.U()[axis], _model.u[axis], 1e-6);
            EXPECT_NEAR(_collection.V()[axis], _model.v[axis], 1e-6);
        }
        Box extrema{};
        std::transform(_model.extrema.begin(), _model.extrema.end(), extrema.begin(),
                       [](double value) { return static_cast<float>(value); });
        EXPECT_EQ(support::grownExtremaOf(_collection),
                  _model.hasExtrema ? support::grown(extrema) : std::vector<float>());
    }

    Dice _dice;
    support::Model _map;
    Elements _elements;
    OpenCollection _collection;
    CollectionModel _model;
};

// Whole coordinates keep the model's doubles and the collection's floats equal to the last bit.
TEST(PMIModelTest, CollectionsAgreeWithTheModel) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        CollectionRun run(seed);
        for (int step = 0; step < 15; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            run.Step();
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

}  // namespace
}  // namespace KesVizCore
