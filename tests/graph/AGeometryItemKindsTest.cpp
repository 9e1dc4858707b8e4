/// @file
/// The six kinds of geometry items.

#include <KesVizCore/graph/AGeometryItemFilledPolyline.h>
#include <KesVizCore/graph/AGeometryItemPointCloud.h>
#include <KesVizCore/graph/AGeometryItemPolyline.h>
#include <KesVizCore/graph/AGeometryItemText.h>
#include <KesVizCore/graph/AGeometryItemTriangleSet.h>
#include <KesVizCore/graph/AGeometryItemVertex.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace KesVizCore {
namespace {

/// A kind completed as a host does, with its constructors.
template <typename Kind>
class Completed : public Kind {
public:
    using Kind::Kind;
    bool GetExtents(float* /*extrema*/) const override { return false; }
    void SetVisible(const bool& /*visible*/) override {}
    bool IsVisible() const override { return true; }
};

/// What a host's derived class sees inside.
struct TriangleSet : Completed<AGeometryItemTriangleSet> {
    using Completed::Completed;
    explicit TriangleSet(const std::uint64_t& id) : Completed(id) {}
    using AGeometryItemTriangleSet::_triangleCount;
    using AGeometryItemTriangleSet::_triangleType;
    using AGeometryItemTriangleSet::_vertexCount;
};

struct Polyline : Completed<AGeometryItemPolyline> {
    using Completed::Completed;
    explicit Polyline(const std::uint64_t& id) : Completed(id) {}
    using AGeometryItemPolyline::_highlighted;
};

struct FilledPolyline : Completed<AGeometryItemFilledPolyline> {
    using Completed::Completed;
    explicit FilledPolyline(const std::uint64_t& id) : Completed(id) {}
    using AGeometryItemFilledPolyline::_highlighted;
};

struct PointCloud : Completed<AGeometryItemPointCloud> {
    using Completed::Completed;
    explicit PointCloud(const std::uint64_t& id) : Completed(id) {}
    using AGeometryItemPointCloud::_highlighted;
};

struct Vertex : Completed<AGeometryItemVertex> {
    using Completed::Completed;
};

struct Text : Completed<AGeometryItemText> {
    using AGeometryItemText::_firstText;
    using AGeometryItemText::_font;
    using AGeometryItemText::_number;
    using AGeometryItemText::_secondText;
    using Completed::Completed;
};

TriangleSet triangleSet() {
    return TriangleSet(5, nullptr, nullptr, nullptr, 11, 22, 33, TriangleStrip);
}

Text text() {
    return Text(5, L"first", L"second", nullptr, FontAttr{2.0F, 3.0F, 4.0F}, 0.75F);
}

// --- every kind ---------------------------------------------------------------------------------

TEST(AGeometryItemKindsTest, ToStringIsTheBareKindName) {
    float point[3] = {};
    EXPECT_EQ(triangleSet().ToString(), "TriangleSet");
    EXPECT_EQ(Polyline(5, point, 1).ToString(), "Polyline");
    EXPECT_EQ(FilledPolyline(5, point, 1).ToString(), "FilledPolyline");
    EXPECT_EQ(PointCloud(5, 1, point).ToString(), "PointCloud");
    EXPECT_EQ(Vertex(5, point).ToString(), "Vertex");
    EXPECT_EQ(text().ToString(), "Text");
}

TEST(AGeometryItemKindsTest, IdIsTheOneOfTheConstructor) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(triangleSet().ID(), 5U);
    EXPECT_EQ(TriangleSet(largest).ID(), largest);
    EXPECT_EQ(Polyline(largest, nullptr, 0).ID(), largest);
    EXPECT_EQ(Polyline(largest).ID(), largest);
    EXPECT_EQ(FilledPolyline(largest, nullptr, 0).ID(), largest);
    EXPECT_EQ(FilledPolyline(largest).ID(), largest);
    EXPECT_EQ(PointCloud(largest, 0, nullptr).ID(), largest);
    EXPECT_EQ(PointCloud(largest).ID(), largest);
    EXPECT_EQ(Vertex(largest, nullptr).ID(), largest);
    EXPECT_EQ(text().ID(), 5U);
}

