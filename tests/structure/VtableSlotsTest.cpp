// A host that was compiled against one version of the headers calls the virtual operations by
// their places in the table. The places are written down here, and compared with the tables that
// g++ lays out for the public headers: an operation that moves breaks every compiled host.

#include "structure/ClassDump.h"
#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <ostream>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

/// The virtual operations of a class in the order of their places. A pure operation ends in
/// " = 0". A destructor is one place here and two in the tables that g++ lays out: the one that
/// destroys, and behind it the one that also frees.
struct SlotTable {
    std::string Class;
    std::string Base;                    ///< its places come first; empty: none
    std::vector<std::string> Overrides;  ///< operations of the base, the destructor apart
    std::vector<std::string> Slots;      ///< behind those of the base
};

void PrintTo(const SlotTable& table, std::ostream* out) {
    *out << table.Class;
}

const std::vector<SlotTable> slotTables = {
    // core: no class is polymorphic

    {"GeoNode",
     "",
     {},
     {"GetReport(AReport&)", "~GeoNode()", "HasChildren() const", "AddGeometry(AGeometryItem*)",
      "DeleteGeometryById(const std::uint64_t&)", "DeleteAllGeometry()", "ToString() const"}},
    {"Node",
     "GeoNode",
     {"GetReport(AReport&)", "HasChildren() const", "ToString() const"},
     {"CreateChild(const std::uint64_t&)", "CreateGeoChild(const std::uint64_t&)"}},

    {"Attribute", "", {}, {"GetType()", "~Attribute()"}},
    {"AttributeColor", "Attribute", {}, {"GetColor()", "SetColor(const RGBAColor&)"}},
    {"AttributeHighlight", "Attribute", {}, {}},
    {"AttributeLineStyle",
     "Attribute",
     {},
     {"GetWeight()", "SetWeight(const float&)", "GetPattern()", "SetPattern(const std::string&)"}},
    {"AttributeTransform",
     "Attribute",
     {},
     {"GetTransform()", "SetTransform(double*)", "IsIdentity()"}},
    {"AttributeVisibility", "Attribute", {}, {"GetIsVisible()", "SetIsVisible(const bool&)"}},

    {"AGeometryItem",
     "",
     {},
     {"~AGeometryItem()", "ID() const", "GetExtents(float*) const = 0",
      "SetVisible(const bool&) = 0", "IsVisible() const = 0", "SetColor(float*)",
      "SetColor(const RGBAColor&)", "GetColor() const", "GetColor(RGBAColor&)", "SaveColor()",
      "RestoreColor()", "ToString()"}},
    {"AGeometryItemTriangleSet", "AGeometryItem", {"ToString()"}, {}},
    {"AGeometryItemPolyline", "AGeometryItem", {"ToString()"}, {}},
    {"AGeometryItemFilledPolyline", "AGeometryItem", {"ToString()"}, {}},
    {"AGeometryItemPointCloud",
     "AGeometryItem",
     {"ToString()"},
     {"SetPointSize(const double&)", "SetHighlighted(const bool&)"}},
    {"AGeometryItemVertex", "AGeometryItem", {"ToString()"}, {}},
    {"AGeometryItemText", "AGeometryItem", {"ToString()"}, {}},
    {"AGeometryItemFactory",
     "",
     {},
     {"CreateTriangleSet(const std::uint64_t&, float*, float*, int*, int, int, int, "
      "TriangleType) = 0",
      "AddColorMap(AGeometryItemTriangleSet*, const std::vector<float>&)",
      "CreatePolyline(const std::uint64_t&, float*, int) = 0",
      "CreateFilledPolyline(const std::uint64_t&, float*, int) = 0",
      "CreatePointCloud(const std::uint64_t&, const int&, float*) = 0",
      "CreateVertex(const std::uint64_t&, float*) = 0",
      "CreateText(const std::uint64_t&, const std::wstring&, const std::wstring&, float*, "
      "const FontAttr&, const float&) = 0",
      "CreateQuadSet(const std::uint64_t&, float*, int*, int, int, float*, int)"}},

    {"AReport",
     "",
     {},
     {"~AReport()", "start(std::string) = 0", "end() = 0", "openElement(std::string) = 0",
      "closeElement() = 0", "addAttribute(std::string, bool) = 0",
      "addAttribute(std::string, std::uint64_t) = 0", "addAttribute(std::string, std::wstring) = 0",
      "addAttribute(std::string, double) = 0", "addComment(std::wstring) = 0",
      "addText(std::wstring) = 0", "toText() const = 0", "saveTo(std::wstring) const = 0",
      "restore(std::wstring) = 0",
      "compare(const AReport&, std::wstring&, std::string&) const = 0"}},
    {"AReportFactory", "", {}, {"MakeReport() = 0", "~AReportFactory()"}},

    {"AView3DAdapter",
     "",
     {},
     {"~AView3DAdapter()",
      "SetView3D(IView3D*)",
      "GetView3D() = 0",
      "IsConstructing() const = 0",
      "StartConstruction(Node*)",
      "EndConstruction()",
      "OpenTopNode()",
      "CloseTopNode()",
      "OpenNode(const std::uint64_t&, const std::wstring&) = 0",
      "OpenNodes(const RenderId&)",
      "AddReference(const RenderId&)",
      "CloseNode() = 0",
      "CloseAllNodes() = 0",
      "CloseNodeAndOptimize()",
      "CreateNode(const std::uint64_t&, const std::wstring&) = 0",
      "CreateGeoNode(const std::uint64_t&, const std::wstring&) = 0",
      "DeleteNode(const RenderId&)",
      "DeleteNode(const std::uint64_t&)",
      "DeleteAllNodes() = 0",
      "GetNode(const RenderId&)",
      "GetCurrentOpenNode()",
      "CopyNodeAttributesFrom(GeoNode&)",
      "TransferNodeGeometryFrom(GeoNode&)",
      "SetColor(const RGBAColor&)",
      "SetFilterId(const int&)",
      "OpenLibrary(const std::string&)",
      "CloseLibrary()",
      "AddLibraryReference(const std::uint64_t&, const std::string&, const std::uint64_t&)",
      "GetSceneStructure(std::string&, bool)",
      "GetSceneGraphStructure(std::string&, bool)",
      "ApplyAttribute(Attribute*) = 0",
      "RemoveAttribute(const AttributeType&) = 0",
      "AddGeometryItem(AGeometryItem*) = 0",
      "GetGeometryItemFactory() = 0",
      "ClearScene(const RenderId&) = 0",
      "Clear(const RenderId&)",
      "Show(const RenderId&) = 0",
      "Hide(const RenderId&) = 0",
      "PickVisual(const Ray&, RenderId&)",
      "Highlight(const RenderId&, const RGBAColor&) = 0",
      "Unhighlight(const RenderId&) = 0",
      "UnhighlightAll() = 0",
      "IsHighlighted(const RenderId&)",
      "IsVisible(const RenderId&) = 0",
      "GetExtents(const RenderId&, float*) = 0",
      "GetRenderingOptions() = 0",
      "Isolate(const RenderId&) = 0",
      "ShowAll() = 0",
      "BeginUpdate() = 0",
      "EndUpdate() = 0",
      "Convert(const RenderId&, EntityId&)"}},
    {"IView3D",
     "",
     {},
     {"~IView3D()",
      "GetViewport(int&, int&) const = 0",
      "SetViewport(int, int) = 0",
      "GetCamera(float*, float*, float*) const = 0",
      "SetCamera(const float*, const float*, const float*) = 0",
      "GetViewExtent(float&, float&) const = 0",
      "IsPerspective() const = 0",
      "SetPerspective(bool) = 0",
      "FitAll() = 0",
      "SetClipPlane(float*, float*)",
      "UnSetClipPlane()",
      "GetView3DAdapter()",
      "OpenTopNode()",
      "CloseTopNode()",
      "GetSceneGraphStructure(std::string&, bool) = 0",
      "GetRay(int, int, Ray&) const = 0",
      "PickAt(int, int, RenderId&) = 0",
      "GetBackground(RGBAColor&) const = 0",
      "SetBackground(const RGBAColor&) = 0",
      "SaveImage(const std::wstring&) = 0",
      "Invalidate() = 0",
      "IsBackFacesVisible() const",
      "SetBackFacesVisible(bool)",
      "SetAntialiasLevel(int) = 0",
      "AttachView3DAdapter(AView3DAdapter*) = 0",
      "Render() = 0"}},
    {"SelectionHolder", "", {}, {"~SelectionHolder()"}},
    {"IViewDoUndoStrategy",
     "",
     {},
     {"Apply(const RenderId&) = 0", "Undo(const RenderId&) = 0", "UndoAll() = 0",
      "IsApplied(const RenderId&) = 0", "~IViewDoUndoStrategy()"}},
    {"AFilterManager",
     "",
     {},
     {"~AFilterManager()", "SetVisible(int, bool) = 0", "IsVisible(int) const = 0", "Reset() = 0"}},
    {"IRayPickListener", "", {}, {"OnPick(const Ray&) = 0", "~IRayPickListener()"}},
    {"ITextManagerProvider", "", {}, {"~ITextManagerProvider()"}},

    {"SceneBuilder",
     "",
     {},
     {"ConstructionBegin()",
      "ConstructionEnd()",
      "SceneBegin(const std::uint64_t&, const std::wstring&)",
      "SceneEnd()",
      "ContainerBegin(const std::uint64_t&, const std::wstring&, "
      "const SceneBuilder::ContainerType&)",
      "ContainerEnd()",
      "BodyBegin(const std::uint64_t&, const std::wstring&)",
      "BodyBegin(const std::uint64_t&, const std::wstring&, const RGBAColor&)",
      "BodyEnd()",
      "EntityTypeBegin(const EntityType&, const std::wstring&)",
      "EntityTypeEnd()",
      "EntityBegin(const std::uint64_t&, const std::wstring&)",
      "EntityBegin(const std::uint64_t&, const std::wstring&, const RGBAColor&)",
      "EntityEnd()",
      "SceneLevelBegin(const std::uint64_t&, const std::wstring&)",
      "SceneLevelEnd()",
      "AddGeometry(AGeometryItem*)",
      "Clear(const RenderId&)",
      "SetColor(const RGBAColor&, const bool&)",
      "SetLineStyle(const std::string&, const float&)",
      "SetTransformation(double*)",
      "BuildRenderId(RenderId&, const EntityType&, const EntityId&, const RGBAColor&, "
      "const RGBAColor&) const",
      "BuildRenderId(RenderId&, const EntityId&, const RGBAColor&, const RGBAColor&) const",
      "ExtractEntityId(const RenderId&, EntityId&) const",
      "Delete(const RenderId&)",
      "MoveGeometryFrom(const RenderId&)",
      "AddReference(const RenderId&)",
      "GetRenderingOptions()",
      "~SceneBuilder()"}},
    {"ASceneBuilderContext", "", {}, {"~ASceneBuilderContext()"}},
    {"ConstructionContext", "ASceneBuilderContext", {}, {}},
    {"SceneContext", "ASceneBuilderContext", {}, {}},
    {"SceneLevelContext", "ASceneBuilderContext", {}, {}},
    {"ContainerContext", "ASceneBuilderContext", {}, {}},
    {"BodyContext", "ASceneBuilderContext", {}, {}},
    {"EntityTypeContext", "ASceneBuilderContext", {}, {}},
    {"EntityContext", "ASceneBuilderContext", {}, {}},
    {"IRendererReportProvider",
     "",
     {},
     {"SetReportMode(const bool&) = 0", "GetReportMode() = 0", "ClearReport() = 0",
      "GetReport() = 0"}},
    {"IRenderTimeReportProvider",
     "",
     {},
     {"GetRenderTime() const = 0", "AddRenderTime(double) = 0", "ClearRenderTime() = 0"}},
    {"ARenderer",
     "IRendererReportProvider",
     {"SetReportMode(const bool&)", "GetReportMode()", "ClearReport()", "GetReport()"},
     {"~ARenderer()", "GetName() const = 0", "Render() = 0", "Update() = 0", "Clear() = 0",
      "IsEmpty() const = 0", "Activate(RenderId&)", "Deactivate(RenderId&) = 0",
      "Show(const RenderId&) = 0", "Hide(const RenderId&) = 0", "GetToolTip(const RenderId&)",
      "GetEntityId(const RenderId&, EntityId&) const = 0",
      "GetRenderId(const EntityId&, RenderId&) const = 0"}},
    {"SceneBuilderFactory", "", {}, {"makeSceneBuilderImpl()", "~SceneBuilderFactory()"}},
    {"AView3DAdapterFactory", "", {}, {"makeView3DAdapterImpl() = 0", "~AView3DAdapterFactory()"}},
    {"IRenderingOptions",
     "",
     {},
     {"~IRenderingOptions()", "AddListener(IRenderingOptionsListener*) = 0",
      "RemoveListener(IRenderingOptionsListener*) = 0",
      "GetNumberOfListeners(IRenderingOptionsListener*) = 0"}},
    {"RenderingOptions",
     "IRenderingOptions",
     {"AddListener(IRenderingOptionsListener*)", "RemoveListener(IRenderingOptionsListener*)",
      "GetNumberOfListeners(IRenderingOptionsListener*)"},
     {}},
    {"IRenderingOptionsListener",
     "",
     {},
     {"~IRenderingOptionsListener()", "OnOptionsChange(RenderingOptions*) = 0"}},

    {"VizElement",
     "",
     {},
     {"GetElementType() const = 0", "~VizElement()", "ApplyTransform(float (*) [4])"}},
    {"VizEdge", "VizElement", {"GetElementType() const", "ApplyTransform(float (*) [4])"}, {}},
    {"VizFace", "VizElement", {"GetElementType() const", "ApplyTransform(float (*) [4])"}, {}},
    {"VizPolygon", "VizElement", {"GetElementType() const"}, {}},
    {"VizPolygonLoop", "VizElement", {"GetElementType() const"}, {}},
    {"VizPoints", "VizElement", {"GetElementType() const", "ApplyTransform(float (*) [4])"}, {}},
    {"VizMesh", "VizElement", {"GetElementType() const"}, {}},
    {"VizWire", "VizElement", {"GetElementType() const"}, {}},
    {"VizPointSet", "VizElement", {"GetElementType() const"}, {}},
    {"VizText", "VizElement", {"GetElementType() const", "ApplyTransform(float (*) [4])"}, {}},
    {"VizView", "VizPMICollection", {"GetElementType() const"}, {}},
    {"VizCapture", "VizPMICollection", {"GetElementType() const"}, {}},

    {"AVizContainer",
     "",
     {},
     {"~AVizContainer()", "GetTypeName() = 0",
      "PickVisual(AView3DAdapter*, const Ray&, VizElement*&)"}},
    {"VizContainer",
     "AVizContainer",
     {"GetTypeName()", "PickVisual(AView3DAdapter*, const Ray&, VizElement*&)"},
     {}},

    {"AVizElementLoader", "", {}, {"~AVizElementLoader()", "makeOne() = 0", "createAndFill() = 0"}},
    {"AVizEdgeLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizFaceLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizPolygonLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizPolygonLoopLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizPointsLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizMeshLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizWireLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizPointSetLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizTextLoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"AVizViewLoader", "AVizElementLoader", {"makeOne()"}, {}},
    // Its makeOne returns a VizCapture*. An element lies at the beginning of its capture, so the
    // pointer needs no adjustment, and the operation keeps its one place.
    {"AVizCaptureLoader", "AVizElementLoader", {"makeOne()"}, {}},

    {"VizPMI", "VizElement", {"GetElementType() const"}, {}},
    {"AVizPMILoader", "AVizElementLoader", {"makeOne()"}, {}},
    {"SemanticPMI", "", {}, {"~SemanticPMI()"}},
    {"VizPMIContainer",
     "AVizContainer",
     {"GetTypeName()", "PickVisual(AView3DAdapter*, const Ray&, VizElement*&)"},
     {}},
    {"VizPMICollection",
     "VizElement",
     {},
     {"IsViewOriented() const", "AccumulatePMIExtrema()", "GetRectangle()"}},
};

/// One place of a class, its base's places being filled in.
struct Slot {
    std::string Owner;  ///< the class whose operation stands there
    std::string Signature;
    bool Pure = false;

    bool IsDestructor() const { return Signature[0] == '~'; }
};

Slot slotOf(const std::string& owner, const std::string& text) {
    static const std::string pureMark = " = 0";
    const std::size_t mark = text.rfind(pureMark);
    const bool pure = mark != std::string::npos;
    return {owner, pure ? text.substr(0, mark) : text, pure};
}

const SlotTable& tableOf(const std::string& name) {
    const auto place =
        std::find_if(slotTables.begin(), slotTables.end(),
                     [&name](const SlotTable& table) { return table.Class == name; });
    if (place == slotTables.end()) {
        throw std::runtime_error("no table of slots for " + name);
    }
    return *place;
}

bool overrides(const SlotTable& table, const Slot& slot) {
    return slot.IsDestructor() || std::find(table.Overrides.begin(), table.Overrides.end(),
                                            slot.Signature) != table.Overrides.end();
}

std::vector<Slot> allSlotsOf(const SlotTable& table) {
    std::vector<Slot> slots;
    if (!table.Base.empty()) {
        slots = allSlotsOf(tableOf(table.Base));
    }
    for (Slot& inherited : slots) {
        if (overrides(table, inherited)) {
            inherited.Owner = table.Class;
            inherited.Pure = false;
        }
    }
    for (const std::string& text : table.Slots) {
        slots.push_back(slotOf(table.Class, text));
    }
    return slots;
}

bool isAbstract(const std::vector<Slot>& slots) {
    return std::any_of(slots.begin(), slots.end(), [](const Slot& slot) { return slot.Pure; });
}

/// What the class dump shows of a slot: names without parameters. It leaves the destructors of
/// an abstract class out, since no object has such a table.
std::vector<std::string> expectedInDump(const std::vector<Slot>& slots) {
    std::vector<std::string> texts;
    for (const Slot& slot : slots) {
        if (slot.IsDestructor()) {
            const std::string text = isAbstract(slots) ? "0" : slot.Owner + "::~" + slot.Owner;
            texts.insert(texts.end(), 2, text);
        } else if (slot.Pure) {
            texts.push_back("__cxa_pure_virtual");
        } else {
            texts.push_back(slot.Owner + "::" + slot.Signature.substr(0, slot.Signature.find('(')));
        }
    }
    return texts;
}

/// What the table of the concrete class behind shows of a slot. Operations of the concrete class
/// itself, which are the pure ones and the destructors, stand without an owner.
std::vector<std::string> expectedInConcreteTable(const std::vector<Slot>& slots) {
    std::vector<std::string> texts;
    for (const Slot& slot : slots) {
        if (slot.IsDestructor()) {
            texts.insert(texts.end(), {"destroys", "destroys and frees"});
        } else {
            texts.push_back(slot.Pure ? slot.Signature : slot.Owner + "::" + slot.Signature);
        }
    }
    return texts;
}

std::string readable(const std::string& mangled) {
    static const std::regex concrete("Structure::Concrete(Item|Loader)?<\\w+>::");
    const std::string text = std::regex_replace(inHouseSpelling(demangled(mangled)), concrete, "");
    if (text[0] != '~') {
        return text;
    }
    const std::string kind = mangled.size() < 4 ? "" : mangled.substr(mangled.size() - 4);
    return kind == "D1Ev" ? "destroys" : kind == "D0Ev" ? "destroys and frees" : mangled;
}

std::string numbered(const std::vector<std::string>& slots) {
    std::string lines;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        lines += std::to_string(i) + ' ' + slots[i] + '\n';
    }
    return lines;
}

