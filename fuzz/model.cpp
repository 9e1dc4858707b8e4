/// @file
/// Elements, their loaders and geometry containers beside plain structs that hold the same: what
/// is set is answered, transforms move it, owners destroy it once, and picks find it.

#include "Elements.h"
#include "Input.h"
#include "MathReference.h"
#include "Numbers.h"
#include "PickingAdapter.h"

#include <KesVizCore/KesVizCore.h>

#include <algorithm>
#include <cwchar>
#include <map>
#include <memory>
#include <stdexcept>
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

using Floats = std::vector<float>;
using Elements = std::vector<VizElement*>;

/// Everything that an element of any kind answers.
struct Plain {
    std::string type;
    std::uint64_t id = 0;
    std::wstring visualId;
    bool hasColor = false;
    RGBAColor color;
    bool hidden = false;
    bool hiddenSet = false;
    EntityId entity;
    RenderId paths[2];  ///< in the 3D scene, in the tree

    std::wstring mechanicalId;
    Floats vertices;
    Floats normals;  ///< of a face
    float extrema[6] = {};
    std::vector<int> indices;
    int kind = 0;          ///< of line, polygon or camera
    Elements children[2];  ///< polygons or loops; faces and edges; edges; point lists
    bool owns = false;     ///< destroys its children

    Floats triples = Floats(9);  ///< of a text: anchor, direction, normal
    std::wstring text;
    std::wstring font;
    FontAttr attributes;

    Floats frame = {0, 0, 0, 1, 0, 0, 0, 1, 0};  ///< of a view or capture: origin, U, V
    bool oriented = false;
    bool collectionFlags[2] = {};                              ///< hidden, active
    std::wstring collectionTexts[3] = {L"unnamed", L"", L""};  ///< name, visual, mechanical id
    Floats eye = Floats(3);
    Floats clipping = {0, 0, 0, 0, 0, 0, 0, 1, 0};
    bool clippingSet = false;
    bool orientationSet = false;
    float angle = 13.5F;
    float zoom = 1.0F;
    std::wstring hiddenText;
};

void CheckSame(const Floats& answered, const Floats& expected, const char* what) {
    Check(answered.size() == expected.size() &&
              Same(answered.data(), expected.data(), answered.size()),
          what);
}

template <typename Child>
Elements Widened(const std::vector<Child*>& children) {
    return Elements(children.begin(), children.end());
}

// --- texts of views and captures ----------------------------------------------------------------

/// The value in a buffer of 64 characters behind its label; nothing where it does not fit.
template <typename... Values>
std::wstring ValueLine(const wchar_t* label, const wchar_t* format, Values... values) {
    wchar_t buffer[64];
    const int length = std::swprintf(buffer, 64, format, values...);
    return length > 0 ? label + std::wstring(buffer) + L"\n" : std::wstring();
}

std::wstring TripleLine(const wchar_t* label, const float* triple) {
    return ValueLine(label, L"(%2.2f, %2.2f, %2.2f)", double{triple[0]}, double{triple[1]},
                     double{triple[2]});
}

std::wstring CollectionLines(const Plain& plain) {
    return L"Name: " + plain.collectionTexts[0] + L"\nVisualID : " + plain.collectionTexts[1] +
           L"\nMechID : " + plain.collectionTexts[2] + L"\n";
}

const wchar_t* YesOrNo(bool flag) {
    return flag ? L"YES\n" : L"NO\n";
}

std::wstring ViewText(const Plain& plain) {
    return CollectionLines(plain) + L"Hidden : " + YesOrNo(plain.collectionFlags[0]) +
           TripleLine(L"Origin = ", plain.frame.data()) +
           TripleLine(L"U = ", plain.frame.data() + 3) +
           TripleLine(L"V = ", plain.frame.data() + 6);
}

std::wstring CaptureText(const Plain& plain) {
    std::wstring text = CollectionLines(plain) + L"Active : " + YesOrNo(plain.collectionFlags[1]) +
                        L"Hidden : " + YesOrNo(plain.collectionFlags[0]) + L"Camera Type: ";
    text += plain.kind == 1   ? L"Perspective\n"
            : plain.kind == 2 ? L"Orthographic\n"
                              : L"Undefined\n";
    if (plain.kind != 0) {
        text += ValueLine(L"View Angle = ", L"%f", double{plain.angle}) +
                ValueLine(L"Zoom Factor = ", L"%f", double{plain.zoom}) +
                TripleLine(L"Eye = ", plain.eye.data()) +
                TripleLine(L"Target = ", plain.frame.data()) +
                TripleLine(L"Up = ", plain.frame.data() + 6);
    }
    if (plain.clippingSet) {
        text += L"Clipping Plane:\n" + TripleLine(L"Origin = ", plain.clipping.data()) +
                TripleLine(L"U = ", plain.clipping.data() + 3) +
                TripleLine(L"V = ", plain.clipping.data() + 6);
    }
    return text;
}

// --- what an element must answer ----------------------------------------------------------------

