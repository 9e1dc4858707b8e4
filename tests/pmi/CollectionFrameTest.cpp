// The frame that a collection makes of an annotation, and its extents and rectangle in a frame.

#include "pmi/PMITestKit.h"

#include <KesVizCore/math/VectorMath.h>
#include <KesVizCore/pmi/VizPMI.h>
#include <KesVizCore/pmi/VizPMICollection.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace KesVizCore {
namespace {

using support::Box;
using support::loadPMI;
using support::OpenCollection;
using support::pmiThrough;
using support::Triple;

using Floats = std::vector<float>;

constexpr Triple kX{1, 0, 0};
constexpr Triple kY{0, 1, 0};
constexpr Triple kZ{0, 0, 1};

/// A collection after it made a frame of an annotation of one edge through these points.
OpenCollection framedBy(const Floats& vertices) {
    OpenCollection collection;
    EXPECT_TRUE(collection.FabricateAxis(pmiThrough(L"a", vertices).get()));
    return collection;
}

void expectNoFrame(const OpenCollection& collection) {
    EXPECT_FALSE(collection.IsViewOriented());
    EXPECT_EQ(collection.Origin(), (Triple{0, 0, 0}));
    EXPECT_EQ(collection.U(), kX);
    EXPECT_EQ(collection.V(), kY);
}

void expectFrame(const OpenCollection& collection, const Triple& origin, const Triple& u,
                 const Triple& v) {
    EXPECT_TRUE(collection.IsViewOriented());
    EXPECT_EQ(collection.Origin(), origin);
    EXPECT_EQ(collection.U(), u);
    EXPECT_EQ(collection.V(), v);
}

// --- making a frame -----------------------------------------------------------------------------

TEST(CollectionFrameTest, NoFrameIsMadeOfNull) {
    OpenCollection collection;
    EXPECT_FALSE(collection.FabricateAxis(nullptr));
    expectNoFrame(collection);
}

TEST(CollectionFrameTest, AFrameThatIsThereStays) {
    OpenCollection collection;
    collection.SetFrame({1, 2, 3}, kZ, kX);
    EXPECT_TRUE(collection.FabricateAxis(pmiThrough(L"a", {1, 0, 0, 0, 0, 0, 0, 1, 0}).get()));
    EXPECT_TRUE(collection.FabricateAxis(nullptr));  // it is not looked at
    expectFrame(collection, {1, 2, 3}, kZ, kX);
}

TEST(CollectionFrameTest, WithoutEdgesNoFrameIsMade) {
    OpenCollection collection;
    const auto pmi = loadPMI();
    pmi->AddText(support::textAt(1, 2, 3).release());
    EXPECT_TRUE(collection.FabricateAxis(pmi.get()));
    expectNoFrame(collection);
}

TEST(CollectionFrameTest, ThreeWholePointsAreNeeded) {
    expectNoFrame(framedBy({}));
    expectNoFrame(framedBy({1, 0, 0, 0, 0, 0}));
    expectNoFrame(framedBy({1, 0, 0, 0, 0, 0, 0, 1}));
    expectFrame(framedBy({1, 0, 0, 0, 0, 0, 0, 1, 0}), {1, 0, 0}, kX, kY);
}

TEST(CollectionFrameTest, PointsAfterTheThirdAreNotLookedAt) {
    expectFrame(framedBy({1, 0, 0, 0, 0, 0, 0, 1, 0, 9, 9, 9, 7}), {1, 0, 0}, kX, kY);
    expectNoFrame(framedBy({0, 0, 0, 1, 0, 0, 2, 0, 0, 2, 1, 0}));  // a corner, but the second
}

TEST(CollectionFrameTest, PointsThatFormNoCornerMakeNoFrame) {
    expectNoFrame(framedBy({1, 1, 1, 1, 1, 1, 5, 6, 7}));
    expectNoFrame(framedBy({5, 6, 7, 1, 1, 1, 1, 1, 1}));
    expectNoFrame(framedBy({0, 0, 0, 1, 1, 1, 2, 2, 2}));
    expectNoFrame(framedBy({2, 2, 2, 0, 0, 0, 2, 2, 2}));
    expectNoFrame(framedBy({1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

/// Whether a corner at the origin with these two ends makes a frame.
bool makesFrame(const Triple& first, const Triple& last) {
    return framedBy({first[0], first[1], first[2], 0, 0, 0, last[0], last[1], last[2]})
        .IsViewOriented();
}

// The float next to 1e-6 is below the double, with which lengths are compared.
TEST(CollectionFrameTest, EachSideIsAtLeastAMillionthLong) {
    const float below = 1e-6F;
    const float above = std::nextafter(below, 1.0F);
    EXPECT_FALSE(makesFrame({below, 0, 0}, {0, 1000, 0}));
    EXPECT_TRUE(makesFrame({above, 0, 0}, {0, 1000, 0}));
    EXPECT_FALSE(makesFrame({0, 1000, 0}, {0, 0, below}));
    EXPECT_TRUE(makesFrame({0, 1000, 0}, {0, 0, above}));
}

TEST(CollectionFrameTest, TheNormalIsAtLeastAMillionthLong) {
    EXPECT_FALSE(makesFrame({0.0009F, 0, 0}, {0, 0.0011F, 0}));
    EXPECT_TRUE(makesFrame({0.0010F, 0, 0}, {0, 0.0011F, 0}));
    EXPECT_FALSE(makesFrame({1, 0, 0}, {1, 1e-6F, 0}));
    EXPECT_TRUE(makesFrame({1, 0, 0}, {1, 2e-6F, 0}));
}

TEST(CollectionFrameTest, ACornerWithoutNumbersMakesNoFrame) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(makesFrame({nan, 0, 0}, {0, 1, 0}));
    EXPECT_FALSE(makesFrame({1, 0, 0}, {0, nan, 0}));
}

TEST(CollectionFrameTest, TheFirstEdgeThatWillDoIsTaken) {
    const auto pmi = pmiThrough(L"a", {0, 0, 0, 1, 1, 1});                      // too short
    pmi->AddEdge(support::edgeThrough({1, 1, 1, 1, 1, 1, 5, 6, 7}).release());  // no corner
    pmi->AddEdge(support::edgeThrough({0, 5, 0, 0, 0, 0, 0, 0, 5}).release());
    pmi->AddEdge(support::edgeThrough({1, 0, 0, 0, 0, 0, 0, 1, 0}).release());
    OpenCollection collection;
    EXPECT_TRUE(collection.FabricateAxis(pmi.get()));
    expectFrame(collection, {0, 5, 0}, kY, kZ);
}

TEST(CollectionFrameTest, InAPrincipalPlaneTheAxesAreThoseOfThePlane) {
    // Whichever way the corner turns, and wherever it stands.
    expectFrame(framedBy({7, 3, 1, 7, 0, 1, 7, 0, 9}), {7, 3, 1}, kY, kZ);
    expectFrame(framedBy({7, 0, 9, 7, 0, 1, 7, 3, 1}), {7, 0, 9}, kY, kZ);
    expectFrame(framedBy({3, 7, 1, 0, 7, 1, 0, 7, 9}), {3, 7, 1}, kZ, kX);
    expectFrame(framedBy({0, 7, 9, 0, 7, 1, 3, 7, 1}), {0, 7, 9}, kZ, kX);
    expectFrame(framedBy({3, 1, 7, 0, 1, 7, 0, 9, 7}), {3, 1, 7}, kX, kY);
    expectFrame(framedBy({0, 9, 7, 0, 1, 7, 3, 1, 7}), {0, 9, 7}, kX, kY);
    expectFrame(framedBy({3, 5, 7, 0, 1, 7, -4, 9, 7}), {3, 5, 7}, kX, kY);
}

/// A corner along the axes @p a and @p b, the second side tilted towards the third axis.
OpenCollection tilted(std::size_t a, std::size_t b, float tilt) {
    Triple first{};
    Triple last{};
    first[a] = 1.0F;
    last[b] = 1.0F;
    last[3 - a - b] = tilt;
    return framedBy({first[0], first[1], first[2], 0, 0, 0, last[0], last[1], last[2]});
}

// Within a millionth of 1: up to a tilt of about 0.0014.
TEST(CollectionFrameTest, APlaneAlmostPrincipalCountsAsOne) {
    for (const float tilt : {0.0013F, -0.0013F}) {
        EXPECT_EQ(tilted(1, 2, tilt).U(), kY);
        EXPECT_EQ(tilted(1, 2, tilt).V(), kZ);
        EXPECT_EQ(tilted(2, 1, tilt).U(), kY);
        EXPECT_EQ(tilted(2, 0, tilt).U(), kZ);
        EXPECT_EQ(tilted(2, 0, tilt).V(), kX);
        EXPECT_EQ(tilted(0, 2, tilt).U(), kZ);
        EXPECT_EQ(tilted(0, 1, tilt).U(), kX);
        EXPECT_EQ(tilted(0, 1, tilt).V(), kY);
        EXPECT_EQ(tilted(1, 0, tilt).U(), kX);
    }
}

TEST(CollectionFrameTest, APlaneFartherFromAPrincipalOneDoesNot) {
    for (const float tilt : {0.0016F, -0.0016F}) {
        // U is along the first side, and V is the second side turned round.
        EXPECT_NEAR(tilted(2, 1, tilt).V()[0], -tilt, 1e-6F);
        EXPECT_EQ(tilted(2, 1, tilt).U(), kZ);
        EXPECT_NEAR(tilted(0, 2, tilt).V()[1], -tilt, 1e-6F);
        EXPECT_EQ(tilted(0, 2, tilt).U(), kX);
        EXPECT_NEAR(tilted(1, 0, tilt).V()[2], -tilt, 1e-6F);
        EXPECT_EQ(tilted(1, 0, tilt).U(), kY);
    }
}

using Exact = std::array<long double, 3>;

Exact cross(const Exact& a, const Exact& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Exact unit(const Exact& v) {
    const long double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

void expectNear(const Triple& actual, const Exact& expected) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(static_cast<double>(actual[axis]), static_cast<double>(expected[axis]), 1e-6);
    }
}

TEST(CollectionFrameTest, ASkewCornerGivesItsFirstSideAndWhatIsSquareToIt) {
    // a = (3, 4, 0) and b = (0, 0, 2): n = (8, -6, 0), and a × n points down.
    const OpenCollection collection = framedBy({4, 5, 1, 1, 1, 1, 1, 1, 3});
    EXPECT_EQ(collection.Origin(), (Triple{4, 5, 1}));
    expectNear(collection.U(), {0.6L, 0.8L, 0});
    expectNear(collection.V(), {0, 0, -1});
}

TEST(CollectionFrameTest, SkewCornersGiveTheFrameOfExactArithmetic) {
    std::mt19937 random(20240611);
    std::uniform_real_distribution<float> coordinate(-50.0F, 50.0F);
    for (int run = 0; run < 500; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        Floats points(9);
        std::generate(points.begin(), points.end(), [&] { return coordinate(random); });
        const auto side = [&](std::size_t from) {
            Exact difference;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                difference[axis] = static_cast<long double>(points[from + axis]) - points[3 + axis];
            }
            return difference;
        };
        const Exact a = unit(side(0));
        const Exact n = unit(cross(side(0), side(6)));
        if (std::any_of(n.begin(), n.end(), [](long double x) { return std::fabs(x) > 0.999L; })) {
            continue;  // near a principal plane, where axes snap
        }
        const OpenCollection collection = framedBy(points);
        EXPECT_EQ(collection.Origin(), (Triple{points[0], points[1], points[2]}));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const Exact v = cross(a, n);
            EXPECT_NEAR(static_cast<double>(collection.U()[axis]), static_cast<double>(a[axis]),
                        1e-5);
            EXPECT_NEAR(static_cast<double>(collection.V()[axis]), static_cast<double>(v[axis]),
                        5e-4);  // of a normal that two near sides make inexact
        }
    }
}

// --- extents ------------------------------------------------------------------------------------

OpenCollection framed(const Box& box, const Triple& origin, const Triple& u, const Triple& v) {
    OpenCollection collection;
    collection.MergeExtrema(box.data());
    collection.SetFrame(origin, u, v);
    return collection;
}

Floats extentsOf(OpenCollection& collection) {
    const float* extents = nullptr;
    return collection.GetExtents(extents) ? Floats(extents, extents + 4) : Floats();
}

Floats extentsOf(OpenCollection&& collection) {
    return extentsOf(collection);
}

Floats rectangleOf(OpenCollection& collection) {
    const float* const rectangle = collection.GetRectangle();
    return rectangle != nullptr ? Floats(rectangle, rectangle + 15) : Floats();
}

const Box kUnequalBox{0, 0, 0, 2, 1, 0};

TEST(CollectionFrameTest, ExtentsAreTheBoxInTheFrameAndATenthMore) {
    EXPECT_EQ(extentsOf(framed(kUnequalBox, {0, 0, 0}, kX, kY)), (Floats{0, 0, 2.2F, 1.1F}));
}

TEST(CollectionFrameTest, ExtentsGrowAboutTheOriginOfTheFrameNotTheirCentre) {
    const Box box{10, 20, 0, 20, 30, 0};
    EXPECT_EQ(extentsOf(framed(box, {0, 0, 0}, kX, kY)),
              (Floats{10 * 1.1F, 20 * 1.1F, 20 * 1.1F, 30 * 1.1F}));
    EXPECT_EQ(extentsOf(framed(box, {20, 25, 5}, kX, kY)),
              (Floats{-10 * 1.1F, -5 * 1.1F, 0, 5 * 1.1F}));
}

TEST(CollectionFrameTest, ExtentsFollowTheAxesOfTheFrame) {
    const Box box{1, 2, 3, 10, 20, 30};
    EXPECT_EQ(extentsOf(framed(box, {0, 0, 0}, kZ, kX)),
              (Floats{3 * 1.1F, 1 * 1.1F, 30 * 1.1F, 10 * 1.1F}));
    EXPECT_EQ(extentsOf(framed(box, {0, 0, 0}, {0, -1, 0}, kZ)),
              (Floats{-20 * 1.1F, 3 * 1.1F, -2 * 1.1F, 30 * 1.1F}));
}

TEST(CollectionFrameTest, AxesAreUsedAsTheyAre) {
    EXPECT_EQ(extentsOf(framed(kUnequalBox, {0, 0, 0}, {2, 0, 0}, {0, -3, 0})),
              (Floats{0, -3 * 1.1F, 4 * 1.1F, 0}));
}

TEST(CollectionFrameTest, EveryCornerOfTheBoxCounts) {
    // Each corner in turn lies farthest along one of these skew axes.
    for (int signs = 0; signs < 8; ++signs) {
        SCOPED_TRACE(signs);
        Triple u;
        long double reach = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            u[axis] = (signs >> axis & 1) != 0 ? 1.0F : -1.0F;
            reach += static_cast<long double>(axis + 1);
        }
        const Floats extents = extentsOf(framed({-1, -2, -3, 1, 2, 3}, {0, 0, 0}, u, kY));
        EXPECT_FLOAT_EQ(extents[0], static_cast<float>(-reach * 1.1L));
        EXPECT_FLOAT_EQ(extents[2], static_cast<float>(reach * 1.1L));
    }
}

TEST(CollectionFrameTest, TheFirstCornerHoldsAgainstCornersWithoutNumbers) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    const Box box{1, 2, 0, nan, 4, 0};
    EXPECT_EQ(extentsOf(framed(box, {0, 0, 0}, kX, kY)),
              (Floats{1 * 1.1F, 2 * 1.1F, 1 * 1.1F, 4 * 1.1F}));
}

