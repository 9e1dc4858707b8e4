// Data models and annotations loaded and asked, with every allocation failing in turn.

#include "session/Session.h"
#include "session/SessionHost.h"
#include "support/TestLoaders.h"

#include <KesVizCore/KesVizCore.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace KesVizCore {
namespace {

using support::failEveryAllocation;
using support::recordFailures;

/// Longer than any text that a string keeps in itself.
const std::wstring kLong(40, L'x');

std::wstring longName(wchar_t first) {
    return first + kLong;
}

RenderId pathOf(const std::vector<std::uint64_t>& ids) {
    return RenderId(ids, View3D);
}

/// Hands @p element over by @p add, and destroys it where that throws. An element that could not
/// be made is the host's own failure.
template <typename Element, typename Add>
bool give(std::unique_ptr<Element> element, const Add& add) {
    if (element == nullptr) {
        throw std::bad_alloc();
    }
    add(element.get());
    static_cast<void>(element.release());
    return true;
}

const std::vector<float> kCorner{0, 0, 0, 4, 0, 0, 4, 3, 0};
const std::vector<int> kIndices{0, 1, 2};

/// What every kind of element is given; @p id also names it in its path.
void fillElement(VizElement& element, wchar_t name, std::uint64_t id) {
    element.SetVisualID(longName(name));
    element.SetColor(RGBAColor::Red());
    element.SetEntityID(EntityId(1, FaceType, id));
    element.Set3DRenderID(pathOf({1, 2, id}));
    element.SetTreeRenderID(pathOf({7, id}));
}

std::unique_ptr<VizEdge> newEdge(wchar_t name, std::uint64_t id) {
    return support::loadEdge([=](VizEdge& edge) {
        fillElement(edge, name, id);
        edge.SetVertices(kCorner);
        support::EdgeLoader::setIndices(edge, kIndices);
        edge.SetMechanicalID(longName(name));
    });
}

std::unique_ptr<VizFace> newFace(wchar_t name, std::uint64_t id) {
    return support::loadFace([=](VizFace& face) {
        fillElement(face, name, id);
        face.SetVertices(3, kCorner.data());
        face.SetNormals(3, kCorner.data());
        face.SetMechanicalID(longName(name));
        give(support::loadPolygon(
                 [](VizPolygon& polygon) { polygon.SetIndices(3, kIndices.data()); }),
             [&](VizPolygon* polygon) { face.AddPolygon(polygon); });
    });
}

std::string narrow(const std::wstring& text) {
    return Utils::WstringToString(text);
}

/// All that fillElement sets, and the numbers of coordinates and the like in @p counts.
std::string describe(const VizElement& element, const std::vector<std::size_t>& counts = {}) {
    RenderId in3D;
    RenderId inTree;
    element.Get3DRenderID(in3D);
    element.GetTreeRenderID(inTree);
    std::string text = element.GetElementType() + " " + narrow(element.GetVisualID()) + " " +
                       in3D.ToString() + " " + inTree.ToString();
    for (const std::size_t count : counts) {
        text += " " + std::to_string(count);
    }
    return text + "\n";
}

std::string describe(const VizEdge& edge) {
    return describe(static_cast<const VizElement&>(edge),
                    {edge.GetVertices().size(), edge.GetIndices().size()});
}

std::string describe(const VizMesh& mesh) {
    std::string text = describe(static_cast<const VizElement&>(mesh));
    for (const VizFace* face : mesh.GetFaces()) {
        text += describe(*face, {face->GetVertices().size(), face->GetNormals().size(),
                                 face->GetPolygons().size()});
    }
    for (const VizEdge* edge : mesh.GetEdges()) {
        text += describe(*edge);
    }
    return text;
}

// --- geometry -----------------------------------------------------------------------------------

/// Loads a mesh, a wire and a set of points into a container, and picks in it.
class GeometrySession : public support::Session {
public:
    GeometrySession() {
        addMesh();
        addOthers();
        addQuestions();
    }
    std::string State() override {
        std::string text;
        for (const VizMesh* mesh : container.GetMeshes()) {
            text += describe(*mesh);
        }
        for (const VizWire* wire : container.GetWires()) {
            text += describe(*wire, {wire->GetEdges().size()});
        }
        for (const VizPointSet* set : container.GetPointSets()) {
            text += describe(*set, {set->GetPointSets().size()});
        }
        return text + std::to_string(elements.size()) + " named, " +
               std::to_string(mechanicalIds.size()) + " with mechanical ids, picked " +
               (picked != nullptr ? narrow(picked->GetVisualID()) : "nothing");
    }

private:
    VizMesh& mesh() { return *container.GetMeshes().front(); }