void CheckKind(const VizEdge& edge, const Plain& plain) {
    float extrema[6];
    edge.GetExtrema(extrema);
    CheckSame(edge.GetVertices(), plain.vertices, "vertices of an edge");
    CheckSame(extrema, plain.extrema, 6, "extrema of an edge");
    Check(edge.GetIndices() == plain.indices, "indices of an edge");
    Check(edge.GetLineType() == plain.kind, "line type");
    Check(edge.GetMechanicalID() == plain.mechanicalId, "mechanical id of an edge");
}

void CheckKind(const VizPoints& points, const Plain& plain) {
    float extrema[6];
    points.GetExtrema(extrema);
    CheckSame(points.GetVertices(), plain.vertices, "vertices of points");
    CheckSame(extrema, plain.extrema, 6, "extrema of points");
    Check(points.GetIndices() == plain.indices, "indices of points");
}

void CheckKind(const VizFace& face, const Plain& plain) {
    CheckSame(face.GetVertices(), plain.vertices, "vertices of a face");
    CheckSame(face.GetNormals(), plain.normals, "normals of a face");
    Check(Widened(face.GetPolygons()) == plain.children[0], "polygons of a face");
    Check(face.GetMechanicalID() == plain.mechanicalId, "mechanical id of a face");
}

void CheckKind(const VizPolygon& polygon, const Plain& plain) {
    Check(polygon.GetIndices() == plain.indices, "indices of a polygon");
    Check(Widened(polygon.GetPolygonLoopList()) == plain.children[0], "loops of a polygon");
    Check(polygon.GetPolygonType() == plain.kind, "type of a polygon");
}

void CheckKind(const VizPolygonLoop& loop, const Plain& plain) {
    Check(Widened(loop.GetEdges()) == plain.children[0], "edges of a loop");
}

void CheckKind(const VizWire& wire, const Plain& plain) {
    Check(Widened(wire.GetEdges()) == plain.children[0], "edges of a wire");
}

void CheckKind(const VizPointSet& set, const Plain& plain) {
    Check(Widened(set.GetPointSets()) == plain.children[0], "points of a set");
}

void CheckKind(const VizMesh& mesh, const Plain& plain) {
    Check(Widened(mesh.GetFaces()) == plain.children[0], "faces of a mesh");
    Check(Widened(mesh.GetEdges()) == plain.children[1], "edges of a mesh");
    Check(mesh.GetMechanicalID() == plain.mechanicalId, "mechanical id of a mesh");
}

void CheckKind(const VizText& text, const Plain& plain) {
    CheckSame(text.GetAnchorPoint(), plain.triples.data(), 3, "anchor of a text");
    CheckSame(text.GetDirection(), plain.triples.data() + 3, 3, "direction of a text");
    CheckSame(text.GetNormal(), plain.triples.data() + 6, 3, "normal of a text");
    Check(text.GetText() == plain.text && text.GetFontName() == plain.font, "text and font");
    const FontAttr& expected = plain.attributes;
    const FontAttr answered = text.GetFontAttrs();
    Check(Same(answered.FontSize, expected.FontSize) &&
              Same(text.GetFontSize(), expected.FontSize) &&
              Same(text.GetSpacingFactor(), expected.SpacingFactor) &&
              Same(text.GetWidthScaling(), expected.WidthScaling),
          "font of a text");
}

void CheckCollection(const VizPMICollection& collection, const Plain& plain) {
    Check(collection.GetName() == plain.collectionTexts[0] &&
              collection.GetVisualID() == plain.collectionTexts[1] &&
              collection.GetMechanicalID() == plain.collectionTexts[2],
          "texts of a collection");
    Check(collection.GetHidden() == plain.collectionFlags[0] &&
              collection.GetActive() == plain.collectionFlags[1],
          "flags of a collection");
    Check(collection.IsViewOriented() == plain.oriented, "a collection is oriented");
}

void CheckKind(const VizView& view, const Plain& plain) {
    CheckCollection(view, plain);
    float copied[9];
    const float* handed[3];
    Check(view.GetPlane(copied, copied + 3, copied + 6) == plain.oriented, "GetPlane");
    Check(view.GetPlane(handed[0], handed[1], handed[2]) == plain.oriented, "GetPlane by pointer");
    CheckSame(copied, plain.frame.data(), 9, "plane of a view");
    for (std::size_t i = 0; i < 3; ++i) {
        CheckSame(handed[i], plain.frame.data() + 3 * i, 3, "plane of a view by pointer");
    }
    Check(view.GetViewAsString() == ViewText(plain), "text of a view");
}

