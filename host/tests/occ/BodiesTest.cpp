#include "occ/Measures.h"
#include "reading/occ/Bodies.h"

#include <gtest/gtest.h>

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <cmath>
#include <gp_Circ.hxx>
#include <gp_Trsf.hxx>
#include <set>

namespace kesview {
namespace {

class BodiesTest : public testing::Test {
protected:
    std::vector<Body> build(const TopoDS_Shape& shape) {
        BodyBuilder builder({options, ids, index, names, document}, product, traits);
        return builder.Build(shape);
    }

    TopoDS_Compound compoundOf(const std::vector<TopoDS_Shape>& shapes) {
        TopoDS_Compound compound;
        BRep_Builder().MakeCompound(compound);
        for (const TopoDS_Shape& shape : shapes) {
            BRep_Builder().Add(compound, shape);
        }
        return compound;
    }

    ReadOptions options;
    IdCounter ids;
    ShapeIndex index;
    ShapeNames names;
    Document document;
    Traits product;
    TraitsMap traits;
};

TopoDS_Shape box() {
    return BRepPrimAPI_MakeBox(2, 3, 4).Shape();
}

TopoDS_Shape firstOf(const TopoDS_Shape& shape, TopAbs_ShapeEnum type) {
    return TopExp_Explorer(shape, type).Current();
}

TopoDS_Shape at(const TopoDS_Shape& shape, double x) {
    gp_Trsf trsf;
    trsf.SetTranslation(gp_Vec(x, 0, 0));
    return shape.Moved(TopLoc_Location(trsf));
}

TEST_F(BodiesTest, ABoxHasSixFacesAndTwelveEdgesOnceEach) {
    const std::vector<Body> bodies = build(box());
    ASSERT_EQ(bodies.size(), 1U);
    EXPECT_EQ(bodies[0].kind, BodyKind::Solid);
    EXPECT_EQ(bodies[0].faces.size(), 6U);
    EXPECT_EQ(bodies[0].edges.size(), 12U);
    EXPECT_NEAR(volumeOf(bodies[0]), 24, 1e-5);
    for (const Edge& edge : bodies[0].edges) {
        EXPECT_EQ(edge.points.size(), 2U * 3);
    }
}

TEST_F(BodiesTest, IdsAreUniqueAndStartAtTwo) {
    std::set<Id> seen;
    for (const Body& body : build(compoundOf({box(), at(box(), 9)}))) {
        EXPECT_TRUE(seen.insert(body.id).second);
        for (const Face& face : body.faces) {
            EXPECT_TRUE(seen.insert(face.id).second);
        }
        for (const Edge& edge : body.edges) {
            EXPECT_TRUE(seen.insert(edge.id).second);
        }
    }
    EXPECT_EQ(seen.size(), 2U * (1 + 6 + 12));
    EXPECT_EQ(*seen.begin(), 2U);
    EXPECT_EQ(*seen.rbegin(), seen.size() + 1);
}

TEST_F(BodiesTest, EverySolidIsABodyEvenOfOneShapeTwice) {
    const TopoDS_Shape one = box();
    const std::vector<Body> bodies = build(compoundOf({one, at(one, 10)}));
    ASSERT_EQ(bodies.size(), 2U);
    EXPECT_NEAR(volumeOf(bodies[1]), 24, 1e-4);
}

TEST_F(BodiesTest, LooseShapesBecomeSheetWireAndPoints) {
    const TopoDS_Shape shell = firstOf(box(), TopAbs_SHELL);
    const TopoDS_Shape face = firstOf(at(box(), 20), TopAbs_FACE);
    const TopoDS_Shape circle = BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(), 5)).Shape();
    const TopoDS_Shape point = BRepBuilderAPI_MakeVertex(gp_Pnt(1, 2, 3)).Shape();
    const std::vector<Body> bodies = build(compoundOf({point, circle, face, shell, box()}));
    ASSERT_EQ(bodies.size(), 5U);
    EXPECT_EQ(bodies[0].kind, BodyKind::Solid);
    EXPECT_EQ(bodies[1].kind, BodyKind::Sheet);
    EXPECT_EQ(bodies[1].faces.size(), 6U);
    EXPECT_EQ(bodies[2].kind, BodyKind::Sheet);
    EXPECT_EQ(bodies[2].faces.size(), 1U);
    EXPECT_EQ(bodies[2].edges.size(), 4U);
    EXPECT_EQ(bodies[3].kind, BodyKind::Wire);
    EXPECT_EQ(bodies[3].edges.size(), 1U);
    EXPECT_EQ(bodies[4].kind, BodyKind::Points);
    EXPECT_EQ(bodies[4].points, (std::vector<float>{1, 2, 3}));
}

