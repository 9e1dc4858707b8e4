#include "reading/occ/ShapeIndex.h"

#include <gtest/gtest.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <gp_Trsf.hxx>

namespace kesview {
namespace {

TopLoc_Location moved() {
    gp_Trsf trsf;
    trsf.SetTranslation(gp_Vec(1, 2, 3));
    return {trsf};
}

TEST(ShapeIndexTest, FindsAShapeWhereverItStandsAndHoweverItIsTurned) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(1, 2, 3).Shape();
    ShapeIndex index;
    index.Add(box.Located(moved()), {EntityLink::Kind::Body, 0, 7});
    const auto link = index.Find(box.Reversed());
    ASSERT_TRUE(link.has_value());
    EXPECT_EQ(link->id, 7U);
    EXPECT_EQ(link->kind, EntityLink::Kind::Body);
}

TEST(ShapeIndexTest, TheFirstEntityOfASharedShapeStays) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(1, 2, 3).Shape();
    ShapeIndex index;
    index.Add(box, {EntityLink::Kind::Body, 0, 7});
    index.Add(box.Located(moved()), {EntityLink::Kind::Product, 0, 8});
    EXPECT_EQ(index.Find(box)->id, 7U);
}

TEST(ShapeIndexTest, KnowsNothingOfOtherShapes) {
    ShapeIndex index;
    EXPECT_FALSE(index.Find(BRepPrimAPI_MakeBox(1, 2, 3).Shape()).has_value());
    EXPECT_FALSE(index.Find(TopoDS_Shape()).has_value());
}

}  // namespace
}  // namespace kesview