void CheckKind(const VizCapture& capture, const Plain& plain) {
    CheckCollection(capture, plain);
    float eye[3];
    float target[3];
    float up[3];
    float clipping[9];
    Check(capture.GetOrientation(eye, target, up) == plain.orientationSet, "GetOrientation");
    CheckSame(eye, plain.eye.data(), 3, "eye of a capture");
    CheckSame(target, plain.frame.data(), 3, "target of a capture");
    CheckSame(up, plain.frame.data() + 6, 3, "up of a capture");
    Check(capture.GetClippingPlane(clipping, clipping + 3, clipping + 6) == plain.clippingSet,
          "GetClippingPlane");
    CheckSame(clipping, plain.clipping.data(), 9, "clipping plane of a capture");
    Check(capture.GetCameraType() == plain.kind, "camera type");
    Check(Same(capture.GetPerspectiveViewAngle(), plain.angle) &&
              Same(capture.GetOrthographicZoomFactor(), plain.zoom),
          "angle and zoom of a capture");
    Check(capture.GetHiddenText() == plain.hiddenText, "hidden text of a capture");
    Check(capture.GetCaptureAsString() == CaptureText(plain), "text of a capture");
}

void CheckBase(const VizElement& element, const Plain& plain) {
    Check(element.GetElementType() == plain.type, "type of an element");
    Check(element.GetID() == plain.id, "id of an element");
    Check(element.GetVisualID() == plain.visualId, "visual id of an element");
    Check(element.HasColor() == plain.hasColor && element.GetColor() == plain.color, "color");
    bool hidden = !plain.hidden;
    Check(element.GetHidden(hidden) == plain.hiddenSet && hidden == plain.hidden, "hidden");
    EntityId entity(1, BodyType, 2);
    Check(element.GetEntityID(entity) == (plain.entity.Type != InvalidType), "has an entity");
    Check(entity == plain.entity, "entity of an element");
    RenderId path;
    Check(element.Get3DRenderID(path) == (plain.paths[0].Length() > 0), "has a 3D render id");
    Check(path == plain.paths[0], "3D render id");
    Check(element.GetTreeRenderID(path) == (plain.paths[1].Length() > 0), "has a tree render id");
    Check(path == plain.paths[1], "tree render id");
}

// --- a model and what is done to it -------------------------------------------------------------

/// An element whose kind is known when it is made, and what can be done to any kind.
struct Entry {
    std::unique_ptr<Plain> plain;
    VizElement* element = nullptr;
    void (*check)(const VizElement&, const Plain&) = nullptr;
    void (*destroy)(VizElement*) = nullptr;
    void (*copyCheck)(const VizElement&, const Plain&) = nullptr;
    bool loose = true;  ///< nobody owns it but the target
};

template <typename Element>
void CheckAny(const VizElement& element, const Plain& plain) {
    CheckBase(element, plain);
    CheckKind(static_cast<const Element&>(element), plain);
}

template <typename Element>
void Destroy(VizElement* element) {
    delete static_cast<Element*>(element);
}

/// A copy and an assigned element answer the same.
template <typename Element>
void CheckCopy(const VizElement& element, const Plain& plain) {
    Element copy(static_cast<const Element&>(element));
    CheckAny<Element>(copy, plain);
    const Element twice(copy);
    copy = twice;
    copy = *&copy;
    CheckAny<Element>(copy, plain);
}

/// A container beside its six lists.
struct Container {
    VizContainer* container = nullptr;
    int refId = 0;
    float scale = 1.0F;
    Elements lists[6];
};

int lastId = 0;  // of the whole process, as the library's own

constexpr std::size_t mostElements = 64;
constexpr unsigned firstMesh = 5;  // the number of this kind for Load; then wires and point sets

class Model {
public:
    explicit Model(Input& input) : _input(input), _numbers(input) {}

    void Run() {
        while (!_input.IsAtEnd()) {
            Step();
        }
        for (const Entry& entry : _entries) {
            entry.check(*entry.element, *entry.plain);
        }
        while (!_containers.empty()) {
            DeleteContainer(0);
        }
        while (Entry* const entry = AnyLoose()) {
            DeleteLoose(*entry);
        }
        Check(_living.Count() == 0 && _entries.empty(), "nothing is left");
    }

private:
    void Step();
    void Load(unsigned kind);
    template <typename Loader>
    void LoadBy(bool owns, int kind = 0);
    void Adopt(Entry& parent);
    void SetBase(Entry& entry);
    void SetKind(Entry& entry);
    void SetKind(VizEdge& edge, Plain& plain);
    void SetKind(VizPoints& points, Plain& plain);
    void SetKind(VizFace& face, Plain& plain);
    void SetKind(VizPolygon& polygon, Plain& plain);
    void SetKind(VizText& text, Plain& plain);
    void SetKind(VizView& view, Plain& plain);
    void SetKind(VizCapture& capture, Plain& plain);
    void SetOrientation(VizCapture& capture, Plain& plain);
    void SetCollection(VizPMICollection& collection, Plain& plain);
    void Transform(Entry& entry);
    void CheckMap(VizMesh& mesh, const Plain& plain);
    void UseContainer(Container& container);
    void AddTo(Container& container);
    RenderId PathIn(const Container& container);
    void Pick(Container& container);

    /// The loose element at a random place, null without any; one of that kind alone, if it is
    /// told.
    Entry* AnyLoose(const char* type = nullptr);
    /// One for that list of a container; often a new one.
    Entry* AnyLooseFor(unsigned list);
    const Plain& PlainOf(const VizElement* element) const;
    void Forget(const Elements& owned);
    void DeleteLoose(Entry& entry);
    void DeleteContainer(std::size_t place);

