#include "reading/occ/BodyOrigin.h"

#include <gtest/gtest.h>

#include <Bnd_Box.hxx>
#include <gp_Pnt.hxx>

namespace kesview {
namespace {

Bnd_Box cube(double low, double size) {
    return {gp_Pnt(low, low, low), gp_Pnt(low + size, low + size, low + size)};
}

constexpr Vector zero = {0, 0, 0};

TEST(BodyOriginTest, NearBodiesKeepTheirCoordinates) {
    EXPECT_EQ(bodyOrigin(cube(0, 10)), zero);
    EXPECT_EQ(bodyOrigin(cube(-5000, 10)), zero);
}

TEST(BodyOriginTest, FarBodiesCountFromTheirMiddleInWholeMillimetres) {
    const Vector expected = {1e8 + 2, 1e8 + 2, 1e8 + 2};
    EXPECT_EQ(bodyOrigin(cube(1e8, 3)), expected);
    const Vector negative = {-99999, -99999, -99999};
    EXPECT_EQ(bodyOrigin(cube(-1e5, 2)), negative);
}

TEST(BodyOriginTest, ALonePointHasNoShapeToBlur) {
    EXPECT_EQ(bodyOrigin(cube(1e6, 0)), zero);
}

TEST(BodyOriginTest, NoBoxNoOrigin) {
    EXPECT_EQ(bodyOrigin(Bnd_Box()), zero);
}

}  // namespace
}  // namespace kesview
