#include "reading/part21/ExchangeGeometry.h"
#include "reading/part21/ExchangeUnits.h"

#include <gtest/gtest.h>

namespace kesview {
namespace {

constexpr double pi = 3.14159265358979323846;

const char* const frameText =
    "#1=CARTESIAN_POINT('',(1.,2.,3.));#2=DIRECTION('',(0.,0.,2.));#3=DIRECTION('',(0.,1.,0.));"
    "#4=AXIS2_PLACEMENT_3D('',#1,#2,#3);#5=CIRCLE('',#4,10.);";

std::vector<Vector> curveOf(const std::string& text, EntityNumber number, double scale = 1,
                            double angleScale = 1) {
    const ExchangeFile file = ExchangeFile::FromText(frameText + text);
    const auto curve = ExchangeGeometry(file, scale, angleScale).Curve(number);
    return curve.value_or(std::vector<Vector>());
}

void expectNear(const Vector& a, const Vector& b) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(a[i], b[i], 1e-9) << "coordinate " << i;
    }
}

TEST(ExchangeGeometryTest, FramesAreRightHandedAndScaled) {
    const ExchangeFile file = ExchangeFile::FromText(frameText);
    const auto frame = ExchangeGeometry(file, 25.4, 1).Frame(4);
    ASSERT_TRUE(frame);
    expectNear(frame->origin, {25.4, 50.8, 76.2});
    expectNear(frame->x, {0, 1, 0});
    expectNear(frame->y, {-1, 0, 0});
    expectNear(frame->z, {0, 0, 1});
}

TEST(ExchangeGeometryTest, PolylinesKeepTheirPoints) {
    const auto line =
        curveOf("#6=CARTESIAN_POINT('',(4.,5.,6.));#7=POLYLINE('',(#1,#6,#1));", 7, 2);
    ASSERT_EQ(line.size(), 3U);
    expectNear(line[1], {8, 10, 12});
}

TEST(ExchangeGeometryTest, CirclesCloseAndKeepTheirRadius) {
    const auto circle = curveOf("", 5);
    ASSERT_EQ(circle.size(), 49U);
    expectNear(circle.front(), circle.back());
    for (const Vector& point : circle) {
        EXPECT_NEAR(lengthOf(point - Vector{1, 2, 3}), 10, 1e-9);
        EXPECT_NEAR(point[2], 3, 1e-12);
    }
}

TEST(ExchangeGeometryTest, ArcsRunFromTrimToTrimInTheirSense) {
    const auto quarter = curveOf(
        "#6=TRIMMED_CURVE('',#5,(PARAMETER_VALUE(0.)),(PARAMETER_VALUE(90.)),"
        ".T.,.PARAMETER.);",
        6, 1, pi / 180);
    expectNear(quarter.front(), {1, 12, 3});
    expectNear(quarter.back(), {-9, 2, 3});
    EXPECT_EQ(quarter.size(), 13U);
    const auto rest = curveOf(
        "#6=TRIMMED_CURVE('',#5,(PARAMETER_VALUE(0.)),(PARAMETER_VALUE(90.)),"
        ".F.,.PARAMETER.);",
        6, 1, pi / 180);
    expectNear(rest.back(), {-9, 2, 3});
    EXPECT_EQ(rest.size(), 37U);
}

TEST(ExchangeGeometryTest, ArcsBetweenTrimsInfinitelyFarApartAreNone) {
    for (const char* sense : {".T.", ".F."}) {
        EXPECT_TRUE(curveOf(std::string("#6=TRIMMED_CURVE('',#5,(PARAMETER_VALUE(1.E308)),"
                                        "(PARAMETER_VALUE(-1.E308)),") +
                                sense + ",.PARAMETER.);",
                            6)
                        .empty());
    }
}

TEST(ExchangeGeometryTest, ArcsMayBeTrimmedByPoints) {
    const auto arc = curveOf(
        "#6=CARTESIAN_POINT('',(1.,12.,3.));#7=CARTESIAN_POINT('',(1.,-8.,3.));"
        "#8=TRIMMED_CURVE('',#5,(#6),(#7),.T.,.CARTESIAN.);",
        8);
    ASSERT_EQ(arc.size(), 25U);
    expectNear(arc[12], {-9, 2, 3});
}