    Floats NextFloats(unsigned most);
    std::wstring NextText() { return _input.Text(6); }

    Input& _input;
    Numbers<float> _numbers;
    Living _living;
    std::vector<Entry> _entries;
    std::vector<Container> _containers;
    Fuzz::PickingAdapter _adapter;
};

Floats Model::NextFloats(unsigned most) {
    Floats floats(_input.Below(most + 1));
    _numbers.Fill(floats.data(), floats.size());
    return floats;
}

Entry* Model::AnyLoose(const char* type) {
    std::vector<Entry*> loose;
    for (Entry& entry : _entries) {
        if (entry.loose && (type == nullptr || entry.plain->type == type)) {
            loose.push_back(&entry);
        }
    }
    return loose.empty() ? nullptr : loose[_input.Byte() % loose.size()];
}

const Plain& Model::PlainOf(const VizElement* element) const {
    const auto entry = std::find_if(_entries.begin(), _entries.end(),
                                    [element](const Entry& one) { return one.element == element; });
    Check(entry != _entries.end(), "an element that is known");
    return *entry->plain;
}

// --- loading and destroying ---------------------------------------------------------------------

template <typename Loader>
void Model::LoadBy(bool owns, int kind) {
    using Element = typename Loader::Made;
    Loader loader(_living);
    if (_input.Below(8) == 0) {
        Check(loader.LoadOne(true) == nullptr, "a loader that has nothing answers nothing");
    }
    Element* const element = loader.LoadOne();
    ++lastId;
    Entry entry;
    entry.plain = std::make_unique<Plain>();
    entry.plain->type = Element::TypeID();
    entry.plain->id = static_cast<std::uint64_t>(std::int64_t{lastId});
    entry.plain->owns = owns;
    entry.plain->kind = kind;
    entry.element = element;
    entry.check = CheckAny<Element>;
    entry.destroy = Destroy<Element>;
    entry.copyCheck = CheckCopy<Element>;
    entry.check(*element, *entry.plain);
    _entries.push_back(std::move(entry));
}

void Model::Load(unsigned kind) {
    switch (kind) {
        case 0:
            return LoadBy<Fuzz::EdgeLoader>(false);
        case 1:
            return LoadBy<Fuzz::FaceLoader>(true);
        case 2:
            return LoadBy<Fuzz::PolygonLoader>(false);
        case 3:
            return LoadBy<Fuzz::PolygonLoopLoader>(false);
        case 4:
            return LoadBy<Fuzz::PointsLoader>(false);
        case firstMesh:
            return LoadBy<Fuzz::MeshLoader>(true);
        case firstMesh + 1:
            return LoadBy<Fuzz::WireLoader>(true);
        case firstMesh + 2:
            return LoadBy<Fuzz::PointSetLoader>(true);
        case 8:
            return LoadBy<Fuzz::TextLoader>(false);
        case 9:
            return LoadBy<Fuzz::ViewLoader>(false);
        default:
            return LoadBy<Fuzz::CaptureLoader>(false);
    }
}

Entry* Model::AnyLooseFor(unsigned list) {
    static const char* const types[] = {"Mesh", "Wire", "PointSet"};
    const unsigned type = list % 3;
    if (_input.Flag() && _entries.size() < mostElements) {
        Load(firstMesh + type);
    }
    return AnyLoose(types[type]);
}

/// Elements that an owner took along, and what they owned.
void Model::Forget(const Elements& owned) {
    for (VizElement* const element : owned) {
        if (element == nullptr) {
            continue;
        }
        const Plain plain = PlainOf(element);
        Check(!_living.Has(element), "an owner destroys what it owns");
        _entries.erase(std::find_if(_entries.begin(), _entries.end(), [element](const Entry& one) {
            return one.element == element;
        }));
        if (plain.owns) {
            Forget(plain.children[0]);
            Forget(plain.children[1]);
        }
    }
}

void Model::DeleteLoose(Entry& entry) {
    VizElement* const element = entry.element;
    entry.destroy(element);
    Forget({element});
    Check(_living.Count() == _entries.size(), "nobody else is destroyed");
}

void Model::DeleteContainer(std::size_t place) {
    const Container gone = std::move(_containers[place]);
    _containers.erase(_containers.begin() + static_cast<std::ptrdiff_t>(place));
    delete gone.container;
    for (const Elements& list : gone.lists) {
        Forget(list);
    }
    Check(_living.Count() == _entries.size(), "nobody else is destroyed by a container");
}

// --- setters ------------------------------------------------------------------------------------

void Model::SetBase(Entry& entry) {
    VizElement& element = *entry.element;
    Plain& plain = *entry.plain;
    switch (_input.Below(6)) {
        case 0:
            element.SetVisualID(plain.visualId = NextText());
            break;
        case 1:
            plain.color = RGBAColor(_input.Byte(), 1, 2, _input.Byte());
            element.SetColor(plain.color);
            plain.hasColor = true;
            break;
        case 2:
            element.SetHidden(plain.hidden = _input.Flag());
            plain.hiddenSet = true;
            break;
        case 3: {
            const auto type = _input.Below(4) == 0 ? InvalidType : BodyType;
            element.SetEntityID(plain.entity = EntityId(_input.Byte(), type, _input.Byte()));
            break;
        }
        case 4:
            element.Set3DRenderID(plain.paths[0] = AnyPath(_input));
            break;
        default:
            element.SetTreeRenderID(plain.paths[1] = AnyPath(_input));
            break;
    }
}

