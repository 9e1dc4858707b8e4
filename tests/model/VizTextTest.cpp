#include "model/ModelTestKit.h"

#include <KesVizCore/core/FontAttr.h>
#include <KesVizCore/model/VizText.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>

namespace KesVizCore {
namespace {

using support::loadText;
using support::Matrix;
using support::TextLoader;
using support::tripleAt;

/// A text that stands there.
std::unique_ptr<VizText> textAt(const Vector& anchor, const Vector& direction,
                                const Vector& normal) {
    return loadText([&](VizText& text) {
        text.SetAnchorPoint(anchor.data());
        text.SetDirection(direction.data());
        text.SetNormal(normal.data());
    });
}

void expectFont(const VizText& text, float size, float spacing, float scaling) {
    EXPECT_EQ(text.GetFontSize(), size);
    EXPECT_EQ(text.GetSpacingFactor(), spacing);
    EXPECT_EQ(text.GetWidthScaling(), scaling);
    const FontAttr font = text.GetFontAttrs();
    EXPECT_EQ(font.FontSize, size);
    EXPECT_EQ(font.SpacingFactor, spacing);
    EXPECT_EQ(font.WidthScaling, scaling);
}

FontAttr fontOf(float size, float spacing, float scaling) {
    FontAttr font;
    font.FontSize = size;
    font.SpacingFactor = spacing;
    font.WidthScaling = scaling;
    return font;
}

TEST(VizTextTest, IsEmptyAtTheOriginAtFirst) {
    const auto text = loadText();
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), (Vector{0, 0, 0}));
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{0, 0, 0}));
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{0, 0, 0}));
    EXPECT_EQ(text->GetText(), L"");
    EXPECT_EQ(text->GetFontName(), L"");
    expectFont(*text, 1.0F, 1.0F, 1.0F);
}

TEST(VizTextTest, ApplyTransformMovesAllThreeAsPoints) {
    // Kept so: the translation is added to direction and normal as well.
    const auto text = textAt({1, 10, 100}, {1, 0, 0}, {0, 0, 0});
    Matrix matrix = support::unevenMatrix();
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()),
              (Vector{2 + 70 + 1700 + 29, 3 + 110 + 1900 + 31, 5 + 130 + 2300 + 37}));
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{31, 34, 42}));
    // (29, 31, 37), divided by its length
    const double length = std::sqrt(29.0 * 29.0 + 31.0 * 31.0 + 37.0 * 37.0);
    EXPECT_NEAR(text->GetNormal()[0], 29.0 / length, 1e-7);
    EXPECT_NEAR(text->GetNormal()[1], 31.0 / length, 1e-7);
    EXPECT_NEAR(text->GetNormal()[2], 37.0 / length, 1e-7);
}

TEST(VizTextTest, ApplyTransformByATranslationMovesTheDirectionToo) {
    const auto text = textAt({1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    Matrix matrix = support::translationBy(5, 0, 0);
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), (Vector{6, 2, 3}));
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{6, 0, 0}));
    const Vector normal = tripleAt(text->GetNormal());
    EXPECT_NEAR(static_cast<double>(length(widened(normal))), 1.0, 1e-7);
    EXPECT_NEAR(normal[0], 5.0 / std::sqrt(26.0), 1e-7);  // (5, 0, 1), divided by its length
}

TEST(VizTextTest, ApplyTransformBringsTheNormalToLengthOne) {
    const auto text = textAt({0, 0, 0}, {0, 0, 0}, {3, 4, 0});
    Matrix matrix = support::scaleBy(2, 2, 2);
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{0.6F, 0.8F, 0}));
}

TEST(VizTextTest, ApplyTransformBringsATinyNormalToLengthOne) {
    // There is no tolerance, and nothing is snapped to an axis.
    const float tiny = std::numeric_limits<float>::denorm_min();
    const auto text = textAt({0, 0, 0}, {0, 0, 0}, {0, 0, -tiny});
    Matrix matrix = support::translationBy(0, 0, 0);
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{0, 0, -1}));
    const auto slanted = textAt({0, 0, 0}, {0, 0, 0}, {1e-8F, 0, 1});
    slanted->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(slanted->GetNormal()), (Vector{1e-8F, 0, 1}));
}