TEST(CollectionFrameTest, WithoutAFrameThereAreNoExtents) {
    OpenCollection collection;
    collection.MergeExtrema(kUnequalBox.data());
    EXPECT_FALSE(collection.FindExtents());
    EXPECT_EQ(extentsOf(collection), Floats());
    collection.SetFrame({0, 0, 0}, kX, kY);
    EXPECT_TRUE(collection.FindExtents());
}

TEST(CollectionFrameTest, WithoutExtremaThereAreNoExtents) {
    OpenCollection collection;
    collection.SetFrame({0, 0, 0}, kX, kY);
    EXPECT_FALSE(collection.FindExtents());
    EXPECT_EQ(extentsOf(collection), Floats());
    collection.MergeExtrema(kUnequalBox.data());
    EXPECT_TRUE(collection.FindExtents());
}

TEST(CollectionFrameTest, WithoutExtentsOutIsNull) {
    OpenCollection collection;
    const float some = 0.0F;
    const float* out = &some;
    EXPECT_FALSE(collection.GetExtents(out));
    EXPECT_EQ(out, nullptr);
}

TEST(CollectionFrameTest, ExtentsAreFoundOnceAndKept) {
    OpenCollection collection = framed(kUnequalBox, {0, 0, 0}, kX, kY);
    EXPECT_TRUE(collection.FindExtents());
    const float* first = nullptr;
    EXPECT_TRUE(collection.GetExtents(first));
    const Box larger{-50, -50, -50, 50, 50, 50};
    collection.MergeExtrema(larger.data());
    collection.SetFrame({9, 9, 9}, kZ, kX);
    EXPECT_TRUE(collection.FindExtents());
    const float* second = nullptr;
    EXPECT_TRUE(collection.GetExtents(second));
    EXPECT_EQ(second, first);
    EXPECT_EQ(extentsOf(collection), (Floats{0, 0, 2.2F, 1.1F}));
}

