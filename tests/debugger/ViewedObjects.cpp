// What the views of the debuggers are tried on: one object of each kind in each telling state,
// all in place when the program stops in lookHere().

#include "support/TestLoaders.h"

#include <KesVizCore/KesVizCore.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

using namespace KesVizCore;  // the names are for gdb, too

namespace host {

/// A host's own item, with data of the host's.
class Point : public AGeometryItemVertex {
public:
    Point(std::uint64_t id, float* position) : AGeometryItemVertex(id, position), Drawn(true) {}
    bool GetExtents(float*) const override { return false; }
    void SetVisible(const bool&) override {}
    bool IsVisible() const override { return Drawn; }

    bool Drawn;
    std::wstring Layer = L"notes";
};

}  // namespace host

/// Memory that no constructor has seen, large enough for every class.
struct Garbage {
    /// Bytes that rise from @p first by @p step.
    Garbage(int first, int step) {
        for (std::size_t place = 0; place < sizeof Bytes; ++place) {
            Bytes[place] = static_cast<unsigned char>(first + step * static_cast<int>(place));
        }
    }
    /// One address in every word.
    explicit Garbage(const unsigned char* address) {
        for (std::size_t place = 0; place < sizeof Bytes; place += sizeof address) {
            std::memcpy(Bytes + place, &address, sizeof address);
        }
    }
    alignas(16) unsigned char Bytes[1024];
};

Garbage zeros(0, 0);
Garbage ones(1, 0);
Garbage rising(0, 37);
Garbage falling(240, -9);
Garbage full(255, 0);
Garbage pointing(rising.Bytes);
Garbage marked(rising.Bytes + 1);
Garbage looped(looped.Bytes);

EntityId noEntity;
EntityId entity(5, FaceType, 9);
EntityId strangeEntity(5, static_cast<EntityType>(10011), 9);

RenderId noPath;
RenderId path({1, 7, 3}, View3D);
RenderId treePath({18446744073709551615U}, ViewTree);
RenderId strangePath({1}, static_cast<OriginEnum>(77));
RenderId longPath(std::vector<std::uint64_t>(1000, 4), View3D);
const RenderId& pathReference = path;
const RenderId* nullPath = nullptr;

RGBAColor white;
RGBAColor orange(255, 128, 0, 64);
AttributeType noType;
AttributeType lineStyleType(AttributeType::LineStyle);
AttributeType hostType(40);

Ray noRay;
Ray ray;
Pick noPick;
Pick pick(4, 1.5F, 2.0F);
VizBox noBox;
VizBox box;
VizTransf noPlacement;
VizPMIType linear;

AttributeColor color(RGBAColor::Red(), true);
AttributeHighlight highlight(orange);
AttributeLineStyle lineStyle(2.5F, "dash\tdot");
AttributeTransform identity;
AttributeTransform transform;
AttributeVisibility visibility(false);
Attribute* attribute = &color;

Node* root = nullptr;
Node* body = nullptr;
GeoNode* face = nullptr;
GeoNode* groupAsLeaf = nullptr;
GeoNode* nullNode = nullptr;
GeoNode* goneNode = nullptr;  ///< destroyed

Node* names = nullptr;    ///< with children whose names are kept in every way
Node* asked = nullptr;    ///< once asked for all its lists, all empty
Node* filled = nullptr;   ///< the same, and something came into each list since
Node* several = nullptr;  ///< with two of everything
Node* crowd = nullptr;    ///< with 1200 children, every tenth of them taken out

VizEdge* edge = nullptr;
VizMesh* mesh = nullptr;
VizElement* meshAsElement = nullptr;
VizText* note = nullptr;
VizView* view = nullptr;
VizCapture capture;

/// What the library itself writes of the object whose name each has in front.
char pathText[64];
char bodyText[128];
char faceText[128];
char filledText[128];
char severalText[128];
char crowdText[128];