TEST(VizTextTest, ApplyTransformLeavesANormalWithoutLength) {
    const auto text = textAt({1, 2, 3}, {4, 5, 6}, {0, 0, 0});
    Matrix matrix = support::scaleBy(2, 2, 2);
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{0, 0, 0}));
    const auto vanishing = textAt({1, 2, 3}, {4, 5, 6}, {-5, 0, 0});
    matrix = support::translationBy(5, 0, 0);
    vanishing->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(vanishing->GetNormal()), (Vector{0, 0, 0}));
}

TEST(VizTextTest, ApplyTransformLeavesTheDirectionAsLongAsItBecomes) {
    const auto text = textAt({0, 0, 0}, {3, 4, 0}, {0, 0, 1});
    Matrix matrix = support::scaleBy(2, 2, 2);
    text->ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{6, 8, 0}));
}

TEST(VizTextTest, ApplyTransformLeavesTheFontAlone) {
    const auto text =
        loadText([](VizText& made) { TextLoader::setFontAttrs(made, fontOf(2, 3, 4)); });
    text->SetText(L"text");
    text->SetFontName(L"font");
    Matrix matrix = support::scaleBy(2, 2, 2);
    text->ApplyTransform(matrix.Columns);
    expectFont(*text, 2, 3, 4);
    EXPECT_EQ(text->GetText(), L"text");
    EXPECT_EQ(text->GetFontName(), L"font");
}

TEST(VizTextTest, ApplyTransformOfANaNDoesNotDivide) {
    const auto text = textAt({0, 0, 0}, {0, 0, 0}, {kNaN, 2, 0});
    Matrix matrix = support::scaleBy(1, 1, 1);
    matrix.Columns[0][1] = 0.0F;
    text->ApplyTransform(matrix.Columns);
    EXPECT_TRUE(std::isnan(text->GetNormal()[0]));
}

TEST(VizTextTest, ApplyTransformIsAsExactAsFloatsAre) {
    SeededNumbers numbers(57);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Matrix matrix = support::randomMatrix(numbers);
        const Vector anchor = numbers.VectorWithin(1000.0);
        const Vector direction = numbers.UnitVector();
        const Vector normal = numbers.UnitVector();
        const auto text = textAt(anchor, direction, normal);
        text->ApplyTransform(matrix.Columns);
        const LongVector movedAnchor = support::transformed(matrix, anchor, true);
        const LongVector movedDirection = support::transformed(matrix, direction, true);
        const LongVector movedNormal = support::transformed(matrix, normal, true);
        const long double size = length(movedNormal);
        // How far the sums may be off, relative to their length, and the division itself.
        const long double bound =
            magnitude(support::roundingOf(matrix, normal)) / size + 4.0L * 0x1p-24L;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_LE(std::fabs(text->GetAnchorPoint()[axis] - movedAnchor[axis]),
                      support::roundingOf(matrix, anchor)[axis]);
            EXPECT_LE(std::fabs(text->GetDirection()[axis] - movedDirection[axis]),
                      support::roundingOf(matrix, direction)[axis]);
            EXPECT_LE(std::fabs(text->GetNormal()[axis] - movedNormal[axis] / size), 2.0L * bound);
        }
    }
}

TEST(VizTextTest, SetTextReplacesIt) {
    const auto text = loadText();
    text->SetText(L"first");
    text->SetText(L"\u2300 12 \u00B1 0.1\nsecond line");
    EXPECT_EQ(text->GetText(), L"\u2300 12 \u00B1 0.1\nsecond line");
    EXPECT_EQ(text->GetFontName(), L"");
    text->GetText() += L" changed";  // a copy
    EXPECT_EQ(text->GetText(), L"\u2300 12 \u00B1 0.1\nsecond line");
}

TEST(VizTextTest, SetFontNameReplacesIt) {
    const auto text = loadText();
    text->SetFontName(L"first");
    text->SetFontName(L"second");
    EXPECT_EQ(text->GetFontName(), L"second");
    EXPECT_EQ(text->GetText(), L"");
}