TEST(AGeometryItemKindsTest, BeginsWithTheColorOfEveryItem) {
    const Vertex vertex(5, nullptr);
    EXPECT_EQ(vertex.GetColor()[0], 0.0F);
    EXPECT_EQ(vertex.GetColor()[3], 255.0F);
}

TEST(AGeometryItemKindsTest, CopiesKeepTheColor) {
    Vertex vertex(5, nullptr);
    vertex.SetColor(RGBAColor(255, 0, 0, 255));
    const Vertex copy(vertex);
    EXPECT_EQ(copy.GetColor()[0], 1.0F);
}

TEST(AGeometryItemKindsTest, OnlyTheHostCanCompleteThem) {
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemTriangleSet>);
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemPolyline>);
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemFilledPolyline>);
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemPointCloud>);
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemVertex>);
    EXPECT_TRUE(std::is_abstract_v<AGeometryItemText>);
}

TEST(AGeometryItemKindsTest, ArraysAreNeitherReadNorKept) {
    // Read as arrays, the address 1 would end the program.
    float* const nowhere = reinterpret_cast<float*>(std::uintptr_t{1});
    int* const noIndices = reinterpret_cast<int*>(std::uintptr_t{1});
    EXPECT_EQ(TriangleSet(5, nowhere, nowhere, noIndices, 9, 9, 9, IndexedTriangles).ToString(),
              "TriangleSet");
    EXPECT_EQ(Polyline(5, nowhere, 9).ToString(), "Polyline");
    EXPECT_EQ(FilledPolyline(5, nowhere, 9).ToString(), "FilledPolyline");
    EXPECT_EQ(PointCloud(5, 9, nowhere).ToString(), "PointCloud");
    EXPECT_EQ(Vertex(5, nowhere).ToString(), "Vertex");
    EXPECT_EQ(Text(5, L"", L"", nowhere, FontAttr(), 0.0F).ToString(), "Text");
}

// --- AGeometryItemTriangleSet -------------------------------------------------------------------

TEST(AGeometryItemTriangleSetTest, NumberOfTrianglesIsTheThirdCountAsGiven) {
    // The factory's operation of the same arguments calls this place the index count.
    EXPECT_EQ(triangleSet().GetNumberOfTriangles(), 33);
    EXPECT_EQ(
        TriangleSet(5, nullptr, nullptr, nullptr, 0, 0, -1, TriangleList).GetNumberOfTriangles(),
        -1);
}

TEST(AGeometryItemTriangleSetTest, KeepsTheFirstCountAndTheType) {
    const TriangleSet item = triangleSet();
    EXPECT_EQ(item._vertexCount, 11);
    EXPECT_EQ(item._triangleType, TriangleStrip);
}

TEST(AGeometryItemTriangleSetTest, OfAnIdAloneHoldsNothing) {
    const TriangleSet item(5);
    EXPECT_EQ(item.GetNumberOfTriangles(), 0);
    EXPECT_EQ(item._vertexCount, 0);
    EXPECT_EQ(item._triangleType, TriangleList);
    EXPECT_FALSE((std::is_constructible_v<AGeometryItemTriangleSet, std::uint64_t>));
}

TEST(AGeometryItemTriangleSetTest, CopyAndAssignmentTakeEverything) {
    const TriangleSet item = triangleSet();
    const TriangleSet copy(item);
    TriangleSet assigned(6);
    assigned = item;
    for (const TriangleSet* same : {&copy, static_cast<const TriangleSet*>(&assigned)}) {
        EXPECT_EQ(same->ID(), 5U);
        EXPECT_EQ(same->_vertexCount, 11);
        EXPECT_EQ(same->_triangleCount, 33);
        EXPECT_EQ(same->_triangleType, TriangleStrip);
    }
}

// --- AGeometryItemPolyline ----------------------------------------------------------------------