TEST(CollectionFrameTest, ExtentsFoundBeforeAreAnsweredAfterTheFrameIsGone) {
    struct Disoriented : OpenCollection {
        using OpenCollection::OpenCollection;
        void Disorient() { _viewOriented = false; }
    } collection;
    collection.MergeExtrema(kUnequalBox.data());
    collection.SetFrame({0, 0, 0}, kX, kY);
    EXPECT_TRUE(collection.FindExtents());
    collection.Disorient();
    EXPECT_TRUE(collection.FindExtents());
    EXPECT_EQ(extentsOf(collection), (Floats{0, 0, 2.2F, 1.1F}));
    EXPECT_EQ(collection.GetRectangle(), nullptr);  // this still needs a frame
}

// --- rectangle ----------------------------------------------------------------------------------

TEST(CollectionFrameTest, TheRectangleIsAClosedLoopRoundTheExtents) {
    OpenCollection collection = framed(kUnequalBox, {0, 0, 0}, kX, kY);
    EXPECT_EQ(rectangleOf(collection),
              (Floats{0, 0, 0, 2.2F, 0, 0, 2.2F, 1.1F, 0, 0, 1.1F, 0, 0, 0, 0}));
}

TEST(CollectionFrameTest, TheRectangleLiesInThePlaneOfTheFrame) {
    const float u = 10 * 1.1F;  // along y, from the origin at 100
    const float v = 20 * 1.1F;  // along z, from the origin at 1000
    OpenCollection collection = framed({-7, 90, 980, 7, 110, 1020}, {5, 100, 1000}, kY, kZ);
    EXPECT_EQ(rectangleOf(collection),
              (Floats{5, 100 - u, 1000 - v, 5, 100 + u, 1000 - v, 5, 100 + u, 1000 + v,  //
                      5, 100 - u, 1000 + v, 5, 100 - u, 1000 - v}));
}