std::vector<std::string> dumpedSlotsOf(const std::string& name) {
    static const std::map<std::string, DumpedClass> classes = readClassDump(KESVIZCORE_CLASS_DUMP);
    const auto place = classes.find("KesVizCore::" + name);
    std::vector<std::string> slots;
    if (place != classes.end()) {
        std::transform(place->second.Slots.begin(), place->second.Slots.end(),
                       std::back_inserter(slots), inHouseSpelling);
    }
    return slots;
}

/// The table of the class that overrides what @p name leaves pure.
std::vector<std::string> concreteSlotsOf(const std::string& name) {
    static const std::map<std::string, std::vector<std::string>> tables =
        readVirtualTables(KESVIZCORE_TABLE_DUMP);
    const std::string end = "<KesVizCore::" + name + ">";
    std::vector<std::string> slots;
    for (const std::string concrete : {"Concrete", "ConcreteItem", "ConcreteLoader"}) {
        const auto place = tables.find("vtable for KesVizCore::Structure::" + concrete + end);
        if (place != tables.end()) {
            std::transform(place->second.begin(), place->second.end(), std::back_inserter(slots),
                           readable);
        }
    }
    return slots;
}

class VtableSlotsTest : public testing::TestWithParam<SlotTable> {};

TEST_P(VtableSlotsTest, NamesOwnersAndPureOperationsStandInTheirPlaces) {
    const std::vector<Slot> slots = allSlotsOf(GetParam());
    EXPECT_EQ(numbered(dumpedSlotsOf(GetParam().Class)), numbered(expectedInDump(slots)));
}