/// What both kinds that keep extrema do with new vertices.
void AppendVertices(Plain& plain, const Floats& added) {
    if (added.size() < 3) {
        return;
    }
    plain.vertices.insert(plain.vertices.end(), added.begin(), added.end());
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float& low = plain.extrema[axis];
        float& high = plain.extrema[axis + 3];
        low = high = added[axis];
        for (std::size_t i = 1; i < added.size() / 3; ++i) {
            const float coordinate = plain.vertices[3 * i + axis];
            low = low > coordinate ? coordinate : low;
            high = coordinate > high ? coordinate : high;
        }
    }
}

void MakeOpaque(Plain& plain) {
    plain.color =
        RGBAColor(plain.color.GetRed(), plain.color.GetGreen(), plain.color.GetBlue(), 255);
}

void Model::SetKind(VizEdge& edge, Plain& plain) {
    switch (_input.Below(5)) {
        case 0:
            plain.kind = _input.Any<std::int32_t>();
            return edge.SetLineType(static_cast<VizEdge::EdgeType>(plain.kind));
        case 1:
            return edge.SetMechanicalID(plain.mechanicalId = NextText());
        case 2: {
            plain.indices.assign(_input.Below(4), _input.Byte());
            Fuzz::EdgeLoader loader(_living);
            return loader.setIndices(edge, plain.indices);
        }
        case 3:
            MakeOpaque(plain);
            return edge.RemoveTransparency();
        default: {
            // At times its own vertices once more.
            const bool own = _input.Below(8) == 0 && plain.vertices.size() < 1000;
            const Floats added = own ? plain.vertices : NextFloats(14);
            edge.SetVertices(own ? edge.GetVertices() : added);
            return AppendVertices(plain, added);
        }
    }
}

void Model::SetKind(VizPoints& points, Plain& plain) {
    switch (_input.Below(4)) {
        case 0:
            return points.SetIndices({1, 2, 3});  // does nothing
        case 1: {
            plain.indices.assign(_input.Below(4), _input.Byte());
            Fuzz::PointsLoader loader(_living);
            return loader.setIndices(points, plain.indices);
        }
        case 2:
            MakeOpaque(plain);
            return points.RemoveTransparency();
        default: {
            const Floats added = NextFloats(14);
            points.SetVertices(added);
            return AppendVertices(plain, added);
        }
    }
}

void Model::SetKind(VizFace& face, Plain& plain) {
    const unsigned choice = _input.Below(4);
    if (choice == 0) {
        return face.SetMechanicalID(plain.mechanicalId = NextText());
    }
    if (choice == 1) {
        MakeOpaque(plain);
        return face.RemoveTransparency();
    }
    Floats added(3 * _input.Below(4));
    _numbers.Fill(added.data(), added.size());
    Floats& list = choice == 2 ? plain.vertices : plain.normals;
    list.insert(list.end(), added.begin(), added.end());
    choice == 2 ? face.SetVertices(added.size() / 3, added.data())
                : face.SetNormals(added.size() / 3, added.data());
}

void Model::SetKind(VizPolygon& polygon, Plain& plain) {
    if (_input.Flag()) {
        plain.kind = static_cast<int>(_input.Below(4));
        return polygon.SetPolygonType(static_cast<TriangleType>(plain.kind));
    }
    const std::vector<int> added(_input.Below(5), _input.Any<std::int8_t>());
    plain.indices.insert(plain.indices.end(), added.begin(), added.end());
    polygon.SetIndices(added.size(), added.data());
}

void Model::SetKind(VizText& text, Plain& plain) {
    float triple[3];
    const unsigned choice = _input.Below(7);
    if (choice < 3) {
        _numbers.Fill(triple, 3);
        std::copy(triple, triple + 3, plain.triples.data() + 3 * choice);
    }
    switch (choice) {
        case 0:
            return text.SetAnchorPoint(triple);
        case 1:
            return text.SetDirection(triple);
        case 2:
            return text.SetNormal(triple);
        case 3:
            return text.SetText(plain.text = NextText());
        case 4:
            return text.SetFontName(plain.font = NextText());
        case 5:
            MakeOpaque(plain);
            return text.RemoveTransparency();
        default: {
            plain.attributes.FontSize = _numbers.Next();
            plain.attributes.SpacingFactor = _numbers.Next();
            plain.attributes.WidthScaling = _numbers.Next();
            Fuzz::TextLoader loader(_living);
            return loader.setFontAttrs(text, plain.attributes);
        }
    }
}