TEST(CollectionFrameTest, WithoutAFrameThereIsNoRectangle) {
    OpenCollection collection;
    collection.MergeExtrema(kUnequalBox.data());
    EXPECT_EQ(collection.GetRectangle(), nullptr);
    collection.SetFrame({0, 0, 0}, kX, kY);
    EXPECT_NE(collection.GetRectangle(), nullptr);
}

TEST(CollectionFrameTest, WithoutExtremaThereIsNoRectangle) {
    OpenCollection collection;
    collection.SetFrame({0, 0, 0}, kX, kY);
    EXPECT_EQ(collection.GetRectangle(), nullptr);
    collection.MergeExtrema(kUnequalBox.data());
    EXPECT_NE(collection.GetRectangle(), nullptr);
}

TEST(CollectionFrameTest, TheRectangleIsMadeOnceAndKept) {
    OpenCollection collection = framed(kUnequalBox, {0, 0, 0}, kX, kY);
    const float* const first = collection.GetRectangle();
    const Floats before = rectangleOf(collection);
    collection.SetFrame({9, 9, 9}, kZ, kX);
    VizPMICollection& base = collection;
    EXPECT_EQ(base.GetRectangle(), first);
    EXPECT_EQ(rectangleOf(collection), before);
}

TEST(CollectionFrameTest, TheRectangleIsMadeOfExtentsFoundBefore) {
    OpenCollection collection = framed(kUnequalBox, {0, 0, 0}, kX, kY);
    EXPECT_TRUE(collection.FindExtents());
    collection.SetFrame({0, 0, 50}, kX, kY);
    EXPECT_EQ(rectangleOf(collection),
              (Floats{0, 0, 50, 2.2F, 0, 50, 2.2F, 1.1F, 50, 0, 1.1F, 50, 0, 0, 50}));
}