TEST_P(VtableSlotsTest, SignaturesStandInTheirPlaces) {
    const std::vector<Slot> slots = allSlotsOf(GetParam());
    EXPECT_EQ(numbered(concreteSlotsOf(GetParam().Class)),
              numbered(expectedInConcreteTable(slots)));
}

INSTANTIATE_TEST_SUITE_P(Classes, VtableSlotsTest, testing::ValuesIn(slotTables),
                         [](const auto& row) { return row.param.Class; });

// The standard library's own order; ours is that overflow and sync alone are replaced.
TEST(DebuggerStreambufSlotsTest, OnlyOverflowAndSyncAreOverridden) {
    const std::map<std::string, DumpedClass> classes = readClassDump(KESVIZCORE_CLASS_DUMP);
    std::vector<std::string> expected = classes.at("std::basic_streambuf<char>").Slots;
    ASSERT_FALSE(expected.empty());
    for (std::string& slot : expected) {
        const std::string name = slot.substr(slot.rfind("::") + 2);
        if (name == "overflow" || name == "sync") {
            slot = "KesVizCore::debugger_streambuf::" + name;
        } else if (name[0] == '~') {
            slot = "KesVizCore::debugger_streambuf::~debugger_streambuf";
        }
    }
    EXPECT_EQ(numbered(classes.at("KesVizCore::debugger_streambuf").Slots), numbered(expected));
}