void Model::SetCollection(VizPMICollection& collection, Plain& plain) {
    switch (_input.Below(5)) {
        case 0:
            return collection.SetName(plain.collectionTexts[0] = NextText());
        case 1:
            return collection.SetVisualID(plain.collectionTexts[1] = NextText());
        case 2:
            return collection.SetMechanicalID(plain.collectionTexts[2] = NextText());
        case 3:
            return collection.SetHidden(plain.collectionFlags[0] = _input.Flag());
        default:
            return collection.SetActive(plain.collectionFlags[1] = _input.Flag());
    }
}

void Model::SetKind(VizView& view, Plain& plain) {
    if (_input.Flag()) {
        return SetCollection(view, plain);
    }
    _numbers.Fill(plain.frame.data(), 9);
    plain.oriented = true;
    view.SetPlane(plain.frame.data(), plain.frame.data() + 3, plain.frame.data() + 6);
}

void Model::SetOrientation(VizCapture& capture, Plain& plain) {
    Floats given(9);
    _numbers.Fill(given.data(), 9);
    float* const eye = given.data();
    float* const target = eye + 3;
    float* const up = eye + 6;
    bool thrown = false;
    try {
        Check(capture.SetOrientation(eye, target, up), "SetOrientation");
    } catch (const std::invalid_argument&) {
        thrown = true;
    }
    float sight[3];
    for (std::size_t i = 0; i < 3; ++i) {
        plain.eye[i] = eye[i];
        plain.frame[i] = target[i];
        plain.frame[6 + i] = up[i];
        sight[i] = eye[i] - target[i];
    }
    const bool made = Reference::Normalize(plain.frame.data() + 6) && Reference::Normalize(sight);
    Check(made != thrown, "SetOrientation throws what cannot be normalised");
    if (made) {
        Reference::CrossProduct(plain.frame.data() + 6, sight, plain.frame.data() + 3);
        plain.oriented = plain.orientationSet = true;
    }
}

void Model::SetKind(VizCapture& capture, Plain& plain) {
    switch (_input.Below(7)) {
        case 0:
            return SetCollection(capture, plain);
        case 1:
            plain.kind = static_cast<int>(_input.Below(4));
            return capture.SetCameraType(static_cast<VizCapture::CameraType>(plain.kind));
        case 2:
            return capture.SetPerspectiveViewAngle(plain.angle = _numbers.Next());
        case 3:
            return capture.SetOrthographicZoomFactor(plain.zoom = _numbers.Next());
        case 4:
            return capture.SetHiddenText(plain.hiddenText = NextText());
        case 5:
            _numbers.Fill(plain.clipping.data(), 9);
            plain.clippingSet = true;
            return capture.SetClippingPlane(plain.clipping.data(), plain.clipping.data() + 3,
                                            plain.clipping.data() + 6);
        default:
            return SetOrientation(capture, plain);
    }
}

void Model::SetKind(Entry& entry) {
    VizElement* const element = entry.element;
    Plain& plain = *entry.plain;
    if (auto* const edge = dynamic_cast<VizEdge*>(element)) {
        SetKind(*edge, plain);
    } else if (auto* const points = dynamic_cast<VizPoints*>(element)) {
        SetKind(*points, plain);
    } else if (auto* const face = dynamic_cast<VizFace*>(element)) {
        SetKind(*face, plain);
    } else if (auto* const polygon = dynamic_cast<VizPolygon*>(element)) {
        SetKind(*polygon, plain);
    } else if (auto* const text = dynamic_cast<VizText*>(element)) {
        SetKind(*text, plain);
    } else if (auto* const view = dynamic_cast<VizView*>(element)) {
        SetKind(*view, plain);
    } else if (auto* const capture = dynamic_cast<VizCapture*>(element)) {
        SetKind(*capture, plain);
    } else if (auto* const mesh = dynamic_cast<VizMesh*>(element)) {
        mesh->SetMechanicalID(plain.mechanicalId = NextText());
        CheckMap(*mesh, plain);
    }
}

// --- groups -------------------------------------------------------------------------------------

