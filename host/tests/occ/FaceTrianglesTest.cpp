#include "occ/Measures.h"
#include "reading/occ/FaceTriangles.h"

#include <gtest/gtest.h>

#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <gp_Ax2.hxx>
#include <gp_Trsf.hxx>

namespace kesview {
namespace {

/// All faces of a shape, meshed, as one body.
Body bodyOf(const TopoDS_Shape& shape, const Vector& origin = {0, 0, 0}) {
    const BRepMesh_IncrementalMesh mesh(shape, 0.01, false, 0.2);
    Body body;
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        body.faces.emplace_back();
        EXPECT_TRUE(fillTriangles(TopoDS::Face(faces.Current()), origin, body.faces.back()));
    }
    return body;
}

void expectNormalsAgree(const Body& body) {
    for (const Face& face : body.faces) {
        EXPECT_GT(worstNormalAgreement(face), 0.9);
        for (std::size_t i = 0; i < face.normals.size(); i += 3) {
            const float length =
                std::hypot(face.normals[i], face.normals[i + 1], face.normals[i + 2]);
            EXPECT_NEAR(length, 1, 1e-5);
        }
    }
}

TEST(FaceTrianglesTest, TrianglesOfASolidAreWoundOutwards) {
    const Body box = bodyOf(BRepPrimAPI_MakeBox(2, 3, 4).Shape());
    EXPECT_NEAR(volumeOf(box), 24, 1e-5);
    expectNormalsAgree(box);
}

TEST(FaceTrianglesTest, AReversedSolidLooksInwards) {
    const Body box = bodyOf(BRepPrimAPI_MakeBox(2, 3, 4).Shape().Reversed());
    EXPECT_NEAR(volumeOf(box), -24, 1e-5);
    expectNormalsAgree(box);
}

TEST(FaceTrianglesTest, AMirroredSolidStillLooksOutwards) {
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(gp_Pnt(5, 0, 0), gp_Dir(1, 0, 0)));
    const bool isMirrorRefused = false;
    const Body cylinder = bodyOf(
        BRepPrimAPI_MakeCylinder(1, 2).Shape().Moved(TopLoc_Location(mirror), isMirrorRefused));
    EXPECT_NEAR(volumeOf(cylinder), 2 * M_PI, 0.2);
    expectNormalsAgree(cylinder);
}

TEST(FaceTrianglesTest, NormalsOfACylinderAreThoseOfItsSurface) {
    const Body cylinder = bodyOf(BRepPrimAPI_MakeCylinder(1, 2).Shape());
    const Face& mantle = cylinder.faces[0];
    for (std::size_t i = 0; i < mantle.points.size(); i += 3) {
        EXPECT_NEAR(mantle.normals[i], mantle.points[i], 1e-5);
        EXPECT_NEAR(mantle.normals[i + 1], mantle.points[i + 1], 1e-5);
        EXPECT_NEAR(mantle.normals[i + 2], 0, 1e-6);
    }
}

TEST(FaceTrianglesTest, NormalsAreThereAtThePolesOfASphere) {
    const Body sphere = bodyOf(BRepPrimAPI_MakeSphere(2).Shape());
    expectNormalsAgree(sphere);
    EXPECT_NEAR(volumeOf(sphere), 32 * M_PI / 3, 0.7);
}

TEST(FaceTrianglesTest, PlaceOfTheFaceAndOriginOfTheBodyCount) {
    gp_Trsf far;
    far.SetTranslation(gp_Vec(1e8, 0, 0));
    const Body box =
        bodyOf(BRepPrimAPI_MakeBox(1, 1, 1).Shape().Moved(TopLoc_Location(far)), {1e8, 0, 0});
    EXPECT_NEAR(volumeOf(box), 1, 1e-6);
    for (const Face& face : box.faces) {
        for (const float length : face.points) {
            EXPECT_TRUE(length == 0 || length == 1) << length;
        }
    }
}

TEST(FaceTrianglesTest, AFaceThatIsNotMeshedHasNone) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(1, 1, 1).Shape();
    Face face;
    EXPECT_FALSE(
        fillTriangles(TopoDS::Face(TopExp_Explorer(box, TopAbs_FACE).Current()), {0, 0, 0}, face));
    EXPECT_TRUE(face.points.empty());
}

}  // namespace
}  // namespace kesview
