/// @file
/// The attributes of nodes: the base and its five kinds.

#include "graph/TellingGraph.h"

#include <KesVizCore/graph/Attribute.h>
#include <KesVizCore/graph/AttributeColor.h>
#include <KesVizCore/graph/AttributeHighlight.h>
#include <KesVizCore/graph/AttributeLineStyle.h>
#include <KesVizCore/graph/AttributeTransform.h>
#include <KesVizCore/graph/AttributeVisibility.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace KesVizCore {
namespace {

using Matrix = std::array<double, 16>;

const RGBAColor kOpaque(10, 20, 30, 255);
const RGBAColor kTranslucent(10, 20, 30, 254);

int typeOf(Attribute& attribute) {
    return attribute.GetType();
}

Matrix matrixOf(AttributeTransform& attribute) {
    Matrix matrix;
    std::copy_n(attribute.GetTransform(), 16, matrix.begin());
    return matrix;
}

/// Sixteen values, no two alike.
Matrix distinctMatrix() {
    Matrix matrix;
    for (int place = 0; place < 16; ++place) {
        matrix[static_cast<std::size_t>(place)] = 1.5 * place - 7.0;
    }
    return matrix;
}

// --- Attribute ----------------------------------------------------------------------------------

TEST(AttributeTest, TypeIsTheOneOfItsConstructor) {
    support::HostAttribute attribute(AttributeType(77));
    EXPECT_EQ(typeOf(attribute), 77);
}

TEST(AttributeTest, IsDestroyedThroughItsBase) {
    support::Deaths deaths;
    const Attribute* attribute = new support::AnyAttribute(deaths, "host's", AttributeType(77));
    delete attribute;
    EXPECT_EQ(deaths, support::Deaths{"host's"});
}

TEST(AttributeTest, EachKindAnswersItsTypeAndNoneAnswersThree) {
    AttributeColor color(kOpaque, false);
    AttributeHighlight highlight(kOpaque);
    AttributeTransform transform;
    Matrix matrix = distinctMatrix();
    AttributeTransform transformOfMatrix(matrix.data());
    AttributeVisibility visibility(true);
    AttributeLineStyle lineStyle(1.0F, "");
    const std::vector<int> types = {typeOf(color),      typeOf(highlight),
                                    typeOf(transform),  typeOf(transformOfMatrix),
                                    typeOf(visibility), typeOf(lineStyle)};
    EXPECT_EQ(types, (std::vector<int>{0, 1, 2, 2, 4, 5}));
}

TEST(AttributeTest, CannotBeMadeWithoutAKind) {
    EXPECT_FALSE((std::is_constructible_v<Attribute, AttributeType>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Attribute>);
}

TEST(AttributeTest, AssignmentTakesTheTypeAlong) {
    support::HostAttribute attribute(AttributeType(77));
    attribute = support::HostAttribute(AttributeType(78));
    EXPECT_EQ(typeOf(attribute), 78);
}

// --- AttributeColor -----------------------------------------------------------------------------

TEST(AttributeColorTest, HoldsItsColor) {
    AttributeColor attribute(kTranslucent, false);
    EXPECT_EQ(attribute.GetColor(), kTranslucent);
}

TEST(AttributeColorTest, GetColorRefersToTheStoredColor) {
    AttributeColor attribute(kTranslucent, false);
    const RGBAColor& color = attribute.GetColor();
    attribute.SetColor(kOpaque);
    EXPECT_EQ(color, kOpaque);
}

TEST(AttributeColorTest, SetColorReplacesTheColor) {
    AttributeColor attribute(kTranslucent, false);
    attribute.SetColor(RGBAColor::Red());
    EXPECT_EQ(attribute.GetColor(), RGBAColor::Red());
}

TEST(AttributeColorTest, OpaqueFollowsTheColorOfTheConstructor) {
    EXPECT_TRUE(AttributeColor(kOpaque, false).GetIsOpaque());
    EXPECT_FALSE(AttributeColor(kTranslucent, false).GetIsOpaque());
    EXPECT_FALSE(AttributeColor(RGBAColor::Red(), false).GetIsOpaque());  // named ones have alpha 0
}

TEST(AttributeColorTest, OpaqueFollowsEverySetColor) {
    AttributeColor attribute(kTranslucent, false);
    attribute.SetColor(kOpaque);
    EXPECT_TRUE(attribute.GetIsOpaque());
    attribute.SetColor(kTranslucent);
    EXPECT_FALSE(attribute.GetIsOpaque());
}

TEST(AttributeColorTest, PriorityIsKeptThroughAnyNumberOfColors) {
    for (const bool priority : {false, true}) {
        AttributeColor attribute(kOpaque, priority);
        EXPECT_EQ(attribute.HasPriority(), priority);
        for (const RGBAColor& color : {kTranslucent, kOpaque, RGBAColor::Blue()}) {
            attribute.SetColor(color);
            EXPECT_EQ(attribute.HasPriority(), priority);
        }
    }
}

TEST(AttributeColorTest, CopyHoldsEverything) {
    AttributeColor attribute(kTranslucent, true);
    AttributeColor copy(attribute);
    attribute.SetColor(kOpaque);
    EXPECT_EQ(copy.GetColor(), kTranslucent);
    EXPECT_FALSE(copy.GetIsOpaque());
    EXPECT_TRUE(copy.HasPriority());
    EXPECT_EQ(typeOf(copy), 0);
}

TEST(AttributeColorTest, AssignmentTakesEverything) {
    AttributeColor attribute(kOpaque, false);
    attribute = AttributeColor(kTranslucent, true);
    EXPECT_EQ(attribute.GetColor(), kTranslucent);
    EXPECT_FALSE(attribute.GetIsOpaque());
    EXPECT_TRUE(attribute.HasPriority());
}

// --- AttributeHighlight -------------------------------------------------------------------------

TEST(AttributeHighlightTest, OriginalColorIsTheOneOfItsConstructor) {
    EXPECT_EQ(AttributeHighlight(kTranslucent).GetOriginalColor(), kTranslucent);
}

TEST(AttributeHighlightTest, OriginalColorIsACopy) {
    AttributeHighlight attribute(kTranslucent);
    RGBAColor color = attribute.GetOriginalColor();
    color = kOpaque;
    EXPECT_EQ(attribute.GetOriginalColor(), kTranslucent);
    EXPECT_FALSE(std::is_reference_v<decltype(attribute.GetOriginalColor())>);
}

TEST(AttributeHighlightTest, CopyAndAssignmentTakeTheColor) {
    const AttributeHighlight attribute(kTranslucent);
    AttributeHighlight copy(attribute);
    AttributeHighlight assigned(kOpaque);
    assigned = attribute;
    EXPECT_EQ(copy.GetOriginalColor(), kTranslucent);
    EXPECT_EQ(assigned.GetOriginalColor(), kTranslucent);
}

// --- AttributeLineStyle -------------------------------------------------------------------------

TEST(AttributeLineStyleTest, HoldsWeightAndPattern) {
    AttributeLineStyle attribute(2.5F, "dash dot");
    EXPECT_EQ(attribute.GetWeight(), 2.5F);
    EXPECT_EQ(attribute.GetPattern(), "dash dot");
}

TEST(AttributeLineStyleTest, SetWeightReplacesTheWeightAlone) {
    AttributeLineStyle attribute(2.5F, "dash");
    const float& weight = attribute.GetWeight();
    attribute.SetWeight(-1.0F);
    EXPECT_EQ(weight, -1.0F);  // the answer refers to the stored weight
    EXPECT_EQ(attribute.GetPattern(), "dash");
}

TEST(AttributeLineStyleTest, SetPatternReplacesThePatternAlone) {
    AttributeLineStyle attribute(2.5F, "dash");
    const std::string& pattern = attribute.GetPattern();
    attribute.SetPattern("");
    EXPECT_EQ(pattern, "");
    EXPECT_EQ(attribute.GetWeight(), 2.5F);
}

TEST(AttributeLineStyleTest, AcceptsItsOwnWeightAndPattern) {
    AttributeLineStyle attribute(2.5F, "a pattern that is longer than a short string");
    attribute.SetWeight(attribute.GetWeight());
    attribute.SetPattern(attribute.GetPattern());
    EXPECT_EQ(attribute.GetWeight(), 2.5F);
    EXPECT_EQ(attribute.GetPattern(), "a pattern that is longer than a short string");
}

TEST(AttributeLineStyleTest, CopyIsIndependent) {
    AttributeLineStyle attribute(2.5F, "dash");
    AttributeLineStyle copy(attribute);
    attribute.SetWeight(1.0F);
    attribute.SetPattern("dot");
    EXPECT_EQ(copy.GetWeight(), 2.5F);
    EXPECT_EQ(copy.GetPattern(), "dash");
    EXPECT_EQ(typeOf(copy), 5);
}

TEST(AttributeLineStyleTest, AssignmentTakesWeightAndPattern) {
    AttributeLineStyle attribute(2.5F, "dash");
    const AttributeLineStyle other(1.0F, "dot");
    AttributeLineStyle& assigned = attribute = other;
    EXPECT_EQ(attribute.GetWeight(), 1.0F);
    EXPECT_EQ(attribute.GetPattern(), "dot");
    EXPECT_EQ(&assigned, &attribute);
}

// --- AttributeTransform -------------------------------------------------------------------------

TEST(AttributeTransformTest, IsTheIdentityByDefault) {
    AttributeTransform attribute;
    EXPECT_EQ(matrixOf(attribute), (Matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(attribute.IsIdentity());
}

TEST(AttributeTransformTest, CopiesSixteenDoublesAtConstruction) {
    const Matrix original = distinctMatrix();
    Matrix matrix = original;
    AttributeTransform attribute(matrix.data());
    matrix.fill(0.0);
    EXPECT_EQ(matrixOf(attribute), original);
    EXPECT_FALSE(attribute.IsIdentity());
}

TEST(AttributeTransformTest, GetTransformIsWritable) {
    AttributeTransform attribute;
    attribute.GetTransform()[12] = 5.0;
    EXPECT_EQ(attribute.GetTransform()[12], 5.0);
    EXPECT_FALSE(attribute.IsIdentity());
}

TEST(AttributeTransformTest, SetTransformCopiesSixteenDoubles) {
    const Matrix original = distinctMatrix();
    Matrix matrix = original;
    AttributeTransform attribute;
    attribute.SetTransform(matrix.data());
    matrix.fill(0.0);
    EXPECT_EQ(matrixOf(attribute), original);
}

TEST(AttributeTransformTest, SetTransformAcceptsItsOwnMatrix) {
    Matrix matrix = distinctMatrix();
    AttributeTransform attribute(matrix.data());
    attribute.SetTransform(attribute.GetTransform());
    EXPECT_EQ(matrixOf(attribute), matrix);
}

TEST(AttributeTransformTest, EveryBitOfEveryElementCountsForTheIdentity) {
    for (std::size_t place = 0; place < 16; ++place) {
        SCOPED_TRACE(place);
        AttributeTransform attribute;
        double& element = attribute.GetTransform()[place];
        element = std::nextafter(element, 2.0);
        EXPECT_FALSE(attribute.IsIdentity());
        element = place % 5 == 0 ? 0.9999999 : std::numeric_limits<double>::denorm_min();
        EXPECT_FALSE(attribute.IsIdentity());
        element = std::numeric_limits<double>::quiet_NaN();
        EXPECT_FALSE(attribute.IsIdentity());
    }
}

TEST(AttributeTransformTest, NegativeZeroIsNoIdentity) {
    // Equal as a number, yet the comparison is of bytes.
    AttributeTransform attribute;
    attribute.GetTransform()[1] = -0.0;
    EXPECT_EQ(attribute.GetTransform()[1], 0.0);
    EXPECT_FALSE(attribute.IsIdentity());
}

TEST(AttributeTransformTest, SetIdentityOnItsOwnMatrixMakesItTheIdentityAgain) {
    AttributeTransform attribute;
    attribute.GetTransform()[12] = 5.0;
    AttributeTransform::SetIdentity(attribute.GetTransform());
    EXPECT_TRUE(attribute.IsIdentity());
}

TEST(AttributeTransformTest, SetIdentityWritesSixteenDoublesAndNoMore) {
    std::array<double, 18> doubles;
    doubles.fill(7.0);
    AttributeTransform::SetIdentity(doubles.data() + 1);
    EXPECT_EQ(doubles,
              (std::array<double, 18>{7, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 7}));
}

TEST(AttributeTransformTest, CopyAndAssignmentTakeTheMatrix) {
    Matrix matrix = distinctMatrix();
    AttributeTransform attribute(matrix.data());
    AttributeTransform copy(attribute);
    AttributeTransform assigned;
    assigned = attribute;
    AttributeTransform::SetIdentity(attribute.GetTransform());
    EXPECT_EQ(matrixOf(copy), matrix);
    EXPECT_EQ(matrixOf(assigned), matrix);
}

// --- AttributeVisibility ------------------------------------------------------------------------

TEST(AttributeVisibilityTest, HoldsTheFlag) {
    AttributeVisibility visible(true);
    AttributeVisibility hidden(false);
    EXPECT_TRUE(visible.GetIsVisible());
    EXPECT_FALSE(hidden.GetIsVisible());
}

TEST(AttributeVisibilityTest, SetIsVisibleReplacesTheFlag) {
    AttributeVisibility attribute(true);
    const bool& visible = attribute.GetIsVisible();
    attribute.SetIsVisible(false);
    EXPECT_FALSE(visible);  // the answer refers to the stored flag
    attribute.SetIsVisible(true);
    EXPECT_TRUE(visible);
}

TEST(AttributeVisibilityTest, CopyAndAssignmentTakeTheFlag) {
    const AttributeVisibility hidden(false);
    AttributeVisibility copy(hidden);
    AttributeVisibility assigned(true);
    assigned = hidden;
    EXPECT_FALSE(copy.GetIsVisible());
    EXPECT_FALSE(assigned.GetIsVisible());
}

}  // namespace
}  // namespace KesVizCore