TEST(VizTextTest, SetAnchorPointStoresThreeFloats) {
    const auto text = textAt({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const Vector point = {-1, kInfinity, 0.5F};
    text->SetAnchorPoint(point.data());
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), point);
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{4, 5, 6}));
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{7, 8, 9}));
}

TEST(VizTextTest, SetDirectionStoresThreeFloatsAsTheyAre) {
    const auto text = textAt({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const Vector direction = {10, 20, 30};
    text->SetDirection(direction.data());
    EXPECT_EQ(tripleAt(text->GetDirection()), direction);
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), (Vector{1, 2, 3}));
    EXPECT_EQ(tripleAt(text->GetNormal()), (Vector{7, 8, 9}));
}

TEST(VizTextTest, SetNormalStoresThreeFloatsAsTheyAre) {
    const auto text = textAt({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    const Vector normal = {10, 20, 30};
    text->SetNormal(normal.data());
    EXPECT_EQ(tripleAt(text->GetNormal()), normal);
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), (Vector{1, 2, 3}));
    EXPECT_EQ(tripleAt(text->GetDirection()), (Vector{4, 5, 6}));
}

TEST(VizTextTest, PointersHandedOutAreThoseOfTheStoredFloats) {
    const auto text = loadText();
    const float* const anchor = text->GetAnchorPoint();
    const float* const direction = text->GetDirection();
    const float* const normal = text->GetNormal();
    const Vector point = {1, 2, 3};
    text->SetAnchorPoint(point.data());
    text->SetDirection(text->GetAnchorPoint());
    text->SetNormal(text->GetDirection());
    EXPECT_EQ(tripleAt(anchor), point);
    EXPECT_EQ(tripleAt(direction), point);
    EXPECT_EQ(tripleAt(normal), point);
}

TEST(VizTextTest, TheFontComesFromTheLoader) {
    const auto text =
        loadText([](VizText& made) { TextLoader::setFontAttrs(made, fontOf(2.5F, 0.5F, -1)); });
    expectFont(*text, 2.5F, 0.5F, -1);
}

TEST(VizTextTest, GetFontAttrsAnswersACopy) {
    const auto text = loadText();
    const FontAttr& before = text->GetFontAttrs();
    TextLoader::setFontAttrs(*text, fontOf(2, 3, 4));
    EXPECT_EQ(before.FontSize, 1.0F);
}

TEST(VizTextTest, RemoveTransparencyMakesTheColorOpaque) {
    const auto text = loadText();
    text->SetColor(RGBAColor(1, 2, 3, 0));
    text->RemoveTransparency();
    EXPECT_TRUE(text->GetColor() == RGBAColor(1, 2, 3, 255));
    EXPECT_TRUE(text->HasColor());
}

TEST(VizTextTest, RemoveTransparencyGivesNoColor) {
    const auto text = loadText();
    text->RemoveTransparency();
    EXPECT_FALSE(text->HasColor());
}

TEST(VizTextTest, CopiesCopyEveryField) {
    const auto text = textAt({1, 2, 3}, {4, 5, 6}, {7, 8, 9});
    TextLoader::setFontAttrs(*text, fontOf(2, 3, 4));
    text->SetText(L"text");
    text->SetFontName(L"font");
    VizText copy(*text);
    const auto assigned = loadText();
    *assigned = *text;
    for (const VizText* const one : {&copy, assigned.get()}) {
        EXPECT_EQ(tripleAt(one->GetAnchorPoint()), (Vector{1, 2, 3}));
        EXPECT_EQ(tripleAt(one->GetDirection()), (Vector{4, 5, 6}));
        EXPECT_EQ(tripleAt(one->GetNormal()), (Vector{7, 8, 9}));
        expectFont(*one, 2, 3, 4);
        EXPECT_EQ(one->GetText(), L"text");
        EXPECT_EQ(one->GetFontName(), L"font");
    }
    Matrix matrix = support::translationBy(1, 1, 1);
    copy.ApplyTransform(matrix.Columns);
    EXPECT_EQ(tripleAt(text->GetAnchorPoint()), (Vector{1, 2, 3}));
}

}  // namespace
}  // namespace KesVizCore