TEST(ExchangeGeometryTest, TrimmedLinesRunAlongTheirVector) {
    const auto line = curveOf(
        "#6=VECTOR('',#3,2.);#7=LINE('',#1,#6);"
        "#8=TRIMMED_CURVE('',#7,(PARAMETER_VALUE(-1.)),(PARAMETER_VALUE(3.)),"
        ".T.,.PARAMETER.);",
        8, 10);
    ASSERT_EQ(line.size(), 2U);
    expectNear(line[0], {10, 0, 30});
    expectNear(line[1], {10, 80, 30});
}

TEST(ExchangeGeometryTest, BezierSplinesPassTheirMiddle) {
    const auto line = curveOf(
        "#6=CARTESIAN_POINT('',(1.,6.,3.));#7=CARTESIAN_POINT('',(5.,6.,3.));"
        "#8=B_SPLINE_CURVE_WITH_KNOTS('',2,(#1,#6,#7),.UNSPECIFIED.,.F.,.F.,"
        "(3,3),(0.,1.),.UNSPECIFIED.);",
        8);
    ASSERT_EQ(line.size(), 9U);
    expectNear(line.front(), {1, 2, 3});
    expectNear(line[4], {2, 5, 3});  // a quarter of the ends and half of the middle pole
    expectNear(line.back(), {5, 6, 3});
}

/// Each curve runs ten times along the next; the last is a line.
std::vector<Vector> repeatedCurve(int levels) {
    std::string text = "#6=POLYLINE('',(#1,#1));";
    for (int i = 0; i < levels; ++i) {
        const auto number = [i](int offset) { return "#" + std::to_string(6 + 2 * i + offset); };
        text += number(1) + "=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.," + number(0) + ");" +
                number(2) + "=COMPOSITE_CURVE('',(" + number(1);
        for (int k = 1; k < 10; ++k) {
            text += "," + number(1);
        }
        text += "),.F.);";
    }
    return curveOf(text, static_cast<EntityNumber>(6 + 2 * levels));
}

TEST(ExchangeGeometryTest, CurvesThatRepeatToMillionsOfPointsAreNone) {
    EXPECT_EQ(repeatedCurve(3).size(), 1001U);
    EXPECT_TRUE(repeatedCurve(12).empty());
}

// Read for each of the 100,000 times that it is run along, it takes minutes under the sanitizers.
TEST(ExchangeGeometryTest, CurvesThatRepeatAreReadOnce) {
    const auto line = repeatedCurve(5);
    ASSERT_EQ(line.size(), 100'001U);
    expectNear(line.front(), {1, 2, 3});
    expectNear(line.back(), {1, 2, 3});
}

TEST(ExchangeGeometryTest, DamagedCurvesAreNone) {
    EXPECT_TRUE(curveOf("#6=POLYLINE('',(#1,#99));", 6).empty());
    EXPECT_TRUE(curveOf("#6=CIRCLE('',#99,1.);", 6).empty());
    EXPECT_TRUE(curveOf("#6=TRIMMED_CURVE('',#6,$,$,.T.,$);", 6).empty());
}

TEST(ExchangeUnitsTest, ReadsMetricImperialAndAngularUnits) {
    const ExchangeFile file = ExchangeFile::FromText(
        "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));"
        "#2=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#1);"
        "#3=(CONVERSION_BASED_UNIT('INCH',#2)LENGTH_UNIT()NAMED_UNIT(#9));"
        "#4=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));"
        "#5=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.5),#4);"
        "#6=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#3,#4))REPRESENTATION_CONTEXT('',''));");
    EXPECT_EQ(readUnit(file, 1).name, "millimetre");
    EXPECT_EQ(readUnit(file, 1).factor, 1.0);
    EXPECT_EQ(readUnit(file, 3).name, "inch");
    EXPECT_EQ(readUnit(file, 3).factor, 25.4);
    EXPECT_EQ(readUnit(file, 3).quantity, Quantity::Length);
    EXPECT_EQ(readMeasure(file, 5)->unit.quantity, Quantity::Angle);
    EXPECT_EQ(readContextUnits(file, 6).length, 25.4);
    EXPECT_EQ(readDefaultUnits(file).angle, 1.0);
}

TEST(ExchangeUnitsTest, AUnitThatIsMadeOfItselfIsNone) {
    const ExchangeFile file = ExchangeFile::FromText(
        "#2=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(2.),#3);"
        "#3=(CONVERSION_BASED_UNIT('LOOP',#2)LENGTH_UNIT()NAMED_UNIT(#9));");
    EXPECT_EQ(readUnit(file, 3).quantity, Quantity::Other);
}

}  // namespace
}  // namespace kesview