    void addMesh() {
        add("SetMeshCountHint", [this] { return container.SetMeshCountHint(8), true; });
        add("AddMesh", [this] {
            return give(support::loadMesh([](VizMesh& made) { fillElement(made, L'm', 3); }),
                        [this](VizMesh* made) { container.AddMesh(made); });
        });
        for (std::uint64_t id = 10; id < 13; ++id) {
            const auto name = static_cast<wchar_t>(L'a' + (id - 10));
            add("AddFace", [=] {
                return give(newFace(name, id), [=](VizFace* face) { mesh().AddFace(face); });
            });
            add("AddEdge", [=] {
                return give(newEdge(static_cast<wchar_t>(name + 10), id),
                            [=](VizEdge* edge) { mesh().AddEdge(edge); });
            });
        }
        add("SetVisualID", [this] { return mesh().SetVisualID(L"M" + kLong + kLong), true; });
        add("SetMechanicalID", [this] { return mesh().SetMechanicalID(kLong), true; });
        add("SetVertices once more",
            [this] { return mesh().GetEdges()[0]->SetVertices(kCorner), true; });
    }
    void addOthers() {
        add("AddWire", [this] {
            return give(support::loadWire([](VizWire& wire) {
                            fillElement(wire, L'w', 20);
                            give(newEdge(L'v', 21), [&](VizEdge* edge) { wire.AddEdge(edge); });
                        }),
                        [this](VizWire* wire) { container.AddWire(wire); });
        });
        add("AddPointSet", [this] {
            return give(support::loadPointSet([](VizPointSet& set) {
                            fillElement(set, L'p', 30);
                            give(support::loadPoints(
                                     [](VizPoints& points) { points.SetVertices(kCorner); }),
                                 [&](VizPoints* points) { set.AddPoints(points); });
                        }),
                        [this](VizPointSet* set) { container.AddPointSet(set); });
        });
    }
    void addQuestions() {
        addBegun("FillVisuIdMap", [this] { return mesh().FillVisuIdMap(elements), true; });
        addBegun("FillVisuIdMap of mechanical ids",
                 [this] { return mesh().FillVisuIdMap(mechanicalIds), true; });
        add("PickVisual", [this] {
            scene.adapter.picked = pathOf({1, 2, 20, 21});
            return container.PickVisual(&scene.adapter, Ray(), picked);
        });
    }