/// Gives a loose element to one that can hold it, or null, or lends it where nobody comes to own.
void Model::Adopt(Entry& parent) {
    VizElement* const element = parent.element;
    const bool second = _input.Flag();
    const bool null = _input.Below(8) == 0;
    const auto child = [&](const char* type) -> Entry* { return null ? nullptr : AnyLoose(type); };
    const auto add = [&](const char* type, unsigned list, const auto& adder) {
        Entry* const given = child(type);
        VizElement* const added = given != nullptr ? given->element : nullptr;
        adder(added);
        if (added == nullptr && !parent.plain->owns) {
            return;  // those that lend alone ignore null
        }
        parent.plain->children[list].push_back(added);
        if (given != nullptr && parent.plain->owns) {
            given->loose = false;
        }
    };
    if (auto* const mesh = dynamic_cast<VizMesh*>(element)) {
        if (second) {
            return add("Edge", 1,
                       [mesh](VizElement* e) { mesh->AddEdge(static_cast<VizEdge*>(e)); });
        }
        return add("Face", 0, [mesh](VizElement* e) { mesh->AddFace(static_cast<VizFace*>(e)); });
    }
    if (auto* const face = dynamic_cast<VizFace*>(element)) {
        face->SetPolygonSizeHint(_input.Byte());
        return add("Polygon", 0,
                   [face](VizElement* e) { face->AddPolygon(static_cast<VizPolygon*>(e)); });
    }
    if (auto* const polygon = dynamic_cast<VizPolygon*>(element)) {
        return add("PolygonLoop", 0,
                   [polygon](VizElement* e) { polygon->AddLoop(static_cast<VizPolygonLoop*>(e)); });
    }
    if (auto* const loop = dynamic_cast<VizPolygonLoop*>(element)) {
        loop->SetEdgeCountHint(_input.Byte());
        return add("Edge", 0, [loop](VizElement* e) { loop->AddEdge(static_cast<VizEdge*>(e)); });
    }
    if (auto* const wire = dynamic_cast<VizWire*>(element)) {
        return add("Edge", 0, [wire](VizElement* e) { wire->AddEdge(static_cast<VizEdge*>(e)); });
    }
    if (auto* const set = dynamic_cast<VizPointSet*>(element)) {
        return add("Points", 0,
                   [set](VizElement* e) { set->AddPoints(static_cast<VizPoints*>(e)); });
    }
}

void Model::CheckMap(VizMesh& mesh, const Plain& plain) {
    std::map<std::wstring, VizElement*> elements;
    std::map<std::wstring, std::wstring> mechanicalIds;
    if (_input.Flag()) {
        elements[L"other"] = nullptr;
        mechanicalIds[L"other"] = L"kept";
    }
    auto expectedElements = elements;
    auto expectedIds = mechanicalIds;
    const auto enter = [&](VizElement* element, const Plain& one) {
        expectedElements[one.visualId] = element;
        expectedIds[one.visualId] = one.mechanicalId;
    };
    enter(&mesh, plain);
    for (const Elements& list : plain.children) {
        for (VizElement* const child : list) {
            if (child != nullptr) {
                enter(child, PlainOf(child));
            }
        }
    }
    mesh.FillVisuIdMap(elements);
    mesh.FillVisuIdMap(mechanicalIds);
    Check(elements == expectedElements, "elements by visual id");
    Check(mechanicalIds == expectedIds, "mechanical ids by visual id");
}

// --- transforms ---------------------------------------------------------------------------------

void MovePoints(Floats& points, const float* m, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        float moved[3];
        Reference::MatrixMultiplyPoint(points.data() + 3 * i, m, moved);
        std::copy(moved, moved + 3, points.data() + 3 * i);
    }
}

void MoveVectors(Floats& vectors, const float* m) {
    for (std::size_t i = 0; i + 3 <= vectors.size(); i += 3) {
        const float x = vectors[i];
        const float y = vectors[i + 1];
        const float z = vectors[i + 2];
        for (std::size_t row = 0; row < 3; ++row) {
            vectors[i + row] = m[row] * x + m[row + 4] * y + m[row + 8] * z;
        }
    }
}

void Model::Transform(Entry& entry) {
    float matrix[4][4];
    float* const m = &matrix[0][0];
    _numbers.Fill(m, 16);
    Plain& plain = *entry.plain;
    if (auto* const edge = dynamic_cast<VizEdge*>(entry.element)) {
        edge->ApplyTransform(matrix);
    } else if (auto* const points = dynamic_cast<VizPoints*>(entry.element)) {
        points->ApplyTransform(matrix);
    } else if (auto* const face = dynamic_cast<VizFace*>(entry.element)) {
        face->ApplyTransform(matrix);
    } else if (auto* const text = dynamic_cast<VizText*>(entry.element)) {
        text->ApplyTransform(matrix);
        MovePoints(plain.triples, m, 3);
        const float length = Reference::Length(plain.triples.data() + 6);
        for (std::size_t i = 6; i < 9 && length > 0; ++i) {
            plain.triples[i] = plain.triples[i] / length;
        }
    }
    MovePoints(plain.vertices, m, plain.vertices.size() / 3);
    MoveVectors(plain.normals, m);
}

/// Exactly the identity is one; so a loader says of the placement that its host set.
void CheckIdentity(Input& input, Numbers<float>& numbers, Living& living) {
    Fuzz::WireLoader loader(living);
    bool identity = true;
    const unsigned other = input.Below(32);
    for (unsigned i = 0; i < 16; ++i) {
        const float expected = i / 4 == i % 4 ? 1.0F : 0.0F;
        const float value = i == other ? numbers.Next() : expected;
        loader._transformation[i / 4][i % 4] = value;
        identity = identity && value == expected;
    }
    Check(loader.IsIdentityTranformation() == identity, "IsIdentityTranformation");
}

// --- containers ---------------------------------------------------------------------------------

