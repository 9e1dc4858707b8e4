// A host that was compiled against one version of the headers reads and copies fields by their
// places in the object. The order is written down here, and compared with the layouts that clang
// computes for the public headers.

#include "structure/ClassDump.h"
#include "structure/LayoutDump.h"
#include "structure/SourceTree.h"
#include "structure/TypeSpelling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <map>
#include <ostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace KesVizCore::Structure {
namespace {

struct Field {
    std::string Type;
    /// Written down where hosts use it, and where it tells fields of one type apart, which would
    /// be laid out alike if they changed places. Empty elsewhere.
    std::string Name = {};
};

/// The fields of a class in their order, those of its bases left out.
struct FieldTable {
    std::string Class;
    std::vector<std::string> Bases;
    std::vector<Field> Fields;
};

void PrintTo(const FieldTable& table, std::ostream* out) {
    *out << table.Class;
}

const std::vector<FieldTable> fieldTables = {
    {"EntityId",
     {},
     {{"std::uint64_t", "ID"},
      {"std::uint64_t", "OwnerID"},
      {"EntityType", "Type"},
      {"bool", "Flag"}}},
    {"RenderId", {}, {{"OriginEnum"}, {"std::vector<std::uint64_t>"}}},
    {"RGBAColor",
     {},
     {{"std::uint8_t", "_red"},
      {"std::uint8_t", "_green"},
      {"std::uint8_t", "_blue"},
      {"std::uint8_t", "_alpha"}}},
    {"FontAttr",
     {},
     {{"float", "FontSize"}, {"float", "SpacingFactor"}, {"float", "WidthScaling"}}},

    {"Pooled", {}, {}},
    {"CompactName", {}, {{"std::uint8_t[16]"}}},
    {"PointerList<AGeometryItem>", {}, {{"AGeometryItem*"}}},
    {"PointerList<Attribute>", {}, {{"Attribute*"}}},
    {"PointerList<Node>", {}, {{"Node*"}}},
    {"ChildRange",
     {},
     {{"ChildTable::Iterator", "_begin"}, {"ChildTable::Iterator", "_end"}, {"std::uint64_t"}}},
    {"ChildTable", {}, {{"ChildTable::Run*"}}},
    {"ChildTable::Directory",
     {},
     {{"std::vector<ChildTable::Run*>"},
      {"std::uint64_t"},
      {"std::unique_ptr<std::map<std::uint64_t, GeoNode*>>"}}},
    {"ChildTable::Entry", {}, {{"std::uint64_t"}, {"GeoNode*"}}},
    {"ChildTable::Iterator",
     {},
     {{"ChildTable::Run**", "_run"},
      {"ChildTable::Run**", "_endOfRuns"},
      {"const ChildTable::Entry*", "_entry"},
      {"const ChildTable::Entry*", "_endOfRun"}}},
    {"ChildTable::Run", {}, {{"unsigned int", "size"}, {"unsigned int", "capacity"}}},
    {"ChildTable::Run::Release", {}, {}},
    {"GeoNode",
     {"Pooled"},
     {{"std::uint64_t"},
      {"int"},
      {"bool"},
      {"CompactName"},
      {"PointerList<Attribute>"},
      {"PointerList<Node>"},
      {"PointerList<AGeometryItem>"}}},
    {"Node", {"GeoNode"}, {{"ChildTable"}}},
    {"AttributeType", {}, {{"int"}}},
    {"Attribute", {"Pooled"}, {{"AttributeType"}}},
    {"AttributeColor", {"Attribute"}, {{"RGBAColor"}, {"bool", "_opaque"}, {"bool", "_priority"}}},
    {"AttributeHighlight", {"Attribute"}, {{"RGBAColor"}}},
    {"AttributeLineStyle", {"Attribute"}, {{"float"}, {"std::string"}}},
    {"AttributeTransform", {"Attribute"}, {{"double[16]"}}},
    {"AttributeVisibility", {"Attribute"}, {{"bool"}}},
    {"AGeometryItem",
     {"Pooled"},
     {{"std::uint64_t"}, {"bool"}, {"float[4]", "_color"}, {"float[4]", "_savedColor"}}},
    {"AGeometryItemTriangleSet",
     {"AGeometryItem"},
     {{"int", "_vertexCount"}, {"int", "_triangleCount"}, {"TriangleType"}}},
    {"AGeometryItemPolyline", {"AGeometryItem"}, {{"bool"}, {"float"}, {"short"}}},
    {"AGeometryItemFilledPolyline", {"AGeometryItem"}, {{"bool"}, {"float"}}},
    {"AGeometryItemPointCloud", {"AGeometryItem"}, {{"double"}, {"bool"}}},
    {"AGeometryItemVertex", {"AGeometryItem"}, {{"double"}}},
    {"AGeometryItemText",
     {"AGeometryItem"},
     {{"FontAttr"}, {"float"}, {"std::wstring", "_firstText"}, {"std::wstring", "_secondText"}}},
    {"AGeometryItemFactory", {}, {}},

    {"Ray", {}, {{"float[3]", "Root"}, {"float[3]", "Direction"}, {"double", "Aperture"}}},
    {"Pick",
     {},
     {{"int", "Number"},
      {"float", "Value1"},
      {"float", "Value2"},
      {"RenderId", "Id"},
      {"double[3]", "Position"}}},

    {"AReport", {}, {{"std::string", "_name"}, {"bool"}}},
    {"AReportFactory", {}, {{"std::string"}}},
    {"Stopwatch", {}, {{"bool"}, {"std::int64_t", "_start"}, {"std::int64_t", "_accumulated"}}},
    {"Utils", {}, {}},
    {"debugger_streambuf", {"std::basic_streambuf<char>"}, {{"char[2]"}}},

    {"AView3DAdapter",
     {},
     {{"Node*", "_rootNode"},
      {"std::vector<SceneBuilder*>", "_sceneBuilders"},
      {"AFilterManager*", "_filterManager"},
      {"IViewDoUndoStrategy*", "_highlightStrategy"},
      {"IViewDoUndoStrategy*", "_hideStrategy"},
      {"SelectionHolder*", "_selectionHolder"},
      {"std::stack<GeoNode*>", "_openNodes"}}},
    {"IView3D",
     {},
     {{"AView3DAdapter*", "_view3DAdapter"},
      {"float[3]"},
      {"float"},
      {"bool", "_backFacesVisible"},
      {"bool", "_displayOn"},
      {"IRayPickListener*"}}},
    {"SelectionHolder", {}, {{"std::vector<RenderId>"}}},
    {"IViewDoUndoStrategy", {}, {}},
    {"AFilterManager", {}, {}},
    {"IRayPickListener", {}, {}},
    {"ATextManager", {}, {}},
    {"ITextManagerProvider", {}, {}},

    {"SceneBuilder",
     {},
     {{"AView3DAdapter*"}, {"bool"}, {"RenderId"}, {"std::vector<std::uint64_t>"}}},
    {"ASceneBuilderContext", {}, {{"SceneBuilder*"}, {"bool"}}},
    {"ConstructionContext", {"ASceneBuilderContext"}, {}},
    {"SceneContext", {"ASceneBuilderContext"}, {}},
    {"SceneLevelContext", {"ASceneBuilderContext"}, {}},
    {"ContainerContext", {"ASceneBuilderContext"}, {}},
    {"BodyContext", {"ASceneBuilderContext"}, {}},
    {"EntityTypeContext", {"ASceneBuilderContext"}, {}},
    {"EntityContext", {"ASceneBuilderContext"}, {}},
    {"RendererReport",
     {},
     {{"std::uint64_t", "Bodies"},
      {"std::uint64_t", "Faces"},
      {"std::uint64_t", "Edges"},
      {"std::uint64_t", "Vertices"},
      {"std::uint64_t", "Annotations"},
      {"std::uint64_t", "Triangles"}}},
    {"IRendererReportProvider", {}, {}},
    {"IRenderTimeReportProvider", {}, {}},
    {"ARenderer",
     {"IRendererReportProvider"},
     {{"RenderId"},
      {"bool", "_flag"},
      {"bool", "_backFacesVisible"},
      {"RendererReport"},
      {"bool", "_reportMode"},
      {"SceneBuilder*"},
      {"bool", "_builderOwnership"},
      {"void (*)(const int&, const int&, const char*)"}}},
    {"VizFactories", {}, {{"SceneBuilderFactory*"}, {"AView3DAdapterFactory*"}, {"bool"}}},
    {"SceneBuilderFactory", {}, {}},
    {"AView3DAdapterFactory", {}, {}},
    {"IRenderingOptions", {}, {}},
    {"IRenderingOptionsListener", {}, {}},
    {"RenderingOptions",
     {"IRenderingOptions"},
     {{"bool", "_displayFaces"},
      {"bool", "_displayEdges"},
      {"bool", "_displayVertices"},
      {"bool", "_displayTessellation"},
      {"bool", "_displayClouds"},
      {"bool", "_displayPMI"},
      {"bool", "_displayAxes"},
      {"bool", "_displayNavigationCube"},
      {"RGBAColor", "_defaultBodyColor"},
      {"RGBAColor", "_defaultFaceColor"},
      {"RGBAColor", "_defaultEdgeColor"},
      {"RGBAColor", "_defaultTessEdgeColor"},
      {"RGBAColor", "_defaultVertexColor"},
      {"RGBAColor", "_defaultCloudColor"},
      {"RGBAColor", "_defaultPMIColor"},
      {"RGBAColor", "_highlightColor"},
      {"int"},
      {"std::vector<IRenderingOptionsListener*>"}}},
    {"Settings", {}, {{"RGBAColor", "Color1"}, {"RGBAColor", "Color2"}, {"RGBAColor", "Color3"},
                      {"RGBAColor", "Color4"}, {"RGBAColor", "Color5"}, {"RGBAColor", "Color6"},
                      {"RGBAColor", "Color7"}, {"bool", "Flag1"},       {"bool", "Flag2"},
                      {"bool", "Flag3"},       {"bool", "Flag4"},       {"bool", "Flag5"},
                      {"bool", "Flag6"},       {"bool", "Flag7"},       {"int", "Number1"},
                      {"int", "Number2"},      {"bool", "Flag8"},       {"bool", "Flag9"},
                      {"bool", "Flag10"},      {"bool", "Flag11"},      {"bool", "Flag12"},
                      {"bool", "Flag13"},      {"int", "Number3"},      {"bool", "LastFlag"}}},
    {"TextDimension", {}, {{"int"}}},

    {"VizElement",
     {},
     {{"std::wstring"},
      {"bool", "_hasColor"},
      {"RGBAColor"},
      {"bool", "_hidden"},
      {"bool", "_hiddenSet"},
      {"std::uint64_t"},
      {"EntityId"},
      {"RenderId", "_renderId3D"},
      {"RenderId", "_treeRenderId"}}},
    {"VizBox", {}, {{"double[3]", "_low"}, {"double[3]", "_high"}, {"bool"}}},
    {"VizTransf", {}, {{"double[3][3]"}, {"double[3]"}, {"bool"}}},
    {"VizEdge",
     {"VizElement"},
     {{"std::vector<float>"},
      {"std::vector<int>"},
      {"VizEdge::EdgeType"},
      {"float[6]"},
      {"std::wstring"}}},
    {"VizFace",
     {"VizElement"},
     {{"std::vector<float>", "_vertices"},
      {"std::vector<float>", "_normals"},
      {"std::vector<VizPolygon*>"},
      {"std::wstring"}}},
    {"VizPolygon",
     {"VizElement"},
     {{"std::vector<int>"}, {"std::vector<VizPolygonLoop*>"}, {"TriangleType"}}},
    {"VizPolygonLoop", {"VizElement"}, {{"std::vector<VizEdge*>"}}},
    {"VizPoints", {"VizElement"}, {{"std::vector<float>"}, {"std::vector<int>"}, {"float[6]"}}},
    {"VizMesh",
     {"VizElement"},
     {{"std::vector<VizFace*>"}, {"std::vector<VizEdge*>"}, {"std::wstring"}}},
    {"VizWire", {"VizElement"}, {{"std::vector<VizEdge*>"}}},
    {"VizPointSet", {"VizElement"}, {{"std::vector<VizPoints*>"}}},
    {"VizText",
     {"VizElement"},
     {{"float[3]", "_anchorPoint"},
      {"float[3]", "_direction"},
      {"float[3]", "_normal"},
      {"FontAttr"},
      {"std::wstring", "_text"},
      {"std::wstring", "_fontName"}}},
    {"VizView", {"VizPMICollection"}, {}},
    {"VizCapture",
     {"VizPMICollection"},
     {{"float[3]", "_eye"},
      {"float[3]", "_clippingOrigin"},
      {"float[3]", "_clippingU"},
      {"float[3]", "_clippingV"},
      {"bool", "_clippingPlaneSet"},
      {"float", "_perspectiveViewAngle"},
      {"float", "_orthographicZoomFactor"},
      {"VizCapture::CameraType"},
      {"bool", "_orientationSet"},
      {"std::wstring"}}},
    {"AVizContainer", {}, {{"int"}}},
    {"VizContainer",
     {"AVizContainer"},
     {{"float"},
      {"std::vector<VizMesh*>", "_meshes"},
      {"std::vector<VizWire*>", "_wires"},
      {"std::vector<VizPointSet*>", "_pointSets"},
      {"std::vector<VizMesh*>", "_cgMeshes"},
      {"std::vector<VizWire*>", "_cgWires"},
      {"std::vector<VizPointSet*>", "_cgPointSets"}}},
    {"AVizElementLoader", {}, {{"float[4][4]", "_transformation"}}},
    {"AVizEdgeLoader", {"AVizElementLoader"}, {}},
    {"AVizFaceLoader", {"AVizElementLoader"}, {}},
    {"AVizPolygonLoader", {"AVizElementLoader"}, {}},
    {"AVizPolygonLoopLoader", {"AVizElementLoader"}, {}},
    {"AVizPointsLoader", {"AVizElementLoader"}, {}},
    {"AVizMeshLoader", {"AVizElementLoader"}, {}},
    {"AVizWireLoader", {"AVizElementLoader"}, {}},
    {"AVizPointSetLoader", {"AVizElementLoader"}, {}},
    {"AVizTextLoader", {"AVizElementLoader"}, {}},
    {"AVizViewLoader", {"AVizElementLoader"}, {}},
    {"AVizCaptureLoader", {"AVizElementLoader"}, {}},

    {"VizPMIType", {}, {{"int", "Code"}, {"std::string", "Name"}, {"int", "Number2"}}},
    {"VizPMI",
     {"VizElement"},
     {{"std::vector<VizEdge*>"},
      {"std::vector<VizFace*>"},
      {"std::vector<VizText*>"},
      {"VizPMIType", "_groupType"},
      {"VizPMIType", "_type"},
      {"float[6]"},
      {"std::wstring", "_name"},
      {"std::wstring", "_mechanicalId"},
      {"std::vector<std::wstring>", "_linkedEntityIds"},
      {"std::vector<std::wstring>", "_linkedEntityMechIds"},
      {"bool"}}},
    {"AVizPMILoader",
     {"AVizElementLoader"},
     {{"VizPMIType", "_groupType"}, {"VizPMIType", "_type"}}},
    {"SemanticPMI",
     {},
     {{"std::wstring", "Name"},
      {"std::wstring", "Label"},
      {"std::wstring", "Id"},
      {"std::map<std::wstring, std::wstring>", "Attributes"},
      {"std::vector<EntityId>", "LinkedEntities"}}},
    {"VizPMIContainer",
     {"AVizContainer"},
     {{"std::vector<VizPMI*>"},
      {"std::vector<VizMesh*>"},
      {"std::vector<VizWire*>"},
      {"std::vector<VizPointSet*>"},
      {"std::vector<VizCapture*>"},
      {"std::vector<VizView*>"},
      {"std::map<std::wstring, VizPMI*>"},
      {"double"},
      {"double*"},
      {"std::map<std::wstring, SemanticPMI*>"}}},
    // The index of the member names stands at the very end, behind what hosts know: whether an
    // element is a member is asked for every element of the model, which a walk along the names
    // would make slow.
    {"VizPMICollection",
     {"VizElement"},
     {{"float[3]", "_origin"},
      {"float[3]", "_uAxis"},
      {"float[3]", "_vAxis"},
      {"bool", "_viewOriented"},
      {"float*", "_extrema"},
      {"float*", "_extents"},
      {"float*", "_rectangle"},
      {"float*", "_spare"},
      {"bool", "_hidden"},
      {"bool", "_active"},
      {"std::wstring", "_name"},
      {"std::wstring", "_mechanicalId"},
      {"std::wstring", "_visualId"},
      {"std::vector<std::wstring>"},
      {"const std::map<EntityId, const VizElement*>*"},
      {"std::unordered_set<std::wstring>"}}},
};

const std::map<std::string, Layout>& allLayouts() {
    static const std::map<std::string, Layout> layouts = readLayouts(KESVIZCORE_LAYOUT_DUMP);
    return layouts;
}

/// The classes of the public headers with their sizes, as the other compiler knows them.
std::map<std::string, DumpedClass> publicClasses() {
    static const std::regex ours("KesVizCore::(?!Structure::)(.*)");
    std::map<std::string, DumpedClass> classes;
    std::smatch match;
    for (const auto& [name, dumped] : readClassDump(KESVIZCORE_CLASS_DUMP)) {
        if (std::regex_match(name, match, ours)) {
            classes[inHouseSpelling(match[1])] = dumped;
        }
    }
    return classes;
}

std::string textOf(const std::vector<std::string>& bases, const std::vector<std::string>& fields) {
    std::string lines;
    for (const std::string& base : bases) {
        lines += "base " + base + '\n';
    }
    for (const std::string& field : fields) {
        lines += field + '\n';
    }
    return lines;
}

class FieldOrderTest : public testing::TestWithParam<FieldTable> {};

TEST_P(FieldOrderTest, BasesAndFieldsStandInTheirOrder) {
    const FieldTable& table = GetParam();
    const auto place = allLayouts().find(table.Class);
    ASSERT_NE(place, allLayouts().end()) << "not laid out: name it in CompleteClasses.cpp";
    const Layout& layout = place->second;

    std::vector<std::string> expected;
    std::vector<std::string> found;
    for (const Field& field : table.Fields) {
        expected.push_back(field.Type + ' ' + field.Name);
    }
    for (std::size_t i = 0; i < layout.Fields.size(); ++i) {
        const LaidOutField& field = layout.Fields[i];
        const bool named = i < table.Fields.size() && !table.Fields[i].Name.empty();
        found.push_back(field.Type + ' ' + (named ? field.Name : ""));
    }
    EXPECT_EQ(textOf(layout.Bases, found), textOf(table.Bases, expected));
}

INSTANTIATE_TEST_SUITE_P(Classes, FieldOrderTest, testing::ValuesIn(fieldTables),
                         [](const auto& row) {
                             return std::regex_replace(row.param.Class, std::regex("\\W+"), "_");
                         });

TEST(FieldLayoutTest, FieldsLieBehindEachOtherInsideTheObject) {
    for (const auto& [name, layout] : allLayouts()) {
        int last = -1;
        for (const LaidOutField& field : layout.Fields) {
            EXPECT_GT(field.Offset, last) << name << ' ' << field.Name;
            EXPECT_LT(field.Offset, layout.Size) << name << ' ' << field.Name;
            last = field.Offset;
        }
    }
}

TEST(FieldLayoutTest, BothCompilersAgreeOnSizeAndAlignment) {
    for (const auto& [name, dumped] : publicClasses()) {
        const auto place = allLayouts().find(name);
        ASSERT_NE(place, allLayouts().end()) << name;
        EXPECT_EQ(place->second.Size, dumped.Size) << name;
        EXPECT_EQ(place->second.Alignment, dumped.Alignment) << name;
    }
}

/// The public classes with their sizes and the offsets of their own fields, one line each.
std::string allSizesAndOffsets() {
    std::ostringstream text;
    for (const auto& [name, layout] : allLayouts()) {
        if (name.rfind("Structure::", 0) == 0) {
            continue;
        }
        text << name << ": size " << layout.Size << ", alignment " << layout.Alignment << '\n';
        for (const LaidOutField& field : layout.Fields) {
            text << std::setw(8) << field.Offset << ' ' << field.Type << ' ' << field.Name << '\n';
        }
    }
    return text.str();
}

// One baseline serves Linux and Windows: no public class has a field whose size differs.
TEST(FieldLayoutTest, SizesAndOffsetsAreThoseWrittenDown) {
    const std::string found = allSizesAndOffsets();
    std::ofstream(KESVIZCORE_LAYOUTS_FOUND, std::ios::binary) << found;
    EXPECT_EQ(asLines(linesOf(KESVIZCORE_LAYOUT_BASELINE)), found)
        << "breaks hosts that are compiled; where this is wanted: scripts/abi --renew";
}

TEST(FieldTablesTest, EveryClassHasATable) {
    const std::map<std::string, DumpedClass> classes = publicClasses();
    ASSERT_FALSE(classes.empty());
    for (const auto& [name, dumped] : classes) {
        EXPECT_EQ(std::count_if(fieldTables.begin(), fieldTables.end(),
                                [&name = name](const FieldTable& t) { return t.Class == name; }),
                  1)
            << name << ": write down its fields in fieldTables, and name it in CompleteClasses.cpp";
    }
}

}  // namespace
}  // namespace KesVizCore::Structure