// A misspelled override would leave the base's operation expected in its place.
TEST(VtableSlotsTablesTest, ClassesOverrideOnlyWhatTheirBasesHave) {
    for (const SlotTable& table : slotTables) {
        std::vector<Slot> inherited;
        if (!table.Base.empty()) {
            inherited = allSlotsOf(tableOf(table.Base));
        }
        for (const std::string& signature : table.Overrides) {
            EXPECT_EQ(std::count_if(
                          inherited.begin(), inherited.end(),
                          [&signature](const Slot& slot) { return slot.Signature == signature; }),
                      1)
                << table.Class << ": " << signature;
        }
    }
}

TEST(VtableSlotsTablesTest, EveryPolymorphicClassHasATable) {
    static const std::regex ours("KesVizCore::(?!Structure::)(.*)");
    std::vector<std::string> known = {"debugger_streambuf"};  // it has a test of its own
    for (const SlotTable& table : slotTables) {
        known.push_back(table.Class);
    }
    std::smatch match;
    for (const auto& [name, dumped] : readClassDump(KESVIZCORE_CLASS_DUMP)) {
        if (!dumped.Slots.empty() && std::regex_match(name, match, ours)) {
            EXPECT_EQ(std::count(known.begin(), known.end(), match[1]), 1)
                << name << " is polymorphic: write down its places in slotTables, and complete it "
                << "in ConcreteClasses.cpp";
        }
    }
}

}  // namespace
}  // namespace KesVizCore::Structure