// --- extents and rectangle by exact arithmetic --------------------------------------------------

/// A frame of axes of length 1, at random, and extrema in order.
struct Layout {
    explicit Layout(std::mt19937& random) {
        std::uniform_real_distribution<float> coordinate(-100.0F, 100.0F);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            origin[axis] = coordinate(random);
            u[axis] = coordinate(random);
            v[axis] = coordinate(random);
            const float one = coordinate(random);
            const float other = coordinate(random);
            box[axis] = std::min(one, other);
            box[axis + 3] = std::max(one, other);
        }
        Normalize(u.data());
        Normalize(v.data());
    }

    Triple origin;
    Triple u;
    Triple v;
    Box box;
};

/// The least and greatest projection of the box on an axis, grown.
std::array<long double, 2> projected(const Layout& layout, const Triple& onto) {
    std::array<long double, 2> ends{0, 0};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const long double weight = onto[axis];
        const long double low = (static_cast<long double>(layout.box[axis]) - layout.origin[axis]);
        const long double high =
            (static_cast<long double>(layout.box[axis + 3]) - layout.origin[axis]);
        ends[0] += std::min(weight * low, weight * high);
        ends[1] += std::max(weight * low, weight * high);
    }
    return {ends[0] * 1.1L, ends[1] * 1.1L};
}

TEST(CollectionFrameTest, ExtentsAndRectangleAgreeWithExactArithmetic) {
    std::mt19937 random(77);
    for (int run = 0; run < 500; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        const Layout layout(random);
        OpenCollection collection = framed(layout.box, layout.origin, layout.u, layout.v);
        const auto u = projected(layout, layout.u);
        const auto v = projected(layout, layout.v);
        const long double expected[4] = {u[0], v[0], u[1], v[1]};
        const Floats extents = extentsOf(collection);
        for (std::size_t place = 0; place < 4; ++place) {
            EXPECT_NEAR(extents[place], static_cast<double>(expected[place]), 1e-3);
        }
        const Floats rectangle = rectangleOf(collection);
        const int corners[5][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
        for (std::size_t corner = 0; corner < 5; ++corner) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const long double point =
                    layout.origin[axis] +
                    u[static_cast<std::size_t>(corners[corner][0])] * layout.u[axis] +
                    v[static_cast<std::size_t>(corners[corner][1])] * layout.v[axis];
                EXPECT_NEAR(rectangle[3 * corner + axis], static_cast<double>(point), 1e-3);
            }
        }
    }
}

}  // namespace
}  // namespace KesVizCore