TEST_F(BodiesTest, ALooseCircleIsARoundLine) {
    const std::vector<Body> bodies = build(BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(), 5)).Shape());
    const std::vector<float>& points = bodies.at(0).edges.at(0).points;
    ASSERT_GT(points.size(), 8U * 3);
    for (std::size_t i = 0; i < points.size(); i += 3) {
        EXPECT_NEAR(std::hypot(points[i], points[i + 1]), 5, 1e-4);
    }
}

TEST_F(BodiesTest, EdgesMeetTheTrianglesOfTheirFaces) {
    const std::vector<Body> bodies = build(BRepPrimAPI_MakeCylinder(1, 2).Shape());
    std::set<std::array<float, 3>> nodes;
    for (const Face& face : bodies[0].faces) {
        for (std::size_t i = 0; i < face.points.size(); i += 3) {
            nodes.insert({face.points[i], face.points[i + 1], face.points[i + 2]});
        }
    }
    EXPECT_EQ(bodies[0].edges.size(), 3U);  // two circles and the seam
    for (const Edge& edge : bodies[0].edges) {
        for (std::size_t i = 0; i < edge.points.size(); i += 3) {
            EXPECT_EQ(nodes.count({edge.points[i], edge.points[i + 1], edge.points[i + 2]}), 1U);
        }
    }
}

TEST_F(BodiesTest, EdgesWithoutLengthAreListedWithoutPoints) {
    const std::vector<Body> bodies = build(BRepPrimAPI_MakeSphere(1).Shape());
    ASSERT_EQ(bodies[0].edges.size(), 3U);  // the seam and two poles
    int drawn = 0;
    for (const Edge& edge : bodies[0].edges) {
        drawn += edge.points.empty() ? 0 : 1;
    }
    EXPECT_EQ(drawn, 1);
    EXPECT_TRUE(document.findings.empty());
}

TEST_F(BodiesTest, WithoutTessellationFacesAndEdgesHaveNoPoints) {
    options.withTessellation = false;
    const std::vector<Body> bodies = build(box());
    EXPECT_EQ(bodies[0].faces.size(), 6U);
    EXPECT_EQ(bodies[0].edges.size(), 12U);
    EXPECT_TRUE(bodies[0].faces[0].points.empty());
    EXPECT_TRUE(bodies[0].edges[0].points.empty());
    EXPECT_TRUE(document.findings.empty());
}

TEST_F(BodiesTest, AFinerDeflectionGivesMoreTriangles) {
    options.deflection = 0.05;
    options.angle = 3;
    const std::size_t coarse =
        build(BRepPrimAPI_MakeSphere(1).Shape())[0].faces[0].triangles.size();
    options.deflection = 0.001;
    const std::size_t fine = build(BRepPrimAPI_MakeSphere(1).Shape())[0].faces[0].triangles.size();
    EXPECT_GT(fine, 4 * coarse);
}

TEST_F(BodiesTest, AFarBodyKeepsItsShape) {
    const std::vector<Body> bodies = build(at(box(), 1e9));
    EXPECT_NEAR(bodies[0].origin[0], 1e9, 10);
    EXPECT_NEAR(volumeOf(bodies[0]), 24, 1e-4);
}