    VizContainer container{1};
    std::map<std::wstring, VizElement*> elements;
    std::map<std::wstring, std::wstring> mechanicalIds;
    support::SessionScene scene;
    VizElement* picked = nullptr;
};

TEST(ModelSessionTest, LoadingGeometryGoesOnFromEveryAllocationThatFailed) {
    recordFailures(failEveryAllocation([] { return std::make_unique<GeometrySession>(); }));
}

// --- annotations --------------------------------------------------------------------------------

std::unique_ptr<VizPMI> newAnnotation(wchar_t name, std::uint64_t id) {
    const VizPMIType type{1, std::string(40, 't'), 2};
    return support::loadPMI(type, type, [=](VizPMI& pmi) {
        fillElement(pmi, name, id);
        pmi.SetMechanicalID(longName(name));
        pmi.SetName(longName(name));
        pmi.SetLinkedEntityIDs({kLong, kLong});
        pmi.SetLinkedEntityMechIDs({kLong, kLong});
    });
}

std::unique_ptr<SemanticPMI> newRecord(wchar_t name) {
    auto record = std::make_unique<SemanticPMI>();
    record->Id = longName(name);
    record->Name = kLong;
    record->Attributes[L"Value"] = kLong;
    record->Attributes[L"DatumRefDatas"] = kLong + L", " + kLong;
    record->LinkedEntities.emplace_back(1, FaceType, 2);
    return record;
}

/// Fills a container of annotations, a view of them and a capture, and asks them everything.
class AnnotationSession : public support::Session {
public:
    AnnotationSession() {
        addAnnotations();
        addViews();
        addQuestions();
        addRenderIds();
        addEdits();
    }
    std::string State() override {
        std::string text;
        for (const VizPMI* pmi : container.GetVizPMIs()) {
            text += describe(*pmi, {pmi->GetEdges().size(), pmi->GetTexts().size()}) +
                    narrow(pmi->ToString());
            for (int place = 0; place < 6; ++place) {
                text += std::to_string(pmi->GetExtrema()[place]) + " ";
            }
        }
        for (const auto& entry : container.GetVizPMIMap()) {
            text += "\nunder " + narrow(entry.first);
        }
        for (const auto& entry : container.GetSemanticPMIs()) {
            text += "\nmeaning " + narrow(entry.second->ToString());
        }
        for (VizView* view : container.GetViews()) {
            text += narrow(view->GetViewAsString()) + members(*view);
        }
        for (const VizCapture* capture : container.GetCaptures()) {
            text += narrow(capture->GetCaptureAsString()) + narrow(capture->GetHiddenText());
        }
        return text + std::to_string(elements.size()) + " elements\n" + answers;
    }

private:
    /// The names in the list of a view, and for each annotation whether it is one of them.
    std::string members(const VizView& view) {
        std::string text;
        for (const std::wstring& name : view.GetMemberList()) {
            text += "member " + narrow(name) + "\n";
        }
        for (const VizPMI* pmi : container.GetVizPMIs()) {
            text += view.IsMember(*pmi) ? "is a member\n" : "is none\n";
        }
        return text;
    }
    VizView& view() { return *container.GetViews().front(); }
    VizPMI& annotation(std::size_t place) { return *container.GetVizPMIs()[place]; }
    bool note(const std::string& answer) {
        answers += answer + "\n";
        return true;
    }