namespace {

void makeGraph() {
    root = Node::CreateRoot();
    body = root->CreateChild(7);
    body->SetName(L"Bracket");
    body->SetFilterID(12);
    body->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    body->SetAttribute(new AttributeTransform);
    groupAsLeaf = body;
    face = body->CreateGeoChild(3);
    face->SetName(L"Face");
    float position[3] = {1, 2, 3};
    auto* const item = new host::Point(31, position);
    item->SetColor(orange);
    item->SaveColor();
    face->AddGeometry(item);
    Node* const second = root->CreateChild(2);
    second->SetName(L"two\nlines, \u03b1");
    second->AddGeometry(nullptr);
    second->AddChild(face);
    second->SetAttribute(new AttributeVisibility(false));
    goneNode = second->CreateChild(50);
    second->DeleteChildById(50);
}

void makeNames() {
    names = Node::CreateRoot();
    names->SetName(std::wstring());
    const std::wstring kept[] = {L"15 characters..", L"16 characters...", L"\u00ff\u00e9\t\"",
                                 L"\u0100", std::wstring(30, L'x')};
    for (const std::wstring& name : kept) {
        names->CreateGeoChild(Node::GetNextId())->SetName(name);
    }
}

void askForLists(Node& node) {
    node.Attributes();
    static_cast<void>(node.Parents());
    static_cast<void>(node.Geometry());
    static_cast<void>(node.Children());
}

void addToLists(Node& node) {
    float position[3] = {1, 2, 3};
    node.SetAttribute(new AttributeVisibility(node.Attributes()->empty()));
    node.AddGeometry(new host::Point(31, position));
    node.CreateGeoChild(Node::GetNextId());
    static_cast<void>(Node::CreateRoot()->AddChild(&node));
}

void makeLists() {
    asked = Node::CreateRoot();
    askForLists(*asked);
    filled = Node::CreateRoot()->CreateChild(20);
    filled->RemoveFromParents(filled->Parents().front());
    askForLists(*filled);
    addToLists(*filled);
    several = Node::CreateRoot()->CreateChild(30);
    addToLists(*several);
    several->SetAttribute(new AttributeColor(RGBAColor::Red(), false));
    several->AddGeometry(nullptr);
    several->CreateGeoChild(31);
    crowd = Node::CreateRoot();
    for (std::uint64_t id = 1; id <= 1200; ++id) {
        crowd->CreateGeoChild(id % 2 == 0 ? id : 1200 - id);
    }
    for (std::uint64_t id = 10; id <= 1200; id += 10) {
        crowd->DeleteChildById(id);
    }
}

void makeElements() {
    edge = support::loadEdge([](VizEdge& made) {
               made.SetVertices({0, 0, 0, 1, 0.5F, 0});
               made.SetMechanicalID(L"E1");
           }).release();
    mesh = support::loadMesh([](VizMesh& made) {
               made.SetVisualID(L"mesh 1");
               made.SetColor(orange);
               made.SetHidden(true);
               made.SetEntityID(EntityId(0, BodyType, 5));
               made.Set3DRenderID(path);
               made.SetTreeRenderID(treePath);
               made.AddEdge(support::loadEdge().release());
           }).release();
    meshAsElement = mesh;
    note = support::loadText([](VizText& made) { made.SetText(L"R5"); }).release();
    view = support::loadView([](VizView& made) {
               made.AddMember(L"D1");
               made.AddMember(L"D2");
               made.SetHidden(false);
           }).release();
}

void fillValues() {
    const float from[3] = {1, 2, 3};
    const float to[3] = {0, 0, -1};
    ray = Ray(from, to, 0.5);
    pick.Id = path;
    pick.Position[2] = -7.25;
    const double low[3] = {0, -1, 0};
    const double high[3] = {10, 20, 30.5};
    box = VizBox(low, high);
    double matrix[16];
    AttributeTransform::SetIdentity(matrix);
    matrix[12] = 100;
    transform.SetTransform(matrix);
    linear.Code = 3;
    linear.Name = "linear";
}

template <std::size_t Size>
void write(char (&out)[Size], const std::string& text) {
    std::snprintf(out, Size, "%s", text.c_str());
}

void writeTexts() {
    write(pathText, path.ToString());
    write(bodyText, body->ToString());
    write(faceText, face->ToString());
    write(filledText, filled->ToString());
    write(severalText, several->ToString());
    write(crowdText, crowd->ToString());
}

/// Where the program is stopped; it answers something, so that no compiler leaves the call out.
[[gnu::noinline]] bool lookHere(const Node* node) {
    return node->HasChildren();
}

}  // namespace

int main() {
    makeGraph();
    makeNames();
    makeLists();
    makeElements();
    fillValues();
    writeTexts();
    return lookHere(root) ? 0 : 1;
}