TEST(AGeometryItemPolylineTest, IsSolidTwoThickAndNotHighlighted) {
    for (const Polyline& item : {Polyline(5, nullptr, 0), Polyline(5)}) {
        EXPECT_EQ(item.GetThickness(), 2.0F);
        EXPECT_EQ(item.GetStipple(), 0);
        EXPECT_FALSE(item._highlighted);
    }
}

TEST(AGeometryItemPolylineTest, SetThicknessReplacesTheThickness) {
    Polyline item(5);
    item.SetThickness(-0.5F);
    EXPECT_EQ(item.GetThickness(), -0.5F);
    EXPECT_EQ(item.GetStipple(), 0);
}

TEST(AGeometryItemPolylineTest, SetStippleReplacesTheStipple) {
    Polyline item(5);
    item.SetStipple(-32768);
    EXPECT_EQ(item.GetStipple(), -32768);
    item.SetStipple(0x0F0F);
    EXPECT_EQ(item.GetStipple(), 0x0F0F);
    EXPECT_EQ(item.GetThickness(), 2.0F);
}

TEST(AGeometryItemPolylineTest, SetHighlightedReplacesTheFlag) {
    Polyline item(5);
    item.SetHighlighted(true);
    EXPECT_TRUE(item._highlighted);
    item.SetHighlighted(false);
    EXPECT_FALSE(item._highlighted);
}

TEST(AGeometryItemPolylineTest, CopyAndAssignmentTakeEverything) {
    Polyline item(5);
    item.SetThickness(3.0F);
    item.SetStipple(7);
    item.SetHighlighted(true);
    const Polyline copy(item);
    Polyline assigned(6);
    assigned = item;
    for (const Polyline* same : {&copy, static_cast<const Polyline*>(&assigned)}) {
        EXPECT_EQ(same->ID(), 5U);
        EXPECT_EQ(same->GetThickness(), 3.0F);
        EXPECT_EQ(same->GetStipple(), 7);
        EXPECT_TRUE(same->_highlighted);
    }
}

// --- AGeometryItemFilledPolyline ----------------------------------------------------------------

TEST(AGeometryItemFilledPolylineTest, IsTwoThickAndNotHighlighted) {
    for (const FilledPolyline& item : {FilledPolyline(5, nullptr, 0), FilledPolyline(5)}) {
        EXPECT_EQ(item.GetThickness(), 2.0F);
        EXPECT_FALSE(item._highlighted);
    }
}

TEST(AGeometryItemFilledPolylineTest, SetThicknessReplacesTheThickness) {
    FilledPolyline item(5);
    item.SetThickness(0.5F);
    EXPECT_EQ(item.GetThickness(), 0.5F);
}

TEST(AGeometryItemFilledPolylineTest, SetHighlightedReplacesTheFlag) {
    FilledPolyline item(5);
    item.SetHighlighted(true);
    EXPECT_TRUE(item._highlighted);
    item.SetHighlighted(false);
    EXPECT_FALSE(item._highlighted);
}

TEST(AGeometryItemFilledPolylineTest, CopyAndAssignmentTakeEverything) {
    FilledPolyline item(5);
    item.SetThickness(3.0F);
    item.SetHighlighted(true);
    const FilledPolyline copy(item);
    FilledPolyline assigned(6);
    assigned = item;
    for (const FilledPolyline* same : {&copy, static_cast<const FilledPolyline*>(&assigned)}) {
        EXPECT_EQ(same->ID(), 5U);
        EXPECT_EQ(same->GetThickness(), 3.0F);
        EXPECT_TRUE(same->_highlighted);
    }
}

// --- AGeometryItemPointCloud --------------------------------------------------------------------

TEST(AGeometryItemPointCloudTest, HasPointsOfSizeOneAndIsNotHighlighted) {
    for (const PointCloud& item : {PointCloud(5, 0, nullptr), PointCloud(5)}) {
        EXPECT_EQ(item.GetPointSize(), 1.0);
        EXPECT_FALSE(item._highlighted);
    }
}

TEST(AGeometryItemPointCloudTest, SetPointSizeReplacesTheSize) {
    PointCloud item(5);
    item.SetPointSize(0.1);
    EXPECT_EQ(item.GetPointSize(), 0.1);  // a double, not a float
}