    void addAnnotations() {
        for (std::uint64_t id = 0; id < 5; ++id) {
            const auto name = static_cast<wchar_t>(L'a' + id);
            add("AddVizPMI", [=] {
                return give(newAnnotation(name, 40 + id),
                            [=](VizPMI* pmi) { container.AddVizPMI(pmi); });
            });
            add("AddEdge", [=] {
                return give(newEdge(L'e', 50 + id),
                            [=](VizEdge* edge) { annotation(id).AddEdge(edge); });
            });
            add("AddText", [=] {
                return give(support::loadText([](VizText& text) {
                                const float anchor[3] = {9, 9, 9};
                                text.SetAnchorPoint(anchor);
                                text.SetText(kLong);
                                text.SetFontName(kLong);
                            }),
                            [=](VizText* text) { annotation(id).AddText(text); });
            });
            add("AddSemanticPMI", [=] {
                return give(newRecord(name),
                            [=](SemanticPMI* record) { container.AddSemanticPMI(record); });
            });
        }
        add("AddVizMarkCGMesh", [this] {
            return give(support::loadMesh(),
                        [this](VizMesh* mesh) { container.AddVizMarkCGMesh(mesh); });
        });
    }
    void addViews() {
        add("AddView", [this] {
            return give(support::loadView([](VizView& made) { made.SetName(kLong); }),
                        [this](VizView* made) { container.AddView(made); });
        });
        add("AddCapture", [this] {
            return give(support::loadCapture([](VizCapture& made) { made.SetHiddenText(kLong); }),
                        [this](VizCapture* made) { container.AddCapture(made); });
        });
        for (const wchar_t name : {L'a', L'b', L'c'}) {
            add("AddMember", [=] { return view().AddMember(longName(name)), true; });
        }
        add("Set3DRenderID", [this] { return view().Set3DRenderID(pathOf({1, 2, 99})), true; });
        addBegun("the map of elements", [this] {
            std::uint64_t id = 0;
            for (const VizPMI* pmi : container.GetVizPMIs()) {
                elements[EntityId(0, DimensionType, ++id)] = pmi;
            }
            view().SetEntityMap(&elements);
            return true;
        });
    }
    void addQuestions() {
        add("GetSemanticPMIAsString", [this] {
            std::wstring text;
            return container.GetSemanticPMIAsString(longName(L'a'), text) && note(narrow(text));
        });
        add("GetDisplayName", [this] {
            std::wstring text;
            return container.GetDisplayName(longName(L'b'), text) && note(narrow(text));
        });
        add("GetBREPLinks and GetPMILinks", [this] {
            std::vector<EntityId> entities;
            std::vector<std::wstring> links;
            return container.GetBREPLinks(longName(L'c'), entities) &&
                   container.GetPMILinks(longName(L'c'), links) &&
                   note(std::to_string(entities.size() + links.size()));
        });
        add("PickVisual", [this] {
            scene.adapter.picked = pathOf({1, 2, 42});
            VizElement* picked = nullptr;
            return container.PickVisual(&scene.adapter, Ray(), picked) &&
                   note(narrow(picked->GetVisualID()));
        });
        add("texts of views and captures", [this] {
            return note(narrow(view().GetViewAsString()) +
                        narrow(container.GetCaptures()[0]->GetCaptureAsString()));
        });
    }
    /// Render ids are the caller's also where noting them fails.
    bool noteIds(bool answered, RenderId* ids, int count) {
        struct Owner {
            ~Owner() { RenderId::DeleteRenderIdArr(owned); }
            RenderId* owned;
        } const owner{ids};
        std::string text;
        for (int place = 0; answered && place < count; ++place) {
            text += ids[place].ToString();
        }
        return answered && note(text);
    }
    void addRenderIds() {
        add("GetMemberRenderIds", [this] {
            RenderId* ids = nullptr;
            int count = 0;
            const bool answered = view().GetMemberRenderIds(ids, count, true);
            return noteIds(answered, ids, count);
        });
        add("GetNonmemberRenderIds", [this] {
            RenderId* ids = nullptr;
            int count = 0;
            const bool answered = view().GetNonmemberRenderIds(ids, count);
            return noteIds(answered, ids, count);
        });
        addUntold("AccumulatePMIExtrema of a copy", [this] {
            framed = std::make_unique<VizView>(view());
            const float origin[3] = {0, 0, 0};
            const float u[3] = {1, 0, 0};
            const float v[3] = {0, 1, 0};
            framed->SetPlane(origin, u, v);
            return framed->AccumulatePMIExtrema();
        });
        add("GetRectangle", [this] {
            const float* const rectangle = framed->GetRectangle();
            return rectangle != nullptr && note(std::to_string(rectangle[6]));
        });
    }
    void addEdits() {
        add("SetMatrix", [this] {
            container.SetMatrix(static_cast<const double*>(nullptr), 0);
            return container.GetMatrix() != nullptr;
        });
        add("DeletePMI", [this] {
            return container.GetVizPMIs().size() == 5 && container.DeletePMI(longName(L'd'));
        });
    }

    VizPMIContainer container{1};
    VizPMICollection::EntityMap elements;
    std::unique_ptr<VizView> framed;
    support::SessionScene scene;
    std::string answers;
};

TEST(ModelSessionTest, AnnotationsGoOnFromEveryAllocationThatFailed) {
    recordFailures(failEveryAllocation([] { return std::make_unique<AnnotationSession>(); }));
}

}  // namespace
}  // namespace KesVizCore