TEST_F(BodiesTest, AbsurdCoordinatesAreToldAndTheRestIsDrawn) {
    const TopoDS_Shape absurd =
        BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1e50, 0, 0)).Shape();
    const std::vector<Body> bodies = build(compoundOf({box(), absurd}));
    ASSERT_EQ(bodies.size(), 2U);
    EXPECT_NEAR(volumeOf(bodies[0]), 24, 1e-5);
    ASSERT_EQ(bodies[1].edges.size(), 1U);
    EXPECT_TRUE(bodies[1].edges[0].points.empty());
    EXPECT_EQ(findingCount(document, "shape.absurd"), 1U);
}

TEST_F(BodiesTest, PartsTakeTheirTraits) {
    const TopoDS_Shape shape = box();
    const TopoDS_Shape face = firstOf(shape, TopAbs_FACE);
    Traits ofFace;
    ofFace.name = "mating face";
    ofFace.color = Color{1, 2, 3, 128};
    traits.Bind(face, ofFace);
    Traits ofSolid;
    ofSolid.name = "block";
    ofSolid.curveColor = Color{9, 9, 9, 255};
    ofSolid.layers = {"L1"};
    ofSolid.hidden = true;
    traits.Bind(shape, ofSolid);
    const Body body = build(shape)[0];
    EXPECT_EQ(body.name, "block");
    EXPECT_EQ(body.layers, std::vector<std::string>{"L1"});
    EXPECT_TRUE(body.hidden);
    EXPECT_FALSE(body.color.has_value());
    EXPECT_EQ(body.faces[0].name, "mating face");
    EXPECT_EQ(body.faces[0].color, (Color{1, 2, 3, 128}));
    EXPECT_FALSE(body.faces[1].color.has_value());
    EXPECT_EQ(body.edges[0].color, (Color{9, 9, 9, 255}));
}

TEST_F(BodiesTest, LooseFacesOfDifferentLayersAreDifferentBodies) {
    const TopoDS_Shape first = firstOf(box(), TopAbs_FACE);
    const TopoDS_Shape second = firstOf(at(box(), 20), TopAbs_FACE);
    Traits layer;
    layer.layers = {"7"};
    traits.Bind(second, layer);
    const std::vector<Body> bodies = build(compoundOf({first, second}));
    ASSERT_EQ(bodies.size(), 2U);
    EXPECT_TRUE(bodies[0].layers.empty());
    EXPECT_EQ(bodies[1].layers, std::vector<std::string>{"7"});
}

TEST_F(BodiesTest, OneHiddenFaceIsToldAndAllHiddenFacesHideTheBody) {
    const TopoDS_Shape shape = box();
    Traits hidden;
    hidden.hidden = true;
    traits.Bind(firstOf(shape, TopAbs_FACE), hidden);
    EXPECT_FALSE(build(shape)[0].hidden);
    EXPECT_EQ(findingCount(document, "face.hidden"), 1U);
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        traits.Bind(faces.Current(), hidden);
    }
    EXPECT_TRUE(build(shape)[0].hidden);
}

TEST_F(BodiesTest, ShapesAreFoundAgain) {
    const TopoDS_Shape shape = box();
    const Body body = build(shape)[0];
    EXPECT_EQ(index.Find(shape)->id, body.id);
    const auto face = index.Find(firstOf(shape, TopAbs_FACE));
    EXPECT_EQ(face->kind, EntityLink::Kind::Face);
    EXPECT_EQ(face->id, body.faces[0].id);
    EXPECT_EQ(face->owner, body.id);
    EXPECT_EQ(index.Find(firstOf(shape, TopAbs_EDGE))->kind, EntityLink::Kind::Edge);
}

}  // namespace
}  // namespace kesview