TEST(AGeometryItemPointCloudTest, SetHighlightedReplacesTheFlag) {
    PointCloud item(5);
    item.SetHighlighted(true);
    EXPECT_TRUE(item._highlighted);
    item.SetHighlighted(false);
    EXPECT_FALSE(item._highlighted);
}

TEST(AGeometryItemPointCloudTest, SizeAndHighlightAreTheHostsToOverride) {
    struct HostCloud : PointCloud {
        using PointCloud::PointCloud;
        void SetPointSize(const double& size) override { asked = size; }
        void SetHighlighted(const bool& highlighted) override { askedFlag = highlighted; }
        double asked = 0.0;
        bool askedFlag = false;
    };
    HostCloud item(5);
    AGeometryItemPointCloud& base = item;
    base.SetPointSize(4.0);
    base.SetHighlighted(true);
    EXPECT_EQ(item.asked, 4.0);
    EXPECT_TRUE(item.askedFlag);
    EXPECT_EQ(item.GetPointSize(), 1.0);
}

TEST(AGeometryItemPointCloudTest, CopyAndAssignmentTakeEverything) {
    PointCloud item(5);
    item.SetPointSize(3.0);
    item.SetHighlighted(true);
    const PointCloud copy(item);
    PointCloud assigned(6);
    assigned = item;
    for (const PointCloud* same : {&copy, static_cast<const PointCloud*>(&assigned)}) {
        EXPECT_EQ(same->ID(), 5U);
        EXPECT_EQ(same->GetPointSize(), 3.0);
        EXPECT_TRUE(same->_highlighted);
    }
}

// --- AGeometryItemVertex ------------------------------------------------------------------------

TEST(AGeometryItemVertexTest, HasSizeOne) {
    EXPECT_EQ(Vertex(5, nullptr).GetPointSize(), 1.0);
}

TEST(AGeometryItemVertexTest, SetPointSizeReplacesTheSize) {
    Vertex item(5, nullptr);
    item.SetPointSize(0.1);
    EXPECT_EQ(item.GetPointSize(), 0.1);
}

TEST(AGeometryItemVertexTest, CopyAndAssignmentTakeEverything) {
    Vertex item(5, nullptr);
    item.SetPointSize(3.0);
    const Vertex copy(item);
    Vertex assigned(6, nullptr);
    assigned = item;
    EXPECT_EQ(copy.ID(), 5U);
    EXPECT_EQ(copy.GetPointSize(), 3.0);
    EXPECT_EQ(assigned.ID(), 5U);
    EXPECT_EQ(assigned.GetPointSize(), 3.0);
}

// --- AGeometryItemText --------------------------------------------------------------------------

TEST(AGeometryItemTextTest, KeepsTextsFontAndNumberAsGiven) {
    const Text item = text();
    EXPECT_EQ(item._firstText, L"first");
    EXPECT_EQ(item._secondText, L"second");
    EXPECT_EQ(item._font.FontSize, 2.0F);
    EXPECT_EQ(item._font.SpacingFactor, 3.0F);
    EXPECT_EQ(item._font.WidthScaling, 4.0F);
    EXPECT_EQ(item._number, 0.75F);
}

TEST(AGeometryItemTextTest, CopyAndAssignmentTakeEverything) {
    const Text item = text();
    const Text copy(item);
    Text assigned(6, L"", L"", nullptr, FontAttr(), 0.0F);
    assigned = item;
    for (const Text* same : {&copy, static_cast<const Text*>(&assigned)}) {
        EXPECT_EQ(same->ID(), 5U);
        EXPECT_EQ(same->_firstText, L"first");
        EXPECT_EQ(same->_secondText, L"second");
        EXPECT_EQ(same->_font.FontSize, 2.0F);
        EXPECT_EQ(same->_font.SpacingFactor, 3.0F);
        EXPECT_EQ(same->_font.WidthScaling, 4.0F);
        EXPECT_EQ(same->_number, 0.75F);
    }
}

}  // namespace
}  // namespace KesVizCore