void Model::AddTo(Container& container) {
    const unsigned list = _input.Below(6);
    Entry* const entry = _input.Below(8) == 0 ? nullptr : AnyLooseFor(list);
    VizElement* const element = entry != nullptr ? entry->element : nullptr;
    VizContainer& to = *container.container;
    switch (list) {
        case 0:
            to.AddMesh(static_cast<VizMesh*>(element));
            break;
        case 1:
            to.AddWire(static_cast<VizWire*>(element));
            break;
        case 2:
            to.AddPointSet(static_cast<VizPointSet*>(element));
            break;
        case 3:
            to.AddCGMesh(static_cast<VizMesh*>(element));
            break;
        case 4:
            to.AddCGWire(static_cast<VizWire*>(element));
            break;
        default:
            to.AddCGPointSet(static_cast<VizPointSet*>(element));
            break;
    }
    container.lists[list].push_back(element);
    if (entry == nullptr) {
        return;
    }
    entry->loose = false;
    if (_input.Below(4) != 0) {  // may be picked
        element->SetEntityID(entry->plain->entity = EntityId(1, BodyType, 2));
        element->Set3DRenderID(entry->plain->paths[0] = AnyPath(_input));
    }
}

/// Any path, or that of something in the container, which may begin with those of others.
RenderId Model::PathIn(const Container& container) {
    const Elements& list = container.lists[_input.Below(6)];
    VizElement* const element = list.empty() ? nullptr : list[_input.Byte() % list.size()];
    if (element == nullptr || _input.Below(4) == 0) {
        return AnyPath(_input);
    }
    RenderId path = PlainOf(element).paths[0];
    path.AddValue(_input.Below(2));
    return path;
}

/// The first element in the order of the lists whose path is the beginning of what was picked.
void Model::Pick(Container& container) {
    const Ray ray;
    _adapter.asked = &ray;
    _adapter.picked = PathIn(container);
    _adapter.hits = _input.Below(8) != 0;
    VizElement* expected = nullptr;
    for (const Elements& list : container.lists) {
        for (VizElement* const element : list) {
            if (expected == nullptr && element != nullptr && _adapter.hits &&
                Fuzz::IsPicked(*element, _adapter.picked)) {
                expected = element;
            }
        }
    }
    VizElement* const before = _input.Flag() ? nullptr : _entries.front().element;
    VizElement* picked = before;
    Check(!container.container->PickVisual(nullptr, ray, picked) && picked == before,
          "without an adapter nothing is picked");
    const bool answer = container.container->PickVisual(&_adapter, ray, picked);
    Check(answer == (expected != nullptr), "something is picked");
    Check(picked == (answer ? expected : before), "what is picked");
}

void CheckContainer(const Container& expected) {
    const VizContainer& container = *expected.container;
    Check(container.GetRefID() == expected.refId, "reference id of a container");
    Check(Same(container.GetScaleFactor(), expected.scale), "scale of a container");
    const Elements lists[6] = {
        Widened(container.GetMeshes()),    Widened(container.GetWires()),
        Widened(container.GetPointSets()), Widened(container.GetCGMeshes()),
        Widened(container.GetCGWires()),   Widened(container.GetCGPointSets())};
    Check(std::equal(lists, lists + 6, expected.lists), "lists of a container");
}

void Model::UseContainer(Container& container) {
    switch (_input.Below(8)) {
        case 0:
            container.scale = _numbers.Next();
            container.container->SetScaleFactor(container.scale);
            break;
        case 1:
            container.container->SetMeshCountHint(_input.Byte());
            container.container->SetCGPointSetCountHint(_input.Byte());
            break;
        case 2:
        case 3:
            if (!_entries.empty()) {
                Pick(container);
            }
            break;
        default:
            AddTo(container);
            break;
    }
    Check(container.container->GetTypeName() == "GeometryContainer", "type of a container");
    CheckContainer(container);
}

void Model::Step() {
    const unsigned choice = _input.Below(16);
    if (choice < 4 || _entries.empty()) {
        if (_entries.size() < mostElements) {
            Load(_input.Below(11));
        }
        return;
    }
    if (choice < 7) {
        if (_containers.empty() || (_containers.size() < 3 && _input.Below(8) == 0)) {
            Container made;
            made.refId = _input.Any<std::int32_t>();
            made.container = new VizContainer(made.refId);
            _containers.push_back(std::move(made));
        }
        return UseContainer(_containers[_input.Byte() % _containers.size()]);
    }
    if (choice == 7) {
        return CheckIdentity(_input, _numbers, _living);
    }
    if (choice == 8 && _input.Below(4) == 0) {
        if (!_containers.empty()) {
            DeleteContainer(_input.Byte() % _containers.size());
        }
        return;
    }
    if (choice == 9) {
        if (Entry* const loose = AnyLoose()) {
            DeleteLoose(*loose);
        }
        return;
    }
    Entry& entry = _entries[_input.Byte() % _entries.size()];
    if (choice == 10) {
        Transform(entry);
    } else if (choice < 13) {
        SetKind(entry);
    } else if (choice == 13) {
        SetBase(entry);
    } else if (choice == 14) {
        Adopt(entry);
    } else if (!entry.plain->owns) {
        entry.copyCheck(*entry.element, *entry.plain);  // copies of owners would destroy twice
    }
    entry.check(*entry.element, *entry.plain);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Model(input).Run();
    return 0;
}
